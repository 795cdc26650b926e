// The bytes of every request, the verdict on every kind of answer and the words each verdict is
// shown in, in English and German, against frames and texts written out by hand, without a port.
#include "device/ccalibrator.h"
#include "device/cimagereader.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/deviceframe.h"
#include "device/exchangewording.h"
#include "profile/defaultlibrary.h"
#include "render/bracemarkup.h"
#include "support/layoutencoder.h"

#include <QTranslator>
#include <QtTest>

namespace {

// Type 2, custom; speeds 1000..10000, angles 10..19, 200 V, side stand with ground blocking,
// sensor mode 2 (flags 0x33 with reimport allowed), K 38 / 0.5 / -2, scrambling value 0x10.
const char kProgramEcho[]
    = "4df6688303e807d00bb80fa0138817701b581f40232827100a0b0c0d0e0f10111213c833421800003f"
      "000000c00000000010e3";
const char kProgramRequest[]
    = "4df668833a30603a8644ac4ed248e87f3b5c34665a70807a8597a9bbcdcfe1203217dd597960596aba"
      "8c9dae7fc0d10f0010f4";
// Nonce 5A, firmware "1.23", serial number 123456; the checksum byte follows.
const char kPingAnswer[] = "4df6685a312e3233000000000001e2400000000000000000";
const QByteArray kPortLost("<port lost>");
const QByteArray kPortLostUnsent("<port lost before the request>");

Profile sampleProfile(const QString &name = QStringLiteral("Track"))
{
    Profile profile;
    profile.setName(name);
    profile.setMotorbikeType(2, true);
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 11, 12, 13, 14, 15, 16, 17, 18, 19}));
    profile.setVoltage(200);
    profile.setK1(0.0, 0.5); // an import keeps the device's K1 as the falling edge's
    profile.setFlagsAndCoefficientsAsStored(ProfileFlags {true, false, false, 2}, {38.0, 0.5, -2.0});
    return profile;
}

// The checksum itself shows in the requests.
QByteArray sealed(QByteArray frame, int at = -1, const char *hex = "")
{
    if (at >= 0)
        frame.replace(at, int(qstrlen(hex)) / 2, QByteArray::fromHex(hex));
    DeviceFrame::sealChecksum(frame);
    return frame;
}

// Two templates of type 2, none of type 3: an import takes the first of its type.
std::shared_ptr<const DefaultLibrary> templates()
{
    auto library = std::make_shared<DefaultLibrary>();
    for (const char *name : {"Template 2", "Other template 2"}) {
        Profile profile;
        profile.setName(QString::fromLatin1(name));
        profile.setMotorbikeType(2, false);
        library->append(profile);
    }
    return library;
}

} // namespace

class TestDeviceFrame : public QObject
{
    Q_OBJECT

private slots:
    void requests_data();
    void requests();
    void scramblingValue();
    void answers_data();
    void answers();
};

void TestDeviceFrame::requests_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray zeros(44 * 2, '0');
    QTest::newRow("ping with nonce 5A")
        << CPinger(0x5A).requestBytes() << QByteArray::fromHex("4df6685a" + zeros + "010088");
    QTest::newRow("read") << CImporter(nullptr).requestBytes()
                          << QByteArray::fromHex("4df66800" + zeros + "0200d1");
    // Its unscrambled form is the echo the programming expects: see answers().
    QTest::newRow("program, scrambled") << CCalibrator(sampleProfile(), true, quint8(0x10)).requestBytes()
                                        << QByteArray::fromHex(kProgramRequest);
    // The key stream alone: a zero payload of the type and scrambling value, scrambled. The
    // programming above takes a type with bit 7 (0x83) and an m above 3 (211) through the key.
    const auto key = [](const char *name, int type, int value, const char *scrambled) {
        QByteArray frame = DeviceFrame::build(DeviceFrame::Program);
        frame[DeviceFrame::kTypeOffset] = char(type);
        frame[DeviceFrame::kScramblingOffset] = char(value);
        DeviceFrame::scramble(frame);
        QTest::newRow(name) << frame << QByteArray::fromHex(scrambled);
    };
    key("key, m from 4t + r + 23 becomes 4", 0x39, 5,
        "4df6683906070304050607030405060703040506070304050607030405060703040506070304050607030405060703"
        "040005e9");
    key("key, type with bit 7, m becomes 4", 0xAA, 100,
        "4df668aa08090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f202122232425262728292a2b2c2d2e2f303132"
        "3300641d");
    key("key, large r", 0x01, 200,
        "4df6680197a8b9cadbecfd2b3c30415263748596a7b8c9daebfc0d3b4c08192a3b4c5d6e7f90a1b2c3d4e513241829"
        "3a00c880");
}

