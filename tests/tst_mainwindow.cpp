// The main window as the user drives it: which page shows with which prompt and buttons, the
// menu commands and their shortcuts, the open, save and print flows with their messages, the
// updater, the web links and the about box.
#include "dialogs/aboutdialog.h"
#include "editor/customform.h"
#include "editor/editorform.h"
#include "frame/suggestedfilename.h"
#include "pages/wizardform.h"
#include "profile/profilefile.h"
#include "summary/summarysheet.h"
#include "tests/programfixture.h"
#include "tests/widgettestmain.h"

#include <QAction>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

#include <unistd.h>

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAll(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

const char kWelcome[] = "Welcome to Sparkwright. What would you like to do?";
const char kConfirmPrompt[] = "Please confirm programming the CDI with this profile.";

// Where the window is, as the user sees it.
enum class Place
{
    StartPage,
    TemplateChooser,
    Editor,
    Confirmation
};

} // namespace

Q_DECLARE_METATYPE(Place)

// Takes URLs instead of the desktop's browser.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void take(const QUrl &url) { urls.append(url); }
};

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void pages_data();
    void pages();
    void editorShortcutsActOnlyOnTheEditor_data();
    void editorShortcutsActOnlyOnTheEditor();
    void backAndNextFollowThePages();
    void deviceRequestsSayTheyAreNotAvailable_data();
    void deviceRequestsSayTheyAreNotAvailable();
    void openFlow_data();
    void openFlow();
    void saveAndPrintFlows_data();
    void saveAndPrintFlows();
    void suggestedFileNames_data();
    void suggestedFileNames();
    void missingUpdaterIsReported();
    void webLinks_data();
    void webLinks();
    void aboutBox();
    void exitEndsTheProgramWithZero();
    void bannerCarriesTheVersion();
    void languageSwitchReachesTheFrame();

private:
    void goTo(Program &program, Place place);
    QTemporaryDir m_folder;
};

void TestMainWindow::goTo(Program &program, Place place)
{
    switch (place) {
    case Place::StartPage:
        break;
    case Place::TemplateChooser:
        QTest::keyClick(&program.window(), Qt::Key_N, Qt::ControlModifier);
        break;
    case Place::Editor:
        program.window().showEditor(program.firstTemplate());
        break;
    case Place::Confirmation:
        program.window().showEditor(program.firstTemplate());
        program.click("nextButton");
        break;
    }
}

void TestMainWindow::pages_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("visiblePage");
    QTest::addColumn<bool>("exitVisible");
    QTest::addColumn<bool>("backVisible");
    QTest::addColumn<QString>("nextText"); // empty: Next hidden
    QTest::addColumn<bool>("editorActions");

    QTest::newRow("start page") << Place::StartPage << kWelcome << "WizardForm" << true << false << ""
                                << false;
    QTest::newRow("Ctrl+N opens the template chooser")
        << Place::TemplateChooser
        << "Select an item from the drop-down list as template for your custom profile."
        << "WizardForm" << true << true << "Create" << false;
    QTest::newRow("editor") << Place::Editor << kEditorPrompt << "EditorForm" << false << true << "Next"
                            << true;
    QTest::newRow("confirmation") << Place::Confirmation << kConfirmPrompt << "CustomForm" << true << true
                                  << "Program the CDI" << false;
}

