// The command-line tool: packing and dumping profiles against the file layout, building the data
// files, drawing a map ("graph", PNG) and the printed sheet ("print", PDF), and its exit codes:
// 0 done, 1 a file could not be read or written, 2 bad usage; never a partial output file.
#include "tests/layoutencoder.h"

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
    void buildAndDumpAgree_data();
    void buildAndDumpAgree();
    void drawing_data();
    void drawing();

private:
    // Runs the tool in the build folder, beside the data files and translations, or in the
    // case folder, which has none of them. File names are taken in the case folder.
    int run(
        QStringList arguments, bool inBuildDir = true, QByteArray *out = nullptr, QByteArray *err = nullptr);
    QString write(const QString &name, const QByteArray &bytes);
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QString m_cli;
    // A copy of the tool in a folder of its own, with no data files beside it or in a share folder.
    QString m_bareCli;
    QString m_buildDir;
    QTemporaryDir m_dir;
    QTemporaryDir m_runtimeDir;
};

void TestCli::initTestCase()
{
    m_cli = qEnvironmentVariable("SPARKWRIGHT_CLI");
    m_buildDir = qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR");
    if (m_cli.isEmpty() || m_buildDir.isEmpty())
        QSKIP("SPARKWRIGHT_CLI and SPARKWRIGHT_BUILD_DIR name the tool and its data files");
    QVERIFY(m_dir.isValid() && m_runtimeDir.isValid());
    QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("bin")));
    m_bareCli = path(QStringLiteral("bin/sparkwright-cli"));
    QVERIFY(QFile::copy(m_cli, m_bareCli));
    write(QStringLiteral("road.cdi"), handContainer({sampleRecord().bytes()}));
    write(QStringLiteral("broken.cdi"), QByteArray("cdi\0\1", 5));
    write(QStringLiteral("old.pdf"), "the sheet printed last week");
    const auto writeJson = [this](const char *name, const char *key, const QJsonValue &value) {
        QJsonObject json = sampleJson();
        json.insert(QLatin1String(key), value); // an undefined value removes the key
        write(QLatin1String(name), QJsonDocument(json).toJson());
    };
    writeJson("good.json", "voltage", 185);
    writeJson("nokey.json", "voltage", QJsonValue::Undefined);
    writeJson("mode.json", "sensorMode", 3);
    QJsonArray map = sampleJson().value("map").toArray();
    map[3] = QJsonArray {3500, "twenty"};
    writeJson("point.json", "map", map);
}

int TestCli::run(QStringList arguments, bool inBuildDir, QByteArray *out, QByteArray *err)
{
    for (QString &argument : arguments) {
        if (argument.contains(QLatin1Char('.')) && !argument.startsWith(QLatin1Char('-')))
            argument = path(argument);
    }
    QProcess process;
    process.setWorkingDirectory(inBuildDir ? m_buildDir : m_dir.path());
    // A runtime folder of its own keeps Qt's note about a missing one off the error stream.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtimeDir.path());
    // A German system: what the tool writes must not take its number format from there.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    process.setProcessEnvironment(environment);
    process.start(inBuildDir ? m_cli : m_bareCli, arguments);
    if (!process.waitForFinished(60000))
        return -1;
    if (out)
        *out = process.readAllStandardOutput();
    if (err)
        *err = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

QString TestCli::write(const QString &name, const QByteArray &bytes)
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

// The arguments are separated by spaces.
void TestCli::exitCodes_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<bool>("inBuildDir");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message"); // on the output for 0, else the one line of the errors

    QTest::newRow("help") << "--help" << true << 0 << "build-hints";
    QTest::newRow("no verb") << QString() << true << 2 << "no verb given";
    QTest::newRow("size zero") << "graph road.cdi g.png --size 0x300" << true << 2 << "--size expects";
    QTest::newRow("unknown language")
        << "graph road.cdi g.png --language fr" << true << 2 << "unknown language 'fr'";
    QTest::newRow("no translation file")
        << "graph road.cdi g.png --language de" << false << 1 << "lang_de.qm";
    QTest::newRow("no library for the sheet's header, the old sheet kept")
        << "print road.cdi old.pdf" << false << 1 << "default.cds";
    QTest::newRow("broken profile, the old sheet kept")
        << "print broken.cdi old.pdf" << true << 1 << "not a readable profile file";
    QTest::newRow("missing profile") << "graph missing.cdi g.png" << true << 1 << "missing.cdi: cannot open";
    QTest::newRow("target folder missing")
        << "pack good.json no/such/x.cdi" << true << 1 << "could not write to file";
    QTest::newRow("missing key") << "pack nokey.json x.cdi" << true << 1 << "voltage";
    QTest::newRow("sensor mode 3") << "pack mode.json x.cdi" << true << 1 << "sensorMode";
    QTest::newRow("text in a map point") << "pack point.json x.cdi" << true << 1 << "map[3][1]";
}

