// Whole exchanges over real pseudo-terminals: the bridge on one side, the virtual CDI on the
// other, both on this thread's event loop, with a short tick so no test waits seconds.
#include "device/cbridgecomm.h"
#include "device/ccalibrator.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/cvirtualcdi.h"
#include "device/exchangetranscript.h"
#include "device/serialports.h"
#include "profile/defaultlibrary.h"
#include "support/layoutencoder.h"

#include <QScopeGuard>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Request at 100 ms, waiting() at 200 ms, latest end at 500 ms; after an exchange
// without its answer, the next on that port sends no earlier than 600 ms after its end.
const BridgePacing kPacing {100, 30, 600};
constexpr int kSlowMs = 200;
constexpr int kTooSlowMs = 800;
constexpr uid_t kOtherUser = 65534;

const char kRegistryFolder[] = "sparkwright-virtual-cdi";

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Track"));
    profile.setMotorbikeType(1, true);
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 12, 14, 16, 18, 20, 22, 24, 26, 28}));
    profile.setVoltage(180);
    profile.setFlagsAndCoefficientsAsStored(ProfileFlags {true, true, true, 1}, {42.5, -1.0 / 4096, 0.0});
    return profile;
}

} // namespace

class TestDeviceExchange : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void faults_data();
    void faults();
    void transcript();
    void lateAnswer_data();
    void lateAnswer();
    void lateAnswerStaysOnItsTerminal();
    void detection_data();
    void detection();
    void registryEntries_data();
    void registryEntries();
    void registryFolder_data();
    void registryFolder();

private:
    std::unique_ptr<CCommunicator> transaction(const QString &kind);

    QTemporaryDir m_runtime;
    std::shared_ptr<DefaultLibrary> m_library = std::make_shared<DefaultLibrary>();
    QRandomGenerator m_random {20260424};
};

void TestDeviceExchange::initTestCase()
{
    // Virtual CDIs announce themselves here, out of sight of anything else running.
    qputenv("XDG_RUNTIME_DIR", m_runtime.path().toLocal8Bit());
    Profile template1; // an import builds on the template of the profile's type
    template1.setName(QStringLiteral("Template 1"));
    template1.setMotorbikeType(1, false);
    m_library->append(template1);
}

std::unique_ptr<CCommunicator> TestDeviceExchange::transaction(const QString &kind)
{
    if (kind == QLatin1String("ping"))
        return std::make_unique<CPinger>(m_random);
    if (kind == QLatin1String("import"))
        return std::make_unique<CImporter>(m_library);
    return std::make_unique<CCalibrator>(sampleProfile(), true, m_random);
}

// Each way a CDI may answer, and the kind of result it makes; the words for each kind are tested
// in tst_deviceframe. The ping meets every fault the bridge tells apart (an answer too late in
// lateAnswer); import and programming add what they make of an answer, and a programming the lost
// line before and after its request, which decides whether the CDI may have been changed. While
// an exchange runs a second is refused, and the first ends as it would have.
void TestDeviceExchange::faults_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("result");
    using K = ExchangeResult::Kind;
    const auto row = [](const char *kind, const char *fault, K result) {
        QTest::addRow("%s, %s", kind, fault) << QString(kind) << QString(fault) << int(result);
    };
    row("ping", "none", K::Succeeded);
    row("ping", "slow", K::Succeeded);
    row("ping", "silent", K::NoResponse);
    row("ping", "short", K::WrongLength);
    row("ping", "long", K::WrongLength);
    row("import", "none", K::Succeeded);
    row("import", "unknown-type", K::UnknownType);
    row("import", "bad-value", K::BadValue);
    row("program", "none", K::Succeeded);
    row("program", "wrong-echo", K::WrongEcho);
    row("program", "bad-header", K::BadHeader);
    row("program", "hangup", K::PortLost);
    row("program", "line closed before the request", K::PortLost);
}

