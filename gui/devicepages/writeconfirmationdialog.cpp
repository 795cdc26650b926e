#include "devicepages/writeconfirmationdialog.h"

#include "device/exchangewording.h"
#include "profile/profile.h"
#include "ui_writeconfirmationdialog.h"

#include <QEvent>

namespace {
// The most the list of changes takes of the dialog's height: about a dozen lines.
constexpr int kChangesHeight = 190;
} // namespace

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
    m_preview.reset();
    showProfileName();
    showChanges();
    adjustSize();
}

void WriteConfirmationDialog::setPreview(const ProgrammingPreview &preview, const DefaultLibrary *library)
{
    setProfile(preview.profile);
    m_preview = preview;
    m_library = library;
    showChanges();
    adjustSize();
}

void WriteConfirmationDialog::showChanges()
{
    m_ui->changesArea->setVisible(m_preview.has_value());
    m_ui->changesLabel->setText(m_preview ? previewWords(*m_preview, m_library) : QString());
    fitChanges();
}

// As tall as the changes need, up to the form's limit; beyond it they scroll. Only known once
// the dialog has its width.
void WriteConfirmationDialog::fitChanges()
{
    const int width = m_ui->changesArea->viewport()->width();
    const int needed = m_ui->changesLabel->heightForWidth(width);
    m_ui->changesArea->setFixedHeight(qMin(needed, kChangesHeight));
}

void WriteConfirmationDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    fitChanges();
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
        showChanges();
    }
    QDialog::changeEvent(event);
}

void WriteConfirmationDialog::showProfileName()
{
    m_ui->labelProfile->setText(QStringLiteral("<b>%1</b> (%2)")
                                    .arg(m_name.toHtmlEscaped(), m_custom ? tr("custom") : tr("default")));
}