void TestCli::exitCodes()
{
    QFETCH(QString, arguments);
    QFETCH(bool, inBuildDir);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    QByteArray out;
    QByteArray err;
    QCOMPARE(run(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts), inBuildDir, &out, &err), exitCode);
    const QString shown = QString::fromUtf8(exitCode == 0 ? out : err);
    QVERIFY2(shown.contains(message), qPrintable(shown));
    QVERIFY(exitCode == 0 || (out.isEmpty() && err.count('\n') == 1));
    for (const char *output : {"g.png", "x.cdi"})
        QVERIFY(!QFile::exists(path(QLatin1String(output))));
    QCOMPARE(readAll(path("old.pdf")), QByteArray("the sheet printed last week"));
}

void TestCli::buildAndDumpAgree_data()
{
    QTest::addColumn<QString>("verb");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QJsonObject>("json");
    QTest::addColumn<QByteArray>("bytes"); // written out from the layout; none: not compared
    const QJsonObject hint {
        {"en", QJsonObject {{"title", "Voltage"}, {"text", "<p>Charge <b>voltage</b></p>"}}},
        {"de", QJsonObject {{"title", "Zündspannung"}, {"text", "Ladespannung"}}}};
    const QJsonObject library {{"libraryValue", 7}, {"profiles", QJsonArray {sampleJson(), sampleJson()}}};
    const QJsonObject hints {{"catalogValue", 2}, {"hints", QJsonArray {hint, hint}}};
    QTest::newRow("library") << "build-library" << QString("cds") << library << QByteArray();
    QTest::newRow("hints") << "build-hints" << QString("cdh") << hints << QByteArray();
    QTest::newRow("profile") << "pack" << QString("cdi") << sampleJson()
                             << handContainer({sampleRecord().bytes()});
}

// What is built follows the layout and dumps to the same JSON, and building from that dump gives
// the same bytes.
void TestCli::buildAndDumpAgree()
{
    QFETCH(QString, verb);
    QFETCH(QString, suffix);
    QFETCH(QJsonObject, json);
    QFETCH(QByteArray, bytes);
    write("source.json", QJsonDocument(json).toJson());
    QCOMPARE(run({verb, "source.json", "built." + suffix}), 0);
    const QByteArray built = readAll(path("built." + suffix));
    if (!bytes.isNull())
        QCOMPARE(built.toHex(), bytes.toHex());
    QByteArray dumped;
    QCOMPARE(run({"dump", "built." + suffix}, true, &dumped), 0);
    QCOMPARE(QJsonDocument::fromJson(dumped).object(), json);
    write("dumped.json", dumped);
    QCOMPARE(run({verb, "dumped.json", "again." + suffix}), 0);
    QCOMPARE(readAll(path("again." + suffix)), built);
}

void TestCli::drawing_data()
{
    QTest::addColumn<QString>("arguments"); // separated by spaces, the output third
    QTest::addColumn<QSize>("size"); // of the picture; none for the sheet
    QTest::addColumn<QStringList>("texts"); // on the sheet
    QTest::newRow("graph of a given size, German")
        << "graph road.cdi out.png --size 400x300 --language de" << QSize(400, 300) << QStringList();
    QTest::newRow("sheet in German") << "print road.cdi out.pdf --language de" << QSize()
                                     << QStringList {"Zündspannung", "36,5°"};
    QTest::newRow("sheet in English on a German system without a language")
        << "print road.cdi out.pdf" << QSize() << QStringList {"Ignition voltage", "36.5°"};
}

void TestCli::drawing()
{
    QFETCH(QString, arguments);
    QFETCH(QSize, size);
    QFETCH(QStringList, texts);
    const QStringList words = arguments.split(QLatin1Char(' '));
    const QString output = path(words[2]);
    QFile::remove(output);
    QCOMPARE(run(words), 0);
    if (size.isValid()) {
        QCOMPARE(QImage(output).size(), size);
        return;
    }
    const QByteArray pdf = readAll(output);
    QVERIFY(pdf.startsWith("%PDF-") && pdf.trimmed().endsWith("%%EOF"));
    // The sheet speaks its language, numbers included.
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        QSKIP("pdftotext (poppler-utils) is not installed");
    QProcess extract;
    extract.start(pdftotext, {output, QStringLiteral("-")});
    QVERIFY(extract.waitForFinished(30000));
    const QString text = QString::fromUtf8(extract.readAllStandardOutput());
    for (const QString &expected : texts)
        QVERIFY2(text.contains(expected), qPrintable(expected + QStringLiteral(" missing in:\n") + text));
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