void TestMainWindow::pages()
{
    QFETCH(Place, place);
    QFETCH(QString, prompt);
    QFETCH(QString, visiblePage);
    QFETCH(bool, exitVisible);
    QFETCH(bool, backVisible);
    QFETCH(QString, nextText);
    QFETCH(bool, editorActions);

    Program program;
    QVERIFY(program.ready());
    goTo(program, place);

    QCOMPARE(program.window().windowTitle(), QStringLiteral("Sparkwright"));
    QCOMPARE(program.prompt(), prompt);
    const QList<QWidget *> pages {program.window().findChild<WizardForm *>(),
        program.window().findChild<EditorForm *>(), program.window().findChild<CustomForm *>()};
    for (QWidget *page : pages)
        QCOMPARE(page->isVisible(), QLatin1String(page->metaObject()->className()) == visiblePage);
    QCOMPARE(program.button("exitButton")->isVisible(), exitVisible);
    QCOMPARE(program.button("backButton")->isVisible(), backVisible);
    QCOMPARE(program.button("nextButton")->isVisible(), !nextText.isEmpty());
    if (!nextText.isEmpty())
        QCOMPARE(program.button("nextButton")->text(), nextText);
    for (const char *name : {"actionSaveAs", "actionReset", "actionExport", "actionPrint"})
        QCOMPARE(program.child<QAction>(name)->isEnabled(), editorActions);
    for (const char *name : {"actionNew", "actionOpen", "actionImport", "actionExit", "actionAbout"})
        QVERIFY(program.child<QAction>(name)->isEnabled());
}

void TestMainWindow::editorShortcutsActOnlyOnTheEditor_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("onEditor");
    QTest::addColumn<QString>("shown"); // the dialog title, or the prompt of the page reached

    QTest::newRow("Ctrl+S off the editor") << int(Qt::Key_S) << false << kWelcome;
    QTest::newRow("Ctrl+Z off the editor") << int(Qt::Key_Z) << false << kWelcome;
    QTest::newRow("Ctrl+W off the editor") << int(Qt::Key_W) << false << kWelcome;
    QTest::newRow("Ctrl+P off the editor") << int(Qt::Key_P) << false << kWelcome;
    QTest::newRow("Ctrl+S saves") << int(Qt::Key_S) << true << "Save CDI profile";
    QTest::newRow("Ctrl+Z resets") << int(Qt::Key_Z) << true << "Reset profile";
    QTest::newRow("Ctrl+W programs") << int(Qt::Key_W) << true << kConfirmPrompt;
    QTest::newRow("Ctrl+P prints") << int(Qt::Key_P) << true << "Print PDF";
}

void TestMainWindow::editorShortcutsActOnlyOnTheEditor()
{
    QFETCH(int, key);
    QFETCH(bool, onEditor);
    QFETCH(QString, shown);

    Program program;
    QVERIFY(program.ready());
    if (onEditor)
        goTo(program, Place::Editor);
    const QString before = program.prompt();
    QTest::keyClick(&program.window(), Qt::Key(key), Qt::ControlModifier);

    if (program.prompts.shown.isEmpty()) {
        QCOMPARE(program.prompt(), shown);
        QCOMPARE(program.prompt() == before, !onEditor);
    } else {
        QVERIFY(onEditor);
        QCOMPARE(program.prompts.titles(), QStringList {shown});
    }
}

void TestMainWindow::backAndNextFollowThePages()
{
    Program program;
    QVERIFY(program.ready());
    goTo(program, Place::Editor);

    program.click("nextButton");
    QCOMPARE(program.prompt(), QString::fromLatin1(kConfirmPrompt));
    QCOMPARE(program.window().findChild<CustomForm *>()->profile().name(), program.firstTemplate().name());
    program.click("backButton");
    QCOMPARE(program.prompt(), QString::fromLatin1(kEditorPrompt));
    program.click("backButton");
    QCOMPARE(program.prompt(), QString::fromLatin1(kWelcome));
    QVERIFY(program.prompts.shown.isEmpty()); // nothing was changed, so nothing was asked
}

void TestMainWindow::deviceRequestsSayTheyAreNotAvailable_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("Program the CDI on the confirmation page") << "confirm";
    QTest::newRow("Import from CDI in the menu") << "import";
}

