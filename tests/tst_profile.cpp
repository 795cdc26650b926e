#include "profile/profile.h"

#include <QtTest>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(SensorCoefficients)

class TestProfile : public QObject
{
    Q_OBJECT

private slots:
    void newProfileDefaults();
    void flagByteDecoding_data();
    void flagByteDecoding();
    void flagByteEncoding_data();
    void flagByteEncoding();
    void settersMarkModified_data();
    void settersMarkModified();
    void sensorModeDerivesK1AndK2_data();
    void sensorModeDerivesK1AndK2();
    void angleCeiling_data();
    void angleCeiling();
    void coefficientComparison_data();
    void coefficientComparison();
    void mapSlots();
    void mapOrder_data();
    void mapOrder();
    void sortIsStableAndKeepsPairs();
    void nearestPoint_data();
    void nearestPoint();
    void copyIsIndependent();
};

void TestProfile::newProfileDefaults()
{
    const Profile p;
    QCOMPARE(p.name(), QStringLiteral("Unnamed"));
    QVERIFY(p.isCustom());
    QCOMPARE(p.kind(), ProfileKind::Custom);
    QCOMPARE(p.voltage(), 200);
    QVERIFY(p.pickUpEdgeSelectable());
    QVERIFY(!p.isModified());
    QVERIFY(!p.auxFlag());
    QCOMPARE(p.flags(), ProfileFlags::fromByte(0));
    QCOMPARE(p.map().firstEmptySlot(), 0);
    for (int i = 0; i < kMapPointCount; ++i)
        QVERIFY(p.map().point(i).isEmpty());
}

void TestProfile::flagByteDecoding_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<bool>("monitoring");
    QTest::addColumn<bool>("groundEnables");
    QTest::addColumn<bool>("rising");
    QTest::addColumn<int>("mode");

    QTest::newRow("zero: monitoring off, ground enables, falling, mode 0") << 0x00 << false << true << false << 0;
    QTest::newRow("ground-blocks bit alone still decodes as ground enables")
        << 0x02 << false << false << false << 0;
    QTest::newRow("monitoring with ground blocking") << 0x03 << true << false << false << 0;
    QTest::newRow("monitoring with ground enabling") << 0x01 << true << true << false << 0;
    QTest::newRow("rising edge") << 0x04 << false << true << true << 0;
    QTest::newRow("mode 1") << 0x08 << false << true << false << 1;
    QTest::newRow("mode 2") << 0x10 << false << true << false << 2;
    QTest::newRow("both mode bits: mode 1 wins") << 0x18 << false << true << false << 1;
    QTest::newRow("extra and high bits are ignored") << 0xE0 << false << true << false << 0;
}

void TestProfile::flagByteDecoding()
{
    QFETCH(int, byte);
    QFETCH(bool, monitoring);
    QFETCH(bool, groundEnables);
    QFETCH(bool, rising);
    QFETCH(int, mode);

    const ProfileFlags flags = ProfileFlags::fromByte(quint8(byte));
    QCOMPARE(flags.sideStandMonitoring, monitoring);
    // A byte with monitoring off always means "ground enables", whatever bit 1 says.
    QCOMPARE(flags.groundEnablesIgnition, monitoring ? groundEnables : true);
    QCOMPARE(flags.pickUpRisingEdge, rising);
    QCOMPARE(int(flags.sensorMode), mode);
}

void TestProfile::flagByteEncoding_data()
{
    QTest::addColumn<bool>("monitoring");
    QTest::addColumn<bool>("groundEnables");
    QTest::addColumn<bool>("rising");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("extra");
    QTest::addColumn<int>("byte");

    QTest::newRow("ground blocks without monitoring is not written") << false << false << false << 0 << false << 0x00;
    QTest::newRow("monitoring, ground blocks") << true << false << false << 0 << false << 0x03;
    QTest::newRow("monitoring, ground enables") << true << true << false << 0 << false << 0x01;
    QTest::newRow("rising edge, mode 2") << false << true << true << 2 << false << 0x14;
    QTest::newRow("mode 1 with the extra flag") << false << true << false << 1 << true << 0x28;
    QTest::newRow("everything") << true << false << true << 1 << true << 0x2F;
}

void TestProfile::flagByteEncoding()
{
    QFETCH(bool, monitoring);
    QFETCH(bool, groundEnables);
    QFETCH(bool, rising);
    QFETCH(int, mode);
    QFETCH(bool, extra);
    QFETCH(int, byte);

    ProfileFlags flags;
    flags.sideStandMonitoring = monitoring;
    flags.groundEnablesIgnition = groundEnables;
    flags.pickUpRisingEdge = rising;
    flags.sensorMode = quint32(mode);
    QCOMPARE(int(flags.toByte(extra)), byte);
}

void TestProfile::settersMarkModified_data()
{
    QTest::addColumn<int>("setter");
    QTest::newRow("name") << 0;
    QTest::newRow("notes") << 1;
    QTest::newRow("voltage") << 2;
    QTest::newRow("map") << 3;
    QTest::newRow("coefficients") << 4;
    QTest::newRow("flags") << 5;
    QTest::newRow("type and kind") << 6;
}

