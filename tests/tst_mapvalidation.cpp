#include "profile/mapvalidation.h"

#include <QtTest>

Q_DECLARE_METATYPE(SensorCoefficients)

class TestMapValidation : public QObject
{
    Q_OBJECT

private slots:
    void pointMessages_data();
    void pointMessages();
    void wholeMap_data();
    void wholeMap();
};

void TestMapValidation::pointMessages_data()
{
    QTest::addColumn<int>("rpm");
    QTest::addColumn<int>("angle");
    QTest::addColumn<SensorCoefficients>("curve");
    QTest::addColumn<QString>("rpmMessage");
    QTest::addColumn<QString>("angleMessage");

    const SensorCoefficients flat30 {30, 0, 0};
    const SensorCoefficients open {100, 0, 0};
    QTest::newRow("both bounds of speed and angle accepted") << 0 << 0 << open << "" << "";
    QTest::newRow("upper bounds accepted") << 20000 << 49 << open << "" << "";
    QTest::newRow("angle at the ceiling accepted") << 7000 << 28 << flat30 << "" << "";
    QTest::newRow("angle one above the ceiling")
        << 7000 << 29 << flat30 << "" << "the angle for 7000 RPM should not exceed 28 for this profile";
    QTest::newRow("negative speed, angle too high")
        << -1 << 60 << flat30 << "RPM cannot be negative" << "angle exceeds maximum of 49";
    QTest::newRow("negative speed skips the ceiling") << -1 << 40 << flat30 << "RPM cannot be negative" << "";
    QTest::newRow("speed too high skips the ceiling")
        << 20001 << 40 << flat30 << "RPM exceed the maximum of 20000" << "";
    QTest::newRow("negative angle with a faulty speed")
        << 20001 << -3 << flat30 << "RPM exceed the maximum of 20000" << "angle cannot be negative";
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
    const MapValidation result = validate(map, curve);
    QCOMPARE(result.points[4].index, 4);
    QCOMPARE(result.points[4].rpmMessage, rpmMessage);
    QCOMPARE(result.points[4].angleMessage, angleMessage);
    QCOMPARE(result.points[4].isValid(), rpmMessage.isEmpty() && angleMessage.isEmpty());
}

void TestMapValidation::wholeMap_data()
{
    QTest::addColumn<QVector<int>>("rpms");
    QTest::addColumn<QVector<int>>("angles");
    QTest::addColumn<bool>("notAscending");
    QTest::addColumn<int>("invalidPoints");

    QTest::newRow("valid rising map")
        << QVector<int> {1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000}
        << QVector<int> {8, 12, 16, 20, 24, 26, 27, 28, 28, 28} << false << 0;
    QTest::newRow("equal speeds flag the order although every point is valid")
        << QVector<int> {1000, 1000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000}
        << QVector<int> {8, 12, 16, 20, 24, 26, 27, 28, 28, 28} << true << 0;
    QTest::newRow("one point above the ceiling")
        << QVector<int> {1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000}
        << QVector<int> {8, 12, 16, 20, 24, 26, 27, 28, 29, 28} << false << 1;
}

void TestMapValidation::wholeMap()
{
    QFETCH(QVector<int>, rpms);
    QFETCH(QVector<int>, angles);
    QFETCH(bool, notAscending);
    QFETCH(int, invalidPoints);

    Profile profile;
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, rpms[i], angles[i]);
    profile.setMap(map);
    profile.setSensorCoefficients({30, 0, 0});

    const MapValidation result = validate(profile);
    QCOMPARE(result.notAscending, notAscending);
    int invalid = 0;
    for (const PointValidation &point : result.points)
        invalid += point.isValid() ? 0 : 1;
    QCOMPARE(invalid, invalidPoints);
    QCOMPARE(result.hasErrors(), notAscending || invalidPoints > 0);
}

QTEST_APPLESS_MAIN(TestMapValidation)
#include "tst_mapvalidation.moc"
