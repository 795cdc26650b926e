// The command-line tool as a user runs it: packing and dumping profiles against the file layout,
// building the data files, drawing a map ("graph", PNG) and the printed sheet ("print", PDF), the
// device verbs against a virtual CDI in another process with the program's real pacing, and its
// exit codes: 0 done, 1 a file could not be read or written or an exchange failed, 2 bad usage or
// stopped before an exchange; never a partial output file.
#include "profile/profilefile.h"
#include "programversion.h"
#include "support/layoutencoder.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

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
    void deviceSession();

private:
    // Runs the tool from the build folder, beside the data files and translations, always in the
    // case folder, which holds planted data files that are never to be read. File names are taken
    // in the case folder unless they are absolute. Before the arguments, "bare" runs a copy of the tool with no data files
    // beside it or in a share folder, "limit=N" lets no file grow past N bytes, ">full" sends
    // the output to a full disk and "nobody" runs it as a user without groups.
    int run(QStringList arguments, QString *out = nullptr, QString *err = nullptr);
    // Starts a virtual CDI with the arguments; its pseudo-terminal, or empty.
    QString startVirtualCdi(QProcess &cdi, const QStringList &arguments);
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QString m_cli;
    QString m_bareCli;
    QTemporaryDir m_dir;
    QTemporaryDir m_runtimeDir;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

void TestCli::initTestCase()
{
    m_cli = qEnvironmentVariable("SPARKWRIGHT_CLI");
    if (m_cli.isEmpty())
        QSKIP("SPARKWRIGHT_CLI names the tool, built beside its data files");
    QVERIFY(m_dir.isValid() && m_runtimeDir.isValid());
    // Its own runtime folder: the virtual CDIs of this test are the only ones the tool sees, and
    // Qt's note about a missing one stays off the error stream.
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtimeDir.path());
    // A German system: what the tool writes must not take its language or number format from there.
    m_environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("bin")) && QDir(m_dir.path()).mkpath("folder.cdi"));
    m_bareCli = path(QStringLiteral("bin/sparkwright-cli"));
    QVERIFY(QFile::copy(m_cli, m_bareCli));
    QVERIFY(writeFile(path(QStringLiteral("road.cdi")), handContainer({sampleRecord().bytes()})));
    QVERIFY(writeFile(path(QStringLiteral("old.pdf")), "the sheet printed last week"));
    for (const char *planted : {"default.cds", "hints.cdh", "lang_de.qm"})
        QVERIFY(writeFile(path(QLatin1String(planted)), "planted by someone else"));
    QJsonObject json = sampleJson();
    QVERIFY(writeFile(path(QStringLiteral("road.json")), QJsonDocument(json).toJson()));
    QJsonArray map = json.value("map").toArray();
    map[3] = QJsonArray {3500, "twenty"};
    json.insert(QStringLiteral("map"), map);
    QVERIFY(writeFile(path(QStringLiteral("point.json")), QJsonDocument(json).toJson()));
}

