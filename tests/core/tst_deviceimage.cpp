// The 45-byte image of a profile inside the device frame.
#include "profile/deviceimage.h"
#include "support/layoutencoder.h"

#include <QtTest>

Q_DECLARE_METATYPE(Profile)

namespace {

// A 51-byte frame: the 4D F6 68 header, the image in bytes 3 to 47, then command, scrambling
// value and checksum, which the image code must never touch.
QByteArray frameAround(const QByteArray &image)
{
    return QByteArray::fromHex("4df668") + image + QByteArray::fromHex("a5b6c7");
}

// A valid image written out by hand from the image table.
const QByteArray kImage
    = QByteArray::fromHex("81" // custom, motorbike type 0
                          "01f403e805dc07d00bb80fa017701f4027104e20" // rpm
                          "050a0c0f14191e201e14" // angles
                          "c827" // 200 V; monitoring, ground blocks, rising edge, reimport
                          "41f00000ba800000b5800000"); // K0 30, K1 -2^-10, K2 -2^-20
const QByteArray kFrame = frameAround(kImage);

QByteArray withBytes(const QByteArray &bytes, int offset, const char *hex)
{
    const QByteArray patch = QByteArray::fromHex(hex);
    return QByteArray(bytes).replace(offset, patch.size(), patch);
}

const std::array<qint32, 10> kRpms {500, 1000, 1500, 2000, 3000, 4000, 6000, 8000, 10000, 20000};
const std::array<qint32, 10> kAngles {5, 10, 12, 15, 20, 25, 30, 32, 30, 20};

// Fields that never travel to the device, so that a read can be seen not to touch them.
Profile profileWithLocalFields()
{
    Profile p;
    p.setMotorbikeType(6, false);
    p.setTemplateType(9);
    p.setName(QStringLiteral("Werkstatt"));
    p.setAuxFlag(true);
    p.setPickUpEdgeSelectable(false);
    p.setK1(0.125, -0.375);
    p.setVoltage(111);
    p.setFlagsAndCoefficientsAsStored(ProfileFlags {false, true, false, 0}, {11.0, 12.0, 13.0});
    p.setModified(false);
    return p;
}

} // namespace

class TestDeviceImage : public QObject
{
    Q_OBJECT

private slots:
    void writeImage_data();
    void writeImage();
    void readImage_data();
    void readImage();
};

void TestDeviceImage::writeImage_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<bool>("allowReimport");
    QTest::addColumn<QByteArray>("image");

    Profile base;
    base.setMotorbikeType(0, true);
    base.setMap(mapOf(kRpms, kAngles));
    base.setFlags(ProfileFlags {true, false, true, 0});
    base.setSensorCoefficients({30.0, -1.0 / 1024, -1.0 / 1048576});
    // Neither travels to the device.
    base.setTemplateType(77);
    base.setK1(1.5, 2.5);

    QTest::newRow("custom type 0 with reimport allowed") << base << true << kImage;
    QTest::newRow("reimport refused clears bit 5") << base << false << withBytes(kImage, 32, "07");
    Profile p = base;
    p.setMotorbikeType(5, false);
    QTest::newRow("default profile of type 5 has bit 7 clear") << p << true << withBytes(kImage, 0, "06");
    p = base;
    p.setK1(0.25, -0.5);
    p.setFlags(ProfileFlags {false, true, false, 1});
    QTest::newRow("sensor mode 1 sends bit 3, K1 falling and zero K2")
        << p << false << withBytes(kImage, 32, "0841f00000bf00000000000000");
    p.setFlags(ProfileFlags {false, true, true, 2});
    QTest::newRow("sensor mode 2 sends bit 4, K1 rising and zero K2")
        << p << true << withBytes(kImage, 32, "3441f000003e80000000000000");
    p = base;
    p.setSensorCoefficients({0.1, -0.0, 1e300});
    QTest::newRow("coefficients narrowed to float, beyond its range infinite")
        << p << true << withBytes(kImage, 33, "3dcccccd800000007f800000");
}

void TestDeviceImage::writeImage()
{
    QFETCH(Profile, profile);
    QFETCH(bool, allowReimport);
    QFETCH(QByteArray, image);
    QByteArray frame = frameAround(QByteArray(45, char(0xEE)));
    writeDeviceImage(profile, allowReimport, frame);
    QCOMPARE(frame.toHex(), frameAround(image).toHex());
}

void TestDeviceImage::readImage_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("isCustom");
    QTest::addColumn<QString>("failure");
    QTest::addColumn<Profile>("expected"); // for a failure: the profile untouched

    const Profile untouched = profileWithLocalFields();
    Profile expected = untouched;
    expected.setMap(mapOf(kRpms, kAngles));
    expected.setVoltage(200);
    expected.setFlagsAndCoefficientsAsStored(
        ProfileFlags {true, false, true, 0}, {30.0, -1.0 / 1024, -1.0 / 1048576});
    expected.setKind(ProfileKind::Custom);
    const QString ok;

    QTest::newRow("custom image, bit 5 ignored") << kFrame << true << ok << expected;
    Profile e = expected;
    e.setKind(ProfileKind::Default);
    QTest::newRow("the caller's kind wins over the type byte") << kFrame << false << ok << e;
    e = expected;
    e.setFlagsAndCoefficientsAsStored(ProfileFlags {false, true, true, 1}, {0.1f, 5.0, 7.0});
    e.setK1(5.0, -0.375);
    QTest::newRow("sensor mode 1 keeps K1 and K2 as the device holds them, K1 as the edge's too")
        << withBytes(kFrame, 35, "0c3dcccccd40a0000040e00000") << true << ok << e;

    e = expected;
    e.setVoltage(100);
    QTest::newRow("voltage 100 passes") << withBytes(kFrame, 34, "64") << true << ok << e;
    e.setVoltage(250);
    e.setMap(mapOf({20000, 1000, 1500, 2000, 3000, 4000, 6000, 8000, 10000, 20000},
        {5, 10, 12, 15, 20, 25, 30, 32, 30, 49}));
    QTest::newRow("rpm 20000, angle 49 and 250 V pass")
        << withBytes(withBytes(kFrame, 4, "4e20"), 33, "31fa") << true << ok << e;
    // Voltage 99 is refused in the exchange table, on its way to the user.
    QTest::newRow("rpm 20001") << withBytes(kFrame, 4, "4e21") << true << "rpm > 20000" << untouched;
    QTest::newRow("angle 50, last slot") << withBytes(kFrame, 33, "32") << true << "angle > 49" << untouched;
    QTest::newRow("251 V") << withBytes(kFrame, 34, "fb") << true << "invalid voltage: 251" << untouched;
}

void TestDeviceImage::readImage()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, isCustom);
    QFETCH(QString, failure);
    QFETCH(Profile, expected);

    QCOMPARE(checkDeviceImage(frame), failure);
    Profile profile = profileWithLocalFields();
    QCOMPARE(readDeviceImage(frame, isCustom, profile), failure);
    QCOMPARE(fieldsOf(profile), fieldsOf(expected));
    QCOMPARE(profile.isModified(), failure.isEmpty());
}

QTEST_APPLESS_MAIN(TestDeviceImage)
#include "tst_deviceimage.moc"
