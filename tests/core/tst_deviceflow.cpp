// The device flow against a virtual CDI on a pseudo-terminal, with a short tick, and a stand-in
// for the pages that notes what they would be asked to show.
#include "device/cdeviceflow.h"
#include "device/cvirtualcdi.h"
#include "device/exchangewording.h"
#include "profile/defaultlibrary.h"
#include "profile/profilecomparison.h"
#include "profile/profilefile.h"
#include "support/changingports.h"
#include "support/layoutencoder.h"

#include <QDateTime>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

namespace {

Profile track(int angle = 20)
{
    Profile profile;
    profile.setName(QStringLiteral("Track"));
    profile.setMotorbikeType(1, true);
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 12, 14, 16, angle, 20, 22, 24, 26, 28}));
    profile.setSensorCoefficients({40.0, 0.0, 0.0}); // a ceiling of 40 degrees
    return profile;
}

} // namespace

class TestDeviceFlow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void steps_data();
    void steps();

private:
    QTemporaryDir m_runtime;
    DefaultLibrary m_library;
    QTemporaryDir m_copies;
};

void TestDeviceFlow::initTestCase()
{
    // Virtual CDIs announce themselves here, out of sight of anything else running.
    qputenv("XDG_RUNTIME_DIR", m_runtime.path().toLocal8Bit());
    Profile template1;
    template1.setName(QStringLiteral("Template 1"));
    template1.setMotorbikeType(1, false);
    m_library.append(template1);
}

// Steps of the user and of the exchange (await: until it has ended), and what the pages are asked
// to show meanwhile. The port lister finds the CDI as a bridge where the row's name says so.
void TestDeviceFlow::steps_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("shown");
    const auto row = [](const char *name, const QStringList &steps, const QStringList &shown) {
        QTest::newRow(name) << steps << shown;
    };
    // The CDI keeps no name: the profile is named after the day it was read, as the user writes dates.
    const QString imported
        = "editor Imported from CDI " + QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
    row("no bridge: a port that cannot be opened, then another", {"ping", "nowhere", "CDI", "await"},
        {"port page", "port page", "refused open /dev/null/x", "started ping", "result ok"});
    // A port is kept only once a CDI answered on it, and then used without asking; a failure offers
    // the same port or another.
    row("no bridge: a port nothing answered on is not kept, one that answered is",
        {"silent", "ping", "CDI", "await", "answering", "ping", "CDI", "await", "ping", "await"},
        {"port page", "started ping", "result failed", "port page", "started ping", "result ok",
            "started ping", "result ok"});
    row("no bridge: after a failure another port, or retry",
        {"silent", "ping", "CDI", "await", "other port", "answering", "retry", "await"},
        {"port page", "started ping", "result failed", "port page", "started ping", "result ok"});
    row("no bridge: a port another program holds", {"held", "ping", "CDI"},
        {"port page", "port page", "refused in use tst_deviceflow"});
    row("no bridge: the port page left, nothing starts", {"ping", "leave", "CDI"}, {"port page", "leave"});
    row("bridge: busy", {"ping", "import", "await"}, {"started ping", "refused busy", "result ok"});
    row("bridge: a map beyond its limits is never sent", {"invalid program", "ping", "await"},
        {"refused map", "started ping", "result ok"});
    row("bridge: import handed over shortly", {"quick", "import", "await"},
        {"started import", "result ok", imported});
    row("bridge: import handed over at Next", {"import", "await", "next"},
        {"started import", "result ok", imported});
    row("bridge: import dropped at Back", {"import", "await", "back", "next"},
        {"started import", "result ok", "leave", "leave"});
    row("bridge: failed import not handed over", {"silent", "quick", "import", "await", "next"},
        {"started import", "result failed", "leave"});
    row("bridge: programmed, its copy cannot be kept", {"unwritable copies", "program", "await"},
        {"started program", "started read back", "result ok: Programmed and verified", "copy not kept"});
    // Earlier copies of the same name, from this second and the next few, stay as they are.
    row("bridge: programmed, a copy of its own kept", {"earlier copies", "program", "await", "copies"},
        {"started program", "started read back", "result ok: Programmed and verified",
            "Track (2).cdi as programmed", "Track.cdi", "Track.cdi", "Track.cdi", "Track.cdi", "Track.cdi"});
    // Read back after programming: the CDI's image against the one sent, sent → read back.
    row("bridge: programmed without reimport, not read back", {"program no reimport", "await"},
        {"started program", "result ok: Programming successful"});
    row("bridge: read back differs", {"keeps old", "program 30", "await"},
        {"started program", "started read back", "result failed: Verification failed",
            "Slot 5: 5000 rpm, 30° → 5000 rpm, 20°"});
    row("bridge: read back fails, the programming still kept", {"read silent", "program", "await"},
        {"started program", "started read back", "result failed: Programmed, not verified"});
    // Read before programming: what it changes, held → to be written, or why that cannot be shown.
    row("bridge: what programming changes, then confirmed", {"prepare 30", "await", "confirm", "await"},
        {"started read held", "preview: Slot 5: 5000 rpm, 20° → 5000 rpm, 30°", "started program",
            "started read back", "result ok: Programmed and verified"});
    row("bridge: the CDI already holds it, cancelled", {"prepare", "await", "cancel"},
        {"started read held", "preview: same", "leave"});
    row("bridge: a map beyond its limits is not even read for", {"prepare 60"}, {"refused map"});
    // A CDI that keeps its profile to itself takes a new one on the port it stayed silent on.
    row("no bridge: unreadable CDI, programmed on the port it was read on",
        {"no reimport held", "prepare", "CDI", "await", "confirm", "await"},
        {"port page", "started read held", "preview unread", "started program", "started read back",
            "result ok: Programmed and verified"});
}

