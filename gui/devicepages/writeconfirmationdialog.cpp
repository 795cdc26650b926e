#include "devicepages/writeconfirmationdialog.h"

#include "profile/profile.h"
#include "ui_writeconfirmationdialog.h"

#include <QEvent>

WriteConfirmationDialog::WriteConfirmationDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::WriteConfirmationDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    connect(m_ui->pushButtonConfirm, &QPushButton::clicked, this, &WriteConfirmationDialog::onConfirm);
    connect(m_ui->pushButtonCancel, &QPushButton::clicked, this, &WriteConfirmationDialog::onCancel);
}

WriteConfirmationDialog::~WriteConfirmationDialog() = default;

void WriteConfirmationDialog::setProfile(const Profile &profile)
{
    m_name = profile.name();
    m_custom = profile.isCustom();
    m_ui->checkBoxAllowReimport->setChecked(true);
    showProfileName();
    adjustSize();
}

bool WriteConfirmationDialog::allowReimport() const
{
    return m_ui->checkBoxAllowReimport->isChecked();
}

void WriteConfirmationDialog::onConfirm()
{
    accept();
}

void WriteConfirmationDialog::onCancel()
{
    reject();
}

void WriteConfirmationDialog::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        const bool allow = allowReimport();
        m_ui->retranslateUi(this);
        m_ui->checkBoxAllowReimport->setChecked(allow);
        showProfileName();
    }
    QDialog::changeEvent(event);
}

void WriteConfirmationDialog::showProfileName()
{
    m_ui->labelProfile->setText(QStringLiteral("<b>%1</b> (%2)")
                                    .arg(m_name.toHtmlEscaped(), m_custom ? tr("custom") : tr("default")));
}