void TestMainWindow::deviceRequestsSayTheyAreNotAvailable()
{
    QFETCH(QString, how);
    Program program;
    QVERIFY(program.ready());
    if (how == QLatin1String("confirm")) {
        goTo(program, Place::Confirmation);
        program.click("nextButton");
    } else {
        QTest::keyClick(&program.window(), Qt::Key_R, Qt::ControlModifier);
    }
    QCOMPARE(program.prompts.shown.size(), 1);
    QCOMPARE(program.prompts.shown.at(0).kind, QStringLiteral("inform"));
    QCOMPARE(program.prompts.shown.at(0).title, QStringLiteral("Connection to the CDI"));
    QVERIFY(program.window().isVisible());
}

void TestMainWindow::openFlow_data()
{
    QTest::addColumn<QByteArray>("content"); // null: the dialog was cancelled
    QTest::addColumn<QString>("warning");
    QTest::addColumn<QString>("prompt");

    Profile saved;
    saved.setName(QStringLiteral("Race tune"));
    QTest::newRow("a profile file") << profileFileBytes(saved) << "" << kEditorPrompt;
    QTest::newRow("an unreadable file")
        << QByteArray("not a profile at all") << "CDI profile could not be loaded." << kWelcome;
    QTest::newRow("an empty file") << QByteArray("") << "CDI profile could not be loaded." << kWelcome;
    QTest::newRow("cancelled") << QByteArray() << "" << kWelcome;
}

void TestMainWindow::openFlow()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, warning);
    QFETCH(QString, prompt);

    Program program;
    QVERIFY(program.ready());
    const QString path = m_folder.filePath(QStringLiteral("opened.cdi"));
    if (!content.isNull()) {
        QVERIFY(writeAll(path, content));
        program.prompts.fileAnswers.append(path);
    }
    QTest::keyClick(&program.window(), Qt::Key_O, Qt::ControlModifier);

    QCOMPARE(program.prompts.shown.at(0).kind, QStringLiteral("open"));
    QCOMPARE(program.prompts.shown.at(0).title, QStringLiteral("Open CDI profile"));
    QCOMPARE(program.prompts.shown.at(0).text, QStringLiteral("CDI profiles (*.cdi)"));
    if (warning.isEmpty()) {
        QCOMPARE(program.prompts.shown.size(), 1);
    } else {
        QCOMPARE(program.prompts.shown.size(), 2);
        QCOMPARE(program.prompts.shown.at(1).kind, QStringLiteral("warn"));
        QCOMPARE(program.prompts.shown.at(1).text, warning);
    }
    QCOMPARE(program.prompt(), prompt);
    if (prompt == QLatin1String(kEditorPrompt))
        QCOMPARE(program.window().findChild<EditorForm *>()->profile().name(), QStringLiteral("Race tune"));
}

void TestMainWindow::saveAndPrintFlows_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("target"); // "new", "read-only", "missing folder", "read-only folder"
    QTest::addColumn<QString>("message");

    for (const auto &[key, name, heading] : {std::make_tuple(int(Qt::Key_S), "save", "Saving profile failed"),
             std::make_tuple(int(Qt::Key_P), "print", "Printing PDF failed")}) {
        const QString failed = QLatin1String(heading) + QLatin1String(":\n\n");
        QTest::addRow("%s into a new file", name) << key << "new"
                                                  << "";
        QTest::addRow("%s over an older file", name) << key << "older"
                                                     << "";
        QTest::addRow("%s over a read-only file", name)
            << key << "read-only" << failed + "could not overwrite file";
        QTest::addRow("%s into a missing folder", name)
            << key << "missing folder" << failed + "could not write to file";
        QTest::addRow("%s into a read-only folder", name)
            << key << "read-only folder" << failed + "could not write to file";
    }
}

