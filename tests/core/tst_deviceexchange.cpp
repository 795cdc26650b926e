// Whole exchanges over real pseudo-terminals: the bridge on one side, the virtual CDI on the
// other, both on this thread's event loop, with a short tick so no test waits seconds.
#include "device/cbridgecomm.h"
#include "device/ccalibrator.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/cvirtualcdi.h"
#include "device/cwaitrecord.h"
#include "device/iimportreceiver.h"
#include "device/serialports.h"
#include "profile/defaultlibrary.h"
#include "support/layoutencoder.h"

#include <QScopeGuard>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Request at 100 ms, "Waiting for response" at 200 ms, latest end at 500 ms; after an exchange
// without its answer, the next on that port sends no earlier than 600 ms after its end.
const BridgePacing kPacing {100, 30, 600};
constexpr int kSlowMs = 200;
constexpr int kTooSlowMs = 800;
constexpr uid_t kOtherUser = 65534;

const char kRegistryFolder[] = "sparkwright-virtual-cdi";

// A ping answer to nonce 5A from a CDI with the virtual CDI's own firmware and serial number.
const char kPingAnswer5A[] = "4df6685a312e3030000000000001e240000000000000000035";

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// A wait form that is also a QObject, as the progress page is.
class CObjectWaitRecord : public QObject, public CWaitRecord
{
};

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Track"));
    profile.setMotorbikeType(1, true);
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 12, 14, 16, 18, 20, 22, 24, 26, 28}));
    profile.setVoltage(180);
    profile.setFlagsAndCoefficientsAsStored(flagsOf(true, true, true, 1), {42.5, -1.0 / 4096, 0.0});
    return profile;
}

class CProfileKeeper : public IImportReceiver
{
public:
    void acceptImportedProfile(const Profile &profile) override { imported = profile; }
    std::optional<Profile> imported;
};

} // namespace

class TestDeviceExchange : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void faults_data();
    void faults();
    void programmedProfileComesBack();
    void secondExchangeIsRefused();
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
    bool run(CBridgeComm &bridge, const QString &port, const QString &kind, CWaitRecord &record);

    QTemporaryDir m_runtime;
    DefaultLibrary m_library;
    CProfileKeeper m_keeper;
    QRandomGenerator m_random {20260424};
};

void TestDeviceExchange::initTestCase()
{
    // Virtual CDIs announce themselves here, out of sight of anything else running.
    qputenv("XDG_RUNTIME_DIR", m_runtime.path().toLocal8Bit());
    Profile template1; // an import builds on the template of the profile's type
    template1.setMotorbikeType(1, false);
    m_library.append(template1);
}

std::unique_ptr<CCommunicator> TestDeviceExchange::transaction(const QString &kind)
{
    if (kind == QLatin1String("ping"))
        return std::make_unique<CPinger>(m_random);
    if (kind == QLatin1String("import"))
        return std::make_unique<CImporter>(m_library, m_keeper);
    return std::make_unique<CCalibrator>(
        sampleProfile(), kind != QLatin1String("program, no reimport"), m_random);
}

// Runs one exchange to its end: false when it was refused, never ended or ended twice.
bool TestDeviceExchange::run(
    CBridgeComm &bridge, const QString &port, const QString &kind, CWaitRecord &record)
{
    QSignalSpy finished(&bridge, &CBridgeComm::finished);
    m_keeper.imported.reset();
    const CBridgeComm::Start start = bridge.runTransaction(transaction(kind), port, record, kPacing);
    return start.accepted() && finished.wait(5000) && finished.count() == 1
        && finished.at(0).at(0).toBool() == record.success;
}

void TestDeviceExchange::faults_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("success");
    const auto row
        = [](const char *kind, const char *fault, const char *title, const QString &text, bool success) {
              QTest::addRow("%s, %s", kind, fault)
                  << QString(kind) << QString(fault) << QString(title) << text << success;
          };
    const QString pinged = QStringLiteral(
        "Your CDI responded as expected. Firmware <font color=#3E6C82>2.05b</font> and serial number "
        "<font color=#3E6C82>654321</font> were reported.");
    const QString invalid = QStringLiteral("CDI sent an invalid response");
    const QString silent = QStringLiteral("CDI did not respond");
    const QString programmed = QStringLiteral("Your CDI is now programmed with the profile <b>Track</b>.");
    const QString programFailed = QStringLiteral(
        "An error occurred during data transmission. The CDI may be programmed improperly and should not be "
        "used in its current state.");
    const QString imported = QStringLiteral("Imported profile data will be sent to editor shortly.");

    row("ping", "none", "Test successful", pinged, true);
    row("ping", "slow", "Test successful", pinged, true);
    row("ping", "silent", "", silent, false);
    row("ping", "too-slow", "", silent, false);
    row("ping", "short", "", invalid, false);
    row("ping", "long", "", invalid, false);
    row("ping", "bad-header", "", invalid, false);
    row("ping", "bad-checksum", "", invalid, false);
    row("ping", "hangup", "", invalid, false);
    row("ping", "wrong-nonce", "Test failed",
        "Your CDI responded but an error occurred during data transmission.", false);
    row("import", "none", "Import OK", imported, true);
    row("import", "slow", "Import OK", imported, true);
    row("import", "silent", "", silent, false);
    row("import", "long", "", invalid, false);
    row("import", "bad-checksum", "", invalid, false);
    row("import", "unknown-type", "Import failed",
        "Imported profile data corresponds to an invalid or unknown motorbike type (index=-1).", false);
    row("import", "bad-value", "Import failed", "Received invalid profile data  (invalid voltage: 99).",
        false);
    row("program", "none", "Programming successful", programmed, true);
    row("program", "slow", "Programming successful", programmed, true);
    row("program", "wrong-echo", "Programming failed", programFailed, false);
    row("program", "silent", "Programming failed", programFailed, false);
    row("program", "short", "Programming failed", programFailed, false);
    row("program", "bad-header", "Programming failed", programFailed, false);
    row("program", "hangup", "Programming failed", programFailed, false);
}

