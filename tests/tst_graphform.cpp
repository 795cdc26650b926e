// The editor's graph driven by real mouse events: picking the nearest point, dragging with
// snapping to 50 rpm and clamping to the fixed bounds and the ceiling, the refit on release,
// and what the widget shows.
#include "editor/chintlabel.h"
#include "editor/graphform.h"
#include "editor/iprofileeditormain.h"
#include "editor/mapplotter.h"
#include "profile/profile.h"
#include "tests/widgettestmain.h"

#include <QTranslator>
#include <QWindow>

namespace {

using Points = QVector<QPoint>; // (rpm, angle) pairs

// Stands in for the editor page: it hands every change back to the graph, as the page does,
// and remembers what the graph reported.
class FakeEditor : public IProfileEditorMain
{
public:
    void updateGraph() override { }
    void setProfileName(const QString &) override { }
    void setProfileNotes(const QString &) override { }
    void onMapChanged(bool rescale) override
    {
        mapChanges << rescale;
        graph->setData(profile, graph->selectedIndex(), rescale);
    }
    void onPointSelected(int index, bool rescale) override
    {
        selections << qMakePair(index, rescale);
        graph->setData(profile, index, rescale);
    }

    GraphForm *graph = nullptr;
    Profile *profile = nullptr;
    QVector<bool> mapChanges;
    QVector<QPair<int, bool>> selections;
};

IgnitionMap mapOf(const Points &points)
{
    IgnitionMap map;
    for (int i = 0; i < points.size(); ++i)
        map.setPoint(i, points[i].x(), points[i].y());
    return map;
}

// Four points on the left, point 4 in the middle, five on the right; the last one fixes the
// axes at 0..19300 rpm and 0..50 degrees.
Points spreadPoints()
{
    return {{500, 5}, {1000, 5}, {1500, 5}, {2000, 5}, {8000, 20}, {15000, 5}, {16000, 5}, {17000, 5},
        {18000, 5}, {19000, 42}};
}

constexpr SensorCoefficients kHighCeiling {60.0, 0.0, 0.0};

} // namespace

char *toString(const MapPoint &point)
{
    return QTest::toString(QStringLiteral("(%1 rpm, %2 degrees)").arg(point.rpm).arg(point.angle));
}

Q_DECLARE_METATYPE(SensorCoefficients)
Q_DECLARE_METATYPE(MapPoint)

class TestGraphForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pressSelectsTheNearestPoint_data();
    void pressSelectsTheNearestPoint();
    void dragSnapsToFiftyRpm_data();
    void dragSnapsToFiftyRpm();
    void dragClamps_data();
    void dragClamps();
    void draggingPastANeighbourShowsTheBadge();
    void axesStayDuringTheDragAndRefitOnRelease();
    void pressAwayFromPointsDoesNothing();
    void showsThePlottersImage();
    void resizeRefitsAndCentresTheHint();
    void languageChangeRedrawsTheTexts();

private:
    void load(const Points &points, const SensorCoefficients &coefficients = kHighCeiling);
    QPoint pixelOf(int rpm, double angle) const;
    // A pixel column whose speed has the given remainder modulo 50, near the given speed.
    int columnWithRemainder(int nearRpm, int remainder) const;
    const MapPlotter &plotter() const { return m_graph->plotter(); }
    // Mouse input goes through the window, as the platform delivers it.
    QWindow *window() const { return m_graph->windowHandle(); }

    std::unique_ptr<FakeEditor> m_editor;
    std::unique_ptr<GraphForm> m_graph;
    Profile m_profile;
};

void TestGraphForm::init()
{
    m_editor = std::make_unique<FakeEditor>();
    m_graph = std::make_unique<GraphForm>(m_editor.get());
    m_editor->graph = m_graph.get();
    m_editor->profile = &m_profile;
    m_graph->resize(733, 430);
    m_graph->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_graph.get()));
    load(spreadPoints());
}

void TestGraphForm::cleanup()
{
    m_graph.reset();
    m_editor.reset();
}

void TestGraphForm::load(const Points &points, const SensorCoefficients &coefficients)
{
    m_profile = Profile();
    m_profile.setMap(mapOf(points));
    m_profile.setSensorCoefficients(coefficients);
    m_profile.setModified(false);
    m_graph->setData(&m_profile, -1, true);
    m_editor->mapChanges.clear();
    m_editor->selections.clear();
}

QPoint TestGraphForm::pixelOf(int rpm, double angle) const
{
    return QPoint(plotter().xAxis().toPixel(rpm), plotter().yAxis().toPixel(angle));
}

int TestGraphForm::columnWithRemainder(int nearRpm, int remainder) const
{
    for (int x = plotter().xAxis().toPixel(nearRpm); x < m_graph->width(); ++x) {
        const int rpm = plotter().xAxis().toValue(x);
        if (rpm % 50 == remainder)
            return x;
    }
    return -1;
}

