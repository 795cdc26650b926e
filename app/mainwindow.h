#pragma once

#include "shell/itranslatable.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <optional>

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
class Profile;
class WizardForm;
struct PageButtons;

// The program's one window. It holds every page and shows one of them at a time under a prompt
// line, with Exit, Back and Next below; Back and Next go to the page shown, which asks back for
// the next page by its signals. It carries the menus and the file commands: open, save as and
// print to PDF.
class MainWindow : public QMainWindow, public ITranslatable
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

    // The pages: the start page with its main choices, the editor with a copy of the profile,
    // the confirmation before programming the CDI with the profile, and the device pages.
    void showStart();
    // A profile file from the recent profiles or the command line, in the editor; a file that
    // cannot be read is named in a message.
    void openProfileFile(const QString &path);
    void showEditor(const Profile &profile, const QString &filePath = QString());
    void showProgrammingConfirmation(const Profile &profile);
    void showPortSelection();
    void showProgress();
    // Back to the editor with the profile it holds.
    void continueEditing();
    // Device requests.
    void requestProgramming(const Profile &profile, bool allowReimport);
    void requestConnectionTest();
    void requestImport();

    void retranslate(int language) override;

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private slots:
    void onBackButton();
    void onNextButton();
    void onExitMenu();
    void onNewProfileMenu();
    void onOpenProfileMenu();
    void onRecentMenu();
    void onSaveProfileMenu();
    void onSaveProfileAsMenu();
    void onProfileSaved(const QString &path);
    void onResetMenu();
    void onUpdateMenu();
    void onAboutMenu();
    void onImportMenu();
    void onExportMenu();
    void onPrintMenu();
    void onPrintDialogMenu();
    void onExportGraphMenu();
    void onExportValuesMenu();
    void onTechnicalSpecifications();
    void onProgrammableCDIs();
    void onTrivia();
    void onFAQ();
    void onVisitUs();
    void onContactUs();
    void onConfirmationBack();
    void onConfirmationNext();
    void onProgrammedProfilesMenu();
    void onTransactionFinished();

private:
    // The device pages, made on first use.
    WaitForm &waitForm();
    DevicesForm &devicesForm();
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
    void updateTitle();
    // Export graph on the editor and the comparison's graph, Export values on the latter.
    void updateExportActions();
    void setFixedTexts();
    void paintBanner();
    void placeOnScreen();
    // Asks the editor whether its profile may be left; true when there is nothing to lose.
    bool mayLeaveEditor();
    // The name of the profile the editor holds; nothing while no profile was loaded in this run.
    std::optional<QString> editedProfileName() const;
    // A profile chosen on the start page replaces the editor's, after the unsaved-changes question.
    void openInEditor(const Profile &profile);
    void programProfileFile();
    void programEditedProfile();
    // Reads the CDI first; the last question (onProgrammingPreview) then shows what changes.
    void beginProgramming(const Profile &profile);
    void setButtons(const PageButtons &buttons);
    void setButtonState(bool exitVisible, bool backVisible, bool nextVisible, bool nextEnabled,
        const QString &nextText, const QString &nextToolTip);
    void setNextEnabled(bool enabled);
    // The current page changed its prompt (its status tip) without a page change.
    void refreshPrompt();

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