void TestProfile::settersMarkModified()
{
    QFETCH(int, setter);
    Profile p;
    QVERIFY(!p.isModified());
    switch (setter) {
    case 0: p.setName(QStringLiteral("Race")); break;
    case 1: p.setNotes(QStringLiteral("new plug")); break;
    case 2: p.setVoltage(180); break;
    case 3: p.setMap(IgnitionMap()); break;
    case 4: p.setSensorCoefficients({30, 0, 0}); break;
    case 5: p.setFlags(ProfileFlags()); break;
    case 6: p.setMotorbikeType(3, false); break;
    }
    QVERIFY(p.isModified());
}

void TestProfile::sensorModeDerivesK1AndK2_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("rising");
    QTest::addColumn<SensorCoefficients>("expected");

    QTest::newRow("mode 0 keeps all three") << 0 << true << SensorCoefficients {12, 5, 7};
    QTest::newRow("mode 2, rising edge takes k1Rising") << 2 << true << SensorCoefficients {12, -0.0003, 0};
    QTest::newRow("mode 1, falling edge takes k1Falling") << 1 << false << SensorCoefficients {12, -0.0005, 0};
}

void TestProfile::sensorModeDerivesK1AndK2()
{
    QFETCH(int, mode);
    QFETCH(bool, rising);
    QFETCH(SensorCoefficients, expected);

    Profile p;
    p.setK1(-0.0003, -0.0005);
    ProfileFlags flags;
    flags.sensorMode = quint32(mode);
    flags.pickUpRisingEdge = rising;
    p.setFlags(flags);
    p.setSensorCoefficients({12, 5, 7});
    QCOMPARE(p.sensorCoefficients(), expected);

    // Switching the edge afterwards makes the ceiling follow it.
    if (mode != 0) {
        flags.pickUpRisingEdge = !rising;
        p.setFlags(flags);
        QCOMPARE(p.sensorCoefficients().k1, rising ? -0.0005 : -0.0003);
        QCOMPARE(p.sensorCoefficients().k0, 12.0);
    }
}

void TestProfile::angleCeiling_data()
{
    QTest::addColumn<SensorCoefficients>("curve");
    QTest::addColumn<int>("rpm");
    QTest::addColumn<int>("ceiling");

    QTest::newRow("constant 30 gives 28") << SensorCoefficients {30, 0, 0} << 7000 << 28;
    QTest::newRow("fraction truncates down") << SensorCoefficients {30.9, 0, 0} << 0 << 28;
    QTest::newRow("negative value truncates toward zero") << SensorCoefficients {0.5, 0, 0} << 0 << -1;
    QTest::newRow("linear term") << SensorCoefficients {40, -0.001, 0} << 10000 << 28;
    QTest::newRow("quadratic term") << SensorCoefficients {40, 0, -1e-7} << 10000 << 28;
    QTest::newRow("huge curve saturates") << SensorCoefficients {1e300, 0, 0} << 100 << std::numeric_limits<int>::max();
    QTest::newRow("NaN allows nothing")
        << SensorCoefficients {std::numeric_limits<double>::quiet_NaN(), 0, 0} << 100 << std::numeric_limits<int>::min();
}

void TestProfile::angleCeiling()
{
    QFETCH(SensorCoefficients, curve);
    QFETCH(int, rpm);
    QFETCH(int, ceiling);
    QCOMPARE(::angleCeiling(curve, rpm), ceiling);
}

void TestProfile::coefficientComparison_data()
{
    QTest::addColumn<SensorCoefficients>("a");
    QTest::addColumn<SensorCoefficients>("b");
    QTest::addColumn<bool>("aboutEqual");

    QTest::newRow("identical") << SensorCoefficients {30, -0.0004, 0} << SensorCoefficients {30, -0.0004, 0} << true;
    QTest::newRow("within one percent") << SensorCoefficients {30, 1, 2} << SensorCoefficients {30.2, 1.005, 2} << true;
    QTest::newRow("just one percent off") << SensorCoefficients {100, 1, 2} << SensorCoefficients {101.1, 1, 2} << false;
    QTest::newRow("zero against non-zero") << SensorCoefficients {30, 0, 0} << SensorCoefficients {30, 1e-9, 0} << false;
    QTest::newRow("opposite signs") << SensorCoefficients {30, 1, 0} << SensorCoefficients {30, -1, 0} << false;
}

void TestProfile::coefficientComparison()
{
    QFETCH(SensorCoefficients, a);
    QFETCH(SensorCoefficients, b);
    QFETCH(bool, aboutEqual);
    QCOMPARE(coefficientsAboutEqual(a, b), aboutEqual);
    QCOMPARE(coefficientsAboutEqual(b, a), aboutEqual);
}