void TestGraphForm::pressSelectsTheNearestPoint_data()
{
    QTest::addColumn<int>("rpmOffset");
    QTest::addColumn<int>("angleOffset");
    QTest::addColumn<bool>("selects");
    QTest::newRow("1250 rpm away selects") << 1250 << 0 << true;
    QTest::newRow("1251 rpm away does not") << 1251 << 0 << false;
    QTest::newRow("1250 rpm below selects") << -1250 << 0 << true;
    QTest::newRow("3 degrees weigh 1200 rpm") << 50 << 3 << true;
    QTest::newRow("3 degrees and 51 rpm are too far") << 51 << -3 << false;
    QTest::newRow("4 degrees are too far") << 0 << 4 << false;
}

void TestGraphForm::pressSelectsTheNearestPoint()
{
    QFETCH(int, rpmOffset);
    QFETCH(int, angleOffset);
    QFETCH(bool, selects);
    // The press goes to a fixed spot; point 4 is placed at the given distance from what that
    // spot means in rpm and degrees.
    const QPoint press = pixelOf(8000, 20);
    const int rpm = plotter().xAxis().toValue(press.x());
    const int angle = plotter().yAxis().toValue(press.y());
    Points points = spreadPoints();
    points[4] = QPoint(rpm + rpmOffset, angle + angleOffset);
    load(points);
    QCOMPARE(plotter().xAxis().toValue(press.x()), rpm);

    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, press);
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, press);
    if (selects) {
        QCOMPARE(m_editor->selections, (QVector<QPair<int, bool>> {{4, false}}));
        QCOMPARE(m_graph->selectedIndex(), 4);
    } else {
        QVERIFY(m_editor->selections.isEmpty());
        QCOMPARE(m_graph->selectedIndex(), -1);
    }
    QVERIFY(m_editor->mapChanges.isEmpty());
    QCOMPARE(m_profile.map(), mapOf(points));
}

void TestGraphForm::dragSnapsToFiftyRpm_data()
{
    QTest::addColumn<int>("remainder");
    QTest::addColumn<int>("adjustment");
    QTest::newRow("remainder 0 stays") << 0 << 0;
    QTest::newRow("remainder 1 rounds down") << 1 << -1;
    QTest::newRow("remainder 25 rounds down (1025 gives 1000)") << 25 << -25;
    QTest::newRow("remainder 26 rounds up (1026 gives 1050)") << 26 << 24;
    QTest::newRow("remainder 49 rounds up") << 49 << 1;
}

void TestGraphForm::dragSnapsToFiftyRpm()
{
    QFETCH(int, remainder);
    QFETCH(int, adjustment);
    const int x = columnWithRemainder(9000, remainder);
    QVERIFY2(x >= 0, "no pixel column has that remainder");
    const int rawRpm = plotter().xAxis().toValue(x);
    const int y = pixelOf(0, 12).y();
    const int angle = plotter().yAxis().toValue(y);

    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, pixelOf(8000, 20));
    QTest::mouseMove(window(), QPoint(x, y));
    QCOMPARE(m_profile.map().point(4), (MapPoint {rawRpm + adjustment, angle}));
    QCOMPARE(m_editor->mapChanges, QVector<bool> {false});
    QVERIFY(m_profile.isModified());
    // A move that lands on the same snapped point changes nothing.
    QTest::mouseMove(window(), QPoint(x, y));
    QCOMPARE(m_editor->mapChanges.size(), 1);
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, QPoint(x, y));
}

void TestGraphForm::dragClamps_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<SensorCoefficients>("coefficients");
    QTest::addColumn<int>("rpm"); // where the mouse goes, kept inside the widget
    QTest::addColumn<double>("angle");
    QTest::addColumn<MapPoint>("result");
    Points wide = spreadPoints();
    wide[9].setX(19900); // the speed axis reaches 20200
    // Aiming at 6010 rpm lands within a pixel's 29 rpm of it and snaps to 6000.
    QTest::newRow("left of the axis gives 0 rpm")
        << spreadPoints() << kHighCeiling << -3000 << 20.0 << MapPoint {0, 20};
    QTest::newRow("far right stops at 20000 rpm")
        << wide << kHighCeiling << 25000 << 20.0 << MapPoint {20000, 20};
    QTest::newRow("below the speed axis gives 0 degrees")
        << spreadPoints() << kHighCeiling << 6010 << -5.0 << MapPoint {6000, 0};
    QTest::newRow("above the shaded region stops at the ceiling")
        << spreadPoints() << SensorCoefficients {30.0, 0.0, 0.0} << 6010 << 45.0 << MapPoint {6000, 28};
    QTest::newRow("the ceiling at the new speed counts")
        << spreadPoints() << SensorCoefficients {40.0, -0.001, 0.0} << 6010 << 45.0 << MapPoint {6000, 32};
    QTest::newRow("a negative ceiling gives 0 degrees")
        << spreadPoints() << SensorCoefficients {1.0, 0.0, 0.0} << 6010 << 20.0 << MapPoint {6000, 0};
    QTest::newRow("no clamp to 49 while dragging")
        << spreadPoints() << SensorCoefficients {80.0, 0.0, 0.0} << 6010 << 50.0 << MapPoint {6000, 50};
}

