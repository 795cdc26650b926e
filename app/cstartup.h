#pragma once

#include <QString>

#include <memory>

class AboutDialog;
class CDataHolder;
class CFileError;
class CLanguageMenu;
class CLanguageSwitcher;
class CSingleInstance;
class DisclaimerDialog;
class ErrorGui;
class HintDialog;
class MainWindow;

// The places where start-up hands control to the user and waits. The program runs event loops
// there; tests answer in the user's place, so that nothing blocks.
class IModalSteps
{
public:
    virtual ~IModalSteps() = default;
    // The window is already shown; returns once the user has closed it.
    virtual void waitForErrorWindow(ErrorGui &window) = 0;
    // Returns the dialog's result code.
    virtual int runDisclaimer(DisclaimerDialog &dialog) = 0;
    // The main window is already shown; returns the program's exit code.
    virtual int runMainWindow(MainWindow &window) = 0;
};

// Waits the way the program does: in the application's event loop and in the dialog's own.
class CEventLoopSteps : public IModalSteps
{
public:
    void waitForErrorWindow(ErrorGui &window) override;
    int runDisclaimer(DisclaimerDialog &dialog) override;
    int runMainWindow(MainWindow &window) override;
};

// Every page and dialog of a normal start, each built once and wired together; the main window
// is shown at once with its start page, and the pages and dialogs it does not show come when
// first needed: that is most of what the first window would otherwise wait for. They live until
// this object goes, and the main window owns its pages.
class CProgramWindows
{
public:
    CProgramWindows(CDataHolder &data, CLanguageSwitcher &switcher, CLanguageMenu &languageMenu);
    ~CProgramWindows();

    MainWindow &mainWindow() const { return *m_mainWindow; }
    // Made on first use.
    AboutDialog &aboutDialog();
    HintDialog &hintDialog();

private:
    CDataHolder &m_data;
    CLanguageSwitcher &m_switcher;
    std::unique_ptr<HintDialog> m_hintDialog;
    std::unique_ptr<MainWindow> m_mainWindow;
    std::unique_ptr<AboutDialog> m_aboutDialog;
};

// The program from its command line to its exit code: data files, version query, single copy,
// identity, start language, disclaimer, then every page and dialog built once, wired together,
// and the main window's event loop.
class CStartup
{
public:
    static constexpr int kExitNormal = 0;
    static constexpr int kExitFailed = 1;

    // What the program finds around itself. Empty fields take the real values: the directory of
    // the executable, the system locale, and the user's runtime directory for the lock.
    struct Surroundings
    {
        QString programDirectory;
        QString localeName;
        QString lockDirectory;
    };

    explicit CStartup(IModalSteps &steps, Surroundings surroundings = {});

    // An application object that already exists (as in tests) is used instead of a new one.
    int run(int &argc, char **argv);

private:
    int reportFileError(int &argc, char **argv, const CFileError &error);
    int runNormalStart(int &argc, char **argv, CDataHolder &data);
    int runWindows(CDataHolder &data, CLanguageSwitcher &switcher, CLanguageMenu &languageMenu,
        const CSingleInstance &singleInstance);

    IModalSteps &m_steps;
    const Surroundings m_surroundings;
};
