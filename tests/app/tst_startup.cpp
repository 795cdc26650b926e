// The program's start: data files, version query, single copy, start language, the disclaimer
// gate with the places its acceptance is kept, and the main window (the pages it makes later
// follow the language in tst_mainwindow's languageSwitchReachesEveryPage). The
// steps up to the main window run in-process on the offscreen platform, with the user's answers
// given through the modal-step seam; exit codes and the single-copy guard are checked on the
// built program.
#include "cstartup.h"
#include "dialogs/disclaimerdialog.h"
#include "errorgui.h"
#include "mainwindow.h"
#include "profile/profilefile.h"
#include "programversion.h"
#include "support/layoutencoder.h"
#include "support/widgettestmain.h"

#include <QDir>
#include <QProcess>
#include <QPushButton>
#include <QTextEdit>

#include <functional>
#include <vector>

namespace {

const QByteArray kLibrary = handContainer({libraryHeader(QStringLiteral("def"), 12)});
const QByteArray kHints = handContainer(
    {hintsRecord(3, 1, 1, 2, {"Voltage", "The charging voltage.", "Spannung", "Die Ladespannung."})});
const QByteArray kAccepted = framed(tInt(1));
// The built program's own answer: its library and hints (data/*.json) are number 1.
const QByteArray kManifest
    = QStringLiteral("Sparkwright.exe;%1#default.cds;1#lang_de.qm;%1#Qt5PrintSupport.dll;1#"
                     "hints.cdh;1\n")
          .arg(kProgramVersionNumber)
          .toUtf8();
// What another user could leave in a folder the program is started from.
const QByteArray kPlanted = handContainer({libraryHeader(QStringLiteral("planted"), 66)});

const QString kBuildDir = qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR");

// Answers in the user's place and notes what the user would have seen.
class ScriptedSteps : public IModalSteps
{
public:
    QString answer = QStringLiteral("decline"); // to the disclaimer; else "once" or "for good"
    QStringList seen; // each window the user met, with its title
    std::function<void(MainWindow &)> inMainWindow = [](MainWindow &) {};

    void waitForErrorWindow(ErrorGui &window) override
    {
        const QString text = window.findChild<QTextEdit *>(QStringLiteral("textEdit"))->toPlainText();
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("pushButtonClose")), Qt::LeftButton);
        seen << window.windowTitle() + QLatin1String(window.isVisible() ? " (not closed): " : ": ")
                + QString(text).replace(QChar::LineSeparator, QLatin1Char('\n'));
    }

    int runDisclaimer(DisclaimerDialog &dialog) override
    {
        dialog.show();
        seen << dialog.windowTitle();
        if (answer == QLatin1String("for good"))
            WidgetTest::clickCheckBox(dialog.findChild<QCheckBox *>(QStringLiteral("checkBox")));
        const char *button = answer == QLatin1String("decline") ? "declineButton" : "acceptButton";
        QTest::mouseClick(dialog.findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
        return dialog.isVisible() ? QDialog::Rejected : dialog.result();
    }

    int runMainWindow(MainWindow &window) override
    {
        seen << window.windowTitle() + QLatin1String(window.isVisible() ? "" : " (hidden)");
        inMainWindow(window);
        return 7; // the main window's own exit code
    }
};

// A copy of the built program, started the way a user starts it.
struct ProgramCopy
{
    ProgramCopy(
        const QProcessEnvironment &environment, const QStringList &arguments = {}, const QString &output = {})
    {
        process.setProcessEnvironment(environment);
        process.setStandardOutputFile(output);
        process.setReadChannel(QProcess::StandardError);
        process.start(kBuildDir + QLatin1String("/sparkwright"), arguments);
    }
    ~ProgramCopy() { killHard(); }
    void killHard() // SIGKILL: no clean-up of any kind
    {
        process.kill();
        process.waitForFinished();
    }
    // Waits until the copy is past the single-copy guard, where it goes on to load its translation
    // and says so, or has ended. The limit only ends a test whose program hangs.
    bool runs()
    {
        while (
            !errors.contains("lang_de.qm") && (process.bytesAvailable() || process.waitForReadyRead(120000)))
            errors += process.readAllStandardError();
        return errors.contains("lang_de.qm") && process.state() == QProcess::Running;
    }
    bool endedWell()
    {
        return !runs() && (process.state() == QProcess::NotRunning || process.waitForFinished())
            && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    QProcess process;
    QByteArray errors;
};

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void windowsMet_data();
    void windowsMet();
    void oneCopyAtATime();
    void secondCopyHandsOverItsFile();
    void terminalAnswers_data();
    void terminalAnswers();

private:
    int runStartup(ScriptedSteps &steps, QByteArrayList arguments = {}, const QString &locale = "en_US");
    QString path(const QString &name) const { return m_case->filePath(name); }
    QString userFolder() const { return path(QStringLiteral("data/sparkwright.example/Sparkwright")); }

    QString m_originalDirectory;
    std::unique_ptr<QTemporaryDir> m_case;
};

