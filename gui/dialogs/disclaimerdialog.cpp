#include "dialogs/disclaimerdialog.h"

#include "data/cdisclaimeracceptance.h"
#include "shell/clanguagemenu.h"

#include "ui_disclaimerdialog.h"

#include <QEvent>

DisclaimerDialog::DisclaimerDialog(
    CLanguageMenu &languageMenu, const CDisclaimerAcceptance &acceptance, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::DisclaimerDialog>())
    , m_languageMenu(languageMenu)
    , m_acceptance(acceptance)
{
    m_ui->setupUi(this);
    m_ui->languageButton->setMenu(&m_languageMenu);
    showCurrentLanguage();

    connect(m_ui->acceptButton, &QPushButton::clicked, this, &DisclaimerDialog::onAccept);
    connect(m_ui->declineButton, &QPushButton::clicked, this, &DisclaimerDialog::onDecline);
    connect(&m_languageMenu, &CLanguageMenu::languageSelected, this, &DisclaimerDialog::onLanguageSelected);
}

DisclaimerDialog::~DisclaimerDialog() = default;

void DisclaimerDialog::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_ui->retranslateUi(this);
        showCurrentLanguage();
    }
    QDialog::changeEvent(event);
}

void DisclaimerDialog::onAccept()
{
    if (m_ui->checkBox->isChecked())
        m_acceptance.writeAccepted();
    accept();
}

void DisclaimerDialog::onDecline()
{
    reject();
}

// A language whose translation file is missing brings no language change event, yet the
// button must still name the chosen language.
void DisclaimerDialog::onLanguageSelected()
{
    showCurrentLanguage();
}

void DisclaimerDialog::showCurrentLanguage()
{
    m_ui->languageButton->setText(m_languageMenu.currentLanguageName());
    m_ui->languageButton->setIcon(m_languageMenu.currentLanguageIcon());
}
