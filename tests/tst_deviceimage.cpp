#include "profile/deviceimage.h"

#include <QtTest>

#include <cstring>
#include <limits>

Q_DECLARE_METATYPE(Profile)

namespace {

// A 51-byte frame: the 4D F6 68 header, the image in bytes 3 to 47, then command, scrambling
// value and checksum, which the image code must never touch.
QByteArray frameAround(const QByteArray &image)
{
    return QByteArray::fromHex("4df668") + image + QByteArray::fromHex("a5b6c7");
}

// A valid image written out by hand from the image table.
const QByteArray kImage = QByteArray::fromHex("81" // custom, motorbike type 0
                                              "01f403e805dc07d00bb80fa017701f4027104e20" // rpm
                                              "050a0c0f14191e201e14" // angles
                                              "c8" // 200 V
                                              "27" // monitoring, ground blocks, rising edge, reimport
                                              "41f00000" // K0 30
                                              "ba800000" // K1 -2^-10
                                              "b5800000"); // K2 -2^-20

QByteArray withBytes(const QByteArray &frame, int offset, const char *hex)
{
    QByteArray bytes = frame;
    const QByteArray patch = QByteArray::fromHex(hex);
    bytes.replace(offset, patch.size(), patch);
    return bytes;
}

IgnitionMap mapOf(const std::array<qint32, 10> &rpm, const std::array<qint32, 10> &angle)
{
    IgnitionMap map;
    for (int i = 0; i < 10; ++i)
        map.setPoint(i, rpm[i], angle[i]);
    return map;
}

ProfileFlags flagsOf(bool monitoring, bool groundEnables, bool rising, quint32 mode)
{
    ProfileFlags flags;
    flags.sideStandMonitoring = monitoring;
    flags.groundEnablesIgnition = groundEnables;
    flags.pickUpRisingEdge = rising;
    flags.sensorMode = mode;
    return flags;
}

const std::array<qint32, 10> kRpms {500, 1000, 1500, 2000, 3000, 4000, 6000, 8000, 10000, 20000};
const std::array<qint32, 10> kAngles {5, 10, 12, 15, 20, 25, 30, 32, 30, 20};

// The fields that never travel to the device, so that a read can be seen not to touch them.
Profile profileWithLocalFields()
{
    Profile p;
    p.setMotorbikeType(6, false);
    p.setTemplateType(9);
    p.setName(QStringLiteral("Werkstatt"));
    p.setNotes(QStringLiteral("Notiz"));
    p.setExtraText(0, QStringLiteral("en"));
    p.setExtraText(1, QStringLiteral("de"));
    p.setAuxFlag(true);
    p.setPickUpEdgeSelectable(false);
    p.setK1(0.125, -0.375);
    p.setVoltage(111);
    p.setMap(mapOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
    p.setFlagsAndCoefficientsAsStored(flagsOf(false, true, false, 0), {11.0, 12.0, 13.0});
    p.setModified(false);
    return p;
}

void verifySameProfile(const Profile &actual, const Profile &expected)
{
    QCOMPARE(actual.motorbikeType(), expected.motorbikeType());
    QCOMPARE(actual.templateType(), expected.templateType());
    QCOMPARE(actual.isCustom(), expected.isCustom());
    QCOMPARE(actual.auxFlag(), expected.auxFlag());
    QCOMPARE(actual.name(), expected.name());
    QCOMPARE(actual.notes(), expected.notes());
    QCOMPARE(actual.extraText(0), expected.extraText(0));
    QCOMPARE(actual.extraText(1), expected.extraText(1));
    QCOMPARE(actual.map().rpms(), expected.map().rpms());
    QCOMPARE(actual.map().angles(), expected.map().angles());
    QVERIFY(actual.flags() == expected.flags());
    QCOMPARE(actual.voltage(), expected.voltage());
    QCOMPARE(actual.pickUpEdgeSelectable(), expected.pickUpEdgeSelectable());
    QCOMPARE(actual.k1Rising(), expected.k1Rising());
    QCOMPARE(actual.k1Falling(), expected.k1Falling());
    QCOMPARE(actual.sensorCoefficients().k0, expected.sensorCoefficients().k0);
    QCOMPARE(actual.sensorCoefficients().k1, expected.sensorCoefficients().k1);
    QCOMPARE(actual.sensorCoefficients().k2, expected.sensorCoefficients().k2);
    QCOMPARE(actual.isModified(), expected.isModified());
}

} // namespace

// The 45-byte image of a profile inside the device frame.
class TestDeviceImage : public QObject
{
    Q_OBJECT

private slots:
    void writeImageBytes_data();
    void writeImageBytes();
    void writeImageGrowsShortFrame();
    void readImageFillsFields_data();
    void readImageFillsFields();
    void imageCheck_data();
    void imageCheck();
};

void TestDeviceImage::writeImageBytes_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<bool>("allowReimport");
    QTest::addColumn<QByteArray>("image");

