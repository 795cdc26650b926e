// The program's start: data files, version query, single copy, start language, disclaimer gate
// and main window. The steps up to the main window run in-process on the offscreen platform,
// with the user's answers given through the modal-step seam; exit codes and the single-copy
// guard are checked on the built program.
#include "app/cfilemanifest.h"
#include "app/cstartup.h"
#include "app/errorgui.h"
#include "dialogs/disclaimerdialog.h"
#include "frame/mainwindow.h"
#include "tests/widgettestmain.h"

#include <QCheckBox>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

namespace {

// The files are written from their byte layouts here, independent of the program's writers.
QByteArray int32le(qint32 value)
{
    QByteArray out;
    for (int i = 0; i < 4; ++i)
        out.append(char((quint32(value) >> (8 * i)) & 0xFF));
    return out;
}

QByteArray taggedInt(qint32 value)
{
    return QByteArray("i") + int32le(value);
}

QByteArray taggedString(const QByteArray &utf8)
{
    return QByteArray("Q") + taggedInt(utf8.size()) + utf8;
}

QByteArray framed(const QByteArray &record)
{
    QByteArray out("U");
    for (int i = 0; i < 3; ++i)
        out.append(char((record.size() >> (8 * i)) & 0xFF));
    return out + record;
}

QByteArray container(const QList<QByteArray> &records)
{
    QByteArray out("cdi", 3);
    out.append('\0');
    out.append(char(records.size() & 0xFF));
    out.append(char(records.size() >> 8));
    for (const QByteArray &record : records)
        out.append(framed(record));
    return out;
}

QByteArray libraryFile(qint32 libraryValue, const QByteArray &magic = "def")
{
    return container({taggedString(magic) + taggedInt(1) + taggedInt(libraryValue)});
}

QByteArray hintsFile(qint32 catalogValue)
{
    return container({taggedInt(catalogValue) + taggedInt(1) + taggedInt(1) + taggedInt(2)
        + taggedString("Voltage") + taggedString("The charging voltage.") + taggedString("Spannung")
        + taggedString("Die Ladespannung.")});
}

const QByteArray kAccepted = QByteArray::fromHex("550500006901000000");

const QString kLibraryMessage = QStringLiteral(
    "The default CDI profiles could not be loaded. The source file is either missing or corrupted or was "
    "created for a newer version of Sparkwright.");
const QString kHintsMessage
    = QStringLiteral("Hints could not be loaded. The source file is either missing or "
                     "corrupted or was created for a newer version of Sparkwright.");

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile::remove(path);
    if (bytes.isNull())
        return;
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
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

void clickCheckBox(QCheckBox *box)
{
    QStyleOptionButton option;
    option.initFrom(box);
    const QRect indicator = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, indicator.center());
}

// Answers in the user's place and notes what the user would have seen.
class ScriptedSteps : public IModalSteps
{
public:
    enum class Answer
    {
        Decline,
        Escape,
        AcceptOnce,
        AcceptForGood
    };

    Answer answer = Answer::Decline;
    int mainLoopResult = 0;

    QStringList errorTitles;
    QStringList errorTexts;
    bool errorWindowClosed = false;
    QStringList disclaimerTitles;
    QStringList mainWindowTitles;
    bool mainWindowVisible = false;

    void waitForErrorWindow(ErrorGui &window) override
    {
        errorTitles.append(window.windowTitle());
        const QTextEdit *text = window.findChild<QTextEdit *>(QStringLiteral("textEdit"));
        errorTexts.append(text ? text->toPlainText() : QString());
        QPushButton *close = window.findChild<QPushButton *>(QStringLiteral("pushButtonClose"));
        if (window.isVisible() && close) {
            QTest::mouseClick(close, Qt::LeftButton);
            errorWindowClosed = !window.isVisible();
        }
    }