void TestDeviceFrame::requests()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, expected);
    QCOMPARE(request.toHex(), expected.toHex());
}

// Only the low byte of the random number counts, and it is at least 3.
void TestDeviceFrame::scramblingValue()
{
    for (const auto &[random, value] : {std::pair {2u, 3}, {3u, 3}, {0x1FFu, 255}, {0xABCD00u, 3}})
        QCOMPARE(int(DeviceFrame::scramblingValue(random)), value);
}

// What each answer (none at all, or the lost port) on ttyUSB0 makes of a ping to nonce 5A, an
// import, and the programming of the profile above under the name "R&D %1", and how the program
// and the tool word it: title and text, then in German where the words are put together.
void TestDeviceFrame::answers_data()
{
    for (const char *column : {"exchange", "kind"})
        QTest::addColumn<int>(column);
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("words");
    using K = ExchangeResult::Kind;
    const auto row = [](const char *name, DeviceExchange exchange, const QByteArray &answer, K kind,
                         const QStringList &words) {
        QTest::newRow(name) << int(exchange) << int(kind) << answer << words;
    };
    const QByteArray pinged = sealed(QByteArray::fromHex(kPingAnswer) + '\0');
    const QByteArray echo = QByteArray::fromHex(kProgramEcho);
    const QStringList failed {"Programming failed",
        "An error occurred during data transmission. The CDI may be programmed improperly and should not "
        "be used in its current state."};
    using E = DeviceExchange;
    const QString stressed = "<font color=" + highlightColour() + '>';

    row("ping answered, nine firmware characters to escape", E::Ping, sealed(pinged, 4, "613c623e26632e6465"),
        K::Succeeded,
        {"Test successful",
            "Your CDI responded as expected. Firmware " + stressed
                + "a&lt;b&gt;&amp;c.de</font> and serial number " + stressed + "123456</font> were reported.",
            "Test erfolgreich",
            "Ihre CDI hat wie erwartet geantwortet. Gemeldet wurden die Firmware " + stressed
                + "a&lt;b&gt;&amp;c.de</font> und die Seriennummer " + stressed + "123456</font>."});
    row("ping, wrong nonce", E::Ping, sealed(pinged, 3, "5b"), K::WrongNonce,
        {"Test failed", "Your CDI responded but an error occurred during data transmission."});
    row("ping, port lost", E::Ping, kPortLost, K::PortLost,
        {"Test failed",
            "The connection to the CDI on /dev/ttyUSB0 was lost. Check the cable and the USB bridge, then "
            "try again.",
            "Test fehlgeschlagen",
            "Die Verbindung zur CDI an /dev/ttyUSB0 ist abgerissen. Prüfen Sie das Kabel und die "
            "USB-Brücke und versuchen Sie es erneut."});
    row("ping, nothing answered", E::Ping, {}, K::NoResponse,
        {"Test failed", "Nothing answered on /dev/ttyUSB0. No CDI seems to be connected to this port."});
    row("import, nothing answered", E::Import, {}, K::NoResponse,
        {"Import failed",
            "Nothing answered on /dev/ttyUSB0. The CDI may have been programmed not to give its profile "
            "back; otherwise no CDI seems to be connected to this port."});
    row("import, one byte short", E::Import, echo.left(50), K::WrongLength,
        {"Import failed", "CDI sent an invalid response"});
    row("import", E::Import, echo, K::Succeeded,
        {"Import OK", "Imported profile data will be sent to editor shortly."});
    row("import, type without template", E::Import, sealed(echo, 3, "84"), K::UnknownType,
        {"Import failed",
            "Imported profile data corresponds to an invalid or unknown motorbike type (index=3)."});
    row("import, voltage beyond the limits", E::Import, sealed(echo, 34, "63"), K::BadValue,
        {"Import failed", "Received invalid profile data  (invalid voltage: 99).", "Import fehlgeschlagen",
            "Ungültige Profildaten empfangen  (invalid voltage: 99)."});
    row("program", E::Program, echo, K::Succeeded,
        {"Programming successful", "Your CDI is now programmed with the profile <b>R&amp;D %1</b>.",
            "Programmierung erfolgreich",
            "Ihre CDI ist jetzt mit dem Profil <b>R&amp;D %1</b> programmiert."});
    row("program, scrambled echo", E::Program, QByteArray::fromHex(kProgramRequest), K::WrongEcho, failed);
    row("program, port lost after the request", E::Program, kPortLost, K::PortLost,
        {"Programming failed",
            "The connection to the CDI on /dev/ttyUSB0 was lost. Check the cable and the USB bridge, then "
            "try again. The CDI may be programmed improperly and should not be used in its current state."});
    row("program, port lost before the request", E::Program, kPortLostUnsent, K::PortLost,
        {"Programming failed",
            "The connection to the CDI on /dev/ttyUSB0 was lost. Check the cable and the USB bridge, then "
            "try again. Nothing had been sent yet, so the CDI has not been changed."});
    // Read back after the programming echoed right: the answer is the read's.
    row("program, read back the same", E::ReadBack, echo, K::Succeeded,
        {"Programmed and verified",
            "Your CDI is now programmed with the profile <b>R&amp;D %1</b>. Read back from the CDI, it matches "
            "what was sent byte for byte."});
    row("program, read back with another voltage and K1", E::ReadBack, sealed(echo, 34, "c73342180000bf"),
        K::ReadBackDiffers,
        {"Verification failed",
            "Your CDI echoed the profile <b>R&amp;D %1</b>, but it gives back other values than were sent (sent "
            "→ read back):<br>Ignition voltage: 200 V → 199 V<br>Sensor coefficient K1: 0.5 → -0.5<br><br>The "
            "CDI may be programmed improperly and should not be used in its current state.",
            "Prüfung fehlgeschlagen",
            "Ihre CDI hat das Profil <b>R&amp;D %1</b> zurückgesendet, gibt beim Zurücklesen aber andere Werte "
            "heraus als gesendet (gesendet → zurückgelesen):<br>Zündspannung: 200 V → 199 V<br>"
            "Sensorkoeffizient K1: 0,5 → -0,5<br><br>Die CDI ist möglicherweise fehlerhaft programmiert und "
            "sollte in diesem Zustand nicht verwendet werden."});
    row("program, read back short", E::ReadBack, echo.left(50), K::ReadBackFailed,
        {"Programmed, not verified",
            "Your CDI echoed the profile <b>R&amp;D %1</b>, so it received it, but reading it back failed (CDI "
            "sent an invalid response). Whether the CDI holds it is not known: program it again."});
}

