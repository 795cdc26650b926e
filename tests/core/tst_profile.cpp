// The profile model and the map checker: the flag byte, the angle ceiling, the map's order, and
// what the checker says about each faulty value. The sensor-mode rule for K1 and K2 shows in the
// bytes written to files and to the device, and is checked there.
#include "profile/mapvalidation.h"
#include "profile/profile.h"
#include "support/layoutencoder.h"

#include <QtTest>

#include <algorithm>

Q_DECLARE_METATYPE(ProfileFlags)
Q_DECLARE_METATYPE(SensorCoefficients)

class TestProfile : public QObject
{
    Q_OBJECT

private slots:
    void flagByte_data();
    void flagByte();
    void pointMessages_data();
    void pointMessages();
    void mapOrder();
};

// What reading makes of bits that writing never sets together. The bytes that writing gives
// back read and write as they were in tst_profilefile's and tst_deviceimage's rows.
void TestProfile::flagByte_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<ProfileFlags>("flags"); // monitoring, ground enables, rising edge, mode
    QTest::newRow("ground blocking without monitoring reads as enabling")
        << 0x02 << ProfileFlags {false, true, false, 0};
    QTest::newRow("both mode bits give mode 1") << 0x18 << ProfileFlags {false, true, false, 1};
    QTest::newRow("the extra bit and high bits are ignored") << 0xE4 << ProfileFlags {false, true, true, 0};
}

void TestProfile::flagByte()
{
    QFETCH(int, byte);
    QFETCH(ProfileFlags, flags);

    const ProfileFlags read = ProfileFlags::fromByte(quint8(byte));
    QVERIFY(read == flags);
    QVERIFY(read.toByte(false) != byte);
    // Ground blocking is only written while the side stand is monitored.
    ProfileFlags blocking = read;
    blocking.groundEnablesIgnition = false;
    QCOMPARE(bool(blocking.toByte(false) & ProfileFlags::kGroundBlocksIgnition), read.sideStandMonitoring);
}

// The ceiling is the curve at the point's speed less a margin of 2, cut toward zero; the
// messages show it.
void TestProfile::pointMessages_data()
{
    QTest::addColumn<int>("rpm");
    QTest::addColumn<int>("angle");
    QTest::addColumn<SensorCoefficients>("curve");
    QTest::addColumn<QString>("rpmMessage");
    QTest::addColumn<QString>("angleMessage");

    const SensorCoefficients flat {30.9, 0, 0}; // ceiling 28
    const QString none;
    const auto above = [](int rpm, int ceiling) {
        return QStringLiteral("the angle for %1 RPM should not exceed %2 for this profile")
            .arg(rpm)
            .arg(ceiling);
    };
    QTest::newRow("upper bounds accepted") << 20000 << 49 << SensorCoefficients {100, 0, 0} << none << none;
    QTest::newRow("angle at the ceiling accepted") << 7000 << 28 << flat << none << none;
    QTest::newRow("angle one above the ceiling") << 7000 << 29 << flat << none << above(7000, 28);
    QTest::newRow("linear and quadratic terms")
        << 10000 << 29 << SensorCoefficients {40, -0.0005, -5e-8} << none << above(10000, 28);
    QTest::newRow("a negative ceiling is cut toward zero and rejects even 0")
        << 5000 << 0 << SensorCoefficients {0.5, 0, 0} << none << above(5000, -1);
    QTest::newRow("a huge curve saturates") << 0 << 49 << SensorCoefficients {1e300, 0, 0} << none << none;
    QTest::newRow("a NaN curve allows nothing")
        << 0 << 0 << SensorCoefficients {qQNaN(), 0, 0} << none << above(0, -2147483648LL);
    QTest::newRow("negative speed, angle too high") << -1 << 60 << flat << "RPM cannot be negative"
                                                    << "angle exceeds maximum of 49";
    QTest::newRow("speed too high skips the ceiling")
        << 20001 << 40 << flat << "RPM exceed the maximum of 20000" << none;
    QTest::newRow("negative angle with a faulty speed")
        << 20001 << -3 << flat << "RPM exceed the maximum of 20000"
        << "angle cannot be negative";
}

void TestProfile::pointMessages()
{
    QFETCH(int, rpm);
    QFETCH(int, angle);
    QFETCH(SensorCoefficients, curve);
    QFETCH(QString, rpmMessage);
    QFETCH(QString, angleMessage);

    IgnitionMap map;
    map.setPoint(4, rpm, angle);
    const PointValidation point = validate(map, curve).points[4];
    QCOMPARE(point.rpmMessage, rpmMessage);
    QCOMPARE(point.angleMessage, angleMessage);
}

// The table's sort button sorts stably by speed: angles travel with their speeds, equal speeds
// keep their order, and empty slots go to the front. Equal speeds count as not rising although
// every point is valid.
void TestProfile::mapOrder()
{
    QVERIFY(
        sortAscending(mapOf({3000, 1000, 3000, 0, 4000, 0, 0, 0, 0, 0}, {10, 11, 12, 0, 14, 0, 0, 0, 0, 0}))
        == mapOf({0, 0, 0, 0, 0, 0, 1000, 3000, 3000, 4000}, {0, 0, 0, 0, 0, 0, 11, 10, 12, 14}));
    const std::array<qint32, kMapPointCount> equalSpeeds {1, 1, 3, 4, 5, 6, 7, 8, 9, 10}; // angles alike
    const MapValidation equal = validate(mapOf(equalSpeeds, equalSpeeds), {30, 0, 0});
    QVERIFY(equal.notAscending && equal.hasErrors());
    QVERIFY(std::all_of(
        equal.points.begin(), equal.points.end(), [](const PointValidation &p) { return p.isValid(); }));
    // Only the speeds on either side of the step carry the order's message.
    const IgnitionMap stepped = mapOf(equalSpeeds, equalSpeeds);
    const QString order = QStringLiteral("Speeds must rise from row to row");
    QCOMPARE((QStringList {equal.cellMessage(0, 0, stepped), equal.cellMessage(1, 0, stepped),
                 equal.cellMessage(2, 0, stepped), equal.cellMessage(1, 1, stepped)}),
        (QStringList {order, order, QString(), QString()}));
    QCOMPARE(equal.problems(), QStringList {order});
}

QTEST_APPLESS_MAIN(TestProfile)
#include "tst_profile.moc"