    int runDisclaimer(DisclaimerDialog &dialog) override
    {
        dialog.show();
        disclaimerTitles.append(dialog.windowTitle());
        const auto button
            = [&dialog](const char *name) { return dialog.findChild<QPushButton *>(QLatin1String(name)); };
        switch (answer) {
        case Answer::Decline:
            QTest::mouseClick(button("declineButton"), Qt::LeftButton);
            break;
        case Answer::Escape:
            QTest::keyClick(&dialog, Qt::Key_Escape);
            break;
        case Answer::AcceptForGood:
            clickCheckBox(dialog.findChild<QCheckBox *>(QStringLiteral("checkBox")));
            QTest::mouseClick(button("acceptButton"), Qt::LeftButton);
            break;
        case Answer::AcceptOnce:
            QTest::mouseClick(button("acceptButton"), Qt::LeftButton);
            break;
        }
        return dialog.isVisible() ? QDialog::Rejected : dialog.result();
    }

    int runMainWindow(MainWindow &window) override
    {
        mainWindowTitles.append(window.windowTitle());
        mainWindowVisible = window.isVisible();
        return mainLoopResult;
    }
};

// A copy of the built program, started the way a user starts it.
class ProgramCopy
{
public:
    ProgramCopy(const QString &workingDirectory, const QProcessEnvironment &environment)
    {
        m_process.setWorkingDirectory(workingDirectory);
        m_process.setProcessEnvironment(environment);
        QObject::connect(&m_process, &QProcess::readyReadStandardError,
            [this] { m_stderr += m_process.readAllStandardError(); });
        QObject::connect(&m_process, &QProcess::readyReadStandardOutput,
            [this] { m_stdout += m_process.readAllStandardOutput(); });
        QObject::connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
            [this](int exitCode, QProcess::ExitStatus status) {
                m_stderr += m_process.readAllStandardError();
                m_stdout += m_process.readAllStandardOutput();
                m_exitCode = status == QProcess::NormalExit ? exitCode : -1;
                m_ended = true;
            });
        QObject::connect(&m_process, &QProcess::errorOccurred, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                m_ended = true;
        });
    }

    ~ProgramCopy()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    void start(const QStringList &arguments = {})
    {
        m_process.start(buildDir() + QLatin1String("/sparkwright"), arguments);
    }

    // A copy past the single-copy guard goes on to load its translation and says so.
    bool isRunning() const { return !m_ended && m_stderr.contains("loading lang_de.qm"); }
    bool hasEnded() const { return m_ended; }
    bool hasSettled() const { return isRunning() || hasEnded(); }
    int exitCode() const { return m_exitCode; }
    QByteArray standardOutput() const { return m_stdout; }
    QByteArray standardError() const { return m_stderr; }
    QProcess &process() { return m_process; }

    void killHard()
    {
        m_process.kill(); // SIGKILL: no clean-up of any kind
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    QByteArray m_stdout;
    QByteArray m_stderr;
    int m_exitCode = -1;
    bool m_ended = false;
};

// Runs the event loop until the copies have reported what the condition needs. The limit only
// ends a test whose program hangs; no result depends on it.
bool waitFor(const std::function<bool()> &condition, const std::vector<ProgramCopy *> &copies)
{
    constexpr int kHangLimitMs = 120000;
    if (condition())
        return true;
    QEventLoop loop;
    const auto check = [&] {
        if (condition())
            loop.quit();
    };
    for (ProgramCopy *copy : copies) {
        QObject::connect(&copy->process(), &QProcess::readyReadStandardError, &loop, check);
        QObject::connect(
            &copy->process(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop, check);
        QObject::connect(&copy->process(), &QProcess::errorOccurred, &loop, check);
    }
    QTimer::singleShot(kHangLimitMs, &loop, &QEventLoop::quit);
    loop.exec();
    return condition();
}

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
    void dataFilesComeFromTheWorkingDirectory();
    void disclaimerGate_data();
    void disclaimerGate();
    void disclaimerAnswers_data();
    void disclaimerAnswers();
    void startLanguage_data();
    void startLanguage();
    void mainWindowLoopGivesTheExitCode();
    void manifestEntry_data();
    void manifestEntry();

    void commandLine_data();
    void commandLine();
    void versionQueryWhileRunning();
    void secondCopyEndsSilently();
    void killedCopyDoesNotBlockTheNextStart();
    void simultaneousStarts_data();
    void simultaneousStarts();

private:
    int runStartup(ScriptedSteps &steps, const QStringList &arguments = {},
        const QString &locale = QStringLiteral("en_US"));
    QString workPath(const QString &name) const { return m_case->filePath(QLatin1String("work/") + name); }
    QString programPath(const QString &name) const
    {
        return m_case->filePath(QLatin1String("program/") + name);
    }
    QString userFolder() const
    {
        return m_case->filePath(QStringLiteral("data/sparkwright.example/Sparkwright"));
    }
    QProcessEnvironment childEnvironment() const;

    QString m_originalDirectory;
    std::unique_ptr<QTemporaryDir> m_case;
};