// Every case starts with a good installation: both data files and the translation beside the
// program ("program"), nothing accepted yet, and planted files of the same names in the working
// directory ("work"), which must never be read.
void TestStartup::init()
{
    m_originalDirectory = QDir::currentPath();
    m_case = std::make_unique<QTemporaryDir>();
    for (const char *folder : {"work", "program", "lock", "data"})
        QVERIFY(QDir(m_case->path()).mkdir(QLatin1String(folder)));
    // The copies started below take this as their runtime directory, which only counts when it
    // is the user's alone.
    QVERIFY(QFile::setPermissions(
        path(QStringLiteral("lock")), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("data"))));
    QVERIFY(writeFile(path(QStringLiteral("program/default.cds")), kLibrary));
    QVERIFY(writeFile(path(QStringLiteral("program/hints.cdh")), kHints));
    QVERIFY(
        QFile::copy(kBuildDir + QLatin1String("/lang_de.qm"), path(QStringLiteral("program/lang_de.qm"))));
    for (const char *planted : {"work/default.cds", "work/hints.cdh", "work/lang_de.qm"})
        QVERIFY(writeFile(path(QLatin1String(planted)), kPlanted));
    QVERIFY(QDir::setCurrent(path(QStringLiteral("work"))));
}

void TestStartup::cleanup()
{
    QDir::setCurrent(m_originalDirectory);
    m_case.reset();
}

int TestStartup::runStartup(ScriptedSteps &steps, QByteArrayList arguments, const QString &locale)
{
    arguments.prepend("sparkwright");
    std::vector<char *> argv;
    for (QByteArray &argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    int argc = int(arguments.size());
    return CStartup(steps, {path(QStringLiteral("program")), locale, path(QStringLiteral("lock"))})
        .run(argc, argv.data());
}

// What the user meets: a data file's error, then the disclaimer (in the start language) unless
// its acceptance is found in the user's folder (one beside the program never counts: it would
// answer for every user), then the main window; nothing for the version query, which is the exact
// "-v" alone. German surroundings start in German, all others in English. Accepted for good, the
// acceptance is written into the user's own folder, never beside the program, else nowhere: then
// the disclaimer is simply shown again at the next start.
void TestStartup::windowsMet_data()
{
    // The library, the hints, the acceptance beside the program and in the user's folder; a null
    // array: no file.
    QTest::addColumn<QByteArrayList>("files");
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("answer"); // to the disclaimer; "blocked": the user's folder cannot be made
    QTest::addColumn<QStringList>("seen"); // the windows' titles

    const QByteArray none;
    const auto row = [](const char *name, const QByteArrayList &files, const QStringList &seen,
                         const QByteArrayList &arguments = {}, const char *locale = "en_US",
                         const char *answer = "decline") {
        QTest::newRow(name) << files << arguments << QString::fromLatin1(locale)
                            << QString::fromLatin1(answer) << seen;
    };
    const auto found = [none](const QByteArray &inUserFolder) {
        return QByteArrayList {kLibrary, kHints, none, inUserFolder};
    };
    // The data files beside the program are reported even when the disclaimer was accepted
    // long ago, and in German surroundings in English: no translation is loaded yet. Which part of
    // a file its loader refuses shows in tst_profilefile.
    const QString error
        = QStringLiteral("Sparkwright - Error Message: %1 could not be loaded. The source file is "
                         "either missing or corrupted or was created for a newer version of "
                         "Sparkwright.\n\nSource file: %2");
    const QStringList hints {error.arg("Hints", "hints.cdh")},
        library {error.arg("The default CDI profiles", "default.cds")};
    const QStringList disclaimer {"Disclaimer"}, both {"Disclaimer", "Sparkwright"};
    row("hints refused", {kLibrary, "garbage", none, kAccepted}, hints, {}, "de_DE");
    row("both missing, only the library named", {none, none, none, kAccepted}, library, {}, "de_DE");
    row("version query, hints missing", {kLibrary, none, none, none}, hints, {"-v"});

    row("no acceptance file", found(none), disclaimer);
    row("accepted, but another marker than U", found('X' + kAccepted.mid(1)), disclaimer);
    row("integer 0", found(framed(tInt(0))), disclaimer);
    row("frame longer than the file", found(QByteArray::fromHex("550900006901000000")), disclaimer);
    row("accepted, more bytes after the frame", found(kAccepted + QByteArray(100, 'x')), {"Sparkwright"});
    row("accepted beside the program only", {kLibrary, kHints, kAccepted, none}, disclaimer);
    row("version query", found(none), {}, {"-v"});
    row("-v twice", found(none), disclaimer, {"-v", "-v"});
    row("-vx", found(none), disclaimer, {"-vx"});
    row("de_AT", found(none), {"Haftungsausschluss"}, {}, "de_AT");
    row("accepted this once", found(none), both, {}, "en_US", "once");
    row("accepted for good", found(none), both, {}, "en_US", "for good");
    row("for good, the user's folder cannot be made", found(none), both, {}, "en_US", "blocked");
}

void TestStartup::windowsMet()
{
    QFETCH(QByteArrayList, files);
    QFETCH(QByteArrayList, arguments);
    QFETCH(QString, locale);
    QFETCH(QString, answer);
    QFETCH(QStringList, seen);
    // Blocked: a file where the user folder's parent should be.
    QVERIFY(answer == QLatin1String("blocked")
            ? writeFile(path(QStringLiteral("data/sparkwright.example")), "in the way")
            : QDir().mkpath(userFolder()));
    const QString places[] {path(QStringLiteral("program/default.cds")),
        path(QStringLiteral("program/hints.cdh")), path(QStringLiteral("program/disclaimer.a")),
        userFolder() + QLatin1String("/disclaimer.a")};
    for (int i = 0; i < 4; ++i)
        QVERIFY(writeFile(places[i], files[i]));

    ScriptedSteps steps;
    steps.answer = answer == QLatin1String("blocked") ? QStringLiteral("for good") : answer;
    // The version query ends well, an error or a declined disclaimer badly, else the main window's
    // code counts.
    QCOMPARE(runStartup(steps, arguments, locale), seen.isEmpty() ? 0 : seen.last() == "Sparkwright" ? 7 : 1);
    QCOMPARE(steps.seen, seen);
    QCOMPARE(readFile(places[2]), files[2]);
    QCOMPARE(readFile(places[3]), answer == QLatin1String("for good") ? kAccepted : files[3]);
}

// Of copies started together one runs and the other ends at once and silently, while the version
// query still answers. A copy killed without any clean-up leaves a stale lock, which the next copy
// takes over and guards in its turn.
void TestStartup::oneCopyAtATime()
{
    // The offscreen platform and the data folder come from this process.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("lock")));
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("sparkwright.language.debug=true"));
    ProgramCopy copies[2] {ProgramCopy(environment), ProgramCopy(environment)};
    ProgramCopy query(environment, {QStringLiteral("-v")});
    ProgramCopy &running = copies[0].runs() ? copies[0] : copies[1];
    ProgramCopy &other = &running == &copies[0] ? copies[1] : copies[0];
    QVERIFY2(running.runs(), running.errors.constData());
    // Started from a folder with planted data files, it reads its own.
    QVERIFY2(running.errors.contains("loaded " + QFile::encodeName(kBuildDir) + "/lang_de.qm"),
        running.errors.constData());
    QVERIFY2(other.endedWell() && other.process.readAllStandardOutput().isEmpty(), other.errors.constData());
    QVERIFY(query.endedWell());
    QCOMPARE(query.process.readAllStandardOutput(), kManifest);
    // The lock lies in the user's own runtime directory, not in a place all users share.
    QCOMPARE(QDir(path(QStringLiteral("lock"))).entryList(QDir::Files).size(), 1);
    running.killHard();
    ProgramCopy next(environment);
    QVERIFY2(next.runs(), next.errors.constData());
    QVERIFY(ProgramCopy(environment).endedWell());
}