    Profile base;
    base.setMotorbikeType(0, true);
    base.setMap(mapOf(kRpms, kAngles));
    base.setVoltage(200);
    base.setFlags(flagsOf(true, false, true, 0));
    base.setSensorCoefficients({30.0, -1.0 / 1024, -1.0 / 1048576});
    // None of these travel to the device.
    base.setName(QStringLiteral("nicht gesendet"));
    base.setTemplateType(77);
    base.setAuxFlag(true);
    base.setPickUpEdgeSelectable(false);
    base.setK1(1.5, 2.5);

    QTest::newRow("custom type 0 with reimport allowed") << base << true << kImage;
    QTest::newRow("reimport refused clears bit 5") << base << false << withBytes(kImage, 32, "07");
    {
        Profile p = base;
        p.setMotorbikeType(5, false);
        QTest::newRow("default profile of type 5 has bit 7 clear")
            << p << false << withBytes(withBytes(kImage, 0, "06"), 32, "07");
        p.setMotorbikeType(5, true);
        QTest::newRow("custom profile of type 5")
            << p << false << withBytes(withBytes(kImage, 0, "86"), 32, "07");
    }
    {
        Profile p = base;
        p.setFlags(flagsOf(false, false, false, 0));
        QTest::newRow("ground blocking without monitoring sends nothing")
            << p << false << withBytes(kImage, 32, "00");
    }
    {
        Profile p = base;
        p.setK1(0.25, -0.5);
        p.setFlags(flagsOf(false, true, false, 1));
        QTest::newRow("sensor mode 1 sends bit 3, K1 falling and zero K2")
            << p << false << withBytes(kImage, 32, "0841f00000bf00000000000000");
        p.setFlags(flagsOf(false, true, true, 2));
        QTest::newRow("sensor mode 2 sends bit 4, K1 rising and zero K2")
            << p << true << withBytes(kImage, 32, "3441f000003e80000000000000");
    }
    {
        Profile p = base;
        p.setSensorCoefficients({0.1, -0.0, 1e300});
        QTest::newRow("coefficients narrowed to float, beyond its range infinite")
            << p << true << withBytes(kImage, 33, "3dcccccd800000007f800000");
        p.setSensorCoefficients({-1e300, std::numeric_limits<double>::denorm_min(), 16777217.0});
        QTest::newRow("tiny value flushes to zero, odd integer rounds to even")
            << p << true << withBytes(kImage, 33, "ff800000000000004b800000");
    }
    {
        Profile p = base;
        IgnitionMap map;
        map.setPoint(0, 0x1234, 49);
        map.setPoint(9, 0xABCD, 0);
        p.setMap(map);
        QTest::newRow("rpm high byte first") << p << true
                                             << withBytes(kImage, 1,
                                                    "123400000000000000000000000000000000abcd"
                                                    "31000000000000000000");
    }
    {
        Profile p = base;
        p.setVoltage(250);
        QTest::newRow("voltage 250") << p << true << withBytes(kImage, 31, "fa");
        p.setVoltage(100);
        QTest::newRow("voltage 100") << p << true << withBytes(kImage, 31, "64");
    }
}

void TestDeviceImage::writeImageBytes()
{
    QFETCH(Profile, profile);
    QFETCH(bool, allowReimport);
    QFETCH(QByteArray, image);
    QCOMPARE(image.size(), 45);

    QByteArray frame = frameAround(QByteArray(45, char(0xEE)));
    writeDeviceImage(profile, allowReimport, frame);
    QCOMPARE(frame.size(), 51);
    QCOMPARE(frame.left(3).toHex(), QByteArray("4df668"));
    QCOMPARE(frame.mid(3, 45).toHex(), image.toHex());
    QCOMPARE(frame.mid(48).toHex(), QByteArray("a5b6c7"));
}

void TestDeviceImage::writeImageGrowsShortFrame()
{
    Profile p;
    p.setMotorbikeType(0, true);
    QByteArray frame;
    writeDeviceImage(p, false, frame);
    QCOMPARE(frame.size(), 48);
    QCOMPARE(frame.mid(3).toHex(),
        QByteArray::fromHex("81"
                            "0000000000000000000000000000000000000000"
                            "00000000000000000000"
                            "c8"
                            "00"
                            "000000000000000000000000")
            .toHex());
}