int TestCli::run(QStringList arguments, QString *out, QString *err)
{
    QProcess process;
    const QString tool = arguments.first() == QLatin1String("bare") ? m_bareCli : m_cli;
    if (tool == m_bareCli)
        arguments.removeFirst();
    QStringList wrapper; // a command the tool runs under, with its arguments
    if (arguments.first().startsWith(QLatin1String("limit="))) {
        // Every write past the limit fails with "File too large", as on a full disk.
        wrapper = QStringList {QStringLiteral("sh"), QStringLiteral("-c"),
            QStringLiteral("trap '' XFSZ; exec prlimit --fsize=%1 -- \"$@\"")
                .arg(arguments.takeFirst().mid(6)),
            QStringLiteral("sh")};
    } else if (arguments.first() == QLatin1String("nobody")) {
        arguments.removeFirst();
        wrapper = QStringList {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
    } else if (arguments.first() == QLatin1String(">full")) {
        arguments.removeFirst();
        process.setStandardOutputFile(QStringLiteral("/dev/full"));
    }
    for (QString &argument : arguments)
        if (argument.contains(QRegularExpression(QStringLiteral("^[^-/].*\\.[a-z]+$"))))
            argument = path(argument);
    process.setWorkingDirectory(m_dir.path());
    process.setProcessEnvironment(m_environment);
    if (wrapper.isEmpty())
        process.start(tool, arguments);
    else
        process.start(wrapper.first(), wrapper.mid(1) + QStringList {tool} + arguments);
    if (!process.waitForFinished(60000))
        return -1;
    if (out)
        *out = QString::fromUtf8(process.readAllStandardOutput());
    if (err)
        *err = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

QString TestCli::startVirtualCdi(QProcess &cdi, const QStringList &arguments)
{
    cdi.setWorkingDirectory(m_dir.path());
    cdi.setProcessEnvironment(m_environment);
    cdi.start(m_cli, QStringList {"virtual-cdi"} + arguments);
    while (!cdi.canReadLine() && cdi.waitForReadyRead(10000)) { }
    return QString::fromUtf8(cdi.readLine()).trimmed();
}

// The arguments are separated by spaces. Damaged files are refused by the readers under
// tests/fuzz and tst_damagedinput; here one file error of each kind, and one bad usage.
void TestCli::exitCodes_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message"); // on the output for 0, else the one line of the errors

    QTest::newRow("help") << "--help" << 0 << "build-hints";
    QTest::newRow("version") << "--version" << 0
                             << QStringLiteral("sparkwright-cli %1\n").arg(kProgramVersionText);
    QTest::newRow("unknown language") << "graph road.cdi g.png --language fr" << 2 << "unknown language 'fr'";
    QTest::newRow("no library for the sheet's header, the old sheet kept")
        << "bare print road.cdi old.pdf" << 1 << "default.cds: the file does not exist";
    QTest::newRow("a folder as the profile")
        << "print folder.cdi x.pdf" << 1 << "folder.cdi: the file could not be read";
    QTest::newRow("damaged library") << "dump default.cds" << 1 << "is damaged or of another kind";
    QTest::newRow("text in a map point") << "pack point.json x.cdi" << 1 << "map[3][1]";
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
    QString out, err;
    QCOMPARE(run(arguments.split(QLatin1Char(' ')), &out, &err), exitCode);
    const QString shown = exitCode == 0 ? out : err;
    QVERIFY2(shown.contains(message), qPrintable(shown));
    QVERIFY(exitCode == 0 || (out.isEmpty() && err.count(QLatin1Char('\n')) == 1));
    QVERIFY(!QFile::exists(path("g.png")) && !QFile::exists(path("x.cdi")));
    QCOMPARE(readFile(path("old.pdf")), QByteArray("the sheet printed last week"));
}

// A profile packed from JSON follows the layout, and the layout dumps to the same JSON. The
// library and the hints are built by the build itself; their layouts are checked in tst_profilefile.
void TestCli::packAndDumpFollowTheLayout()
{
    QCOMPARE(run({"pack", "road.json", "built.cdi"}), 0);
    QCOMPARE(readFile(path("built.cdi")).toHex(), readFile(path("road.cdi")).toHex());
    QString dumped;
    QCOMPARE(run({"dump", "road.cdi"}, &dumped), 0);
    QCOMPARE(QJsonDocument::fromJson(dumped.toUtf8()).object(), sampleJson());
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
        m_environment.insert(QStringLiteral("SOURCE_DATE_EPOCH"), QString::fromLatin1(epoch));
    const int printed = run(QStringList {"print", "road.cdi", "out.pdf"} + options);
    m_environment.remove(QStringLiteral("SOURCE_DATE_EPOCH"));
    QCOMPARE(printed, 0);
    const QByteArray pdf = readFile(path("out.pdf"));
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

// A session with a virtual CDI, from listing the ports to programming and verifying, and every
// way it stops before an exchange.
void TestCli::deviceSession()
{
    QProcess cdi;
    const QString port = startVirtualCdi(cdi, {"--firmware", "3.1", "--serial", "42"});
    QVERIFY2(port.startsWith(QLatin1String("/dev/")), qPrintable(port));

    QString out, err;
    QCOMPARE(run({"ports"}, &out, &err), 0);
    QVERIFY2(out.startsWith("port\tdescription\tmanufacturer\tUSB ID\tnotes\n")
            && out.contains(port + "\tVirtual CDI\tSparkwright\t-\tbridge\tvirtual\n"),
        qPrintable(out));
    QCOMPARE(run({"ping"}, &out, &err), 0);
    QCOMPARE(out,
        QStringLiteral("Test successful\nYour CDI responded as expected. Firmware 3.1 and serial number 42 "
                       "were reported.\n"));

    // A node closed to the user is described as the system has it, with the fix that works there.
    // That needs root, to hand the node to root and run the tool as nobody.
    const QByteArray node = port.toLocal8Bit();
    if (::geteuid() == 0 && ::chown(node.constData(), 0, 0) == 0 && ::chmod(node.constData(), 0660) == 0) {
        QCOMPARE(run({"nobody", "ping", "--port", port}, &out, &err), 2);
        QCOMPARE(err,
            QStringLiteral(
                "sparkwright-cli: Permission denied: %1 belongs to the group root and has the access "
                "rights crw-rw----. Add your account to this group, then log out and in again: sudo "
                "usermod -aG root $USER\n")
                .arg(port));
        QVERIFY(::chmod(node.constData(), 0600) == 0);
        QCOMPARE(run({"nobody", "ping", "--port", port, "--language", "de"}, &out, &err), 2);
        QCOMPARE(err,
            QStringLiteral("sparkwright-cli: Zugriff verweigert: %1 gehört zur Gruppe root und hat die "
                           "Zugriffsrechte crw-------. Nur der Eigentümer root darf darauf zugreifen.\n")
                .arg(port));
        QVERIFY(::chmod(node.constData(), 0620) == 0);
    }

    QCOMPARE(run({"import", "held.cdi"}, &out, &err), 0);
    QCOMPARE(out, QStringLiteral("Import OK\nThe imported profile was saved as %1.\n").arg(path("held.cdi")));
    // Read back after programming, unless it may not be or is not wanted.
    for (const QString option : {"", "--no-verify", "--no-reimport"}) {
        QCOMPARE(
            run(QStringList {"program", "held.cdi", option}.filter(QRegularExpression(".")), &out, &err), 0);
        QVERIFY2(out.startsWith(option.isEmpty() ? "Programmed and verified\n" : "Programming successful\n"),
            qPrintable(out + err));
    }
    // The differences as a CDI holding the first would get the second: names do not count.
    Profile other = readProfileFile(path("held.cdi")).value_or(Profile());
    other.setName(QStringLiteral("Other"));
    QVERIFY(saveProfileFile(other, path("renamed.cdi")));
    other.setVoltage(220);
    IgnitionMap map = other.map();
    map.setPoint(2, 3200, 20);
    other.setMap(map);
    QVERIFY(saveProfileFile(other, path("other.cdi")));
    QVERIFY(run({"diff", "held.cdi", "renamed.cdi"}, &out, &err) == 0 && (out + err).isEmpty());
    QCOMPARE(run({"diff", "held.cdi", "other.cdi", "--language", "de"}, &out, &err), 1);
    QCOMPARE(
        out, QStringLiteral("Punkt 3: 3000 U/min, 18° → 3200 U/min, 20°\nZündspannung: 170 V → 220 V\n"));
    QCOMPARE(run({"diff", "held.cdi", "none.cdi"}, &out, &err), 2);
    QVERIFY2(out.isEmpty() && err.contains(path("none.cdi")), qPrintable(err));
    {
        // A CDI that echoes right but keeps what it held: the difference, sent → read back.
        QProcess forgetful;
        const QString forgetfulPort
            = startVirtualCdi(forgetful, {"--fault", "keeps-old", "--profile", path("held.cdi")});
        QCOMPARE(run({"program", "other.cdi", "--port", forgetfulPort}, &out, &err), 1);
        // The words are tst_deviceframe's; the tool gives each difference a line of its own.
        QVERIFY2(out.startsWith("Verification failed\n")
                && out.contains(
                    ":\nSlot 3: 3200 rpm, 20° → 3000 rpm, 18°\nIgnition voltage: 220 V → 170 V\n\n"),
            qPrintable(out));
        forgetful.terminate();
        QVERIFY(forgetful.waitForFinished(10000));
    }
    // With the frames on the error stream, for support.
    QCOMPARE(run({"import", "refused.cdi", "--verbose"}, &out, &err), 1);
    QCOMPARE(out,
        QStringLiteral(
            "Import failed\nNothing answered on %1. The CDI may have been programmed not to give its "
            "profile back; otherwise no CDI seems to be connected to this port.\n")
            .arg(port));
    QVERIFY2(err.startsWith("Sparkwright ") && err.contains(QStringLiteral("\nPort: %1\n").arg(port)),
        qPrintable(err));
    QVERIFY(!QFile::exists(path("refused.cdi")));

    cdi.terminate();
    QVERIFY(cdi.waitForFinished(10000) && cdi.exitCode() == 0);
    const QString served = QString::fromUtf8(cdi.readAllStandardOutput());
    QVERIFY2(served.contains(QStringLiteral("read refused")), qPrintable(served));
    QCOMPARE(QDir(m_runtimeDir.path()).entryList(QDir::Files), QStringList());
    // Without a CDI: said below the list, which a script still reads as it is.
    QCOMPARE(run({"ports"}, &out, &err), 0);
    QCOMPARE(err.contains("no CP210x bridge is plugged in"), !out.contains("\tbridge"));
    // An output that cannot be written stops an import before the port is opened.
    QFile readOnly(path("read-only.cdi"));
    QVERIFY(readOnly.open(QIODevice::WriteOnly) && readOnly.setPermissions(QFile::ReadOwner));
    for (const QString &target : {m_dir.path(), readOnly.fileName(), path("none/new.cdi")}) {
        QCOMPARE(run({"import", target, "--port", "/dev/null/x"}, &out, &err), 1);
        QVERIFY2(err.startsWith("sparkwright-cli: " + target + ": the file may not be written there"),
            qPrintable(err));
    }
    // Everything that stops before an exchange: exit code 2 and one line on the error stream. The
    // profile has one angle beyond every limit.
    Profile beyond;
    beyond.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 11, 12, 13, 60, 15, 16, 17, 18, 19}));
    QVERIFY(saveProfileFile(beyond, path(QStringLiteral("bad.cdi"))));
    const std::pair<QStringList, QString> refusals[]
        = {{{"ping"}, "no CDI found"}, {{"ping", "--port", "/dev/null/x"}, "Cannot open /dev/null/x: "},
            {{"program", "bad.cdi"}, "The ignition map of this profile is not valid."},
            {{"virtual-cdi", "--fault", "loud"}, "unknown fault 'loud'"}};
    for (const auto &[arguments, shown] : refusals) {
        QCOMPARE(run(arguments, &out, &err), 2);
        QVERIFY2(out.isEmpty() && err.count(QLatin1Char('\n')) == 1 && err.contains(shown), qPrintable(err));
    }
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
