// The profile model: the flag byte, the sensor-mode rule for K1 and K2, the angle ceiling, and
// the ignition map's slots and order.
#include "profile/profile.h"

#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(SensorCoefficients)

class TestProfile : public QObject
{
    Q_OBJECT

private slots:
    void flagByte_data();
    void flagByte();
    void sensorModeDerivesK1AndK2_data();
    void sensorModeDerivesK1AndK2();
    void angleCeiling_data();
    void angleCeiling();
    void coefficientComparison();
    void mapSlots();
    void sortKeepsPairsAndOrder();
};

// The flags as text: monitoring, ground (E enables, B blocks), edge (R rising, F falling), mode.
// A byte that writing gives back reads to its flags and is written again as it was; the others
// show what reading makes of bits that writing never sets together.
void TestProfile::flagByte_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<QString>("flags");
    QTest::addColumn<bool>("writtenBack");
    QTest::newRow("zero") << 0x00 << "-EF0" << true;
    QTest::newRow("monitoring, ground blocks") << 0x03 << "MBF0" << true;
    QTest::newRow("monitoring, ground enables") << 0x01 << "MEF0" << true;
    QTest::newRow("rising edge, mode 2") << 0x14 << "-ER2" << true;
    QTest::newRow("mode 1") << 0x08 << "-EF1" << true;
    QTest::newRow("ground blocking without monitoring reads as enabling") << 0x02 << "-EF0" << false;
    QTest::newRow("both mode bits give mode 1") << 0x18 << "-EF1" << false;
    QTest::newRow("the extra bit and high bits are ignored") << 0xE0 << "-EF0" << false;
}

void TestProfile::flagByte()
{
    QFETCH(int, byte);
    QFETCH(QString, flags);
    QFETCH(bool, writtenBack);

    const ProfileFlags read = ProfileFlags::fromByte(quint8(byte));
    QCOMPARE(QStringLiteral("%1%2%3%4")
                 .arg(read.sideStandMonitoring ? 'M' : '-')
                 .arg(read.groundEnablesIgnition ? 'E' : 'B')
                 .arg(read.pickUpRisingEdge ? 'R' : 'F')
                 .arg(read.sensorMode),
        flags);
    QCOMPARE(read.toByte(false) == byte, writtenBack);
    QCOMPARE(int(read.toByte(true)), read.toByte(false) | ProfileFlags::kExtra);
    // Ground blocking is only written while the side stand is monitored.
    ProfileFlags blocking = read;
    blocking.groundEnablesIgnition = false;
    QCOMPARE(bool(blocking.toByte(false) & ProfileFlags::kGroundBlocksIgnition), read.sideStandMonitoring);
}

void TestProfile::sensorModeDerivesK1AndK2_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("rising");
    QTest::addColumn<SensorCoefficients>("expected");
    QTest::newRow("mode 0 keeps all three") << 0 << true << SensorCoefficients {12, 5, 7};
    QTest::newRow("mode 2, rising edge takes K1 rising") << 2 << true << SensorCoefficients {12, -0.0003, 0};
    QTest::newRow("mode 1, falling edge takes K1 falling")
        << 1 << false << SensorCoefficients {12, -0.0005, 0};
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
    flags.pickUpRisingEdge = !rising;
    p.setFlags(flags);
    QCOMPARE(p.sensorCoefficients().k1, mode == 0 ? 5.0 : rising ? -0.0005 : -0.0003);
}

void TestProfile::angleCeiling_data()
{
    QTest::addColumn<SensorCoefficients>("curve");
    QTest::addColumn<int>("rpm");
    QTest::addColumn<int>("ceiling");
    QTest::newRow("fraction truncated, less the margin") << SensorCoefficients {30.9, 0, 0} << 0 << 28;
    QTest::newRow("negative value truncates toward zero") << SensorCoefficients {0.5, 0, 0} << 0 << -1;
    QTest::newRow("linear and quadratic terms") << SensorCoefficients {40, -0.0005, -5e-8} << 10000 << 28;
    QTest::newRow("huge curve saturates")
        << SensorCoefficients {1e300, 0, 0} << 0 << std::numeric_limits<int>::max();
    QTest::newRow("NaN allows nothing")
        << SensorCoefficients {qQNaN(), 0, 0} << 0 << std::numeric_limits<int>::min();
}

void TestProfile::angleCeiling()
{
    QFETCH(SensorCoefficients, curve);
    QFETCH(int, rpm);
    QFETCH(int, ceiling);
    QCOMPARE(::angleCeiling(curve, rpm), ceiling);
}

// Pairs count as about equal when the smaller over the larger exceeds 0.99.
void TestProfile::coefficientComparison()
{
    const SensorCoefficients base {100, 1, -2};
    QVERIFY(coefficientsAboutEqual(base, {100.9, 1.005, -2}));
    QVERIFY(coefficientsAboutEqual({100.9, 1.005, -2}, base));
    QVERIFY(!coefficientsAboutEqual(base, {101.1, 1, -2}));
    QVERIFY(!coefficientsAboutEqual(base, {100, -1, -2}));
    QVERIFY(!coefficientsAboutEqual({100, 0, -2}, {100, 1e-9, -2}));
}

void TestProfile::mapSlots()
{
    IgnitionMap map;
    map.addPoint(1000, 10);
    map.setPoint(1, 0, 5); // a zero speed with a positive angle is used, not empty
    QCOMPARE(map.firstEmptySlot(), 2);
    for (int i = 2; i < kMapPointCount; ++i)
        map.addPoint(1000 * (i + 1), 20);
    QCOMPARE(map.firstEmptySlot(), -1);
    const IgnitionMap full = map;
    map.addPoint(99999, 40);
    // Out-of-range indexes neither crash nor change anything.
    map.setPoint(10, 1, 1);
    map.setPoint(-1, 1, 1);
    QCOMPARE(map, full);
    QVERIFY(map.pointEquals(9, 10000, 20) && !map.pointEquals(10, 0, 0));
    QCOMPARE(map.maxRpm(), 10000);
    QCOMPARE(map.maxAngle(), 20);
}

// A stable sort by speed: angles travel with their speeds, equal speeds keep their order, and
// empty slots, which all have speed 0, go to the front.
void TestProfile::sortKeepsPairsAndOrder()
{
    IgnitionMap map;
    const int rpms[] = {3000, 1000, 3000, 0, 4000, 0, 0, 0, 0, 0};
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, rpms[i], rpms[i] ? 10 + i : 0);
    QVERIFY(!map.isStrictlyAscending());
    const IgnitionMap sorted = map.sortedAscending();
    for (int i = 0; i < 6; ++i)
        QVERIFY(sorted.point(i).isEmpty());
    QVERIFY(sorted.pointEquals(6, 1000, 11) && sorted.pointEquals(7, 3000, 10)
        && sorted.pointEquals(8, 3000, 12) && sorted.pointEquals(9, 4000, 14));
    IgnitionMap rising;
    for (int i = 0; i < kMapPointCount; ++i)
        rising.setPoint(i, i * 1000, 10); // speed 0 in the first slot only
    QVERIFY(rising.isStrictlyAscending());
    QCOMPARE(rising.sortedAscending(), rising);
}

QTEST_APPLESS_MAIN(TestProfile)
#include "tst_profile.moc"
