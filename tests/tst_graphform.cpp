// The editor's graph driven by real mouse events: picking the nearest point, dragging with
// snapping to 50 rpm and clamping to the fixed bounds and the ceiling, the refit on release,
// and what the widget shows.
#include "editor/chintlabel.h"
#include "editor/graphform.h"
#include "editor/mapplotter.h"
#include "tests/editorstandins.h"
#include "tests/widgettestmain.h"

#include <QWindow>

namespace {

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
    QPoint pixelOf(int rpm, double angle) const
    {
        return QPoint(plotter().xAxis().toPixel(rpm), plotter().yAxis().toPixel(angle));
    }
    const MapPlotter &plotter() const { return m_graph->plotter(); }
    // Mouse input goes through the window, as the platform delivers it.
    void drag(QPoint from, QPoint to, bool release = true)
    {
        QTest::mousePress(m_graph->windowHandle(), Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(m_graph->windowHandle(), to);
        if (release)
            QTest::mouseRelease(m_graph->windowHandle(), Qt::LeftButton, Qt::NoModifier, to);
    }

    std::unique_ptr<RecordingEditor> m_editor;
    std::unique_ptr<GraphForm> m_graph;
    Profile m_profile;
};

void TestGraphForm::init()
{
    m_editor = std::make_unique<RecordingEditor>();
    m_graph = std::make_unique<GraphForm>(m_editor.get());
    // The page hands every change back to the graph.
    m_editor->afterMapChange
        = [this](bool rescale) { m_graph->setData(&m_profile, m_graph->selectedIndex(), rescale); };
    m_editor->afterSelection
        = [this](int index, bool rescale) { m_graph->setData(&m_profile, index, rescale); };
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
    m_profile = profileOf(points, coefficients);
    m_graph->setData(&m_profile, -1, true);
    m_editor->mapChanges.clear();
    m_editor->selections.clear();
}

void TestGraphForm::pressSelectsTheNearestPoint_data()
{
    QTest::addColumn<int>("rpmOffset");
    QTest::addColumn<int>("angleOffset");
    QTest::addColumn<bool>("selects");
    QTest::newRow("1250 rpm away selects") << 1250 << 0 << true;
    QTest::newRow("1251 rpm away does not") << 1251 << 0 << false;
    QTest::newRow("3 degrees weigh 1200 rpm") << 50 << 3 << true;
    QTest::newRow("3 degrees and 51 rpm are too far") << 51 << -3 << false;
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

    drag(press, press);
    QCOMPARE(m_editor->selections.size(), selects ? 1 : 0);
    QVERIFY(!selects || m_editor->selections.first() == qMakePair(4, false));
    QCOMPARE(m_graph->selectedIndex(), selects ? 4 : -1);
    QVERIFY(m_editor->mapChanges.isEmpty());
    QCOMPARE(m_profile.map(), mapOf(points));
}

void TestGraphForm::dragSnapsToFiftyRpm_data()
{
    QTest::addColumn<int>("remainder");
    QTest::addColumn<int>("adjustment");
    QTest::newRow("remainder 0 stays") << 0 << 0;
    QTest::newRow("remainder 25 rounds down (1025 gives 1000)") << 25 << -25;
    QTest::newRow("remainder 26 rounds up (1026 gives 1050)") << 26 << 24;
    QTest::newRow("remainder 49 rounds up") << 49 << 1;
}

void TestGraphForm::dragSnapsToFiftyRpm()
{
    QFETCH(int, remainder);
    QFETCH(int, adjustment);
    int x = plotter().xAxis().toPixel(9000);
    while (x < m_graph->width() && plotter().xAxis().toValue(x) % 50 != remainder)
        ++x;
    QVERIFY2(x < m_graph->width(), "no pixel column has that remainder");
    const QPoint to(x, pixelOf(0, 12).y());

    drag(pixelOf(8000, 20), to, false);
    const MapPoint expected {
        plotter().xAxis().toValue(to.x()) + adjustment, plotter().yAxis().toValue(to.y())};
    QCOMPARE(m_profile.map().point(4), expected);
    QCOMPARE(m_editor->mapChanges, QVector<bool> {false});
    QVERIFY(m_profile.isModified());
    // A move that lands on the same snapped point changes nothing.
    QTest::mouseMove(m_graph->windowHandle(), to);
    QCOMPARE(m_editor->mapChanges.size(), 1);
    QTest::mouseRelease(m_graph->windowHandle(), Qt::LeftButton, Qt::NoModifier, to);
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
    QTest::newRow("the ceiling at the new speed stops the drag")
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
    const QPoint to(
        std::clamp(aim.x(), 0, m_graph->width() - 1), std::clamp(aim.y(), 0, m_graph->height() - 1));
    drag(pixelOf(8000, 20), to, false);
    QCOMPARE(m_profile.map().point(4), result);
    QTest::mouseRelease(m_graph->windowHandle(), Qt::LeftButton, Qt::NoModifier, to);
}

void TestGraphForm::draggingPastANeighbourShowsTheBadge()
{
    load(risingPoints());
    const QRect badge = plotter().cornerBoxOuter(100, 29);
    const QColor edge(90, 90, 90);
    QVERIFY(m_graph->grab().toImage().pixelColor(badge.left(), badge.center().y()) != edge);
    drag(pixelOf(4000, 16), pixelOf(5600, 16));
    QVERIFY(m_profile.map().point(3).rpm > m_profile.map().point(4).rpm);
    const QImage shown = m_graph->grab().toImage();
    QCOMPARE(shown.pixelColor(badge.left(), badge.center().y()), edge);
    QCOMPARE(shown.pixelColor(badge.center().x(), badge.top()), edge);
}

void TestGraphForm::axesStayDuringTheDragAndRefitOnRelease()
{
    QCOMPARE(plotter().xAxis().maximum(), 19300.0f);
    drag(pixelOf(19000, 42), pixelOf(12000, 30), false);
    QCOMPARE(m_graph->selectedIndex(), 9);
    QCOMPARE(m_profile.map().point(9).rpm, 12000);
    QCOMPARE(plotter().xAxis().maximum(), 19300.0f);
    QCOMPARE(plotter().yAxis().maximum(), 50.0f);
    QTest::mouseRelease(m_graph->windowHandle(), Qt::LeftButton, Qt::NoModifier, pixelOf(12000, 30));
    QCOMPARE(plotter().xAxis().maximum(), 18300.0f);
    QCOMPARE(plotter().yAxis().maximum(), 38.0f);
    QCOMPARE(m_graph->selectedIndex(), 9);
}

void TestGraphForm::pressAwayFromPointsDoesNothing()
{
    drag(pixelOf(5000, 40), pixelOf(6000, 30));
    QVERIFY(m_editor->selections.isEmpty() && m_editor->mapChanges.isEmpty());
    QCOMPARE(m_profile.map(), mapOf(spreadPoints()));
    QVERIFY(!m_profile.isModified());
}

void TestGraphForm::showsThePlottersImage()
{
    m_graph->setData(&m_profile, 4, true);
    QCOMPARE(m_graph->grab().toImage().convertToFormat(QImage::Format_RGB32), plotter().image());
    // The selected point is drawn larger, in its own colours.
    QCOMPARE(plotter().image().pixelColor(pixelOf(8000, 20)), QColor(125, 200, 255));
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
    WidgetTest::Translator german({{"MapPlotter|Angle", "Winkel"}});
    const QRect title(2, 2, 60, 14);
    const QImage english = plotter().image().copy(title);
    QCoreApplication::installTranslator(&german);
    QCoreApplication::processEvents(); // the language change is posted to the windows
    const QImage translated = plotter().image().copy(title);
    QCoreApplication::removeTranslator(&german);
    QCoreApplication::processEvents();
    QVERIFY(translated != english);
    QCOMPARE(plotter().image().copy(title), english);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestGraphForm)
#include "tst_graphform.moc"
