// The plotter's pixels: the shaded region over the limit curve and the curve's colours with the
// invalid-segment rule, at pixels worked out by hand from the layout, so that a shifted axis
// shows; the comparison drawing with its legend, and the values compared under it.
#include "profile/profile.h"
#include "profile/profilecomparison.h"
#include "render/mapdescription.h"
#include "render/mapplotter.h"
#include "render/plotfile.h"
#include "support/widgettestmain.h"

#include <QBuffer>
#include <QPainter>
#include <QXmlStreamReader>

#include <QSet>

#include <climits>
#include <cmath>

namespace {

using Points = QVector<QPoint>; // (rpm, angle) pairs

Profile profileOf(const Points &points, const SensorCoefficients &coefficients = {60.0, 0.0, 0.0})
{
    Profile profile;
    IgnitionMap map;
    for (int i = 0; i < points.size(); ++i)
        map.setPoint(i, points[i].x(), points[i].y());
    profile.setMap(map);
    profile.setSensorCoefficients(coefficients);
    return profile;
}

// Ten points 1000 rpm apart from the first speed on, the angle growing by the step.
Points line(int firstRpm, int angle, int angleStep = 0)
{
    Points points;
    for (int i = 0; i < kMapPointCount; ++i)
        points << QPoint(firstRpm + 1000 * i, angle + angleStep * i);
    return points;
}

const QColor kShade(255, 210, 210);
const QColor kRing(220, 0, 0);
const QColor kInvalid(150, 50, 50);

// The curve is drawn smoothed, so the colour is looked for close to the computed spot.
bool colourNear(const QImage &image, QPoint at, const QColor &colour, int across = 2, int down = 2)
{
    for (int dy = -down; dy <= down; ++dy)
        for (int dx = -across; dx <= across; ++dx) {
            const QPoint p = at + QPoint(dx, dy);
            const QColor c = image.valid(p) ? image.pixelColor(p) : QColor();
            if (c.isValid() && std::abs(c.red() - colour.red()) <= 6
                && std::abs(c.green() - colour.green()) <= 6 && std::abs(c.blue() - colour.blue()) <= 6)
                return true;
        }
    return false;
}

} // namespace

class TestMapPlotter : public QObject
{
    Q_OBJECT

private slots:
    void forbiddenRegion_data();
    void forbiddenRegion();
    void curveColours_data();
    void curveColours();
    void severalMaps();
    void sharpOnHighDpiScreens();
    void comparedValues();
    void valuesForASpreadsheet();
    void plotFiles_data();
    void plotFiles();
    void survivesDegenerateInput();
    void describedInWords_data();
    void describedInWords();
};

// One profile shows its forbidden region shaded; with several, each ceiling is a thin line in
// its profile's colour and nothing is shaded. Each entry of "ceilings" is one profile's K0, K1.
// The points lie at 500, 1500, ... 9500 rpm and 5 degrees, except the last at 42, so the axes
// reach 9800 rpm and 50 degrees. In the 733x430 plot with its 16-pixel strips the speed axis
// runs from x 16 over 674 pixels (629 beside a comparison's empty legend of 45), the angle axis
// from y 414 up to 0: 28, 34 and 41 degrees lie at y 182, 132 and 74, one degree at 405.
void TestMapPlotter::forbiddenRegion_data()
{
    QTest::addColumn<QVector<QPointF>>("ceilings");
    QTest::addColumn<bool>("limits");
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<QColor>("colour");
    const QVector<QPointF> falling {{40.0, -0.0005}}; // ceiling 35.5 at 5000 rpm, 33.5 at 9000
    const QVector<QPointF> two {{30.0, 0.0}, {36.0, 0.0}}; // ceilings 28 and 34
    QTest::newRow("falling curve, 34 degrees at 5000 rpm is below it")
        << falling << true << QPoint(359, 132) << QColor(Qt::white);
    QTest::newRow("falling curve, 34 degrees at 9000 rpm is above it")
        << falling << true << QPoint(634, 132) << kShade;
    QTest::newRow("a negative ceiling shades down to the axis")
        << QVector<QPointF> {{1.0, 0.0}} << true << QPoint(222, 405) << kShade;
    QTest::newRow("two are not shaded, 41 degrees at 3000 rpm")
        << two << true << QPoint(208, 74) << QColor(Qt::white);
    QTest::newRow("two, first ceiling line at 3000 rpm")
        << two << true << QPoint(208, 182) << MapPlotter::paletteColor(0);
    QTest::newRow("two without limits, no ceiling line at 3000 rpm")
        << two << false << QPoint(208, 182) << QColor(Qt::white);
}

