#include "cstartup.h"

#include "programversion.h"

#include "csingleinstance.h"
#include "data/cdataholder.h"
#include "data/cdisclaimeracceptance.h"
#include "data/cfileerror.h"
#include "data/cfilemanifest.h"
#include "dialogs/aboutdialog.h"
#include "dialogs/disclaimerdialog.h"
#include "editor/editorform.h"
#include "editor/hintdialog.h"
#include "errorgui.h"
#include "mainwindow.h"
#include "shell/caccessibility.h"
#include "shell/clanguagemenu.h"
#include "shell/clanguageswitcher.h"
#include "start/wizardform.h"
#include "summary/customform.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLocale>
#include <QStandardPaths>
#include <QTimer>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

// The images are a static library; its resources register only when asked to.
static void registerImages()
{
    Q_INIT_RESOURCE(images);
}

namespace {

const char kVersionQuery[] = "-v";

#ifdef Q_OS_WIN
// The windows use the UI font the system names (Segoe UI on Windows 10 and 11). Where it names
// only the dialog font's alias (as Wine does: "MS Shell Dlg"), Qt resolves that to a serif: a sans
// UI font at the system's size stands in instead, the first there is of these.
void useWindowsUiFont()
{
    QFont font = QApplication::font();
    if (!font.family().startsWith(QLatin1String("MS Shell Dlg"), Qt::CaseInsensitive))
        return;
    font.setFamilies({QStringLiteral("Segoe UI"), QStringLiteral("Tahoma"), QStringLiteral("Arial"),
        QStringLiteral("DejaVu Sans")});
    font.setStyleHint(QFont::SansSerif);
    QApplication::setFont(font);
}
#endif

// The profile file the program was started for: its only argument, when that is no option.
QString profileArgument()
{
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.size() == 1 && !arguments.first().startsWith(QLatin1Char('-')))
        return arguments.first();
    return QString();
}

std::unique_ptr<QApplication> createApplication(int &argc, char **argv)
{
    if (QCoreApplication::instance())
        return nullptr;
    // Sharp on high-DPI screens: Qt scales the layout, picks the @2x drawings, and uses
    // factors such as 1.25 and 1.5 as they are instead of rounding them to whole numbers.
    // Qt 6 always scales and picks the drawings; Qt 5 must be asked to.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QGuiApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QGuiApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    auto application = std::make_unique<QApplication>(argc, argv);
#ifdef Q_OS_WIN
    useWindowsUiFont();
#endif
    return application;
}

// Set before any window exists: the settings paths and the web links derive from it.
void setIdentity()
{
    QCoreApplication::setOrganizationName(QStringLiteral("sparkwright.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Sparkwright"));
    QCoreApplication::setApplicationVersion(QLatin1String(kProgramVersionText));
}

// Decoding the application icon's seven images takes a noticeable part of the start-up, so
// the icon is set once the main window has painted its first frame; the window manager shows
// it a moment later.
class CDeferredWindowIcon : public QObject
{
public:
    explicit CDeferredWindowIcon(QWidget *window)
        : QObject(window)
    {
        window->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            QTimer::singleShot(0, this, [this] {
                QIcon icon;
                for (int size : {16, 24, 32, 48, 64, 128, 256})
                    icon.addFile(QStringLiteral(":/Images/app-%1.png").arg(size), QSize(size, size));
                QApplication::setWindowIcon(icon);
                deleteLater();
            });
        }
        return false;
    }
};

// Standard output that could not be written fails the query: nothing was answered.
int printOut(const QByteArray &text)
{
    const bool written = std::fwrite(text.constData(), 1, size_t(text.size()), stdout) == size_t(text.size());
    if (std::fflush(stdout) == 0 && written)
        return CStartup::kExitNormal;
    std::fprintf(stderr, "sparkwright: cannot write the output: %s\n", std::strerror(errno));
    return CStartup::kExitFailed;
}

