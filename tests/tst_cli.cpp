#include <QtTest>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <cstring>

namespace {

// A small encoder written from the file layout tables, independent of the program's own,
// so that the tool is checked against the layout and not against itself.
struct LayoutEncoder
{
    QByteArray bytes;

    void raw(const char *text) { bytes.append(text, int(std::strlen(text))); }
    void byte(int value) { bytes.append(char(value)); }
    void i32(qint32 value)
    {
        byte('i');
        for (int i = 0; i < 4; ++i)
            byte((quint32(value) >> (8 * i)) & 0xFF);
    }
    void boolean(bool value) { byte(value ? 'B' : 'b'); }
    void f64(double value)
    {
        quint64 bits;
        std::memcpy(&bits, &value, 8);
        byte('d');
        for (int i = 0; i < 8; ++i)
            byte(int((bits >> (8 * i)) & 0xFF));
    }
    void string(const QString &text)
    {
        const QByteArray utf8 = text.toUtf8();
        byte('Q');
        i32(utf8.size());
        bytes.append(utf8);
    }
};

QByteArray containerOf(const QList<QByteArray> &records)
{
    QByteArray out("cdi");
    out.append('\0');
    out.append(char(records.size() & 0xFF));
    out.append(char(records.size() >> 8));
    for (const QByteArray &record : records) {
        out.append('U');
        for (int i = 0; i < 3; ++i)
            out.append(char((record.size() >> (8 * i)) & 0xFF));
        out.append(record);
    }
    return out;
}

// The record of the sample profile below, item by item.
QByteArray sampleRecord()
{
    LayoutEncoder e;
    e.i32(1); // format version
    e.i32(3); // motorbikeType
    e.i32(5); // templateType
    e.boolean(true); // isCustom
    e.boolean(true); // auxFlag
    e.string(QStringLiteral("Straßenprofil 250"));
    e.string(QStringLiteral("Kerze BR9, 0,6 mm"));
    e.i32(0x0B); // monitoring, ground blocks, mode 1
    e.i32(185);
    e.boolean(false); // edge selectable
    e.boolean(true); // mode 1 for older readers
    e.f64(-0.00025);
    e.f64(-0.0004);
    const int map[10][2] = {{800, 6}, {1500, 10}, {2500, 15}, {3500, 20}, {4500, 24},
                            {5500, 27}, {6500, 29}, {7500, 30}, {8500, 30}, {9500, 29}};
    for (const auto &point : map) {
        e.i32(point[0]);
        e.i32(point[1]);
    }
    e.f64(36.5);
    e.f64(-0.0004); // K1 follows the falling edge in sensor mode 1
    e.f64(0.0);
    e.i32(2);
    e.string(QStringLiteral("For road use."));
    e.string(QStringLiteral("Für die Straße."));
    return e.bytes;
}

QJsonObject sampleJson()
{
    QJsonArray map;
    const int points[10][2] = {{800, 6}, {1500, 10}, {2500, 15}, {3500, 20}, {4500, 24},
                               {5500, 27}, {6500, 29}, {7500, 30}, {8500, 30}, {9500, 29}};
    for (const auto &point : points)
        map.append(QJsonArray {point[0], point[1]});
    return QJsonObject {
        {"motorbikeType", 3},
        {"templateType", 5},
        {"isCustom", true},
        {"auxFlag", true},
        {"name", QStringLiteral("Straßenprofil 250")},
        {"notes", QStringLiteral("Kerze BR9, 0,6 mm")},
        {"extraText", QJsonArray {QStringLiteral("For road use."), QStringLiteral("Für die Straße.")}},
        {"map", map},
        {"sensorCoefficients", QJsonArray {36.5, -0.0004, 0.0}},
        {"sideStandMonitoring", true},
        {"groundEnablesIgnition", false},
        {"pickUpRisingEdge", false},
        {"sensorMode", 1},
        {"voltage", 185},
        {"pickUpEdgeSelectable", false},
        {"k1Rising", -0.00025},
        {"k1Falling", -0.0004},
    };
}

} // namespace

class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void usage_data();
    void usage();
    void packWritesTheLayoutByteForByte();
    void dumpReadsEveryField();
    void dumpAndBuildRoundTrip_data();
    void dumpAndBuildRoundTrip();
    void refusesBadJson_data();
    void refusesBadJson();
    void refusesBrokenFiles_data();
    void refusesBrokenFiles();