void TestMapPlotter::forbiddenRegion()
{
    QFETCH(QVector<QPointF>, ceilings);
    QFETCH(bool, limits);
    QFETCH(QPoint, pixel);
    QFETCH(QColor, colour);
    Points points = line(500, 5);
    points[9].setY(42);
    std::vector<PlottedMap> maps;
    for (const QPointF &k : ceilings)
        maps.push_back({profileOf(points, {k.x(), k.y(), 0.0}), QString(), int(maps.size()), true});
    MapPlotter plotter(733, 430, 16);
    if (ceilings.size() > 1)
        plotter.drawSeveral(maps, {}, limits);
    else
        plotter.drawSingle(maps.front().profile, -1, true, true);
    QVERIFY(colourNear(plotter.image(), pixel, colour));
}

// The points lie at 1000 to 10000 rpm and 10 to 26 degrees, an invalid one lifted to 33 over
// its ceiling of 28, so the axes reach 10300 rpm and 41 degrees. The samples are the middles of
// the segments between neighbouring points: segment k joins point k-1 and point k.
void TestMapPlotter::curveColours_data()
{
    QTest::addColumn<bool>("editable");
    QTest::addColumn<QVector<int>>("invalidPoints");
    QTest::addColumn<QVector<QPoint>>("red");
    QTest::addColumn<QVector<QPoint>>("normal");
    QTest::newRow("invalid point 8: 7-8 red, 8-9 normal by design")
        << true << QVector<int> {8} << QVector<QPoint> {{571, 125}}
        << QVector<QPoint> {{506, 181}, {637, 115}};
    QTest::newRow("invalid first point colours the first segment")
        << true << QVector<int> {0} << QVector<QPoint> {{113, 186}} << QVector<QPoint> {{179, 282}};
    QTest::newRow("invalid point 4 colours both of its segments, read-only too")
        << false << QVector<int> {4} << QVector<QPoint> {{310, 166}, {375, 146}}
        << QVector<QPoint> {{244, 262}, {441, 201}};
}

void TestMapPlotter::curveColours()
{
    QFETCH(bool, editable);
    QFETCH(QVector<int>, invalidPoints);
    QFETCH(QVector<QPoint>, red);
    QFETCH(QVector<QPoint>, normal);
    Points points = line(1000, 10, 2);
    for (int i = 0; i < kMapPointCount; ++i)
        points[i].setY(invalidPoints.contains(i) ? 33 : std::min(points[i].y(), 26));
    MapPlotter plotter(733, 430, 16);
    plotter.drawSingle(profileOf(points, {30.0, 0.0, 0.0}), -1, true, editable);
    const QColor plain = editable ? QColor(25, 125, 200) : QColor(80, 80, 80);
    for (const QPoint &pixel : red + normal)
        QVERIFY2(colourNear(plotter.image(), pixel, red.contains(pixel) ? kInvalid : plain),
            qPrintable(QStringLiteral("%1,%2").arg(pixel.x()).arg(pixel.y())));
}