void TestMainWindow::saveAndPrintFlows()
{
    QFETCH(int, key);
    QFETCH(QString, target);
    QFETCH(QString, message);

    const bool printing = key == Qt::Key_P;
    if (target == QLatin1String("read-only folder") && geteuid() == 0)
        QSKIP("the superuser writes into read-only folders");
    QTemporaryDir folder;
    QString path = folder.filePath(printing ? QStringLiteral("sheet.pdf") : QStringLiteral("mine.cdi"));
    const QByteArray old("the file that was there before");
    if (target == QLatin1String("older") || target == QLatin1String("read-only")) {
        QVERIFY(writeAll(path, old));
        if (target == QLatin1String("read-only"))
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser));
    } else if (target == QLatin1String("missing folder")) {
        path = folder.filePath(QStringLiteral("gone/mine.cdi"));
    } else if (target == QLatin1String("read-only folder")) {
        QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    }

    Program program;
    QVERIFY(program.ready());
    goTo(program, Place::Editor);
    program.prompts.fileAnswers.append(path);
    QTest::keyClick(&program.window(), Qt::Key(key), Qt::ControlModifier);

    const ScriptedPrompts::Shown dialog = program.prompts.shown.value(0);
    QCOMPARE(dialog.kind, QStringLiteral("save"));
    QCOMPARE(dialog.title, printing ? QStringLiteral("Print PDF") : QStringLiteral("Save CDI profile"));
    QCOMPARE(
        dialog.text, printing ? QStringLiteral("PDF files (*.pdf)") : QStringLiteral("CDI profiles (*.cdi)"));
    const QString suggested = program.firstTemplate().name() + (printing ? ".pdf" : ".cdi");
    QCOMPARE(dialog.buttons, QStringList {suggested});

    if (message.isEmpty()) {
        QCOMPARE(program.prompts.shown.size(), 1);
        const QByteArray written = readAll(path);
        if (printing) {
            QVERIFY(written.startsWith("%PDF"));
        } else {
            std::optional<Profile> readBack = readProfileFile(path);
            QVERIFY(readBack);
            QCOMPARE(readBack->name(), program.firstTemplate().name());
            QCOMPARE(readBack->map(), program.firstTemplate().map());
        }
    } else {
        QCOMPARE(program.prompts.shown.size(), 2);
        QCOMPARE(program.prompts.shown.at(1).kind, QStringLiteral("warn"));
        QCOMPARE(program.prompts.shown.at(1).title, dialog.title);
        QCOMPARE(program.prompts.shown.at(1).text, message);
        QCOMPARE(program.prompts.shown.at(1).buttons, QStringList {"OK"});
        if (target == QLatin1String("read-only"))
            QCOMPARE(readAll(path), old);
        else
            QVERIFY(!QFile::exists(path));
    }
    QCOMPARE(program.prompt(), QString::fromLatin1(kEditorPrompt));
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void TestMainWindow::suggestedFileNames_data()
{
    QTest::addColumn<QString>("profileName");
    QTest::addColumn<QString>("fileName");

    QTest::newRow("plain") << "Two-stroke 125 cc"
                           << "Two-stroke 125 cc";
    QTest::newRow("path separators") << "road/track\\wet"
                                     << "road_track_wet";
    QTest::newRow("characters Windows refuses") << "a<b>c:d\"e|f?g*h"
                                                << "a_b_c_d_e_f_g_h";
    QTest::newRow("control characters") << "line\tone\ntwo"
                                        << "line_one_two";
    QTest::newRow("blanks and dots at the ends") << "  . tuned. . "
                                                 << "tuned";
    QTest::newRow("nothing but dots") << "..."
                                      << "profile";
    QTest::newRow("empty") << ""
                           << "profile";
    QTest::newRow("device name") << "con"
                                 << "con_";
    QTest::newRow("device name with extension") << "LPT1.old"
                                                << "LPT1_.old";
    QTest::newRow("device name inside a word") << "CONSOLE"
                                               << "CONSOLE";
    QTest::newRow("letters beyond ASCII stay") << "Zündung früh"
                                               << "Zündung früh";
    QTest::newRow("long names are cut") << QString(100, QLatin1Char('x')) << QString(80, QLatin1Char('x'));
    QTest::newRow("a cut never splits a character")
        << QString(79, QLatin1Char('x')) + QString::fromUtf8("\xF0\x9F\x94\xA5") + "tail"
        << QString(79, QLatin1Char('x'));
}