private:
    int run(const QStringList &arguments, QByteArray *out = nullptr, QByteArray *err = nullptr);
    QString write(const QString &name, const QByteArray &bytes);

    QString m_cli;
    QTemporaryDir m_dir;
};

void TestCli::initTestCase()
{
    m_cli = qEnvironmentVariable("SPARKWRIGHT_CLI");
    if (m_cli.isEmpty())
        QSKIP("SPARKWRIGHT_CLI does not name the tool");
    QVERIFY(m_dir.isValid());
}

int TestCli::run(const QStringList &arguments, QByteArray *out, QByteArray *err)
{
    QProcess process;
    process.start(m_cli, arguments);
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
    const QString path = m_dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return path;
}

void TestCli::usage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");

    QTest::newRow("help") << QStringList {"--help"} << 0;
    QTest::newRow("no verb") << QStringList {} << 2;
    QTest::newRow("unknown verb") << QStringList {"explode", "x"} << 2;
    QTest::newRow("dump without a file") << QStringList {"dump"} << 2;
    QTest::newRow("pack with one argument") << QStringList {"pack", "a.json"} << 2;
    QTest::newRow("dump of an unknown kind") << QStringList {"dump", "profile.txt"} << 2;
}

void TestCli::usage()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QByteArray out;
    QByteArray err;
    QCOMPARE(run(arguments, &out, &err), exitCode);
    if (exitCode == 0) {
        for (const char *verb : {"dump", "pack", "build-library", "build-hints"})
            QVERIFY2(out.contains(verb), verb);
    } else {
        QVERIFY(!err.isEmpty());
        QCOMPARE(err.count('\n'), 1);
    }
}

void TestCli::packWritesTheLayoutByteForByte()
{
    const QString source = write("sample.json", QJsonDocument(sampleJson()).toJson());
    const QString target = m_dir.filePath("sample.cdi");
    QCOMPARE(run({"pack", source, target}), 0);
    QFile file(target);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().toHex(), containerOf({sampleRecord()}).toHex());
}

void TestCli::dumpReadsEveryField()
{
    const QString path = write("layout.cdi", containerOf({sampleRecord()}));
    QByteArray out;
    QCOMPARE(run({"dump", path}, &out), 0);
    const QJsonObject dumped = QJsonDocument::fromJson(out).object();
    const QJsonObject expected = sampleJson();
    for (auto it = expected.begin(); it != expected.end(); ++it)
        QVERIFY2(dumped.value(it.key()) == it.value(), qPrintable(it.key()));
    QCOMPARE(dumped.keys(), expected.keys());
}

void TestCli::dumpAndBuildRoundTrip_data()
{
    QTest::addColumn<QString>("verb");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("json");

    QJsonObject library {{"libraryValue", 7}, {"profiles", QJsonArray {sampleJson(), sampleJson()}}};
    QJsonObject hint {{"en", QJsonObject {{"title", "Voltage"}, {"text", "<p>Charge <b>voltage</b></p>"}}},
                      {"de", QJsonObject {{"title", "Zündspannung"}, {"text", "Ladespannung"}}}};
    QJsonObject hints {{"catalogValue", 2}, {"hints", QJsonArray {hint, hint}}};
    QJsonObject emptyLibrary {{"libraryValue", 1}, {"profiles", QJsonArray {}}};

    QTest::newRow("library") << "build-library" << "cds" << QJsonDocument(library).toJson();
    QTest::newRow("library without profiles") << "build-library" << "cds" << QJsonDocument(emptyLibrary).toJson();
    QTest::newRow("hints") << "build-hints" << "cdh" << QJsonDocument(hints).toJson();
    QTest::newRow("profile") << "pack" << "cdi" << QJsonDocument(sampleJson()).toJson();
}

void TestCli::dumpAndBuildRoundTrip()
{
    QFETCH(QString, verb);
    QFETCH(QString, suffix);
    QFETCH(QByteArray, json);

    const QString source = write("source.json", json);
    const QString built = m_dir.filePath("built." + suffix);
    QCOMPARE(run({verb, source, built}), 0);
    QByteArray dumped;
    QCOMPARE(run({"dump", built}, &dumped), 0);
    QCOMPARE(QJsonDocument::fromJson(dumped), QJsonDocument::fromJson(json));

    // Building again from the dump gives the same bytes.
    const QString again = m_dir.filePath("again." + suffix);
    QCOMPARE(run({verb, write("dumped.json", dumped), again}), 0);
    QFile a(built);
    QFile b(again);
    QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    QCOMPARE(a.readAll(), b.readAll());
}