// Answered on the terminal, before anything else: no display and no data files are needed.
const char kHelp[]
    = "Usage: sparkwright [FILE.cdi | -v | --help | --version]\n"
      "\n"
      "Creates, edits, compares, prints and programs the ignition profiles of a programmable CDI.\n"
      "Without options the program opens its window; given a profile file, it opens it in the\n"
      "editor.\n"
      "\n"
      "  -v         print the program's and its data files' versions as one line and exit\n"
      "  --help     show this text and exit\n"
      "  --version  print the program's version and exit\n"
      "\n"
      "The factory library (default.cds), the hints (hints.cdh) and the German translation\n"
      "(lang_de.qm) are read from the program's installation only: beside the program, or in\n"
      "../share/sparkwright beside its folder. The command-line tool is sparkwright-cli.\n";

} // namespace

void CEventLoopSteps::waitForErrorWindow(ErrorGui &window)
{
    Q_UNUSED(window)
    // The error window is the only window, so closing it ends the loop.
    QApplication::exec();
}

int CEventLoopSteps::runDisclaimer(DisclaimerDialog &dialog)
{
    return dialog.exec();
}

int CEventLoopSteps::runMainWindow(MainWindow &window)
{
    Q_UNUSED(window)
    return QApplication::exec();
}

CStartup::CStartup(IModalSteps &steps, Surroundings surroundings)
    : m_steps(steps)
    , m_surroundings(std::move(surroundings))
{ }

int CStartup::run(int &argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--help") == 0)
        return printOut(kHelp);
    if (argc == 2 && qstrcmp(argv[1], "--version") == 0)
        return printOut(QByteArray("sparkwright ") + kProgramVersionText + '\n');

    registerImages();
    const bool versionQuery = argc == 2 && qstrcmp(argv[1], kVersionQuery) == 0;

    // The data files come first, so that a broken installation is reported even when another
    // copy is running or the disclaimer was never accepted. The hints are only tried once the
    // library has loaded, so that a single message names the first broken file.
    CDataHolder data(m_surroundings.programDirectory);
    if (!data.loadLibrary(!versionQuery))
        return reportFileError(argc, argv, CDataHolder::libraryFailure());
    if (!data.loadHints())
        return reportFileError(argc, argv, CDataHolder::hintsFailure());

    if (versionQuery)
        return printOut(CFileManifest(data).text() + '\n');
    return runNormalStart(argc, argv, data);
}

int CStartup::reportFileError(int &argc, char **argv, const CFileError &error)
{
    // No translation is installed yet: the message appears in English.
    std::unique_ptr<QApplication> application = createApplication(argc, argv);
    auto window = std::make_unique<ErrorGui>(error.displayText());
    m_steps.waitForErrorWindow(*window);
    window.reset();
    application.reset();
    return kExitFailed;
}

