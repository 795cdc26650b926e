#pragma once

#include "profile/mapvalidation.h"
#include "profile/profile.h"
#include "render/axismapping.h"

#include <QBrush>
#include <QFont>
#include <QImage>
#include <QPen>
#include <QPolygonF>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

class QPainter;

// One map of a comparison: the profile, its legend text, its place in the palette (its colour
// and line style wherever it shows), and whether it is drawn. A hidden map keeps its legend
// entry, greyed, so that a click there can bring it back.
struct PlottedMap
{
    Profile profile;
    QString label;
    int paletteIndex = 0;
    bool shown = true;
};

// Draws ignition maps as advance angle over engine speed, with the template's forbidden region
// shaded, into an off-screen image (the editor's graph, the summary, the comparison) or onto the
// painter of another device (the printed sheet). It never looks at widgets.
class MapPlotter
{
public:
    // The width of the left and bottom axis strips wherever a map is drawn: the angle labels fit
    // the room left of the axis, and a comparison's legend stays clear of the speed labels.
    static constexpr int kAxisMargin = 16;

    MapPlotter(int width, int height, int margin = kAxisMargin);

    // Replaces the image by a new width x height one; it is drawn at the next draw.
    // The size in logical pixels; the image holds as many device pixels as the screen shows there,
    // so that it stays sharp on high-DPI screens.
    void resize(int width, int height, qreal devicePixelRatio = 1.0);

    // Draws one map. Without a rescale the axes stay as they were, so that they do not move while
    // a point is dragged. Without a validation the plotter checks the map itself.
    void drawSingle(const Profile &profile, int selected, bool rescale, bool editable,
        const MapValidation *validation = nullptr);
    // Draws several maps read-only for comparison, each line and point in its palette colour and
    // line style, with a legend beside the plot in the given order; the engine speed labels come
    // from rpmLabels. A point that breaks its limits keeps its colour inside a red ring. With
    // the limits shown, a single map gets its forbidden region shaded, several get each its
    // ceiling drawn as a thin line in its own colour.
    void drawSeveral(const std::vector<PlottedMap> &maps, const std::vector<int> &rpmLabels, bool showLimits);

    // The same drawings onto another painter, in a box of the plotter's size at its origin.
    void paintSingle(QPainter &painter, const Profile &profile, int selected, bool rescale, bool editable,
        const MapValidation *validation = nullptr);
    void paintSeveral(
        QPainter &painter, const std::vector<PlottedMap> &maps, const std::vector<int> &rpmLabels, bool showLimits);
    // The legend entry at a pixel of the comparison drawn last, as an index into its maps; -1
    // for none.
    int legendEntryAt(QPoint pixel) const;

    const QImage &image() const { return m_image; }
    int width() const { return m_width; }
    int height() const { return m_height; }
    int margin() const { return m_margin; }
    // The width of the plot from the left edge; the legend of a comparison takes the rest.
    int plotWidth() const { return m_plotWidth; }
    const AxisMapping &xAxis() const { return m_x; }
    const AxisMapping &yAxis() const { return m_y; }

    // Fits both axes to one map: a little room right of the fastest point and above the
    // largest angle, the angle axis never beyond 50 degrees.
    void fitAxes(const IgnitionMap &map);
    static float fittedRpmMaximum(const IgnitionMap &map);
    static float fittedAngleMaximum(const IgnitionMap &map);

    // Where a dragged point lands for a mouse position: the speed snapped to 50 rpm (a remainder
    // up to 25 rounds down) and held within 0..20000, the angle held under the ceiling of that
    // speed and at least 0. Speeds keep no order and 49 degrees is no limit here; the checker
    // flags such points.
    // A kept speed stays as it is, whatever the pixel's column: a drag straight up or down.
    MapPoint dragTarget(
        QPoint pixel, const SensorCoefficients &coefficients, std::optional<int> keptRpm = std::nullopt) const;

    // Sixteen colours, none of them the black of the axes, the grey of the grid or the red that
    // marks a point out of its limits, each dark enough for a thin line on the white plot and
    // light enough to tell from the next on a dark screen; the line styles shift once the colours come round again, so that the
    // first 64 profiles each look different.
    static constexpr int kPaletteSize = 16;
    static constexpr int kLineStyleCount = 4;
    static QColor paletteColor(int index);
    static Qt::PenStyle paletteLineStyle(int index);

    // The box in the bottom right corner that carries the "Invalid" badge or the legend, for an
    // inner box of the given size: outline included, 5 pixels from the right, 22 from the bottom.
    QRect cornerBoxOuter(int innerWidth, int innerHeight) const;

private:
    struct PointStyle
    {
        QPen pen;
        QBrush brush;
        int diameter;
    };

    // The axis-parallel one-pixel lines of the drawing.
    enum class Line
    {
        Grid,
        SelectedDrop,
        Ink,
        Frame
    };

    static bool isPixelExact(const QPainter &painter);
    int xPixel(double rpm) const;
    int yPixel(double angle) const;
    void fitAxes(float rpmMaximum, float angleMaximum);

    void paintBackground(QPainter &painter) const;
    QPolygonF ceilingLine(const SensorCoefficients &coefficients, double outline) const;
    void paintForbiddenRegion(QPainter &painter, const SensorCoefficients &coefficients) const;
    void paintCeilingLine(QPainter &painter, const SensorCoefficients &coefficients, const QPen &pen) const;
    int legendWidth(const QStringList &labels) const;
    QRect legendEntryRect(int index, int count) const;
    void paintGrid(QPainter &painter) const;
    // A map in a colour of its own (a comparison's) keeps it in every segment and point.
    void paintMap(QPainter &painter, const IgnitionMap &map, const MapValidation &validation, int selected,
        const QPen &curvePen, bool editable, bool ownColour = false) const;
    void paintRpmLabels(QPainter &painter, const std::vector<int> &rpms) const;
    void paintCornerBox(QPainter &painter, const QRect &outer) const;
    void paintInvalidBadge(QPainter &painter, bool highResolution) const;
    void paintLegend(QPainter &painter, const std::vector<PlottedMap> &maps) const;
    void paintAngleLabels(QPainter &painter) const;
    void paintFrame(QPainter &painter) const;
    void paintLine(QPainter &painter, QPoint from, QPoint to, Line line) const;
    const PointStyle &pointStyle(bool editable, bool valid, bool selected) const;

    QImage m_image;
    // Set while the plotter paints onto raster pixels at their own scale (its image, the widget),
    // where lines may be filled as rectangles; the printed sheet gets stroked pens.
    bool m_pixelExact = false;
    QBrush m_dashAcross;
    int m_width = 0;
    int m_height = 0;
    int m_margin = 0;
    int m_plotWidth = 0;
    // The number of legend entries of the comparison drawn last.
    int m_legendCount = 0;
    AxisMapping m_x;
    AxisMapping m_y;

    QPen m_gridPen;
    QPen m_selectedDropPen;
    QPen m_editableCurvePen;
    QPen m_readOnlyCurvePen;
    QPen m_invalidCurvePen;
    QPen m_labelPen;
    QPen m_framePen;
    PointStyle m_validPoint;
    PointStyle m_validSelectedPoint;
    PointStyle m_invalidPoint;
    PointStyle m_invalidSelectedPoint;
    PointStyle m_readOnlyPoint;

    QFont m_rpmFont;
    QFont m_angleFont;
    QFont m_axisTitleFont;
    QFont m_badgeFont;
    QFont m_legendFont;
    QImage m_warning;
    QImage m_warningLarge;
};