void TestStartup::initTestCase()
{
    QVERIFY2(QFile::exists(buildDir() + QLatin1String("/lang_de.qm")), "the German translation is not built");
    m_originalDirectory = QDir::currentPath();
}

// Every case starts with a good installation: both data files and the translation in the
// working directory, nothing accepted yet.
void TestStartup::init()
{
    m_case = std::make_unique<QTemporaryDir>();
    QVERIFY(m_case->isValid());
    for (const char *folder : {"work", "program", "lock", "data"})
        QVERIFY(QDir(m_case->path()).mkdir(QLatin1String(folder)));
    // The copies started below take this as their runtime directory, which only counts when it
    // is the user's alone.
    QVERIFY(QFile::setPermissions(m_case->filePath(QStringLiteral("lock")),
        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadUser | QFile::WriteUser
            | QFile::ExeUser));
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_case->filePath(QStringLiteral("data"))));
    writeFile(workPath(QStringLiteral("default.cds")), libraryFile(12));
    writeFile(workPath(QStringLiteral("hints.cdh")), hintsFile(3));
    QVERIFY(QFile::copy(buildDir() + QLatin1String("/lang_de.qm"), workPath(QStringLiteral("lang_de.qm"))));
    QVERIFY(QDir::setCurrent(m_case->filePath(QStringLiteral("work"))));
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

    CStartup::Surroundings surroundings;
    surroundings.programDirectory = m_case->filePath(QStringLiteral("program"));
    surroundings.localeName = locale;
    surroundings.lockDirectory = m_case->filePath(QStringLiteral("lock"));
    CStartup startup(steps, surroundings);
    return startup.run(argc, argv.data());
}

void TestStartup::dataFileErrors_data()
{
    QTest::addColumn<QByteArray>("library"); // a null array: no file at all
    QTest::addColumn<QByteArray>("hints");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("fileName");

    const QByteArray good = libraryFile(12);
    const QByteArray goodHints = hintsFile(3);
    const QByteArray none;
    const QString library = QStringLiteral("default.cds");
    const QString hints = QStringLiteral("hints.cdh");
    const QByteArray brokenProfile
        = container({taggedString("def") + taggedInt(1) + taggedInt(12), "garbage"});
    const QByteArray cutHints = container({taggedInt(3) + taggedInt(1) + taggedInt(1) + taggedInt(2)
        + taggedString("Voltage") + taggedString("The charging voltage.") + taggedString("Spannung")});

    QTest::newRow("library missing") << none << goodHints << QStringList() << kLibraryMessage << library;
    QTest::newRow("library empty") << QByteArray("") << goodHints << QStringList() << kLibraryMessage
                                   << library;
    QTest::newRow("library not a container")
        << QByteArray("PK\x03\x04 some archive") << goodHints << QStringList() << kLibraryMessage << library;
    QTest::newRow("library cut inside its header record")
        << good.left(good.size() - 3) << goodHints << QStringList() << kLibraryMessage << library;
    QTest::newRow("library header refused")
        << libraryFile(12, "DEF") << goodHints << QStringList() << kLibraryMessage << library;
    QTest::newRow("library profile refused")
        << brokenProfile << goodHints << QStringList() << kLibraryMessage << library;
    QTest::newRow("hints missing") << good << none << QStringList() << kHintsMessage << hints;
    QTest::newRow("hints not a container")
        << good << QByteArray("cdx\0\1\0", 6) << QStringList() << kHintsMessage << hints;
    QTest::newRow("hints refused, a text missing")
        << good << cutHints << QStringList() << kHintsMessage << hints;
    QTest::newRow("both missing names only the library")
        << none << none << QStringList() << kLibraryMessage << library;
    QTest::newRow("version query, hints missing")
        << good << none << QStringList {QStringLiteral("-v")} << kHintsMessage << hints;
    QTest::newRow("version query, library refused")
        << libraryFile(12, "DEF") << goodHints << QStringList {QStringLiteral("-v")} << kLibraryMessage
        << library;
}

