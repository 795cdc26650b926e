#include "editor/flagsform.h"

#include "editor/hintdialog.h"
#include "editor/iprofileeditormain.h"
#include "profile/profile.h"
#include "shell/groupshortcut.h"

#include "ui_flagsform.h"

#include <QEvent>
#include <QLocale>

#include <tuple>

FlagsForm::FlagsForm(IProfileEditorMain *editor, HintDialog *hintDialog, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::FlagsForm>())
    , m_editor(editor)
    , m_hintDialog(hintDialog)
{
    Q_INIT_RESOURCE(images);
    m_ui->setupUi(this);
    sendGroupShortcutTo(m_ui->groupBoxVoltage, m_ui->spinBoxIgnitionVoltage);
    sendGroupShortcutTo(m_ui->groupBoxK0, m_ui->doubleSpinBoxHall);

    connect(m_ui->spinBoxIgnitionVoltage, qOverload<int>(&QSpinBox::valueChanged), this,
        &FlagsForm::onVoltageEdited);
    connect(m_ui->doubleSpinBoxHall, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
        &FlagsForm::onSensorAdvanceEdited);
    connect(m_ui->checkBoxSideStand, &QCheckBox::stateChanged, this, &FlagsForm::onSideStandBlockingEdited);
    // Each radio button stands for one value of its flag. With a sensor mode the pick-up edge
    // chooses K1, and so the map's ceiling.
    const std::tuple<QRadioButton *, bool ProfileFlags::*, bool> choices[] = {
        {m_ui->radioButtonGroundDisables, &ProfileFlags::groundEnablesIgnition, false},
        {m_ui->radioButtonGroundEnables, &ProfileFlags::groundEnablesIgnition, true},
        {m_ui->radioButtonPickUpNeg, &ProfileFlags::pickUpRisingEdge, false},
        {m_ui->radioButtonPickUpPos, &ProfileFlags::pickUpRisingEdge, true},
    };
    for (const auto &[button, flag, value] : choices) {
        connect(button, &QRadioButton::clicked, this, [this, flag = flag, value = value](bool checked) {
            if (checked && changeFlags([=](ProfileFlags &flags) { flags.*flag = value; })
                && flag == &ProfileFlags::pickUpRisingEdge)
                m_editor->updateGraph();
        });
    }
    const std::pair<QToolButton *, int> hints[]
        = {{m_ui->hintButtonVoltage, kVoltageHint}, {m_ui->hintButtonSideStand, kSideStandHint},
            {m_ui->hintButtonPickUp, kPickUpHint}, {m_ui->hintButtonSensorAdvance, kSensorAdvanceHint}};
    for (const auto &[button, hint] : hints) {
        connect(button, &QToolButton::clicked, this, [this, hint = hint] {
            if (m_hintDialog)
                m_hintDialog->showHint(hint);
        });
    }
}

FlagsForm::~FlagsForm() = default;

void FlagsForm::setProfile(Profile *profile)
{
    m_loading = true;
    m_profile = profile;
    if (m_profile) {
        m_ui->spinBoxIgnitionVoltage->setValue(m_profile->voltage());
        m_ui->checkBoxSideStand->setChecked(m_profile->sideStandMonitoring());
        // Checking one button of the pair unchecks the other.
        if (m_profile->groundEnablesIgnition())
            m_ui->radioButtonGroundEnables->setChecked(true);
        else
            m_ui->radioButtonGroundDisables->setChecked(true);
        if (m_profile->pickUpRisingEdge())
            m_ui->radioButtonPickUpPos->setChecked(true);
        else
            m_ui->radioButtonPickUpNeg->setChecked(true);
        // The decimal separator follows the language the program is shown in.
        m_ui->doubleSpinBoxHall->setLocale(QLocale());
        m_ui->doubleSpinBoxHall->setValue(m_profile->sensorCoefficients().k0);
        applySideStandRule();
        // Many CDIs take the edge from the pick-up they were built for; only some let it be chosen.
        m_ui->groupBoxPickUp->setVisible(m_profile->pickUpEdgeSelectable());
    }
    m_loading = false;
}

void FlagsForm::applySideStandRule()
{
    const bool monitoring = m_ui->checkBoxSideStand->isChecked();
    m_ui->radioButtonGroundEnables->setEnabled(monitoring);
    m_ui->radioButtonGroundDisables->setEnabled(monitoring);
    if (monitoring && !m_ui->radioButtonGroundEnables->isChecked()
        && !m_ui->radioButtonGroundDisables->isChecked())
        m_ui->radioButtonGroundEnables->setChecked(true);
}

bool FlagsForm::changeFlags(const std::function<void(ProfileFlags &)> &change)
{
    if (!isUserEdit())
        return false;
    ProfileFlags flags = m_profile->flags();
    change(flags);
    if (flags == m_profile->flags())
        return false;
    m_profile->setFlags(flags);
    m_editor->onEdited(IProfileEditorMain::Edit::Setting, -1);
    return true;
}

void FlagsForm::onVoltageEdited(int volts)
{
    if (!isUserEdit())
        return;
    m_profile->setVoltage(volts);
    m_editor->onEdited(IProfileEditorMain::Edit::Setting, -1);
}

void FlagsForm::onSensorAdvanceEdited(double degrees)
{
    if (!isUserEdit())
        return;
    SensorCoefficients coefficients = m_profile->sensorCoefficients();
    coefficients.k0 = degrees;
    m_profile->setSensorCoefficients(coefficients);
    m_editor->updateGraph();
    m_editor->onEdited(IProfileEditorMain::Edit::Setting, -1);
}

void FlagsForm::onSideStandBlockingEdited(int state)
{
    changeFlags([this, state](ProfileFlags &flags) {
        flags.sideStandMonitoring = state > 0;
        applySideStandRule();
        if (flags.sideStandMonitoring)
            flags.groundEnablesIgnition = m_ui->radioButtonGroundEnables->isChecked();
    });
}

void FlagsForm::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