void TestCli::refusesBadJson_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("named");

    auto with = [](const char *key, const QJsonValue &value) {
        QJsonObject o = sampleJson();
        if (value.isUndefined())
            o.remove(key);
        else
            o.insert(key, value);
        return QJsonDocument(o).toJson();
    };
    QJsonObject badPoint = sampleJson();
    QJsonArray map = badPoint.value("map").toArray();
    map[3] = QJsonArray {3500, "twenty"};
    badPoint.insert("map", map);

    QTest::newRow("malformed") << QByteArray("{\"name\": ") << "malformed";
    QTest::newRow("not an object") << QByteArray("[1, 2]") << "object";
    QTest::newRow("missing key") << with("voltage", QJsonValue(QJsonValue::Undefined)) << "voltage";
    QTest::newRow("string for a bool") << with("isCustom", "yes") << "isCustom";
    QTest::newRow("fraction for an int") << with("motorbikeType", 1.5) << "motorbikeType";
    QTest::newRow("int out of range") << with("voltage", 4294967296.0) << "voltage";
    QTest::newRow("sensor mode 3") << with("sensorMode", 3) << "sensorMode";
    QTest::newRow("nine map points") << with("map", QJsonArray {1, 2, 3, 4, 5, 6, 7, 8, 9}) << "map";
    QTest::newRow("text in a map point") << QJsonDocument(badPoint).toJson() << "map[3][1]";
    QTest::newRow("one information text") << with("extraText", QJsonArray {"only"}) << "extraText";
    QTest::newRow("coefficient as text") << with("sensorCoefficients", QJsonArray {1, "x", 2}) << "sensorCoefficients[1]";
}

void TestCli::refusesBadJson()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, named);
    const QString source = write("bad.json", json);
    const QString target = m_dir.filePath("bad.cdi");
    QFile::remove(target);
    QByteArray err;
    QCOMPARE(run({"pack", source, target}, nullptr, &err), 1);
    QVERIFY2(err.contains(named.toUtf8()), err.constData());
    QVERIFY2(err.contains("bad.json"), err.constData());
    QCOMPARE(err.count('\n'), 1);
    QVERIFY(!QFile::exists(target));
}

void TestCli::refusesBrokenFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray good = containerOf({sampleRecord()});
    QTest::newRow("empty profile file") << "empty.cdi" << QByteArray();
    QTest::newRow("profile cut in its record") << "cut.cdi" << good.left(good.size() / 2);
    QTest::newRow("container without records") << "none.cdi" << QByteArray("cdi\0\0\0", 6);
    QTest::newRow("wrong magic") << "magic.cdi" << QByteArray("cdx").append(good.mid(3));
    QTest::newRow("library without header") << "nohead.cds" << QByteArray("cdi\0\0\0", 6);
    QTest::newRow("library header of another kind") << "head.cds" << containerOf({sampleRecord()});
    QTest::newRow("hints cut short") << "cut.cdh" << containerOf({QByteArray("i\1\0\0\0i\1\0\0\0i\5\0\0\0", 15)});
}

void TestCli::refusesBrokenFiles()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QByteArray out;
    QByteArray err;
    QCOMPARE(run({"dump", write(name, bytes)}, &out, &err), 1);
    QVERIFY(out.isEmpty());
    QVERIFY2(err.contains(name.toUtf8()), err.constData());

    QCOMPARE(run({"dump", m_dir.filePath("missing-" + name)}, nullptr, &err), 1);
    QCOMPARE(run({"pack", m_dir.filePath("missing.json"), m_dir.filePath("x.cdi")}, nullptr, &err), 1);
    const QString source = write("good.json", QJsonDocument(sampleJson()).toJson());
    QCOMPARE(run({"pack", source, m_dir.filePath("no/such/folder/x.cdi")}, nullptr, &err), 1);
    QVERIFY(err.contains("could not write to file"));
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
