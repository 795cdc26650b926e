// The command-line tool: packing and dumping profiles against the file layout, building the data
// files, drawing a map ("graph", PNG) and the printed sheet ("print", PDF), and its exit codes:
// 0 done, 1 a file could not be read or written, 2 bad usage; never a partial output file.
#include "support/layoutencoder.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <QStandardPaths>

namespace {

HandRecord sampleRecord()
{
    HandRecord r;
    r.motorbikeType = 3;
    r.templateType = 5;
    r.auxFlag = true;
    r.name = QStringLiteral("Straßenprofil 250");
    r.notes = QStringLiteral("Kerze BR9, 0,6 mm");
    r.flagByte = 0x0B; // monitoring, ground blocks, mode 1
    r.voltage = 185;
    r.edgeSelectable = false;
    r.modeOne = true;
    r.k1Rising = -0.00025;
    r.k1Falling = -0.0004;
    r.rpm = {800, 1500, 2500, 3500, 4500, 5500, 6500, 7500, 8500, 9500};
    r.angle = {6, 10, 15, 20, 24, 27, 29, 30, 30, 29};
    r.k0 = 36.5;
    r.k1 = -0.0004; // K1 follows the falling edge in sensor mode 1
    r.trailing = QStringList {QStringLiteral("For road use."), QStringLiteral("Für die Straße.")};
    return r;
}

QJsonObject sampleJson()
{
    const HandRecord r = sampleRecord();
    QJsonArray map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.append(QJsonArray {r.rpm[i], r.angle[i]});
    return QJsonObject {{"motorbikeType", 3}, {"templateType", 5}, {"isCustom", true}, {"auxFlag", true},
        {"name", QStringLiteral("Straßenprofil 250")}, {"notes", QStringLiteral("Kerze BR9, 0,6 mm")},
        {"extraText", QJsonArray {QStringLiteral("For road use."), QStringLiteral("Für die Straße.")}},
        {"map", map}, {"sensorCoefficients", QJsonArray {36.5, -0.0004, 0.0}}, {"sideStandMonitoring", true},
        {"groundEnablesIgnition", false}, {"pickUpRisingEdge", false}, {"sensorMode", 1}, {"voltage", 185},
        {"pickUpEdgeSelectable", false}, {"k1Rising", -0.00025}, {"k1Falling", -0.0004}};
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void exitCodes_data();
    void exitCodes();
    void packAndDumpFollowTheLayout();
    void drawing_data();
    void drawing();

private:
    // Runs the tool from the build folder, beside the data files and translations, always in the
    // case folder, which holds planted data files that are never to be read. File names are taken
    // in the case folder. Before the arguments, "bare" runs a copy of the tool with no data files
    // beside it or in a share folder, "limit=N" lets no file grow past N bytes and ">full" sends
    // the output to a full disk.
    int run(QStringList arguments, QByteArray *out = nullptr, QByteArray *err = nullptr);
    void write(const QString &name, const QByteArray &bytes);
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QString m_cli;
    QString m_bareCli;
    QTemporaryDir m_dir;
    QTemporaryDir m_runtimeDir;
};

void TestCli::initTestCase()
{
    m_cli = qEnvironmentVariable("SPARKWRIGHT_CLI");
    if (m_cli.isEmpty())
        QSKIP("SPARKWRIGHT_CLI names the tool, built beside its data files");
    QVERIFY(m_dir.isValid() && m_runtimeDir.isValid());
    QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("bin")) && QDir(m_dir.path()).mkpath("folder.cdi"));
    m_bareCli = path(QStringLiteral("bin/sparkwright-cli"));
    QVERIFY(QFile::copy(m_cli, m_bareCli));
    write(QStringLiteral("road.cdi"), handContainer({sampleRecord().bytes()}));
    write(QStringLiteral("old.pdf"), "the sheet printed last week");
    for (const char *planted : {"default.cds", "hints.cdh", "lang_de.qm"})
        write(QLatin1String(planted), "planted by someone else");
    QJsonObject json = sampleJson();
    write(QStringLiteral("road.json"), QJsonDocument(json).toJson());
    QJsonArray map = json.value("map").toArray();
    map[3] = QJsonArray {3500, "twenty"};
    json.insert(QStringLiteral("map"), map);
    write(QStringLiteral("point.json"), QJsonDocument(json).toJson());
}