void TestDeviceFrame::answers()
{
    QFETCH(int, exchange);
    QFETCH(int, kind);
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, words);
    std::unique_ptr<CCommunicator> communicator;
    if (exchange == int(DeviceExchange::Ping))
        communicator = std::make_unique<CPinger>(quint8(0x5A));
    else if (exchange == int(DeviceExchange::Import))
        communicator = std::make_unique<CImporter>(templates());
    else if (exchange == int(DeviceExchange::ReadBack))
        communicator = std::make_unique<CImageReader>(DeviceExchange::ReadBack);
    else
        communicator = std::make_unique<CCalibrator>(sampleProfile("R&D %1"), true, quint8(0x10));
    ExchangeResult result = answer == kPortLost ? communicator->brokenOff()
        : answer == kPortLostUnsent             ? communicator->brokenOff(false)
                                                : communicator->conclude(answer);
    const bool readBack = exchange == int(DeviceExchange::ReadBack); // the programming's profile stays
    if (readBack) {
        const CCalibrator programming(sampleProfile("R&D %1"), true, quint8(0x10));
        result = readBackVerdict(programming.conclude(QByteArray::fromHex(kProgramEcho)), result);
        exchange = int(DeviceExchange::Program);
    }
    result.portName = QStringLiteral("ttyUSB0");
    QCOMPARE(int(result.exchange), exchange);
    QCOMPARE(int(result.kind), kind);
    QCOMPARE(result.profile.has_value(), exchange != int(DeviceExchange::Ping) && (result.succeeded() || readBack));
    if (result.profile)
        QCOMPARE(fieldsOf(*result.profile), fieldsOf(sampleProfile(result.profile->name())));

    QStringList shown {resultWords(result).title, resultWords(result).text};
    QTranslator german;
    if (words.size() > 2) {
        QVERIFY(german.load(QDir(qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR")).filePath("lang_de.qm")));
        QCoreApplication::installTranslator(&german);
        QLocale::setDefault(QLocale(QLocale::German)); // as the language switch sets it
        shown << resultWords(result).title << resultWords(result).text;
        QLocale::setDefault(QLocale::c());
    }
    QCOMPARE(shown, words);
}

QTEST_GUILESS_MAIN(TestDeviceFrame)
#include "tst_deviceframe.moc"
