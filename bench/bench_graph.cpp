#include "bench/benchharness.h"

#include "editor/graphform.h"
#include "editor/iprofileeditormain.h"
#include "profile/profile.h"
#include "render/mapdescription.h"
#include "render/mapplotter.h"

#include <QApplication>
#include <QMouseEvent>

#include <vector>

namespace {

Profile sampleProfile(int variant)
{
    Profile profile;
    profile.setName(QStringLiteral("Four-stroke single, variant %1").arg(variant));
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 + 1000 * i + 150 * variant, 8 + 3 * i - (i > 6 ? 4 * (i - 6) : 0) + variant);
    profile.setMap(map);
    profile.setSensorCoefficients({42.0 + variant, -0.0004, -1e-8});
    return profile;
}

// Hands every change back to the graph, as the editor page does.
class Editor : public IProfileEditorMain
{
public:
    void updateGraph() override { }
    void setProfileName(const QString &) override { }
    void setProfileNotes(const QString &) override { }
    void onMapChanged(bool rescale) override { graph->showProfile(profile, graph->selectedIndex(), rescale); }
    void onPointSelected(int index, bool rescale) override { graph->showProfile(profile, index, rescale); }
    void onEdited(Edit, int) override { }

    GraphForm *graph = nullptr;
    Profile *profile = nullptr;
};

void sendMouse(QWidget *widget, QEvent::Type type, QPoint position)
{
    const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, widget->mapToGlobal(position), Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);

    const Profile single = sampleProfile(0);
    MapPlotter plotter(733, 430, 16);
    runBenchmark("graph.drawSingle", 200, [&] { plotter.drawSingle(single, 3, true, true); });
    // The words screen readers get for the graph, made after every change but a drag's steps.
    runBenchmark("graph.describe", 200, [&] { MapDescription::describe(single); });

    std::vector<PlottedMap> eight;
    for (int i = 0; i < 8; ++i)
        eight.push_back({sampleProfile(i), QStringLiteral("Profile %1").arg(i), i, true});
    const std::vector<int> labels {1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000};
    runBenchmark("graph.drawSeveral8", 100, [&] { plotter.drawSeveral(eight, labels, true); });

    // One mouse move of a drag, through the widget's event handling to the repainted image.
    Editor editor;
    Profile working = sampleProfile(0);
    GraphForm graph(&editor);
    editor.graph = &graph;
    editor.profile = &working;
    graph.resize(733, 430);
    graph.show();
    QCoreApplication::processEvents();
    graph.showProfile(&working, -1, true);
    const MapPoint point = working.map().point(4);
    const QPoint grab(
        graph.plotter().xAxis().toPixel(point.rpm), graph.plotter().yAxis().toPixel(point.angle));
    sendMouse(&graph, QEvent::MouseButtonPress, grab);
    int step = 0;
    runBenchmark("graph.dragStep", 100, [&] {
        // Alternate between two spots 40 pixels apart, so that every step moves the point.
        sendMouse(&graph, QEvent::MouseMove, grab + QPoint((++step % 2) * 40, -10));
    });
    sendMouse(&graph, QEvent::MouseButtonRelease, grab);
    return 0;
}