void TestDeviceFlow::steps()
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, shown);
    CVirtualCdi cdi;
    QCOMPARE(cdi.open(), QString());
    cdi.setProfile(track());
    QSerialPort other(cdi.portName()); // another program's hold on the CDI's port
    QStringList asked; // of the pages
    const bool bridge = QString(QTest::currentDataTag()).startsWith(QLatin1String("bridge"));
    // A plain port and the CDI, a bridge where the row says so. The flow keeps nothing of the
    // lister it was given.
    CDeviceFlow flow(&m_library, [&] {
        ChangingPorts ports;
        ports.shared->ports
            = {kSerialPort, {bridge ? cdi.portName() : QString(), {}, {}, 0, 0, false, bridge}};
        return ports;
    }());
    flow.setPacing({100, 30, 600});
    flow.setImportDelay(3600000);
    flow.setProgrammedFolder(m_copies.path());
    const char *exchanges[] = {"ping", "import", "program", "read held", "read back"};
    const char *refusals[] = {"map", "busy", "open", "in use", "denied"};
    connect(&flow, &CDeviceFlow::portSelectionShown, this, [&] { asked << "port page"; });
    connect(&flow, &CDeviceFlow::exchangeStarted, this,
        [&](DeviceExchange exchange) { asked << QStringLiteral("started ") + exchanges[int(exchange)]; });
    connect(&flow, &CDeviceFlow::finished, this, [&](const ExchangeResult &result) {
        asked << QString(result.succeeded() ? "result ok" : "result failed")
                + (result.exchange == DeviceExchange::Program ? ": " + resultWords(result).title : "");
        for (const ImageDifference &difference : result.differences)
            asked << differenceText(difference);
    });
    bool previewed = false;
    connect(&flow, &CDeviceFlow::programmingPreviewReady, this, [&](const ProgrammingPreview &preview) {
        QStringList lines;
        for (const ImageDifference &difference : preview.differences)
            lines << differenceText(difference);
        asked << (!preview.read ? "preview unread"
                                : "preview: " + (lines.isEmpty() ? "same" : lines.join("; ")));
        previewed = true;
    });
    connect(&flow, &CDeviceFlow::copyNotKept, this, [&] { asked << "copy not kept"; });
    connect(&flow, &CDeviceFlow::refused, this, [&](const DeviceRefusal &refusal) {
        const bool inUse = refusal.kind == DeviceRefusal::Kind::InUse;
        asked << QStringLiteral("refused %1 %2")
                     .arg(refusals[int(refusal.kind)], inUse ? refusal.holder : refusal.portName)
                     .trimmed();
    });
    connect(&flow, &CDeviceFlow::leaveRequested, this, [&] { asked << "leave"; });
    connect(&flow, &CDeviceFlow::importedProfileReady, this,
        [&](const Profile &profile) { asked << "editor " + profile.name(); });

    const QHash<QString, std::function<void()>> act {{"ping", [&] { flow.testConnection(); }},
        {"import", [&] { flow.importProfile(); }}, {"program", [&] { flow.program(track(), true); }},
        {"program 30", [&] { flow.program(track(30), true); }},
        {"program no reimport", [&] { flow.program(track(), false); }},
        {"prepare", [&] { flow.prepareProgramming(track()); }},
        {"prepare 30", [&] { flow.prepareProgramming(track(30)); }},
        {"prepare 60", [&] { flow.prepareProgramming(track(60)); }},
        {"confirm",
            [&] {
                QTRY_VERIFY(previewed);
                flow.confirmProgramming(true);
            }},
        {"cancel",
            [&] {
                QTRY_VERIFY(previewed);
                flow.cancelProgramming();
            }},
        {"keeps old", [&] { cdi.setFault(CVirtualCdi::Fault::KeepsOld); }},
        {"read silent", [&] { cdi.setFault(CVirtualCdi::Fault::ReadSilent); }},
        {"no reimport held", [&] { cdi.setProfile(track(), false); }},
        {"invalid program", [&] { flow.program(track(60), true); }},
        {"CDI", [&] { flow.portChosen(cdi.portName()); }},
        {"nowhere", [&] { flow.portChosen(QStringLiteral("/dev/null/x")); }}, {"back", [&] { flow.back(); }},
        {"next", [&] { flow.next(); }}, {"retry", [&] { flow.retry(); }},
        {"other port", [&] { flow.chooseAnotherPort(); }},
        {"answering", [&] { cdi.setFault(CVirtualCdi::Fault::None); }},
        {"held", [&] { QVERIFY(other.open(QIODevice::ReadWrite)); }},
        {"leave", [&] { flow.leavePortSelection(); }}, {"quick", [&] { flow.setImportDelay(1); }},
        {"silent", [&] { cdi.setFault(CVirtualCdi::Fault::Silent); }},
        {"unwritable copies", [&] { flow.setProgrammedFolder(QStringLiteral("/proc/x")); }},
        {"await", [&] { QTRY_VERIFY_WITH_TIMEOUT(!flow.isBusy(), 5000); }},
        {"earlier copies",
            [&] {
                const QDateTime now = QDateTime::currentDateTime();
                for (int second = 0; second < 5; ++second) {
                    const QString stamp = now.addSecs(second).toString("yyyy-MM-dd HH-mm-ss");
                    QFile(m_copies.filePath(stamp + " Track.cdi")).open(QIODevice::WriteOnly);
                }
            }},
        {"copies", [&] {
             QStringList names; // without their time stamps
             for (const QString &name : QDir(m_copies.path()).entryList(QDir::Files)) {
                 const auto copy = readProfileFile(m_copies.filePath(name));
                 names << name.mid(20)
                         + (copy && fieldsOf(*copy) == fieldsOf(track()) ? " as programmed" : "");
             }
             names.sort();
             asked << names;
         }}};
    for (const QString &step : qAsConst(steps))
        act.value(step)();
    QTRY_COMPARE_WITH_TIMEOUT(asked, shown, 5000);
}

QTEST_GUILESS_MAIN(TestDeviceFlow)
#include "tst_deviceflow.moc"
