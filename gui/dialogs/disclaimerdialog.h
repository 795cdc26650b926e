#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class DisclaimerDialog;
}
class CDisclaimerAcceptance;
class CLanguageMenu;

// Asks the user to take responsibility for changes to the CDI before the program may be used.
// Accepting with "Do not show again" ticked records the acceptance, so later starts skip it.
class DisclaimerDialog : public QDialog
{
    Q_OBJECT

public:
    DisclaimerDialog(
        CLanguageMenu &languageMenu, const CDisclaimerAcceptance &acceptance, QWidget *parent = nullptr);
    ~DisclaimerDialog() override;

protected:
    // The dialog appears before the main window exists, so it follows a language switch by
    // itself instead of waiting to be told.
    void changeEvent(QEvent *event) override;

private slots:
    void onAccept();
    void onDecline();
    void onLanguageSelected();

private:
    void showCurrentLanguage();

    std::unique_ptr<Ui::DisclaimerDialog> m_ui;
    CLanguageMenu &m_languageMenu;
    const CDisclaimerAcceptance &m_acceptance;
};