void TestDeviceExchange::faults()
{
    QFETCH(QString, kind);
    QFETCH(QString, fault);
    QFETCH(int, result);

    CVirtualCdi cdi;
    cdi.setProfile(sampleProfile());
    cdi.setDelays(kSlowMs, kTooSlowMs);
    cdi.setFault(CVirtualCdi::faultFromName(fault).value_or(CVirtualCdi::Fault::None));
    QCOMPARE(cdi.open(), QString());
    const QString port = cdi.portName();
    auto bridge = std::make_unique<CBridgeComm>();
    QSignalSpy finished(bridge.get(), &CBridgeComm::finished);
    QSignalSpy waiting(bridge.get(), &CBridgeComm::waiting);
    // Whoever hears the end may drop the bridge there and then, however the exchange ended.
    connect(bridge.get(), &CBridgeComm::finished, bridge.get(), [&bridge] { bridge.reset(); });
    QVERIFY(bridge->runTransaction(transaction(kind), port, kPacing));
    const auto second = bridge->runTransaction(transaction(kind), port, kPacing);
    QVERIFY(!second && second.error().kind == DeviceRefusal::Kind::Busy);
    if (fault.startsWith(QLatin1String("line closed")))
        cdi.hangUp();
    QVERIFY(finished.wait(5000) && !bridge);
    const auto ended = finished.at(0).at(0).value<ExchangeResult>();
    QCOMPARE(int(ended.kind), result);
    QCOMPARE(ended.portName, port);
    // Whether the CDI may have been reached, for a programming cut off.
    QCOMPARE(ended.requestSent, !fault.startsWith(QLatin1String("line closed")));
    if (fault == QLatin1String("silent"))
        QCOMPARE(waiting.count(), 1);
}

// What the details show of a ping to nonce 5A cut off mid-answer: the port as listed, then the
// frames in hex, each after the one before. Times and the port's own error text left out; a whole
// answer shows in tst_devicepages and tst_cli.
void TestDeviceExchange::transcript()
{
    CVirtualCdi cdi;
    cdi.setFault(CVirtualCdi::Fault::Hangup);
    QCOMPARE(cdi.open(), QString());
    const QString port = cdi.portName();
    CBridgeComm bridge;
    QSignalSpy finished(&bridge, &CBridgeComm::finished);
    QVERIFY(
        bridge.runTransaction(std::make_unique<CPinger>(quint8(0x5A)), port, kPacing) && finished.wait(5000));
    QStringList shown = transcriptText(bridge.transcript()).split('\n', Qt::SkipEmptyParts);
    QVERIFY2(shown.takeFirst().startsWith("Sparkwright "), qPrintable(shown.join('\n')));
    QVERIFY(shown.takeAt(3).startsWith("Opened: "));
    qint64 previous = 0;
    for (QString &line : shown) {
        line.replace(port, QLatin1String("PTY"));
        const QRegularExpressionMatch timed = QRegularExpression("^ +(\\d+) ms  (.*)$").match(line);
        if (!timed.hasMatch())
            continue;
        QVERIFY(timed.captured(1).toLongLong() >= previous);
        previous = timed.captured(1).toLongLong();
        line = timed.captured(2);
        if (line.startsWith("port error"))
            line = "port error";
    }
    QCOMPARE(shown,
        (QStringList {"Port: PTY", "Description: Virtual CDI", "USB IDs: none",
            "sent        4d f6 68 5a" + QString(" 00").repeated(44) + " 01 00 88",
            "received    4d f6 68 5a 31 2e 30 30 00 00 00 00", "port error", "closed"}));
}

// A CDI too slow for one ping answers while the next ping, to a CDI in time again, is under way:
// before that ping's request leaves, or after it and before its own answer. The late answer is
// never taken for the next one's.
void TestDeviceExchange::lateAnswer_data()
{
    QTest::addColumn<int>("lateMs"); // after the first request
    QTest::addColumn<QString>("next");
    QTest::newRow("before the next request") << 450 << "none";
    QTest::newRow("after the next request") << 600 << "slow";
}

void TestDeviceExchange::lateAnswer()
{
    QFETCH(int, lateMs);
    QFETCH(QString, next);
    CVirtualCdi cdi;
    cdi.setDelays(kSlowMs, lateMs);
    cdi.setFault(CVirtualCdi::Fault::TooSlow);
    QCOMPARE(cdi.open(), QString());
    CBridgeComm bridge;
    QSignalSpy finished(&bridge, &CBridgeComm::finished);
    for (const auto expected : {ExchangeResult::Kind::NoResponse, ExchangeResult::Kind::Succeeded}) {
        QVERIFY(bridge.runTransaction(transaction("ping"), cdi.portName(), kPacing) && finished.wait(5000));
        QCOMPARE(int(finished.takeFirst().at(0).value<ExchangeResult>().kind), int(expected));
        cdi.setFault(CVirtualCdi::faultFromName(next).value());
    }
}