void TestGraphForm::dragClamps()
{
    QFETCH(Points, points);
    QFETCH(SensorCoefficients, coefficients);
    QFETCH(int, rpm);
    QFETCH(double, angle);
    QFETCH(MapPoint, result);
    load(points, coefficients);
    const QPoint aim = pixelOf(rpm, angle);
    const QPoint at(
        std::clamp(aim.x(), 0, m_graph->width() - 1), std::clamp(aim.y(), 0, m_graph->height() - 1));

    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, pixelOf(8000, 20));
    QTest::mouseMove(window(), at);
    QCOMPARE(m_profile.map().point(4), result);
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, at);
}

void TestGraphForm::draggingPastANeighbourShowsTheBadge()
{
    Points points;
    for (int i = 0; i < kMapPointCount; ++i)
        points << QPoint(1000 * (i + 1), 10 + 2 * i);
    load(points);
    const QRect badge = plotter().cornerBoxOuter(100, 29);
    const QColor edge(90, 90, 90);
    QVERIFY(m_graph->grab().toImage().pixelColor(badge.left(), badge.center().y()) != edge);

    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, pixelOf(4000, 16));
    QTest::mouseMove(window(), pixelOf(5600, 16));
    QVERIFY(m_profile.map().point(3).rpm > m_profile.map().point(4).rpm);
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, pixelOf(5600, 16));
    const QImage shown = m_graph->grab().toImage();
    QCOMPARE(shown.pixelColor(badge.left(), badge.center().y()), edge);
    QCOMPARE(shown.pixelColor(badge.center().x(), badge.top()), edge);
}

void TestGraphForm::axesStayDuringTheDragAndRefitOnRelease()
{
    const float before = plotter().xAxis().maximum();
    QCOMPARE(before, 19300.0f);
    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, pixelOf(19000, 42));
    QCOMPARE(m_graph->selectedIndex(), 9);
    const QPoint left = pixelOf(12000, 30);
    QTest::mouseMove(window(), left);
    QCOMPARE(m_profile.map().point(9).rpm, 12000);
    QCOMPARE(plotter().xAxis().maximum(), before);
    QCOMPARE(plotter().yAxis().maximum(), 50.0f);
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, left);
    QCOMPARE(plotter().xAxis().maximum(), 18300.0f);
    QCOMPARE(plotter().yAxis().maximum(), 38.0f);
    QCOMPARE(m_graph->selectedIndex(), 9);
}

void TestGraphForm::pressAwayFromPointsDoesNothing()
{
    const QPoint away = pixelOf(5000, 40);
    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, away);
    QTest::mouseMove(window(), pixelOf(6000, 30));
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, pixelOf(6000, 30));
    QVERIFY(m_editor->selections.isEmpty());
    QVERIFY(m_editor->mapChanges.isEmpty());
    QCOMPARE(m_profile.map(), mapOf(spreadPoints()));
    QVERIFY(!m_profile.isModified());
}

void TestGraphForm::showsThePlottersImage()
{
    m_graph->setData(&m_profile, 4, true);
    QCOMPARE(m_graph->grab().toImage().convertToFormat(QImage::Format_RGB32), plotter().image());
    // The selected point is drawn larger, in its own colours.
    const QPoint selected = pixelOf(8000, 20);
    QCOMPARE(plotter().image().pixelColor(selected), QColor(125, 200, 255));
}

void TestGraphForm::resizeRefitsAndCentresTheHint()
{
    struct Listener : CHintLabelListener
    {
        void onHintLabelTouched() override { }
    } listener;
    auto *hint = new CHintLabel(&listener, 230);
    m_graph->setHintLabel(hint);
    m_graph->resize(900, 500);
    QCOMPARE(plotter().image().size(), QSize(900, 500));
    QCOMPARE(plotter().xAxis().toPixel(19300), 900 - 43);
    QCOMPARE(plotter().yAxis().toPixel(0), 500 - 16);
    QCOMPARE(hint->parentWidget(), m_graph.get());
    QCOMPARE(hint->pos(), QPoint(450 - 115, 250 - 14));
}

void TestGraphForm::languageChangeRedrawsTheTexts()
{
    class German : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            if (QByteArray(context) == "MapPlotter" && QByteArray(source) == "Angle")
                return QStringLiteral("Winkel");
            return QString();
        }
    } german;
    const QRect title(2, 2, 60, 14);
    const QImage english = plotter().image().copy(title);
    QCoreApplication::installTranslator(&german);
    QCoreApplication::processEvents(); // the language change is posted to the windows
    const QImage translated = plotter().image().copy(title);
    QCoreApplication::removeTranslator(&german);
    QCoreApplication::processEvents();
    const QImage back = plotter().image().copy(title);
    QVERIFY(translated != english);
    QCOMPARE(back, english);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestGraphForm)
#include "tst_graphform.moc"
