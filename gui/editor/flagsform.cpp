#include "editor/flagsform.h"

#include "editor/hintdialog.h"
#include "editor/iprofileeditormain.h"
#include "profile/profile.h"
#include "shell/groupshortcut.h"

#include "ui_flagsform.h"

#include <QEvent>
#include <QLocale>

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
    connect(
        m_ui->radioButtonGroundDisables, &QRadioButton::clicked, this, &FlagsForm::onGroundDisablesEdited);
    connect(m_ui->radioButtonGroundEnables, &QRadioButton::clicked, this, &FlagsForm::onGroundEnablesEdited);
    connect(m_ui->radioButtonPickUpNeg, &QRadioButton::clicked, this, &FlagsForm::onPickUpNegEdited);
    connect(m_ui->radioButtonPickUpPos, &QRadioButton::clicked, this, &FlagsForm::onPickUpPosEdited);
    connect(m_ui->hintButtonPickUp, &QToolButton::clicked, this, &FlagsForm::onPickupHint);
    connect(m_ui->hintButtonSideStand, &QToolButton::clicked, this, &FlagsForm::onSideStandHint);
    connect(m_ui->hintButtonSensorAdvance, &QToolButton::clicked, this, &FlagsForm::onSensorAdvanceHint);
    connect(m_ui->hintButtonVoltage, &QToolButton::clicked, this, &FlagsForm::onVoltageHint);
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

bool FlagsForm::writeFlags(const ProfileFlags &flags)
{
    if (flags == m_profile->flags())
        return false;
    m_profile->setFlags(flags);
    m_editor->onEdited(IProfileEditorMain::Edit::Setting, -1);
    return true;
}

void FlagsForm::onVoltageEdited(int volts)
{
    if (m_loading || !m_profile)
        return;
    m_profile->setVoltage(volts);
    m_editor->onEdited(IProfileEditorMain::Edit::Setting, -1);
}

void FlagsForm::onSensorAdvanceEdited(double degrees)
{
    if (m_loading || !m_profile)
        return;
    SensorCoefficients coefficients = m_profile->sensorCoefficients();
    coefficients.k0 = degrees;
    m_profile->setSensorCoefficients(coefficients);
    m_editor->updateGraph();
    m_editor->onEdited(IProfileEditorMain::Edit::Setting, -1);
}

void FlagsForm::onSideStandBlockingEdited(int state)
{
    if (m_loading || !m_profile)
        return;
    ProfileFlags flags = m_profile->flags();
    flags.sideStandMonitoring = state > 0;
    applySideStandRule();
    if (flags.sideStandMonitoring)
        flags.groundEnablesIgnition = m_ui->radioButtonGroundEnables->isChecked();
    writeFlags(flags);
}

void FlagsForm::onGroundDisablesEdited(bool checked)
{
    if (m_loading || !m_profile || !checked)
        return;
    ProfileFlags flags = m_profile->flags();
    flags.groundEnablesIgnition = false;
    writeFlags(flags);
}

void FlagsForm::onGroundEnablesEdited(bool checked)
{
    if (m_loading || !m_profile || !checked)
        return;
    ProfileFlags flags = m_profile->flags();
    flags.groundEnablesIgnition = true;
    writeFlags(flags);
}

void FlagsForm::onPickUpNegEdited(bool checked)
{
    if (m_loading || !m_profile || !checked)
        return;
    ProfileFlags flags = m_profile->flags();
    flags.pickUpRisingEdge = false;
    // With a sensor mode the edge chooses K1, and so the ceiling.
    if (writeFlags(flags))
        m_editor->updateGraph();
}

void FlagsForm::onPickUpPosEdited(bool checked)
{
    if (m_loading || !m_profile || !checked)
        return;
    ProfileFlags flags = m_profile->flags();
    flags.pickUpRisingEdge = true;
    if (writeFlags(flags))
        m_editor->updateGraph();
}

void FlagsForm::showHint(int number)
{
    if (m_hintDialog)
        m_hintDialog->showHint(number);
}

void FlagsForm::onPickupHint()
{
    showHint(kPickUpHint);
}

void FlagsForm::onSideStandHint()
{
    showHint(kSideStandHint);
}

void FlagsForm::onSensorAdvanceHint()
{
    showHint(kSensorAdvanceHint);
}

void FlagsForm::onVoltageHint()
{
    showHint(kVoltageHint);
}

void FlagsForm::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