// On a screen with two device pixels per logical one the image has twice the pixels and says
// so, and the drawing fills all of it, not its top-left quarter. In the 300x200 plot the speed
// axis runs from x 16 over 241 pixels to 10300 rpm, the angle axis from y 184 up to 36 degrees:
// the last point, 10000 rpm and 28 degrees, lies at x 249, y 40, and its line runs on to the
// right edge over device rows 78 to 81, its edges sharp; the frame takes the last device row and
// column.
void TestMapPlotter::sharpOnHighDpiScreens()
{
    MapPlotter sharp(733, 430, 16);
    sharp.resize(300, 200, 2.0);
    sharp.drawSingle(profileOf(line(1000, 10, 2)), -1, true, false);
    const QImage &image = sharp.image();
    QVERIFY(image.size() == QSize(600, 400) && image.devicePixelRatio() == 2.0);
    for (int y = 77; y <= 82; ++y)
        QCOMPARE(image.pixelColor(560, y), y == 77 || y == 82 ? QColor(Qt::white) : QColor(80, 80, 80));
    QCOMPARE(image.pixelColor(599, 399), QColor(100, 100, 100));
}

// Twenty profiles: each curve runs out to the plot's right edge uncovered in its palette colour,
// also where it rises above its ceiling, whose point stands in a red ring; the legend stands beside
// the plot with one sample per profile, and a click there finds its entry; the speed labels come
// from the given list, not from the maps. A hidden map is not drawn but keeps its entry. No two
// of the first 64 profiles look alike.
//
// The curves lie at 2, 4, ... 40 degrees from 1000 to 10000 rpm, so the axes reach 10300 rpm and
// 48 degrees. Names this long give the legend its widest, two fifths of 733 pixels: the plot is
// 440 wide, its speed axis runs from x 16 over 381 pixels, its angle axis from y 414 up to 0 at
// 8.625 pixels a degree, each curve on its row and the one above. The legend's rows lie 15
// pixels apart from y 6, each sample line 7 pixels down, from 6 pixels right of the plot.
void TestMapPlotter::severalMaps()
{
    constexpr int kCount = 20;
    const int curveY[kCount]
        = {396, 379, 362, 345, 327, 310, 293, 276, 258, 241, 224, 207, 189, 172, 155, 138, 120, 103, 86, 69};
    std::vector<PlottedMap> maps;
    for (int p = 0; p < kCount; ++p) {
        maps.push_back({profileOf(line(1000, 2 + 2 * p)),
            QStringLiteral("A rather long profile name for the comparison, number %1").arg(p), p, true});
    }
    Points invalid = line(1000, 2);
    invalid[4].setY(33); // above the ceiling of 28
    maps[0].profile = profileOf(invalid, {30.0, 0.0, 0.0});
    maps[1].shown = false;
    MapPlotter plotter(733, 430, 16);
    plotter.drawSeveral(maps, {1000, 5000, 10000}, false);
    const QImage &image = plotter.image();
    for (int p = 0; p < kCount; ++p) {
        QCOMPARE(colourNear(image, QPoint(432, curveY[p]), MapPlotter::paletteColor(p), 6, 0), p != 1);
        QVERIFY(!colourNear(image, QPoint(432, curveY[p] + 1), MapPlotter::paletteColor(p), 6, 0));
        const QPoint sample(452, 13 + 15 * p);
        QCOMPARE(colourNear(image, sample, MapPlotter::paletteColor(p)), p != 1);
        QCOMPARE(plotter.legendEntryAt(sample), p);
    }
    QCOMPARE(plotter.legendEntryAt(QPoint(432, 100)), -1);
    // 17 degrees (y 267) up the rise from 4000 rpm, 2 degrees (x 163, y 396) to 5000 rpm, 33
    // degrees (x 200, y 129), at x 181 between the curves of 16 and 18 degrees; the ring 6 pixels
    // left of the point at 5000 rpm.
    QVERIFY(colourNear(image, QPoint(181, 267), MapPlotter::paletteColor(0)));
    QVERIFY(!colourNear(image, QPoint(181, 267), kInvalid));
    QVERIFY(colourNear(image, QPoint(194, 129), kRing, 1, 1));
    // Inside the 5-pixel tick above the bottom strip: at 5000 rpm, none at 2000 rpm (x 89).
    QCOMPARE(image.pixelColor(200, 412), QColor(Qt::black));
    QVERIFY(image.pixelColor(89, 412) != QColor(Qt::black));
    QSet<QPair<QRgb, int>> looks;
    for (int i = 0; i < 64; ++i)
        looks.insert({MapPlotter::paletteColor(i).rgb(), int(MapPlotter::paletteLineStyle(i))});
    QCOMPARE(looks.size(), 64);
}