void TestStartup::dataFileErrors()
{
    QFETCH(QByteArray, library);
    QFETCH(QByteArray, hints);
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    QFETCH(QString, fileName);
    writeFile(workPath(QStringLiteral("default.cds")), library);
    writeFile(workPath(QStringLiteral("hints.cdh")), hints);
    // The files are reported even when the disclaimer was accepted long ago.
    writeFile(programPath(QStringLiteral("disclaimer.a")), kAccepted);

    ScriptedSteps steps;
    // In German surroundings, too, the message appears in English: no translation is loaded yet.
    QCOMPARE(runStartup(steps, arguments, QStringLiteral("de_DE")), 1);

    QCOMPARE(steps.errorTitles, QStringList {QStringLiteral("Sparkwright - Error Message")});
    QString text = steps.errorTexts.value(0);
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    QCOMPARE(text, message + QLatin1String("\n\nSource file: ") + fileName);
    QVERIFY(steps.errorWindowClosed);
    QVERIFY(steps.disclaimerTitles.isEmpty());
    QVERIFY(steps.mainWindowTitles.isEmpty());
}

void TestStartup::dataFilesComeFromTheWorkingDirectory()
{
    // Next to the program lie an accepted disclaimer and both data files, the working
    // directory has none of them: the files count as missing, the acceptance still counts.
    writeFile(programPath(QStringLiteral("disclaimer.a")), kAccepted);
    QVERIFY(
        QFile::rename(workPath(QStringLiteral("default.cds")), programPath(QStringLiteral("default.cds"))));
    QVERIFY(QFile::rename(workPath(QStringLiteral("hints.cdh")), programPath(QStringLiteral("hints.cdh"))));

    ScriptedSteps missing;
    QCOMPARE(runStartup(missing), 1);
    QCOMPARE(missing.errorTexts.size(), 1);
    QVERIFY(missing.errorTexts.first().endsWith(QLatin1String("default.cds")));

    QVERIFY(QFile::copy(programPath(QStringLiteral("default.cds")), workPath(QStringLiteral("default.cds"))));
    QVERIFY(QFile::copy(programPath(QStringLiteral("hints.cdh")), workPath(QStringLiteral("hints.cdh"))));
    ScriptedSteps found;
    QCOMPARE(runStartup(found), 0);
    QVERIFY(found.errorTitles.isEmpty());
    QVERIFY(found.disclaimerTitles.isEmpty());
    QCOMPARE(found.mainWindowTitles.size(), 1);
}

