#pragma once

#include "shell/ibrowsermain.h"
#include "shell/itranslatable.h"

#include <QMainWindow>

#include <functional>
#include <memory>

namespace Ui {
class MainWindow;
}
class AboutDialog;
class CBrowserWidget;
class CDataHolder;
struct ProgrammingPreview;
class CLanguageMenu;
class CustomForm;
class CDeviceFlow;
class DevicesForm;
class IPortLister;
class WaitForm;
class WriteConfirmationDialog;
class EditorForm;
class WizardForm;

// The program's one window. It holds every page and shows one of them at a time under a prompt
// line, with Exit, Back and Next below; Back and Next go to the page shown, which asks back for
// the next page. It carries the menus and the file commands: open, save as and print to PDF.
class MainWindow : public QMainWindow, public IBrowserMain, public IBrowserSub, public ITranslatable
{
    Q_OBJECT

public:
    // The pages and the about box the first window does not show, each made when it is first
    // needed; the start page is there at once. The pages become the window's own.
    struct LaterPages
    {
        std::function<std::unique_ptr<EditorForm>()> editor;
        std::function<std::unique_ptr<CustomForm>()> confirmation;
        std::function<AboutDialog &()> about;
    };

    MainWindow(CDataHolder &data, std::unique_ptr<WizardForm> wizard, LaterPages laterPages,
        CLanguageMenu &languageMenu, QWidget *parent = nullptr);
    ~MainWindow() override;

    // Made on first use.
    EditorForm &editor();
    CustomForm &confirmation();
    // The device actions: finding the port, the exchange, what follows it.
    CDeviceFlow &deviceFlow() { return *m_device; }

    // IBrowserMain
    void showStart() override;
    void setButtonState(bool exitVisible, bool backVisible, bool nextVisible, bool nextEnabled,
        const QString &nextText, const QString &nextToolTip) override;
    void showEditor(const Profile &profile) override;
    void showProgrammingConfirmation(const Profile &profile) override;
    void showPortSelection() override;
    void showProgress() override;
    bool mayLeaveEditor() override;
    void setNextEnabled(bool enabled) override;
    void requestProgramming(const Profile &profile, bool allowReimport) override;
    void requestConnectionTest() override;
    void requestImport() override;
    void continueEditing() override;
    const Profile *editedProfile() const override;
    std::optional<Profile> readProfileFromFile() override;
    void confirmProgramming(const Profile &profile) override;
    void refreshPrompt() override;
    void openRecentProfile(const QString &path) override;

    // IBrowserSub
    void onTransactionFinished() override;

    void retranslate(int language) override;

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private slots:
    void onBackButton();
    void onNextButton();
    void onExitMenu();
    void onNewProfileMenu();
    void onOpenProfileMenu();
    void onRecentMenu();
    void onSaveProfileAsMenu();
    void onResetMenu();
    void onUpdateMenu();
    void onAboutMenu();
    void onImportMenu();
    void onExportMenu();
    void onPrintMenu();
    void onTechnicalSpecifications();
    void onProgrammableCDIs();
    void onTrivia();
    void onFAQ();
    void onVisitUs();
    void onContactUs();
    void onConfirmationBack();
    void onConfirmationNext();
    void onProgrammedProfilesMenu();

private:
    bool deferQuitWhileBusy();
    // True while the page, if it was made, is the one shown.
    bool isShown(const QWidget *page) const { return page && m_currentWidget == page; }
    void showPage(QWidget *target, CBrowserWidget *page, const std::function<void()> &prepare);
    void switchTo(QWidget *target);
    void resetFrame();
    void updateUndoActions();
    void prepareEditorFrame();
    void prepareConfirmationFrame();
    void showStartPage(const std::function<void()> &chooseView);
    void rememberDeviceWayBack();
    std::function<void()> wayBackToCurrentPage();
    void leaveDevicePages();
    // The progress page's prompt says whether the exchange still runs.
    void setWaitPrompt();
    void openImportedProfile(const Profile &profile);
    void onProgrammingPreview(const ProgrammingPreview &preview);
    void setDeviceBusy(bool busy);
    void writeEditedProfile(const QString &title, const QString &fileFilter, const QString &extension,
        const QString &failureHeading, const std::function<QByteArray()> &bytes,
        const std::function<void(const QString &path)> &onSuccess);
    void setFixedTexts();
    void paintBanner();
    void placeOnScreen();
    QString profileFilter() const;

    std::unique_ptr<Ui::MainWindow> m_ui;
    CDataHolder &m_data;
    WizardForm *m_wizard;
    LaterPages m_laterPages;
    // Null until first needed.
    EditorForm *m_editor = nullptr;
    CustomForm *m_confirmation = nullptr;
    // The page shown, null during a page change.
    QWidget *m_currentWidget = nullptr;
    CBrowserWidget *m_current = nullptr;
    std::unique_ptr<IPortLister> m_portLister;
    WaitForm *m_waitForm = nullptr;
    DevicesForm *m_devicesForm = nullptr;
    std::unique_ptr<CDeviceFlow> m_device;
    WriteConfirmationDialog *m_writeConfirmation = nullptr;
    // Where the device pages return to: the page the device action was chosen on.
    std::function<void()> m_deviceBack;
    // Back on the confirmation page returns to the editor when the profile came from there.
    bool m_confirmationFromEditor = false;
    // Asked to quit while an exchange ran: quit once it has ended.
    bool m_quitWhenIdle = false;
};
