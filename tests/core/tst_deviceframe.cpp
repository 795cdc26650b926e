// The bytes of every request and the verdict on every kind of answer, against frames written
// out from the layout, without a port.
#include "device/ccalibrator.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/cwaitrecord.h"
#include "device/deviceframe.h"
#include "device/iimportreceiver.h"
#include "profile/defaultlibrary.h"
#include "support/layoutencoder.h"

#include <QtTest>

#include <optional>

namespace {

// Type 2, custom; speeds 1000..10000, angles 10..19, 200 V, side stand with ground blocking,
// sensor mode 2 (flags 0x33 with reimport allowed), K 38 / 0.5 / -2, scrambling value 0x10.
const char kProgramEcho[]
    = "4df6688303e807d00bb80fa0138817701b581f40232827100a0b0c0d0e0f10111213c833421800003f"
      "000000c00000000010e3";
const char kProgramRequest[]
    = "4df668833a30603a8644ac4ed248e87f3b5c34665a70807a8597a9bbcdcfe1203217dd597960596aba"
      "8c9dae7fc0d10f0010f4";

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Template 2")); // as an import names it, after its template
    profile.setMotorbikeType(2, true);
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 11, 12, 13, 14, 15, 16, 17, 18, 19}));
    profile.setVoltage(200);
    profile.setFlagsAndCoefficientsAsStored(flagsOf(true, false, false, 2), {38.0, 0.5, -2.0});
    return profile;
}

// The checksum itself shows in the requests.
QByteArray sealed(QByteArray frame)
{
    DeviceFrame::sealChecksum(frame);
    return frame;
}

class CProfileKeeper : public IImportReceiver
{
public:
    void acceptImportedProfile(const Profile &profile) override { imported = profile; }
    std::optional<Profile> imported;
};

// Two templates of type 2: an import takes the first.
DefaultLibrary templates()
{
    DefaultLibrary library;
    for (const int type : {0, 1, 2, 2}) {
        Profile profile;
        profile.setName(QStringLiteral("Template %1").arg(library.count()));
        profile.setMotorbikeType(type, false);
        library.append(profile);
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
    void scrambling_data();
    void scrambling();
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
    CProfileKeeper keeper;
    QTest::newRow("read") << CImporter(DefaultLibrary(), keeper).requestBytes()
                          << QByteArray::fromHex("4df66800" + zeros + "0200d1");
    const CCalibrator calibrator(sampleProfile(), true, quint8(0x10));
    QTest::newRow("program, plain") << calibrator.expectedEcho() << QByteArray::fromHex(kProgramEcho);
    QTest::newRow("program, scrambled") << calibrator.requestBytes() << QByteArray::fromHex(kProgramRequest);
}

void TestDeviceFrame::requests()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, expected);
    QCOMPARE(request.toHex(), expected.toHex());
}

void TestDeviceFrame::scrambling_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("scrambled");
    // Zero payloads, so each byte is the key itself.
    QTest::newRow("m from 4t + r + 23 becomes 4")
        << 0x39 << 5
        << QByteArray(
               "4df6683906070304050607030405060703040506070304050607030405060703040506070304050607030405"
               "060703040005e9");
    QTest::newRow("type with bit 7, m becomes 4")
        << 0xAA << 100
        << QByteArray("4df668aa08090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f202122232425262728292a2b2c2d2e"
                      "2f3031323300641d");
    QTest::newRow("type with bit 7, smallest r")
        << 0x83 << 3
        << QByteArray("4df668833e4f5d6e7f8d9eafbd081927380f1d2e3f4d5e6f7d8e9fadbe091728390d1e2f3d4e5f6d7e8f9d"
                      "aebf071829000358");
    QTest::newRow("large r")
        << 0x01 << 200
        << QByteArray("4df6680197a8b9cadbecfd2b3c30415263748596a7b8c9daebfc0d3b4c08192a3b4c5d6e7f90a1b2c3d4e5"
                      "132418293a00c880");
}

void TestDeviceFrame::scrambling()
{
    QFETCH(int, type);
    QFETCH(int, value);
    QFETCH(QByteArray, scrambled);
    QByteArray frame = DeviceFrame::build(DeviceFrame::Program);
    frame[DeviceFrame::kTypeOffset] = char(type);
    frame[DeviceFrame::kScramblingOffset] = char(value);
    DeviceFrame::sealChecksum(frame);
    const QByteArray plain = frame;
    DeviceFrame::scramble(frame);
    QCOMPARE(frame.toHex(), scrambled);
    DeviceFrame::unscramble(frame);
    QCOMPARE(frame.toHex(), plain.toHex());
}

// Only the low byte of the random number counts, and it is at least 3.
void TestDeviceFrame::scramblingValue()
{
    for (const auto &[random, value] : {std::pair {2u, 3}, {3u, 3}, {0x1FFu, 255}, {0xABCD00u, 3}})
        QCOMPARE(int(DeviceFrame::scramblingValue(random)), value);
}

// The answers a virtual CDI cannot give, or that must be read from bytes written out by hand;
// the other faults are run over a port in tst_deviceexchange. An import builds on the first
// template of the profile's type.
void TestDeviceFrame::answers_data()
{
    QTest::addColumn<bool>("ping"); // else an import
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("success");
    const QByteArray pingAnswer
        = sealed(QByteArray::fromHex("4df6685a312e3233000000000001e2400000000000000000") + '\0');
    QByteArray nineCharacters = pingAnswer;
    nineCharacters.replace(4, 9, "1.23-beta");
    const QString pinged
        = QStringLiteral("Your CDI responded as expected. Firmware <font color=#3E6C82>%1</font> "
                         "and serial number <font color=#3E6C82>123456</font> were reported.");

    QTest::newRow("ping answered") << true << pingAnswer << "Test successful" << pinged.arg("1.23") << true;
    QTest::newRow("ping, nine firmware characters")
        << true << sealed(nineCharacters) << "Test successful" << pinged.arg("1.23-beta") << true;
    QTest::newRow("import") << false << QByteArray::fromHex(kProgramEcho) << "Import OK"
                            << "Imported profile data will be sent to editor shortly." << true;
    QTest::newRow("import, type without template")
        << false << sealed(QByteArray::fromHex(kProgramEcho).replace(3, 1, QByteArray::fromHex("84")))
        << "Import failed"
        << "Imported profile data corresponds to an invalid or unknown motorbike type (index=3)." << false;
}

void TestDeviceFrame::answers()
{
    QFETCH(bool, ping);
    QFETCH(QByteArray, answer);
    QFETCH(QString, title);
    QFETCH(QString, text);
    QFETCH(bool, success);

    const DefaultLibrary library = templates();
    CProfileKeeper keeper;
    std::unique_ptr<CCommunicator> communicator;
    if (ping)
        communicator = std::make_unique<CPinger>(quint8(0x5A));
    else
        communicator = std::make_unique<CImporter>(library, keeper);

    CWaitRecord record;
    QCOMPARE(communicator->conclude(answer, record), success);
    QCOMPARE(record.resultTitle, title);
    QCOMPARE(record.resultText, text);
    QCOMPARE(record.success, success);
    QCOMPARE(keeper.imported.has_value(), !ping && success);
    if (keeper.imported)
        QCOMPARE(fieldsOf(*keeper.imported), fieldsOf(sampleProfile()));
}

QTEST_GUILESS_MAIN(TestDeviceFrame)
#include "tst_deviceframe.moc"