void TestStartup::disclaimerGate_data()
{
    QTest::addColumn<QByteArray>("besideProgram"); // a null array: no file
    QTest::addColumn<QByteArray>("inUserFolder");
    QTest::addColumn<bool>("disclaimerShown");

    const QByteArray none;
    QTest::newRow("no acceptance file") << none << none << true;
    QTest::newRow("empty file") << QByteArray("") << none << true;
    QTest::newRow("foreign file") << QByteArray("cdi\0\0\0", 6) << none << true;
    QTest::newRow("integer 0") << framed(taggedInt(0)) << none << true;
    QTest::newRow("negative integer") << framed(taggedInt(-1)) << none << true;
    QTest::newRow("most negative integer")
        << framed(taggedInt(std::numeric_limits<qint32>::min())) << none << true;
    QTest::newRow("text instead of an integer") << framed(taggedString("1")) << none << true;
    QTest::newRow("frame longer than the file") << QByteArray::fromHex("550900006901000000") << none << true;
    QTest::newRow("frame marker missing") << QByteArray::fromHex("560500006901000000") << none << true;
    QTest::newRow("accepted") << kAccepted << none << false;
    QTest::newRow("accepted, more bytes after the frame")
        << kAccepted + QByteArray(100, 'x') << none << false;
    QTest::newRow("any positive integer") << framed(taggedInt(7)) << none << false;
    QTest::newRow("accepted in the user's folder") << none << kAccepted << false;
    QTest::newRow("foreign beside the program, accepted in the user's folder")
        << framed(taggedInt(0)) << kAccepted << false;
    QTest::newRow("zero in the user's folder") << none << framed(taggedInt(0)) << true;
}

void TestStartup::disclaimerGate()
{
    QFETCH(QByteArray, besideProgram);
    QFETCH(QByteArray, inUserFolder);
    QFETCH(bool, disclaimerShown);
    writeFile(programPath(QStringLiteral("disclaimer.a")), besideProgram);
    QVERIFY(QDir().mkpath(userFolder()));
    writeFile(userFolder() + QLatin1String("/disclaimer.a"), inUserFolder);

    ScriptedSteps steps;
    steps.answer = ScriptedSteps::Answer::Decline;
    const int exitCode = runStartup(steps);

    QCOMPARE(steps.disclaimerTitles.size(), disclaimerShown ? 1 : 0);
    QCOMPARE(steps.mainWindowTitles.size(), disclaimerShown ? 0 : 1);
    QCOMPARE(exitCode, disclaimerShown ? 1 : 0);
    // Declining never touches the files.
    QCOMPARE(readFile(programPath(QStringLiteral("disclaimer.a"))), besideProgram);
}

void TestStartup::disclaimerAnswers_data()
{
    QTest::addColumn<ScriptedSteps::Answer>("answer");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<bool>("mainWindowShown");
    QTest::addColumn<QByteArray>("acceptanceFile");
    QTest::addColumn<bool>("shownAgainAtNextStart");

    QTest::newRow("declined") << ScriptedSteps::Answer::Decline << 1 << false << QByteArray() << true;
    QTest::newRow("closed with Escape")
        << ScriptedSteps::Answer::Escape << 1 << false << QByteArray() << true;
    QTest::newRow("accepted this once")
        << ScriptedSteps::Answer::AcceptOnce << 0 << true << QByteArray() << true;
    QTest::newRow("accepted for good")
        << ScriptedSteps::Answer::AcceptForGood << 0 << true << kAccepted << false;
}

void TestStartup::disclaimerAnswers()
{
    QFETCH(ScriptedSteps::Answer, answer);
    QFETCH(int, exitCode);
    QFETCH(bool, mainWindowShown);
    QFETCH(QByteArray, acceptanceFile);
    QFETCH(bool, shownAgainAtNextStart);

    ScriptedSteps first;
    first.answer = answer;
    QCOMPARE(runStartup(first), exitCode);
    QCOMPARE(first.disclaimerTitles, QStringList {QStringLiteral("Disclaimer")});
    QCOMPARE(first.mainWindowTitles.size(), mainWindowShown ? 1 : 0);
    QCOMPARE(readFile(programPath(QStringLiteral("disclaimer.a"))), acceptanceFile);
    QVERIFY(!QFile::exists(userFolder() + QLatin1String("/disclaimer.a")));

    ScriptedSteps next;
    runStartup(next);
    QCOMPARE(next.disclaimerTitles.size(), shownAgainAtNextStart ? 1 : 0);
}