void TestMainWindow::suggestedFileNames()
{
    QFETCH(QString, profileName);
    QFETCH(QString, fileName);
    QCOMPARE(suggestedFileName(profileName, QStringLiteral("profile")), fileName);
}

void TestMainWindow::missingUpdaterIsReported()
{
    Program program;
    QVERIFY(program.ready());
    program.child<QAction>("actionUpdate")->trigger();

    const QString expectedPath
        = QCoreApplication::applicationDirPath() + QLatin1String("/SparkwrightUpdater");
    QCOMPARE(program.prompts.shown.size(), 1);
    QCOMPARE(program.prompts.shown.at(0).kind, QStringLiteral("warn"));
    QCOMPARE(program.prompts.shown.at(0).title, QStringLiteral("Update Failed"));
    QCOMPARE(program.prompts.shown.at(0).text,
        QStringLiteral("Could not launch updater (file is inaccessible: %1).").arg(expectedPath));
    QCOMPARE(program.prompts.shown.at(0).buttons, QStringList {"Close"});
    QVERIFY(program.window().isVisible());
}

void TestMainWindow::webLinks_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("germanPath"); // what the translation gives
    QTest::addColumn<QString>("german");

    QTest::newRow("technical specification") << "actionTechnicalSpecifications"
                                             << "https://sparkwright.example/en/technical-specifications"
                                             << "de/technische-daten"
                                             << "https://sparkwright.example/de/technische-daten";
    QTest::newRow("programming") << "actionProgrammableCDIs"
                                 << "https://sparkwright.example/en/programmable-cdi"
                                 << "de/programmierbare-cdi"
                                 << "https://sparkwright.example/de/programmierbare-cdi";
    QTest::newRow("facts") << "actionTrivia"
                           << "https://sparkwright.example/en/facts-worth-knowing-about-ignition"
                           << "de/wissenswertes"
                           << "https://sparkwright.example/de/wissenswertes";
    QTest::newRow("questions") << "actionFAQ"
                               << "https://sparkwright.example/en/frequently-asked-questions"
                               << "de/haeufige-fragen"
                               << "https://sparkwright.example/de/haeufige-fragen";
    QTest::newRow("visit us, the whole address translated") << "actionVisitUs"
                                                            << "http://sparkwright.example/en"
                                                            << "http://sparkwright.example/de"
                                                            << "http://sparkwright.example/de";
    QTest::newRow("contact") << "actionContactUs"
                             << "https://sparkwright.example/en/contact"
                             << "de/kontakt"
                             << "https://sparkwright.example/de/kontakt";
}

void TestMainWindow::webLinks()
{
    QFETCH(QString, action);
    QFETCH(QString, english);
    QFETCH(QString, germanPath);
    QFETCH(QString, german);

    Program program;
    QVERIFY(program.ready());
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &catcher, "take");
    QDesktopServices::setUrlHandler(QStringLiteral("http"), &catcher, "take");
    QAction *link = program.child<QAction>(qPrintable(action));
    link->trigger();

    SmallTranslator translator;
    const QStringList sources {"en/technical-specifications", "en/programmable-cdi",
        "en/facts-worth-knowing-about-ignition", "en/frequently-asked-questions",
        "http://sparkwright.example/en", "en/contact"};
    for (const QString &source : sources) {
        if (QUrl(english).toString().endsWith(source))
            translator.texts.insert(qMakePair(QByteArray("CWebLinks"), source.toLatin1()), germanPath);
    }
    QCoreApplication::installTranslator(&translator);
    link->trigger();
    QCoreApplication::removeTranslator(&translator);
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("http"));

    QCOMPARE(catcher.urls, (QList<QUrl> {QUrl(english), QUrl(german)}));
    if (action == QLatin1String("actionVisitUs"))
        QCOMPARE(link->text(), QStringLiteral("Visit us on sparkwright.example"));
}

