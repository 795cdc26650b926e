// The program's start: data files, version query, single copy, start language, the disclaimer
// gate with the places its acceptance is kept, and main window. The steps up to the main window run
// in-process on the offscreen platform, with the user's answers given through the modal-step seam; exit codes
// and the single-copy guard are checked on the built program.
#include "app/cfilemanifest.h"
#include "app/cstartup.h"
#include "app/errorgui.h"
#include "dialogs/disclaimerdialog.h"
#include "frame/mainwindow.h"
#include "tests/layoutencoder.h"
#include "tests/widgettestmain.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextEdit>

#include <vector>

namespace {

QByteArray libraryFile(qint32 libraryValue, const QString &magic = QStringLiteral("def"))
{
    return handContainer({libraryHeader(magic, 1, libraryValue)});
}

const QStringList kHintTexts {"Voltage", "The charging voltage.", "Spannung", "Die Ladespannung."};
const QByteArray kHints = handContainer({hintsRecord(3, 1, 1, 2, kHintTexts)});
const QByteArray kAccepted = framed(tInt(1));
const QByteArray kManifest
    = "Sparkwright.exe;9501#default.cds;12#lang_de.qm;9501#Qt5PrintSupport.dll;1#hints.cdh;3\n";

void writeFile(const QString &path, const QByteArray &bytes) // a null array: no file
{
    QFile::remove(path);
    QFile file(path);
    QVERIFY(bytes.isNull() || (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()));
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString buildDir()
{
    return qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR");
}

// Answers in the user's place and notes what the user would have seen.
class ScriptedSteps : public IModalSteps
{
public:
    enum class Answer
    {
        Decline,
        AcceptOnce,
        AcceptForGood
    };

    Answer answer = Answer::Decline;
    int mainLoopResult = 0;
    QStringList seen; // each window the user met, with its title

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
        const auto button
            = [&dialog](const char *name) { return dialog.findChild<QPushButton *>(QLatin1String(name)); };
        if (answer == Answer::Decline)
            QTest::mouseClick(button("declineButton"), Qt::LeftButton);
        if (answer == Answer::AcceptForGood)
            WidgetTest::clickCheckBox(dialog.findChild<QCheckBox *>(QStringLiteral("checkBox")));
        if (answer == Answer::AcceptOnce || answer == Answer::AcceptForGood)
            QTest::mouseClick(button("acceptButton"), Qt::LeftButton);
        return dialog.isVisible() ? QDialog::Rejected : dialog.result();
    }

    int runMainWindow(MainWindow &window) override
    {
        seen << window.windowTitle() + QLatin1String(window.isVisible() ? "" : " (hidden)");
        return mainLoopResult;
    }
};

// A copy of the built program, started the way a user starts it.
struct ProgramCopy
{
    ProgramCopy(const QProcessEnvironment &environment, const QStringList &arguments = {})
    {
        process.setProcessEnvironment(environment);
        process.setReadChannel(QProcess::StandardError);
        process.start(buildDir() + QLatin1String("/sparkwright"), arguments);
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
        while (!errors.contains("loading lang_de.qm")
            && (process.bytesAvailable() || process.waitForReadyRead(120000)))
            errors += process.readAllStandardError();
        return errors.contains("loading lang_de.qm") && process.state() == QProcess::Running;
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

Q_DECLARE_METATYPE(ScriptedSteps::Answer)

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void dataFileErrors_data();
    void dataFileErrors();
    void firstWindow_data();
    void firstWindow();
    void disclaimerAnswers_data();
    void disclaimerAnswers();
    void manifestEntry();
    void oneCopyAtATime();

private:
    int runStartup(ScriptedSteps &steps, const QStringList &arguments = {}, const QString &locale = "en_US");
    QString path(const QString &name) const { return m_case->filePath(name); }
    QString userFolder() const { return path(QStringLiteral("data/sparkwright.example/Sparkwright")); }
    QProcessEnvironment childEnvironment() const;

    QString m_originalDirectory;
    std::unique_ptr<QTemporaryDir> m_case;
    QString m_programFolder;
};

void TestStartup::initTestCase()
{
    QVERIFY2(QFile::exists(buildDir() + QLatin1String("/lang_de.qm")), "the German translation is not built");
    m_originalDirectory = QDir::currentPath();
}

// Every case starts with a good installation: both data files and the translation in the
// working directory ("work"), nothing accepted yet beside the program ("program").
void TestStartup::init()
{
    m_case = std::make_unique<QTemporaryDir>();
    QVERIFY(m_case->isValid());
    for (const char *folder : {"work", "program", "lock", "data"})
        QVERIFY(QDir(m_case->path()).mkdir(QLatin1String(folder)));
    // The copies started below take this as their runtime directory, which only counts when it
    // is the user's alone.
    QVERIFY(QFile::setPermissions(
        path(QStringLiteral("lock")), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("data"))));
    m_programFolder = path(QStringLiteral("program"));
    writeFile(path(QStringLiteral("work/default.cds")), libraryFile(12));
    writeFile(path(QStringLiteral("work/hints.cdh")), kHints);
    QVERIFY(QFile::copy(buildDir() + QLatin1String("/lang_de.qm"), path(QStringLiteral("work/lang_de.qm"))));
    QVERIFY(QDir::setCurrent(path(QStringLiteral("work"))));
}

void TestStartup::cleanup()
{
    QDir::setCurrent(m_originalDirectory);
    m_case.reset();
}

int TestStartup::runStartup(ScriptedSteps &steps, const QStringList &arguments, const QString &locale)
{
    QByteArrayList storage {"sparkwright"};
    for (const QString &argument : arguments)
        storage.append(argument.toLocal8Bit());
    std::vector<char *> argv;
    for (QByteArray &argument : storage)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    int argc = int(storage.size());
    CStartup startup(steps, {m_programFolder, locale, path(QStringLiteral("lock"))});
    return startup.run(argc, argv.data());
}

void TestStartup::dataFileErrors_data()
{
    QTest::addColumn<QByteArray>("library"); // a null array: no file at all
    QTest::addColumn<QByteArray>("hints");
    QTest::addColumn<bool>("versionQuery");
    QTest::addColumn<QString>("fileName");

    const QByteArray good = libraryFile(12);
    const QByteArray none;
    const QByteArray shortHints = handContainer({hintsRecord(3, 1, 1, 2, kHintTexts.mid(0, 3))});
    QTest::newRow("library missing") << none << kHints << false << "default.cds";
    QTest::newRow("library header refused") << libraryFile(12, "DEF") << kHints << false << "default.cds";
    QTest::newRow("library profile refused")
        << handContainer({libraryHeader(), "garbage"}) << kHints << false << "default.cds";
    QTest::newRow("hints missing") << good << none << false << "hints.cdh";
    QTest::newRow("hints refused, a text missing") << good << shortHints << false << "hints.cdh";
    QTest::newRow("both missing names only the library") << none << none << false << "default.cds";
    QTest::newRow("version query, hints missing") << good << none << true << "hints.cdh";
}

void TestStartup::dataFileErrors()
{
    QFETCH(QByteArray, library);
    QFETCH(QByteArray, hints);
    QFETCH(bool, versionQuery);
    QFETCH(QString, fileName);
    writeFile(QStringLiteral("default.cds"), library);
    writeFile(QStringLiteral("hints.cdh"), hints);
    // The files in the working directory are the ones read, not those in the program's folder
    // for the disclaimer; they are reported even when the disclaimer was accepted long ago.
    writeFile(path(QStringLiteral("program/default.cds")), libraryFile(12));
    writeFile(path(QStringLiteral("program/hints.cdh")), kHints);
    writeFile(path(QStringLiteral("program/disclaimer.a")), kAccepted);

    ScriptedSteps steps;
    // In German surroundings, too, the message appears in English: no translation is loaded yet.
    QCOMPARE(
        runStartup(steps, versionQuery ? QStringList {"-v"} : QStringList(), QStringLiteral("de_DE")), 1);
    const QString what = fileName == QLatin1String("hints.cdh") ? QStringLiteral("Hints")
                                                                : QStringLiteral("The default CDI profiles");
    QCOMPARE(steps.seen,
        QStringList {"Sparkwright - Error Message: " + what
            + " could not be loaded. The source file is either missing or corrupted or was created for a "
              "newer version of Sparkwright.\n\nSource file: "
            + fileName});
}

// What the user meets first: the disclaimer (in the start language) unless its acceptance is
// found, beside the program or in the user's folder, then the main window; nothing for the
// version query, which is the exact "-v" alone. German surroundings start in German, all others
// in English, and a German start leaves nothing behind that the next start would take up.
void TestStartup::firstWindow_data()
{
    QTest::addColumn<QByteArray>("besideProgram"); // a null array: no file
    QTest::addColumn<QByteArray>("inUserFolder");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("shown"); // the first window's title, none for the version query

    const QByteArray none;
    const auto row = [](const char *name, const QByteArray &besideProgram, const QByteArray &inUserFolder,
                         const char *shown, const QStringList &arguments = {}, const char *locale = "en_US") {
        QTest::newRow(name) << besideProgram << inUserFolder << arguments << QString::fromLatin1(locale)
                            << QString::fromLatin1(shown);
    };
    row("no acceptance file", none, none, "Disclaimer");
    row("foreign file", QByteArray("cdi\0\0\0", 6), none, "Disclaimer");
    row("integer 0", framed(tInt(0)), none, "Disclaimer");
    row("negative integer", framed(tInt(-1)), none, "Disclaimer");
    row("text instead of an integer", framed(tString(QStringLiteral("1"))), none, "Disclaimer");
    row("frame longer than the file", QByteArray::fromHex("550900006901000000"), none, "Disclaimer");
    row("accepted, more bytes after the frame", kAccepted + QByteArray(100, 'x'), none, "Sparkwright");
    row("foreign beside the program, accepted in the user's folder", framed(tInt(0)), kAccepted,
        "Sparkwright");
    row("zero in the user's folder", none, framed(tInt(0)), "Disclaimer");
    row("version query", none, none, "", {"-v"});
    for (const char *arguments : {"-v -v", "-vx", "-V", "--v"})
        row(arguments, none, none, "Disclaimer", QString::fromLatin1(arguments).split(' '));
    for (const char *locale : {"de_AT", "de_DE", "fr_FR", "C"})
        row(locale, none, none, locale[0] == 'd' ? "Haftungsausschluss" : "Disclaimer", {}, locale);
}

void TestStartup::firstWindow()
{
    QFETCH(QByteArray, besideProgram);
    QFETCH(QByteArray, inUserFolder);
    QFETCH(QStringList, arguments);
    QFETCH(QString, locale);
    QFETCH(QString, shown);
    writeFile(path(QStringLiteral("program/disclaimer.a")), besideProgram);
    QVERIFY(QDir().mkpath(userFolder()));
    writeFile(userFolder() + QLatin1String("/disclaimer.a"), inUserFolder);

    ScriptedSteps steps;
    steps.mainLoopResult = 7;
    // The version query ends well, a declined disclaimer badly, else the main window's code counts.
    QCOMPARE(runStartup(steps, arguments, locale), shown.isEmpty() ? 0 : shown == "Sparkwright" ? 7 : 1);
    QCOMPARE(steps.seen, shown.isEmpty() ? QStringList() : QStringList {shown});
    // Declining never touches the files.
    QCOMPARE(readFile(path(QStringLiteral("program/disclaimer.a"))), besideProgram);
}

void TestStartup::disclaimerAnswers_data()
{
    QTest::addColumn<ScriptedSteps::Answer>("answer");
    QTest::addColumn<QString>("besideProgram"); // "nothing", "read-only foreign file" or "no folder"
    QTest::addColumn<bool>("userFolderBlocked");
    QTest::addColumn<QString>("writtenTo"); // "program", "user" or "nowhere"

    using A = ScriptedSteps::Answer;
    QTest::newRow("declined") << A::Decline << "nothing" << false << "nowhere";
    QTest::newRow("accepted this once") << A::AcceptOnce << "nothing" << false << "nowhere";
    QTest::newRow("accepted for good") << A::AcceptForGood << "nothing" << false << "program";
    QTest::newRow("for good, over a read-only foreign file")
        << A::AcceptForGood << "read-only foreign file" << false << "user";
    QTest::newRow("for good, the program's folder cannot be written")
        << A::AcceptForGood << "no folder" << false << "user";
    QTest::newRow("for good, neither place can be written")
        << A::AcceptForGood << "no folder" << true << "nowhere";
}

// Accepted for good, the acceptance is written beside the program, else into the user's own
// folder, else nowhere: then the disclaimer is simply shown again at the next start.
void TestStartup::disclaimerAnswers()
{
    QFETCH(ScriptedSteps::Answer, answer);
    QFETCH(QString, besideProgram);
    QFETCH(bool, userFolderBlocked);
    QFETCH(QString, writtenTo);

    const QByteArray foreign = framed(tInt(0));
    if (besideProgram == QLatin1String("no folder")) {
        // A folder that does not exist cannot be written into, not even by a superuser, and the
        // program never creates its own folder.
        m_programFolder = path(QStringLiteral("not-installed"));
    } else if (besideProgram != QLatin1String("nothing")) {
        writeFile(m_programFolder + QLatin1String("/disclaimer.a"), foreign);
        QVERIFY(QFile::setPermissions(m_programFolder + QLatin1String("/disclaimer.a"), QFile::ReadOwner));
    }
    if (userFolderBlocked) // a file where the folder's parent should be
        writeFile(path(QStringLiteral("data/sparkwright.example")), "in the way");

    ScriptedSteps first;
    first.answer = answer;
    const bool accepted = answer != ScriptedSteps::Answer::Decline;
    QCOMPARE(runStartup(first), accepted ? 0 : 1);
    QCOMPARE(first.seen, (accepted ? QStringList {"Disclaimer", "Sparkwright"} : QStringList {"Disclaimer"}));
    QCOMPARE(readFile(m_programFolder + QLatin1String("/disclaimer.a")),
        writtenTo == QLatin1String("program") ? kAccepted
            : besideProgram.startsWith('r')   ? foreign
                                              : QByteArray());
    QCOMPARE(readFile(userFolder() + QLatin1String("/disclaimer.a")),
        writtenTo == QLatin1String("user") ? kAccepted : QByteArray());

    ScriptedSteps next;
    runStartup(next);
    QCOMPARE(next.seen.first() == QLatin1String("Disclaimer"), writtenTo == QLatin1String("nowhere"));
}

// The updater reads the manifest back one entry at a time: a file name and a version above zero.
void TestStartup::manifestEntry()
{
    const std::optional<CFileManifest::Entry> entry
        = CFileManifest::parseEntry(QStringLiteral("Zündung.cds;9501"));
    QVERIFY(entry && entry->fileName == QStringLiteral("Zündung.cds") && entry->version == 9501);
    for (const char *text :
        {"hints.cdh;0", "hints.cdh;-2", "hints.cdh;1a", "hints.cdh;1;2", "a.exe;9501#b.cds;1"})
        QVERIFY2(!CFileManifest::parseEntry(QString::fromUtf8(text)), text);
}

QProcessEnvironment TestStartup::childEnvironment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("lock")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    return environment;
}