void TestStartup::startLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("disclaimerTitle");

    QTest::newRow("de_AT") << "de_AT"
                           << "Haftungsausschluss";
    QTest::newRow("de_CH") << "de_CH"
                           << "Haftungsausschluss";
    QTest::newRow("de_DE") << "de_DE"
                           << "Haftungsausschluss";
    QTest::newRow("en_US") << "en_US"
                           << "Disclaimer";
    QTest::newRow("fr_FR") << "fr_FR"
                           << "Disclaimer";
    QTest::newRow("no locale, C") << "C"
                                  << "Disclaimer";
}

void TestStartup::startLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, disclaimerTitle);

    ScriptedSteps steps;
    QCOMPARE(runStartup(steps, {}, locale), 1);
    QCOMPARE(steps.disclaimerTitles, QStringList {disclaimerTitle});

    // A German start leaves nothing behind: the next English start is English again.
    ScriptedSteps english;
    runStartup(english);
    QCOMPARE(english.disclaimerTitles, QStringList {QStringLiteral("Disclaimer")});
}

void TestStartup::mainWindowLoopGivesTheExitCode()
{
    writeFile(programPath(QStringLiteral("disclaimer.a")), kAccepted);
    ScriptedSteps steps;
    steps.mainLoopResult = 7;
    QCOMPARE(runStartup(steps), 7);
    QCOMPARE(steps.mainWindowTitles, QStringList {QStringLiteral("Sparkwright")});
    QVERIFY(steps.mainWindowVisible);
}

// The updater reads the manifest back one entry at a time.
void TestStartup::manifestEntry_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<int>("version");

    QTest::newRow("program") << "Sparkwright.exe;9501" << true << "Sparkwright.exe" << 9501;
    QTest::newRow("lowest version") << "hints.cdh;1" << true << "hints.cdh" << 1;
    QTest::newRow("non-ASCII name") << "Zündung.cds;3" << true << "Zündung.cds" << 3;
    QTest::newRow("version 0") << "hints.cdh;0" << false << "" << 0;
    QTest::newRow("negative version") << "hints.cdh;-2" << false << "" << 0;
    QTest::newRow("version not a number") << "hints.cdh;1a" << false << "" << 0;
    QTest::newRow("hexadecimal version") << "hints.cdh;0x10" << false << "" << 0;
    QTest::newRow("no version") << "hints.cdh" << false << "" << 0;
    QTest::newRow("empty version") << "hints.cdh;" << false << "" << 0;
    QTest::newRow("three parts") << "hints.cdh;1;2" << false << "" << 0;
    QTest::newRow("whole manifest") << "Sparkwright.exe;9501#default.cds;1" << false << "" << 0;
}

void TestStartup::manifestEntry()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QFETCH(QString, fileName);
    QFETCH(int, version);

    const std::optional<CFileManifest::Entry> entry = CFileManifest::parseEntry(text);
    QCOMPARE(entry.has_value(), valid);
    if (valid) {
        QCOMPARE(entry->fileName, fileName);
        QCOMPARE(entry->version, version);
    }
}

QProcessEnvironment TestStartup::childEnvironment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_case->filePath(QStringLiteral("lock")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_case->filePath(QStringLiteral("data")));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    return environment;
}

void TestStartup::commandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("versionQuery");

    QTest::newRow("-v") << QStringList {"-v"} << true;
    QTest::newRow("no arguments") << QStringList() << false;
    QTest::newRow("-V") << QStringList {"-V"} << false;
    QTest::newRow("--v") << QStringList {"--v"} << false;
    QTest::newRow("-v twice") << QStringList {"-v", "-v"} << false;
    QTest::newRow("-v after another argument") << QStringList {"x", "-v"} << false;
    QTest::newRow("-v with a tail") << QStringList {"-vx"} << false;
}

void TestStartup::commandLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, versionQuery);

    ProgramCopy copy(QDir::currentPath(), childEnvironment());
    copy.start(arguments);
    QVERIFY2(waitFor([&] { return copy.hasSettled(); }, {&copy}), copy.standardError().constData());
    if (versionQuery) {
        QVERIFY(copy.hasEnded());
        QCOMPARE(copy.exitCode(), 0);
        QCOMPARE(copy.standardOutput(),
            QByteArray(
                "Sparkwright.exe;9501#default.cds;12#lang_de.qm;9501#Qt5PrintSupport.dll;1#hints.cdh;3\n"));
    } else {
        QVERIFY2(copy.isRunning(), copy.standardError().constData());
        QVERIFY(copy.standardOutput().isEmpty());
    }
}