// The value table under the comparison graph: each value and its difference to the first profile.
void TestMapPlotter::comparedValues()
{
    QCOMPARE(comparedValueText(3700, 3500, QString()), QStringLiteral("3700 (+200)"));
    QCOMPARE(comparedValueText(26, 28, QStringLiteral("°")), QStringLiteral("26° (-2)"));
    QCOMPARE(comparedValueText(24, 24, QStringLiteral("°")), QStringLiteral("24°"));
    QCOMPARE(comparedValueText(INT_MAX, INT_MIN, QString()), QStringLiteral("2147483647 (+4294967295)"));
}

// An empty map, extreme values and a curve that is not a number all draw through: the frame is
// the last thing drawn, and it is there when the whole drawing came through.
void TestMapPlotter::survivesDegenerateInput()
{
    const std::vector<Profile> profiles {profileOf({}, {30, 0, 0}),
        profileOf({{INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}}, {1e300, -1e300, 1e300}),
        profileOf(line(1000, 10, 2), {std::nan(""), 0, 0})};
    for (const Profile &profile : profiles) {
        MapPlotter plotter(733, 430, 16);
        plotter.drawSingle(profile, 0, true, true);
        plotter.drawSeveral({{profile, QString(), 0, true}}, {0, INT_MAX}, true);
        QCOMPARE(plotter.image().pixelColor(0, 0), QColor(100, 100, 100));
    }
}

// Written out by hand: a byte-order mark, a header, a name with a comma and quotes in quotes,
// CRLF line ends.
void TestMapPlotter::valuesForASpreadsheet()
{
    Profile plain = profileOf(line(1000, 10));
    plain.setName(QStringLiteral("Road"));
    plain.setMotorbikeType(0, false);
    Profile quoted = profileOf({{500, 5}, {20000, 49}});
    quoted.setName(QStringLiteral("Track, \"hot\" Zündung"));
    quoted.setMotorbikeType(0, true);
    Profile formula = plain;
    formula.setName(QStringLiteral("=HYPERLINK(\"x\")"));
    const QByteArray header
        = "Profile,Kind,RPM 1,Angle 1,RPM 2,Angle 2,RPM 3,Angle 3,RPM 4,Angle 4,RPM 5,Angle 5,"
          "RPM 6,Angle 6,RPM 7,Angle 7,RPM 8,Angle 8,RPM 9,Angle 9,RPM 10,Angle 10\r\n";
    QCOMPARE(comparisonCsv({plain, quoted, formula}),
        "\xEF\xBB\xBF" + header
            + "Road,Default,1000,10,2000,10,3000,10,4000,10,5000,10,6000,10,7000,10,8000,10,9000,10,10000,"
              "10\r\n"
              "\"Track, \"\"hot\"\" "
              "Z\xC3\xBCndung\",Custom,500,5,20000,49,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n"
              "\"'=HYPERLINK(\"\"x\"\")\",Default,1000,10,2000,10,3000,10,4000,10,5000,10,6000,10,7000,10,"
              "8000,10,9000,10,10000,10\r\n");
    QCOMPARE(comparisonCsv({}), "\xEF\xBB\xBF" + header);
}