// After a hang-up the CDI comes back on a new terminal, which may get the old one's descriptor: a
// late answer to a request on the old terminal must not reach the new one.
void TestDeviceExchange::lateAnswerStaysOnItsTerminal()
{
    CVirtualCdi cdi;
    cdi.setDelays(kSlowMs, 300);
    cdi.setFault(CVirtualCdi::Fault::TooSlow);
    QCOMPARE(cdi.open(), QString());
    QSignalSpy handled(&cdi, &CVirtualCdi::requestHandled);
    QSignalSpy moved(&cdi, &CVirtualCdi::portChanged);
    QSerialPort first(cdi.portName());
    QVERIFY(first.open(QIODevice::ReadWrite));
    first.write(CPinger(0x11).requestBytes());
    QVERIFY(handled.wait(5000));
    cdi.setFault(CVirtualCdi::Fault::Hangup);
    first.write(CPinger(0x22).requestBytes());
    QVERIFY(moved.wait(5000));
    first.close();
    cdi.setFault(CVirtualCdi::Fault::None);
    QSerialPort second(moved.at(0).at(0).toString());
    QVERIFY2(second.open(QIODevice::ReadWrite), qPrintable(second.errorString()));
    QTest::qWait(400); // past the late answer's time
    second.write(CPinger(0x5A).requestBytes());
    QTRY_VERIFY_WITH_TIMEOUT(second.bytesAvailable() >= 25, 5000);
    // The answer to nonce 5A: header, nonce, firmware "1.00", serial 123456, checksum.
    QCOMPARE(second.readAll(), QByteArray::fromHex("4df6685a312e3030000000000001e240000000000000000035"));
}

// The bridge by its description or its IDs; the first in list order wins.
void TestDeviceExchange::detection_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<int>("vendor"); // -1: no IDs
    QTest::addColumn<int>("product");
    QTest::addColumn<bool>("bridge");
    QTest::newRow("vendor's name, any case")
        << "silicon labs cp210x usb to uart bridge (com7)" << -1 << 0 << true;
    QTest::newRow("CP2102 IDs") << "USB serial" << 0x10C4 << 0xEA60 << true;
    QTest::newRow("other Silicon Labs product") << "USB device" << 0x10C4 << 0x8A2A << false;
    QTest::newRow("other vendor, same product ID") << "USB serial" << 0x0403 << 0xEA60 << false;
}

void TestDeviceExchange::detection()
{
    QFETCH(QString, description);
    QFETCH(int, vendor);
    QFETCH(int, product);
    QFETCH(bool, bridge);
    const SerialPortEntry entry {
        "ttyUSB1", description, {}, quint16(qMax(vendor, 0)), quint16(product), vendor >= 0, false};
    QCOMPARE(isBridgePort(entry), bridge);
    const SerialPortEntry plain {"ttyS0", {}, {}, 0, 0, false, false};
    const SerialPortEntry other {"ttyUSB9", "Silicon Labs CP210x USB to UART Bridge", {}, 0, 0, false, false};
    QCOMPARE(findBridgePort({plain, entry, other}), bridge ? 1 : 2);
}

// An entry planted in the registry, for a running process at the name its first announcement
// would take. Only a plain file of our own counts: listed while its process runs, removed once it
// is gone. Announcing never follows or overwrites what is there.
void TestDeviceExchange::registryEntries_data()
{
    for (const char *column : {"running", "foreign", "link", "listed", "kept"})
        QTest::addColumn<bool>(column);
    QTest::newRow("ours, running") << true << false << false << true << true;
    QTest::newRow("ours, process gone") << false << false << false << false << false;
    QTest::newRow("another user's, running") << true << true << false << false << true;
    QTest::newRow("another user's, process gone") << false << true << false << false << true;
    QTest::newRow("link to a file of ours") << true << false << true << false << true;
}