void TestDeviceExchange::faults()
{
    QFETCH(QString, kind);
    QFETCH(QString, fault);
    QFETCH(QString, title);
    QFETCH(QString, text);
    QFETCH(bool, success);

    CVirtualCdi cdi;
    cdi.setFirmware("2.05b");
    cdi.setSerialNumber(654321);
    cdi.setProfile(sampleProfile());
    cdi.setDelays(kSlowMs, kTooSlowMs);
    cdi.setFault(CVirtualCdi::faultFromName(fault).value());
    QCOMPARE(cdi.open(), QString());
    auto bridge = std::make_unique<CBridgeComm>();
    QSignalSpy finished(bridge.get(), &CBridgeComm::finished);
    // Whoever hears the end may drop the bridge there and then, however the exchange ended.
    connect(bridge.get(), &CBridgeComm::finished, bridge.get(), [&bridge] { bridge.reset(); });
    CWaitRecord record;
    QVERIFY(bridge->runTransaction(transaction(kind), cdi.portName(), record, kPacing).accepted());
    QVERIFY(finished.wait(5000) && !bridge);
    QCOMPARE(finished.at(0).at(0).toBool(), record.success);
    QCOMPARE(record.resultTitle, title);
    QCOMPARE(record.resultText, text);
    QCOMPARE(record.success, success);
    if (fault == QLatin1String("silent"))
        QCOMPARE(record.statuses, QStringList {QStringLiteral("Waiting for response")});
}

// With reimport allowed the profile comes back as programmed; without, the CDI stays silent.
void TestDeviceExchange::programmedProfileComesBack()
{
    for (const bool reimport : {true, false}) {
        CVirtualCdi cdi;
        QCOMPARE(cdi.open(), QString());
        CBridgeComm bridge;
        CWaitRecord programming, import;
        QVERIFY(run(bridge, cdi.portName(), reimport ? "program" : "program, no reimport", programming));
        QVERIFY(programming.success && run(bridge, cdi.portName(), QStringLiteral("import"), import));
        QCOMPARE(import.resultText == QStringLiteral("CDI did not respond"), !reimport);
        if (!reimport)
            continue;
        // The name is the template's; the coefficients survive the device's single precision.
        Profile sent = sampleProfile();
        sent.setName(m_keeper.imported->name());
        QCOMPARE(fieldsOf(*m_keeper.imported), fieldsOf(sent));
    }
}

// While an exchange runs a second is refused; the first runs to its end even when its progress
// page goes away meanwhile.
void TestDeviceExchange::secondExchangeIsRefused()
{
    CVirtualCdi cdi;
    QCOMPARE(cdi.open(), QString());
    CBridgeComm bridge;
    QSignalSpy finished(&bridge, &CBridgeComm::finished);
    auto first = std::make_unique<CObjectWaitRecord>();
    CWaitRecord second;
    QVERIFY(bridge.runTransaction(transaction("ping"), cdi.portName(), *first, kPacing).accepted());
    QCOMPARE(int(bridge.runTransaction(transaction("ping"), cdi.portName(), second, kPacing).refusal),
        int(CBridgeComm::Refusal::Busy));
    QVERIFY(first->activityTitle == QStringLiteral("Testing"));
    first.reset();
    QVERIFY(finished.wait(5000) && finished.count() == 1);
    QVERIFY(!second.hasResult && second.activityTitle.isEmpty());
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
    CWaitRecord late, record;
    QVERIFY(run(bridge, cdi.portName(), QStringLiteral("ping"), late));
    QCOMPARE(late.resultText, QStringLiteral("CDI did not respond"));
    cdi.setFault(CVirtualCdi::faultFromName(next).value());
    QVERIFY(run(bridge, cdi.portName(), QStringLiteral("ping"), record));
    QCOMPARE(record.resultTitle, QStringLiteral("Test successful"));
    QCOMPARE(record.resultText,
        QStringLiteral("Your CDI responded as expected. Firmware <font color=#3E6C82>1.00</font> and serial "
                       "number <font color=#3E6C82>123456</font> were reported."));
}

// A late answer goes to the terminal its request came on, not to the one the CDI came back on after
// a hang-up, though that one may have the same descriptor.
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
    QCOMPARE(second.readAll(), QByteArray::fromHex(kPingAnswer5A));
}

void TestDeviceExchange::detection_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<int>("vendor");
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
    const SerialPortEntry entry {QStringLiteral("ttyUSB1"), description, QString(), quint16(qMax(vendor, 0)),
        quint16(product), vendor >= 0, false};
    QCOMPARE(isBridgePort(entry), bridge);
    // The first match in list order wins.
    const SerialPortEntry plain {QStringLiteral("ttyS0"), QString(), QString(), 0, 0, false, false};
    const SerialPortEntry otherBridge {QStringLiteral("ttyUSB9"),
        QStringLiteral("Silicon Labs CP210x USB to UART Bridge"), QString(), 0, 0, false, false};
    QCOMPARE(findBridgePort({plain, entry, otherBridge}), bridge ? 1 : 2);
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
    QVERIFY(write(link ? target : planted, "/dev/null"));
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
        QCOMPARE(readAll(link ? target : planted), QByteArray("/dev/null"));
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