// Of copies started together one runs and the others end at once and silently, while the version
// query still answers. A copy killed without any clean-up leaves a stale lock, which the next copy
// takes over and guards in its turn.
void TestStartup::oneCopyAtATime()
{
    const QProcessEnvironment environment = childEnvironment();
    std::vector<std::unique_ptr<ProgramCopy>> copies;
    for (int i = 0; i < 3; ++i)
        copies.push_back(std::make_unique<ProgramCopy>(environment));
    ProgramCopy query(environment, {QStringLiteral("-v")});
    ProgramCopy *running = nullptr;
    int runningCount = 0;
    for (const auto &copy : copies) {
        if (copy->runs()) {
            running = copy.get();
            ++runningCount;
        } else {
            QVERIFY2(copy->endedWell() && copy->process.readAllStandardOutput().isEmpty(),
                copy->errors.constData());
        }
    }
    QCOMPARE(runningCount, 1);
    QVERIFY(query.endedWell());
    QCOMPARE(query.process.readAllStandardOutput(), kManifest);
    // The lock lies in the user's own runtime directory, not in a place all users share.
    QCOMPARE(QDir(path(QStringLiteral("lock"))).entryList(QDir::Files).size(), 1);
    running->killHard();
    ProgramCopy next(environment);
    QVERIFY2(next.runs(), next.errors.constData());
    QVERIFY(ProgramCopy(environment).endedWell());
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