void TestMainWindow::aboutBox()
{
    Program program;
    QVERIFY(program.ready());
    program.child<QAction>("actionAbout")->trigger();

    AboutDialog &about = program.windows->aboutDialog();
    QVERIFY(QTest::qWaitForWindowExposed(&about));
    QVERIFY(about.isModal());
    QCOMPARE(about.windowTitle(), QStringLiteral("About"));
    QCOMPARE(about.findChild<QLabel *>(QStringLiteral("titleLabel"))->text(), QStringLiteral("Sparkwright"));
    QCOMPARE(
        about.findChild<QLabel *>(QStringLiteral("versionLabel"))->text(), QStringLiteral("Version 0.95.1"));
    const QString library = about.findChild<QLabel *>(QStringLiteral("libraryLabel"))->text();
    QVERIFY2(
        library.contains(libraryNumberText(program.data.library()->libraryValue())), qPrintable(library));
    QVERIFY(about.findChild<QLabel *>(QStringLiteral("copyrightLabel"))
                ->text()
                .contains(QStringLiteral("Sparkwright")));
    QTest::mouseClick(about.findChild<QPushButton *>(QStringLiteral("closeButton")), Qt::LeftButton);
    QVERIFY(!about.isVisible());
}

// The program's own event loop ends with 0. A loop that is still running after the click ends
// with 7 through the call queued behind it.
void TestMainWindow::exitEndsTheProgramWithZero()
{
    Program program;
    QVERIFY(program.ready());
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&program, &loop] {
        program.click("exitButton");
        QTimer::singleShot(0, &loop, [&loop] { loop.exit(7); });
    });
    QCOMPARE(loop.exec(), 0);
}

// The version and names are painted into the banner, above the drawing.
void TestMainWindow::bannerCarriesTheVersion()
{
    Program program;
    QVERIFY(program.ready());
    const QImage shown = program.child<QLabel>("imageLabelMid")->pixmap(Qt::ReturnByValue).toImage();
    const QImage plain = QImage(QStringLiteral(":/Images/wizflash.png")).convertToFormat(shown.format());
    QCOMPARE(shown.size(), plain.size());
    int changed = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            if (shown.pixel(x, y) != plain.pixel(x, y)) {
                QVERIFY2(y >= 15 && y <= 85, "painted outside the text lines");
                ++changed;
            }
        }
    }
    QVERIFY(changed > 500);
}

void TestMainWindow::languageSwitchReachesTheFrame()
{
    Program program;
    QVERIFY(program.ready());
    goTo(program, Place::Confirmation);
    SmallTranslator translator;
    const auto german = [&translator](const char *source, const char *translation) {
        translator.texts.insert(
            qMakePair(QByteArray("MainWindow"), QByteArray(source)), QString::fromUtf8(translation));
    };
    german(kConfirmPrompt, "Bitte bestätigen Sie.");
    german("Program the CDI", "CDI programmieren");
    german("Profile", "Profil");
    german("Back", "Zurück");
    QCoreApplication::installTranslator(&translator);
    program.switcher.setLanguage(CLanguageSwitcher::kEnglish); // tells every listener
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(program.prompt(), QStringLiteral("Bitte bestätigen Sie."));
    QCOMPARE(program.button("nextButton")->text(), QStringLiteral("CDI programmieren"));
    QCOMPARE(program.child<QMenu>("menuProfile")->title(), QStringLiteral("Profil"));
    QCOMPARE(program.button("backButton")->text(), QStringLiteral("Zurück"));
    QVERIFY(program.button("exitButton")->isVisible());
    QVERIFY(!program.child<QAction>("actionSaveAs")->isEnabled());
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
