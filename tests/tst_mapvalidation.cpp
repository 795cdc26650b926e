// The map checker: what it says about each faulty value, and whether the speeds rise.
#include "profile/mapvalidation.h"

#include <QtTest>

Q_DECLARE_METATYPE(SensorCoefficients)

class TestMapValidation : public QObject
{
    Q_OBJECT

private slots:
    void pointMessages_data();
    void pointMessages();
    void wholeMap();
};

void TestMapValidation::pointMessages_data()
{
    QTest::addColumn<int>("rpm");
    QTest::addColumn<int>("angle");
    QTest::addColumn<SensorCoefficients>("curve");
    QTest::addColumn<QString>("rpmMessage");
    QTest::addColumn<QString>("angleMessage");

    const SensorCoefficients flat30 {30, 0, 0}; // ceiling 28
    QTest::newRow("upper bounds accepted") << 20000 << 49 << SensorCoefficients {100, 0, 0} << ""
                                           << "";
    QTest::newRow("angle at the ceiling accepted") << 7000 << 28 << flat30 << ""
                                                   << "";
    QTest::newRow("angle one above the ceiling")
        << 7000 << 29 << flat30 << ""
        << "the angle for 7000 RPM should not exceed 28 for this profile";
    QTest::newRow("negative speed, angle too high") << -1 << 60 << flat30 << "RPM cannot be negative"
                                                    << "angle exceeds maximum of 49";
    QTest::newRow("speed too high skips the ceiling")
        << 20001 << 40 << flat30 << "RPM exceed the maximum of 20000"
        << "";
    QTest::newRow("negative angle with a faulty speed")
        << 20001 << -3 << flat30 << "RPM exceed the maximum of 20000"
        << "angle cannot be negative";
    QTest::newRow("negative ceiling rejects any positive angle")
        << 5000 << 1 << SensorCoefficients {1.5, 0, 0} << ""
        << "the angle for 5000 RPM should not exceed 0 for this profile";
    QTest::newRow("ceiling falling with speed")
        << 12000 << 30 << SensorCoefficients {40, -0.0008, 0} << ""
        << "the angle for 12000 RPM should not exceed 28 for this profile";
}

void TestMapValidation::pointMessages()
{
    QFETCH(int, rpm);
    QFETCH(int, angle);
    QFETCH(SensorCoefficients, curve);
    QFETCH(QString, rpmMessage);
    QFETCH(QString, angleMessage);

    IgnitionMap map;
    map.setPoint(4, rpm, angle);
    const PointValidation point = validate(map, curve).points[4];
    QCOMPARE(point.index, 4);
    QCOMPARE(point.rpmMessage, rpmMessage);
    QCOMPARE(point.angleMessage, angleMessage);
    QCOMPARE(point.isValid(), rpmMessage.isEmpty() && angleMessage.isEmpty());
}

// Equal speeds count as not rising although every point is valid.
void TestMapValidation::wholeMap()
{
    Profile profile;
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 * (i + 1), 8 + 2 * i);
    profile.setMap(map);
    profile.setSensorCoefficients({30, 0, 0});
    QVERIFY(!validate(profile).hasErrors());
    map.setPoint(1, 1000, 10);
    profile.setMap(map);
    QVERIFY(validate(profile).notAscending && validate(profile).hasErrors());
    map.setPoint(1, 2000, 29);
    profile.setMap(map);
    const MapValidation oneAbove = validate(profile);
    QVERIFY(!oneAbove.notAscending && oneAbove.hasErrors() && !oneAbove.points[1].isValid());
}

QTEST_APPLESS_MAIN(TestMapValidation)
#include "tst_mapvalidation.moc"