void TestDeviceExchange::registryEntries()
{
    QFETCH(bool, running);
    QFETCH(bool, foreign);
    QFETCH(bool, link);
    QFETCH(bool, listed);
    QFETCH(bool, kept);
    if (foreign && ::geteuid() != 0)
        QSKIP("only root can give a file to another user");
    const QString folder = m_runtime.filePath(kRegistryFolder);
    QVERIFY(QDir(folder).exists() || ::mkdir(QFile::encodeName(folder).constData(), 0700) == 0);
    const QString planted
        = QDir(folder).filePath(QStringLiteral("sparkwright-virtual-cdi-%1-1")
                                    .arg(running ? QCoreApplication::applicationPid() : 999999999));
    const QString target = m_runtime.filePath(QStringLiteral("target"));
    QFile entry(link ? target : planted);
    QVERIFY(entry.open(QIODevice::WriteOnly) && entry.write("/dev/null") == 9);
    entry.close();
    QVERIFY(!link || QFile::link(target, planted));
    QVERIFY(!foreign || ::chown(QFile::encodeName(planted).constData(), kOtherUser, kOtherUser) == 0);
    const auto cleanUp = qScopeGuard([&] {
        QFile::remove(planted);
        QFile::remove(target);
    });

    const QString announced = VirtualCdiRegistry::announce(QStringLiteral("/dev/zero"));
    QVERIFY(!announced.isEmpty() && announced != planted);
    const QStringList expected = listed ? QStringList {"/dev/null", "/dev/zero"} : QStringList {"/dev/zero"};
    QCOMPARE(VirtualCdiRegistry::ptyPaths(), expected);
    VirtualCdiRegistry::withdraw(announced);
    QCOMPARE(QFileInfo(planted).exists() || QFileInfo(planted).isSymLink(), kept);
    if (kept) {
        QVERIFY(entry.open(QIODevice::ReadOnly) && entry.readAll() == "/dev/null");
        QCOMPARE(QFileInfo(planted).isSymLink(), link);
    }
}

// The announcements go to the runtime folder only when it and the registry folder in it are ours
// and closed to others; else to the cache folder in the user's home.
void TestDeviceExchange::registryFolder_data()
{
    QTest::addColumn<QString>("setup");
    QTest::addColumn<bool>("runtime");
    QTest::newRow("private runtime folder") << "" << true;
    QTest::newRow("runtime folder writable by the group") << "group" << false;
    QTest::newRow("runtime folder of another user") << "foreign" << false;
    QTest::newRow("registry folder writable by others") << "open" << false;
    QTest::newRow("registry folder is a link") << "link" << false;
}

void TestDeviceExchange::registryFolder()
{
    QFETCH(QString, setup);
    QFETCH(bool, runtime);
    if (setup == QLatin1String("foreign") && ::geteuid() != 0)
        QSKIP("only root can give a folder to another user");
    QTemporaryDir base, home, elsewhere;
    const QByteArray baseName = QFile::encodeName(base.path());
    const QByteArray registry = baseName + '/' + kRegistryFolder;
    if (setup == QLatin1String("group"))
        QVERIFY(::chmod(baseName.constData(), 0770) == 0);
    if (setup == QLatin1String("foreign"))
        QVERIFY(::chown(baseName.constData(), kOtherUser, kOtherUser) == 0);
    if (setup == QLatin1String("open"))
        QVERIFY(::mkdir(registry.constData(), 0700) == 0 && ::chmod(registry.constData(), 0777) == 0);
    if (setup == QLatin1String("link"))
        QVERIFY(::symlink(QFile::encodeName(elsewhere.path()).constData(), registry.constData()) == 0);
    const QByteArray oldHome = qgetenv("HOME");
    const auto restore = qScopeGuard([&] {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime.path()));
        qputenv("HOME", oldHome);
    });
    qputenv("XDG_RUNTIME_DIR", baseName);
    qputenv("HOME", QFile::encodeName(home.path()));

    const QString announced = VirtualCdiRegistry::announce(QStringLiteral("/dev/zero"));
    const QString expected
        = runtime ? QFile::decodeName(registry) : home.filePath(QStringLiteral(".cache/") + kRegistryFolder);
    QCOMPARE(QFileInfo(announced).path(), expected);
    struct stat info
    {
    };
    QVERIFY(::lstat(QFile::encodeName(expected).constData(), &info) == 0 && S_ISDIR(info.st_mode));
    QCOMPARE(info.st_mode & 07777, mode_t(0700));
    QCOMPARE(VirtualCdiRegistry::ptyPaths(), QStringList {"/dev/zero"});
    VirtualCdiRegistry::withdraw(announced);
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files), QStringList());
}

QTEST_GUILESS_MAIN(TestDeviceExchange)
#include "tst_deviceexchange.moc"