void TestStartup::versionQueryWhileRunning()
{
    ProgramCopy running(QDir::currentPath(), childEnvironment());
    running.start();
    QVERIFY(waitFor([&] { return running.hasSettled(); }, {&running}));
    QVERIFY2(running.isRunning(), running.standardError().constData());

    ProgramCopy query(QDir::currentPath(), childEnvironment());
    query.start({QStringLiteral("-v")});
    QVERIFY(waitFor([&] { return query.hasEnded(); }, {&query}));
    QCOMPARE(query.exitCode(), 0);
    QCOMPARE(query.standardOutput(),
        QByteArray(
            "Sparkwright.exe;9501#default.cds;12#lang_de.qm;9501#Qt5PrintSupport.dll;1#hints.cdh;3\n"));
    QVERIFY(running.isRunning());
}

void TestStartup::secondCopyEndsSilently()
{
    ProgramCopy first(QDir::currentPath(), childEnvironment());
    first.start();
    QVERIFY(waitFor([&] { return first.hasSettled(); }, {&first}));
    QVERIFY2(first.isRunning(), first.standardError().constData());
    // The lock lies in the user's own runtime directory, not in a place all users share.
    QCOMPARE(QDir(m_case->filePath(QStringLiteral("lock"))).entryList(QDir::Files).size(), 1);

    ProgramCopy second(QDir::currentPath(), childEnvironment());
    second.start();
    QVERIFY(waitFor([&] { return second.hasSettled(); }, {&second}));
    QVERIFY2(second.hasEnded(), second.standardError().constData());
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(second.standardOutput().isEmpty());
    QVERIFY(first.isRunning());
}

void TestStartup::killedCopyDoesNotBlockTheNextStart()
{
    ProgramCopy killed(QDir::currentPath(), childEnvironment());
    killed.start();
    QVERIFY(waitFor([&] { return killed.hasSettled(); }, {&killed}));
    QVERIFY2(killed.isRunning(), killed.standardError().constData());
    killed.killHard();

    ProgramCopy next(QDir::currentPath(), childEnvironment());
    next.start();
    QVERIFY(waitFor([&] { return next.hasSettled(); }, {&next}));
    QVERIFY2(next.isRunning(), next.standardError().constData());

    // And the copy that took over the stale lock guards it in its turn.
    ProgramCopy third(QDir::currentPath(), childEnvironment());
    third.start();
    QVERIFY(waitFor([&] { return third.hasSettled(); }, {&third}));
    QVERIFY(third.hasEnded());
    QCOMPARE(third.exitCode(), 0);
}

void TestStartup::simultaneousStarts_data()
{
    QTest::addColumn<int>("copies");
    QTest::newRow("two") << 2;
    QTest::newRow("three") << 3;
}

void TestStartup::simultaneousStarts()
{
    QFETCH(int, copies);
    std::vector<std::unique_ptr<ProgramCopy>> owned;
    std::vector<ProgramCopy *> all;
    for (int i = 0; i < copies; ++i) {
        owned.push_back(std::make_unique<ProgramCopy>(QDir::currentPath(), childEnvironment()));
        all.push_back(owned.back().get());
    }
    for (ProgramCopy *copy : all)
        copy->start();

    const auto settled = [&] {
        return std::all_of(
            all.begin(), all.end(), [](const ProgramCopy *copy) { return copy->hasSettled(); });
    };
    QVERIFY(waitFor(settled, all));
    int running = 0;
    for (const ProgramCopy *copy : all) {
        if (copy->isRunning()) {
            ++running;
        } else {
            QCOMPARE(copy->exitCode(), 0);
        }
    }
    QCOMPARE(running, 1);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