// A second copy started for a profile file (a double click on it in the file manager) leaves it
// to the running copy, which opens it, and ends as silently as ever.
void TestStartup::secondCopyHandsOverItsFile()
{
    QVERIFY(QDir().mkpath(userFolder()) && writeFile(userFolder() + QLatin1String("/disclaimer.a"), kAccepted));
    Profile profile;
    profile.setName(QStringLiteral("Handed over"));
    const QString file = path(QStringLiteral("work/handed over.cdi"));
    QVERIFY(saveProfileFile(profile, file));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("lock")));
    ScriptedSteps steps;
    steps.inMainWindow = [&](MainWindow &window) {
        ProgramCopy second(environment, {file});
        QVERIFY2(second.endedWell() && second.process.readAllStandardOutput().isEmpty(), second.errors.constData());
        QTRY_COMPARE(window.windowTitle(), QStringLiteral("Handed over (handed over.cdi)[*] - Sparkwright"));
        // Read once and gone: only the lock is left.
        QCOMPARE(QDir(path(QStringLiteral("lock"))).entryList(QDir::Files).size(), 1);
    };
    QCOMPARE(runStartup(steps), 7);
}

// Answered on the terminal without a display, started from the folder with the planted files;
// an answer that cannot be written is a failure.
void TestStartup::terminalAnswers_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<bool>("toFullDisk");
    QTest::addColumn<QByteArray>("output"); // the start of it
    QTest::newRow("help") << "--help" << false
                          << QByteArray("Usage: sparkwright [FILE.cdi | -v | --help | --version]\n");
    QTest::newRow("version") << "--version" << false
                             << QByteArray("sparkwright ") + kProgramVersionText + '\n';
    QTest::newRow("manifest into a full disk") << "-v" << true << QByteArray();
}

void TestStartup::terminalAnswers()
{
    QFETCH(QString, argument);
    QFETCH(bool, toFullDisk);
    QFETCH(QByteArray, output);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *display : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        environment.remove(QLatin1String(display));
    ProgramCopy copy(environment, {argument}, toFullDisk ? QStringLiteral("/dev/full") : QString());
    QProcess &process = copy.process;
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), toFullDisk ? 1 : 0);
    QVERIFY(process.readAllStandardOutput().startsWith(output));
    QCOMPARE(process.readAllStandardError().contains("No space left on device"), toFullDisk);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