int TestCli::run(QStringList arguments, QByteArray *out, QByteArray *err)
{
    QProcess process;
    const QString tool = arguments.first() == QLatin1String("bare") ? m_bareCli : m_cli;
    if (tool == m_bareCli)
        arguments.removeFirst();
    QStringList limit; // the shell's arguments that set it
    if (arguments.first().startsWith(QLatin1String("limit="))) {
        // Every write past the limit fails with "File too large", as on a full disk.
        limit = QStringList {QStringLiteral("-c"),
            QStringLiteral("trap '' XFSZ; exec prlimit --fsize=%1 -- \"$@\"")
                .arg(arguments.takeFirst().mid(6)),
            QStringLiteral("sh")};
    }
    if (arguments.first() == QLatin1String(">full")) {
        arguments.removeFirst();
        process.setStandardOutputFile(QStringLiteral("/dev/full"));
    }
    for (QString &argument : arguments)
        if (argument.contains(QLatin1Char('.')) && !argument.startsWith(QLatin1Char('-')))
            argument = path(argument);
    process.setWorkingDirectory(m_dir.path());
    // A runtime folder of its own keeps Qt's note about a missing one off the error stream.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtimeDir.path());
    // A German system: what the tool writes must not take its number format from there.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    process.setProcessEnvironment(environment);
    if (limit.isEmpty())
        process.start(tool, arguments);
    else
        process.start(QStringLiteral("sh"), limit + QStringList {tool} + arguments);
    if (!process.waitForFinished(60000))
        return -1;
    if (out)
        *out = process.readAllStandardOutput();
    if (err)
        *err = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

void TestCli::write(const QString &name, const QByteArray &bytes)
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

// The arguments are separated by spaces. Damaged files are refused by the readers under
// tests/fuzz and tst_damagedinput; here one file error of each kind, and one bad usage.
void TestCli::exitCodes_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message"); // on the output for 0, else the one line of the errors

    QTest::newRow("help") << "--help" << 0 << "build-hints";
    QTest::newRow("version") << "--version" << 0 << "sparkwright-cli 0.";
    QTest::newRow("unknown language") << "graph road.cdi g.png --language fr" << 2 << "unknown language 'fr'";
    QTest::newRow("no library for the sheet's header, the old sheet kept")
        << "bare print road.cdi old.pdf" << 1 << "default.cds: the file does not exist";
    QTest::newRow("a folder as the profile")
        << "print folder.cdi x.pdf" << 1 << "folder.cdi: the file could not be read";
    QTest::newRow("damaged library") << "dump default.cds" << 1 << "is damaged or of another kind";
    QTest::newRow("target folder missing")
        << "pack road.json no/such/x.cdi" << 1 << "x.cdi: the file may not be written there";
    QTest::newRow("text in a map point") << "pack point.json x.cdi" << 1 << "map[3][1]";
    // Qt keeps small writes in a buffer until the file is committed: the smallest output counts.
    QTest::newRow("disk full while packing, the old file kept")
        << "limit=20 pack road.json old.pdf" << 1
        << "File too large. A file that was there before is unchanged.";
    // In German, from the translation beside the tool, not the planted one.
    QTest::newRow("disk full while printing, the old sheet kept")
        << "limit=2000 print road.cdi old.pdf --language de" << 1
        << "old.pdf: die Datei konnte nicht geschrieben werden";
    QTest::newRow("dump to a full disk")
        << ">full dump road.cdi" << 1 << "cannot write the output: No space left on device";
}

void TestCli::exitCodes()
{
    QFETCH(QString, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    QByteArray out, err;
    QCOMPARE(run(arguments.split(QLatin1Char(' ')), &out, &err), exitCode);
    const QString shown = QString::fromUtf8(exitCode == 0 ? out : err);
    QVERIFY2(shown.contains(message), qPrintable(shown));
    QVERIFY(exitCode == 0 || (out.isEmpty() && err.count('\n') == 1));
    QVERIFY(!QFile::exists(path("g.png")) && !QFile::exists(path("x.cdi")));
    QCOMPARE(readAll(path("old.pdf")), QByteArray("the sheet printed last week"));
}

// A profile packed from JSON follows the layout, and the layout dumps to the same JSON. The
// library and the hints are built by the build itself; their layouts are checked in tst_profilefile.
void TestCli::packAndDumpFollowTheLayout()
{
    QCOMPARE(run({"pack", "road.json", "built.cdi"}), 0);
    QCOMPARE(readAll(path("built.cdi")).toHex(), readAll(path("road.cdi")).toHex());
    QByteArray dumped;
    QCOMPARE(run({"dump", "road.cdi"}, &dumped), 0);
    QCOMPARE(QJsonDocument::fromJson(dumped).object(), sampleJson());
}

void TestCli::drawing_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("texts"); // on the sheet, which speaks its language, numbers included
    QTest::addColumn<QByteArray>("epoch"); // SOURCE_DATE_EPOCH, the sheet's time when set
    QTest::newRow("German") << QStringList {"--language", "de"} << QStringList {"Zündspannung", "36,5°"}
                            << QByteArray();
    QTest::newRow("English on a German system without a language, at a given time")
        << QStringList() << QStringList {"Ignition voltage", "36.5°", "2025-11-24 - 16:00:00 - Sparkwright"}
        << QByteArray("1764000000");
}

// The graph has the size asked for; the sheet is a whole PDF with the profile's texts.
void TestCli::drawing()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, texts);
    QFETCH(QByteArray, epoch);
    QCOMPARE(run(QStringList {"graph", "road.cdi", "out.png", "--size", "400x300"} + options), 0);
    QCOMPARE(QImage(path("out.png")).size(), QSize(400, 300));
    if (!epoch.isEmpty())
        qputenv("SOURCE_DATE_EPOCH", epoch);
    const int printed = run(QStringList {"print", "road.cdi", "out.pdf"} + options);
    qunsetenv("SOURCE_DATE_EPOCH");
    QCOMPARE(printed, 0);
    const QByteArray pdf = readAll(path("out.pdf"));
    QVERIFY(pdf.startsWith("%PDF-") && pdf.trimmed().endsWith("%%EOF"));
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        QSKIP("pdftotext (poppler-utils) is not installed");
    QProcess extract;
    extract.start(pdftotext, {path("out.pdf"), QStringLiteral("-")});
    QVERIFY(extract.waitForFinished(30000));
    const QString text = QString::fromUtf8(extract.readAllStandardOutput());
    for (const QString &expected : texts)
        QVERIFY2(text.contains(expected), qPrintable(expected + QStringLiteral(" missing in:\n") + text));
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