int CStartup::runNormalStart(int &argc, char **argv, CDataHolder &data)
{
    CSingleInstance singleInstance(m_surroundings.lockDirectory);
    // Deliberately silent: starting the program again simply leaves the running copy alone, and
    // hands it the profile file it was started for.
    if (!singleInstance.acquire()) {
        std::unique_ptr<QCoreApplication> core;
        if (!QCoreApplication::instance())
            core = std::make_unique<QCoreApplication>(argc, argv); // for the arguments as the system gives them
        const QString path = profileArgument();
        if (!path.isEmpty())
            singleInstance.handOver(path);
        return kExitNormal;
    }

    // The device transactions draw their nonces and scrambling values from the C generator.
    std::srand(unsigned(std::time(nullptr)));

    std::unique_ptr<QApplication> application = createApplication(argc, argv);
    setIdentity();
    // Before the first window: screen readers ask for each widget's role once.
    CAccessibility::installRoles();

    // The start language follows the system locale on every start; a switch made while the
    // program ran is not remembered.
    auto switcher = std::make_unique<CLanguageSwitcher>(m_surroundings.programDirectory);
    switcher->addLanguage(CLanguageSwitcher::languageCode(CLanguageSwitcher::kGerman));
    const QString localeName
        = m_surroundings.localeName.isEmpty() ? QLocale::system().name() : m_surroundings.localeName;
    switcher->setLanguage(CLanguageSwitcher::languageForLocale(localeName));

    auto languageMenu = std::make_unique<CLanguageMenu>(*switcher);

    auto acceptance = std::make_unique<CDisclaimerAcceptance>(
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    // The dialog is built only when it is to be shown: most starts find the disclaimer accepted.
    std::unique_ptr<DisclaimerDialog> disclaimer;
    bool accepted = acceptance->isAccepted();
    if (!accepted) {
        disclaimer = std::make_unique<DisclaimerDialog>(*languageMenu, *acceptance);
        accepted = m_steps.runDisclaimer(*disclaimer) == QDialog::Accepted;
    }

    int exitCode = kExitFailed;
    if (accepted)
        exitCode = runWindows(data, *switcher, *languageMenu, singleInstance);

    // Widgets go before the application object; the single-copy lock goes last.
    disclaimer.reset();
    acceptance.reset();
    languageMenu.reset();
    switcher.reset();
    application.reset();
    return exitCode;
}

// Every language switch reaches the main window first, then the start page, then the pages and
// dialogs in the order they were made; a page made after a switch comes up in the language
// chosen.
CProgramWindows::CProgramWindows(CDataHolder &data, CLanguageSwitcher &switcher, CLanguageMenu &languageMenu)
    : m_data(data)
    , m_switcher(switcher)
{
    // The start page builds its template chooser, comparison list and graph when they are first
    // shown, as the main window does with the editor and the confirmation page.
    auto wizard = std::make_unique<WizardForm>(switcher, data.library());
    WizardForm *startPage = wizard.get();
    MainWindow::LaterPages laterPages;
    laterPages.editor = [this] {
        auto editor = std::make_unique<EditorForm>(m_data.library(), m_switcher, hintDialog());
        m_switcher.registerListener(editor.get());
        return editor;
    };
    laterPages.confirmation = [this] { return std::make_unique<CustomForm>(m_switcher); };
    laterPages.about = [this]() -> AboutDialog & { return aboutDialog(); };
    // The port selection and progress pages (DevicesForm, WaitForm) and the write confirmation
    // dialog take their place in the main window once the program talks to the CDI.
    m_mainWindow = std::make_unique<MainWindow>(data, std::move(wizard), std::move(laterPages), languageMenu);

    switcher.registerListener(m_mainWindow.get());
    switcher.registerListener(startPage);

    m_mainWindow->showStart();
    new CDeferredWindowIcon(m_mainWindow.get()); // owned by the window
    m_mainWindow->show();

    // The links that need the finished main window. The progress page and the device
    // transactions are linked to it here as well, once they exist.
    setSharedDefaultLibrary(data.library());
}

HintDialog &CProgramWindows::hintDialog()
{
    if (!m_hintDialog)
        m_hintDialog = std::make_unique<HintDialog>(m_data.hints(), m_switcher);
    return *m_hintDialog;
}

AboutDialog &CProgramWindows::aboutDialog()
{
    if (!m_aboutDialog) {
        m_aboutDialog = std::make_unique<AboutDialog>(m_data.library(), m_mainWindow.get());
        m_switcher.registerListener(m_aboutDialog.get());
    }
    return *m_aboutDialog;
}

CProgramWindows::~CProgramWindows()
{
    setSharedDefaultLibrary(nullptr);
    m_aboutDialog.reset();
    m_mainWindow.reset();
    m_hintDialog.reset();
}

int CStartup::runWindows(
    CDataHolder &data, CLanguageSwitcher &switcher, CLanguageMenu &languageMenu, const CSingleInstance &singleInstance)
{
    CProgramWindows windows(data, switcher, languageMenu);
    MainWindow &window = windows.mainWindow();
    // A profile file named on the command line (as the file manager starts the program for a
    // .cdi file) opens once the window is up, so that a message about it shows over the window.
    const QString path = profileArgument();
    if (!path.isEmpty())
        QTimer::singleShot(0, &window, [&window, path] { window.openProfileFile(path); });
    // One handed over by a later copy brings the window to the front and opens there.
    singleInstance.receiveHandOvers(&window, [&window](const QString &handedOver) {
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.raise();
        window.activateWindow();
        window.openProfileFile(handedOver);
    });
    return m_steps.runMainWindow(window);
}