void TestProfile::mapSlots()
{
    IgnitionMap map;
    map.addPoint(1000, 10);
    map.addPoint(2000, 15);
    QCOMPARE(map.firstEmptySlot(), 2);
    QVERIFY(map.pointEquals(1, 2000, 15));
    // A point with a zero speed but a positive angle is used, not empty.
    map.setPoint(2, 0, 5);
    QCOMPARE(map.firstEmptySlot(), 3);
    for (int i = 3; i < kMapPointCount; ++i)
        map.addPoint(1000 * (i + 1), 20);
    QCOMPARE(map.firstEmptySlot(), -1);
    const IgnitionMap full = map;
    map.addPoint(99999, 40);
    QCOMPARE(map, full);
    QCOMPARE(map.maxRpm(), 10000);
    QCOMPARE(map.maxAngle(), 20);
    // Out-of-range indexes neither crash nor change anything.
    map.setPoint(10, 1, 1);
    map.setPoint(-1, 1, 1);
    QCOMPARE(map, full);
    QVERIFY(!map.pointEquals(10, 0, 0));
}

void TestProfile::mapOrder_data()
{
    QTest::addColumn<QVector<int>>("rpms");
    QTest::addColumn<bool>("ascending");

    QTest::newRow("strictly rising") << QVector<int> {500, 1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000} << true;
    QTest::newRow("two equal speeds") << QVector<int> {1000, 1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000} << false;
    QTest::newRow("empty slots repeat zero") << QVector<int> {0, 0, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000} << false;
    QTest::newRow("one empty slot first") << QVector<int> {0, 1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000} << true;
    QTest::newRow("falls at the end") << QVector<int> {500, 1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 7999} << false;
}

void TestProfile::mapOrder()
{
    QFETCH(QVector<int>, rpms);
    QFETCH(bool, ascending);
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, rpms[i], 10);
    QCOMPARE(map.isStrictlyAscending(), ascending);
    QVERIFY(map.sortedAscending().isStrictlyAscending() || !ascending);
}

void TestProfile::sortIsStableAndKeepsPairs()
{
    IgnitionMap map;
    map.setPoint(0, 3000, 20);
    map.setPoint(1, 1000, 10);
    map.setPoint(2, 3000, 5);
    for (int i = 3; i < kMapPointCount; ++i)
        map.setPoint(i, 4000 + i, 30 + i);
    const IgnitionMap sorted = map.sortedAscending();
    // The seven untouched slots at 4003.. keep their angles.
    QVERIFY(sorted.pointEquals(0, 1000, 10));
    QVERIFY(sorted.pointEquals(1, 3000, 20));
    QVERIFY(sorted.pointEquals(2, 3000, 5));
    for (int i = 3; i < kMapPointCount; ++i)
        QVERIFY(sorted.pointEquals(i, 4000 + i, 30 + i));

    IgnitionMap withEmpty;
    withEmpty.setPoint(0, 2000, 12);
    withEmpty.setPoint(1, 1000, 8);
    const IgnitionMap sortedEmpty = withEmpty.sortedAscending();
    for (int i = 0; i < 8; ++i)
        QVERIFY(sortedEmpty.point(i).isEmpty());
    QVERIFY(sortedEmpty.pointEquals(8, 1000, 8));
    QVERIFY(sortedEmpty.pointEquals(9, 2000, 12));
}

void TestProfile::nearestPoint_data()
{
    QTest::addColumn<double>("rpm");
    QTest::addColumn<double>("angle");
    QTest::addColumn<int>("nearest");

    QTest::newRow("on a point") << 3000.0 << 20.0 << 2;
    QTest::newRow("closer in angle weighs more") << 2400.0 << 19.0 << 2;
    QTest::newRow("1250 away still hits") << 5250.0 << 25.0 << 3;
    QTest::newRow("1251 away misses") << 5251.0 << 25.0 << -1;
    QTest::newRow("tie goes to the lower index") << 1500.0 << 10.0 << 0;
}

void TestProfile::nearestPoint()
{
    QFETCH(double, rpm);
    QFETCH(double, angle);
    QFETCH(int, nearest);
    IgnitionMap map;
    map.setPoint(0, 1000, 10);
    map.setPoint(1, 2000, 10);
    map.setPoint(2, 3000, 20);
    map.setPoint(3, 4000, 25);
    for (int i = 4; i < kMapPointCount; ++i)
        map.setPoint(i, 9000 + 1000 * i, 40);
    QCOMPARE(map.nearestPoint(rpm, angle), nearest);
}

void TestProfile::copyIsIndependent()
{
    Profile a;
    a.setName(QStringLiteral("Original"));
    a.setExtraText(1, QStringLiteral("Deutsch"));
    Profile b = a;
    b.setName(QStringLiteral("Copy"));
    b.setExtraText(1, QStringLiteral("geändert"));
    QCOMPARE(a.name(), QStringLiteral("Original"));
    QCOMPARE(a.extraText(1), QStringLiteral("Deutsch"));
}

QTEST_APPLESS_MAIN(TestProfile)
#include "tst_profile.moc"