void TestDeviceImage::readImageFillsFields_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("isCustom");
    QTest::addColumn<Profile>("expected");

    Profile expected = profileWithLocalFields();
    expected.setMap(mapOf(kRpms, kAngles));
    expected.setVoltage(200);
    expected.setFlagsAndCoefficientsAsStored(
        flagsOf(true, false, true, 0), {30.0, -1.0 / 1024, -1.0 / 1048576});
    expected.setKind(ProfileKind::Custom);
    QTest::newRow("custom image, bit 5 ignored") << frameAround(kImage) << true << expected;

    expected.setKind(ProfileKind::Default);
    QTest::newRow("the caller's kind wins over the type byte") << frameAround(kImage) << false << expected;

    expected.setKind(ProfileKind::Custom);
    QTest::newRow("frame without its last three bytes") << frameAround(kImage).left(48) << true << expected;

    {
        Profile e = expected;
        e.setFlagsAndCoefficientsAsStored(flagsOf(false, true, true, 1), {0.1f, 5.0, 7.0});
        QTest::newRow("sensor mode 1 keeps K1 and K2 as the device holds them")
            << withBytes(frameAround(kImage), 35, "0c3dcccccd40a0000040e00000") << true << e;
        e.setFlagsAndCoefficientsAsStored(flagsOf(false, true, false, 1), {0.0, 0.0, 0.0});
        QTest::newRow("both mode bits set give mode 1")
            << withBytes(frameAround(kImage), 35, "18000000000000000000000000") << true << e;
        e.setFlagsAndCoefficientsAsStored(flagsOf(false, true, false, 0), {0.0, 0.0, 0.0});
        QTest::newRow("monitoring off decodes to ground enables")
            << withBytes(frameAround(kImage), 35, "c2000000000000000000000000") << true << e;
    }
    {
        Profile e = expected;
        e.setFlagsAndCoefficientsAsStored(flagsOf(false, true, false, 0), {0.0, 0.0, 0.0});
        QTest::newRow("image ending after the voltage reads zero flags and coefficients")
            << frameAround(kImage).left(35) << true << e;
        e.setFlagsAndCoefficientsAsStored(flagsOf(true, false, true, 0), {30.0, -1.0 / 2048, 0.0});
        QTest::newRow("image ending after the first byte of K1 reads the rest as zero")
            << frameAround(kImage).left(41) << true << e;
    }
    {
        Profile e = expected;
        e.setMap(mapOf({20000, 0, 0, 0, 0, 0, 0, 0, 0, 255}, {49, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
        QTest::newRow("limits themselves pass") << withBytes(frameAround(kImage), 4,
            "4e200000000000000000000000000000000000ff"
            "31000000000000000000") << true << e;
    }
}

void TestDeviceImage::readImageFillsFields()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, isCustom);
    QFETCH(Profile, expected);

    Profile profile = profileWithLocalFields();
    QCOMPARE(readDeviceImage(frame, isCustom, profile), QString());
    // The modified flag is the caller's business; everything else is compared.
    expected.setModified(profile.isModified());
    verifySameProfile(profile, expected);
}

void TestDeviceImage::imageCheck_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("failure");

    const QByteArray good = frameAround(kImage);
    QTest::newRow("valid image") << good << QString();
    QTest::newRow("rpm 20001 in the first slot") << withBytes(good, 4, "4e21") << "rpm > 20000";
    QTest::newRow("rpm 20001 in the last slot") << withBytes(good, 22, "4e21") << "rpm > 20000";
    QTest::newRow("rpm 65535") << withBytes(good, 10, "ffff") << "rpm > 20000";
    QTest::newRow("rpm 20000 passes") << withBytes(good, 22, "4e20") << QString();
    QTest::newRow("angle 50 in the first slot") << withBytes(good, 24, "32") << "angle > 49";
    QTest::newRow("angle 255 in the last slot") << withBytes(good, 33, "ff") << "angle > 49";
    QTest::newRow("angle 49 passes") << withBytes(good, 33, "31") << QString();
    QTest::newRow("voltage 99") << withBytes(good, 34, "63") << "invalid voltage: 99";
    QTest::newRow("voltage 100 passes") << withBytes(good, 34, "64") << QString();
    QTest::newRow("voltage 250 passes") << withBytes(good, 34, "fa") << QString();
    QTest::newRow("voltage 251") << withBytes(good, 34, "fb") << "invalid voltage: 251";
    QTest::newRow("voltage 0") << withBytes(good, 34, "00") << "invalid voltage: 0";
    QTest::newRow("image too short to hold the voltage") << good.left(34) << "invalid voltage: 0";
    QTest::newRow("empty frame") << QByteArray() << "invalid voltage: 0";
    QTest::newRow("image ending after the voltage passes") << good.left(35) << QString();
    QTest::newRow("type byte is not checked") << withBytes(good, 3, "ff") << QString();
    QTest::newRow("rpm reported before angle and voltage")
        << withBytes(withBytes(withBytes(good, 20, "ffff"), 24, "ff"), 34, "00") << "rpm > 20000";
    QTest::newRow("angle reported before voltage")
        << withBytes(withBytes(good, 33, "32"), 34, "fb") << "angle > 49";
    QTest::newRow("rpm with high byte only, cut after it")
        << withBytes(good, 22, "4e").left(23) << "invalid voltage: 0";
}

void TestDeviceImage::imageCheck()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, failure);

    QCOMPARE(checkDeviceImage(frame), failure);

    const Profile before = profileWithLocalFields();
    Profile profile = before;
    QCOMPARE(readDeviceImage(frame, true, profile), failure);
    if (failure.isEmpty()) {
        QVERIFY(profile.isCustom());
        QCOMPARE(profile.voltage(), int(quint8(frame.at(34))));
    } else {
        verifySameProfile(profile, before);
    }
}

QTEST_APPLESS_MAIN(TestDeviceImage)
#include "tst_deviceimage.moc"