// A graph's file has the size asked for in the format of its suffix, or of the type chosen (PNG)
// when the name has no suffix of a graph; an SVG drawing reads as XML with the size in its root.
void TestMapPlotter::plotFiles_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::newRow("no suffix takes the chosen type") << "graph"
                                                     << "graph.png" << QSize(300, 200);
    QTest::newRow("a suffix in capitals stays") << "graph.PNG"
                                                << "graph.PNG" << QSize(733, 430);
    QTest::newRow("another suffix is kept, the chosen one added") << "graph.v2"
                                                                  << "graph.v2.png" << QSize(1, 1);
#ifdef QT_SVG_LIB
    QTest::newRow("a typed suffix beats the chosen type") << "graph.svg"
                                                          << "graph.svg" << QSize(400, 250);
#else // without Qt's SVG module ".svg" is another suffix
    QTest::newRow("a typed suffix beats the chosen type") << "graph.svg"
                                                          << "graph.svg.png" << QSize(400, 250);
#endif
}

void TestMapPlotter::plotFiles()
{
    QFETCH(QString, typed);
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QCOMPARE(pathWithPlotSuffix(typed, PlotFormat::Png), path);
    const PlotFormat format = plotFormatOfPath(path).value_or(PlotFormat::Png);
    const Profile profile = profileOf(line(1000, 10, 2));
    const QByteArray bytes = plotFileBytes(format, size, [&profile](MapPlotter &plotter, QPainter &painter) {
        plotter.paintSeveral(painter, {{profile, QStringLiteral("Road"), 0, true}}, {1000}, true);
    });
    QVERIFY(plotFileBytes(format, QSize(0, 10), [](MapPlotter &, QPainter &) {}).isEmpty());
    if (format == PlotFormat::Png) {
        QCOMPARE(QImage::fromData(bytes, "PNG").size(), size);
        return;
    }
    QXmlStreamReader svg(bytes);
    QVERIFY(svg.readNextStartElement() && svg.name() == QLatin1String("svg"));
    QCOMPARE(svg.attributes().value(QLatin1String("viewBox")).toString(),
        QStringLiteral("0 0 %1 %2").arg(size.width()).arg(size.height()));
    while (!svg.atEnd())
        svg.readNext();
    QVERIFY2(!svg.hasError(), qPrintable(svg.errorString()));
}

// What screen readers say for a graph: the points, the highest advance, and each point over a
// limit in the checker's words with how far it is over. The ceiling is 28 degrees throughout.
void TestMapPlotter::describedInWords_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("all below the limit")
        << line(1000, 10, 1)
        << QStringList {
               "Advance angle over engine speed, 10 points: 1000 rpm 10°, 2000 rpm 11°, 3000 rpm 12°, "
               "4000 rpm 13°, 5000 rpm 14°, 6000 rpm 15°, 7000 rpm 16°, 8000 rpm 17°, 9000 rpm 18°, "
               "10000 rpm 19°. Highest advance 19° at 10000 rpm. All points are below the limit of this "
               "profile."};
    Points over = line(1000, 10);
    over[4].setY(33);
    QTest::newRow("over the ceiling")
        << over
        << QStringList {"Highest advance 33° at 5000 rpm.",
               "Breaking the limits, drawn red: Row 5: the angle for 5000 RPM should not exceed 28 for this "
               "profile (33°, 5 degrees too much)."};
    Points two = line(1000, 10);
    two[2].setY(55);
    two[0].setY(-1);
    QTest::newRow("over 49 and negative") << two
                                          << QStringList {"Row 1: angle cannot be negative; Row 3: angle "
                                                          "exceeds maximum of 49 (55°, 6 degrees too much)."};
    Points swapped = line(1000, 10);
    swapped[1].setX(500);
    QTest::newRow("speeds out of order")
        << swapped << QStringList {"drawn red: Speeds must rise from row to row."};
}

void TestMapPlotter::describedInWords()
{
    QFETCH(Points, points);
    QFETCH(QStringList, parts);
    const QString text = MapDescription::describe(profileOf(points, {30.0, 0.0, 0.0}));
    for (const QString &part : parts)
        QVERIFY2(text.contains(part), qPrintable(text));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestMapPlotter)
#include "tst_mapplotter.moc"
