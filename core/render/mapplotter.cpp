#include "render/mapplotter.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPainter>
#include <QPolygon>

#include <QtMath>
#include <algorithm>

#include <cmath>
#include <optional>

namespace {

// Coordinates of absurd typed values (two billion rpm) are held inside a range the raster engine
// handles; every map a user can sensibly enter stays far inside it.
constexpr double kCoordinateLimit = double(1 << 22);

// The grid's dashes: four pixels on, two off, counted from the painter's origin.
constexpr int kDashLength = 4;
constexpr int kDashPeriod = 6;

int clampedPixel(int pixel)
{
    return int(std::clamp(double(pixel), -kCoordinateLimit, kCoordinateLimit));
}

// Truncates toward zero and saturates instead of overflowing.
int truncatedInt(double value)
{
    if (std::isnan(value))
        return 0;
    return int(std::trunc(std::clamp(value, -2147483648.0, 2147483647.0)));
}

double curveValue(const SensorCoefficients &c, double rpm)
{
    return c.k0 + c.k1 * rpm + c.k2 * rpm * rpm;
}

QPen pen(int r, int g, int b, int width = 1, Qt::PenStyle style = Qt::SolidLine)
{
    QPen result(QColor(r, g, b), width, style);
    result.setCapStyle(Qt::FlatCap);
    return result;
}

// The labels use the application's font family at fixed pixel sizes: a two-digit angle (11 pixels
// at size 9) fits the 13 pixels left of the axis, a five-digit speed (29) its 40-pixel box, and
// the bold axis titles stay clear of a speed label at the far right.
QFont labelFont(int pixelSize, bool bold)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

} // namespace

MapPlotter::MapPlotter(int width, int height, int margin)
    : m_margin(margin)
    , m_gridPen(pen(190, 190, 190, 1, Qt::DashLine))
    , m_selectedDropPen(pen(150, 150, 150))
    , m_editableCurvePen(pen(25, 125, 200, 2))
    , m_readOnlyCurvePen(pen(80, 80, 80, 2))
    , m_invalidCurvePen(pen(150, 50, 50, 2))
    , m_labelPen(pen(0, 0, 0))
    , m_framePen(pen(100, 100, 100))
    , m_validPoint {pen(0, 58, 121, 2), QColor(58, 133, 190), 6}
    , m_validSelectedPoint {pen(67, 125, 188, 2), QColor(125, 200, 255), 8}
    , m_invalidPoint {pen(116, 22, 0, 2), QColor(167, 73, 53), 6}
    , m_invalidSelectedPoint {pen(150, 10, 10, 2), QColor(255, 169, 173), 8}
    , m_readOnlyPoint {pen(70, 70, 70, 2), QColor(150, 150, 150), 6}
    , m_rpmFont(labelFont(9, false))
    , m_angleFont(labelFont(9, false))
    , m_axisTitleFont(labelFont(10, true))
    , m_badgeFont(labelFont(12, true))
    , m_legendFont(labelFont(11, false))
{
    Q_INIT_RESOURCE(images);
    m_warning = QImage(QStringLiteral(":/Images/warning.png"));
    m_warningLarge = QImage(QStringLiteral(":/Images/warning@2x.png"));
    // The dash of a one-pixel dashed pen: four pixels on, two off.
    QImage across(kDashPeriod, 1, QImage::Format_ARGB32_Premultiplied);
    across.fill(Qt::transparent);
    for (int x = 0; x < kDashLength; ++x)
        across.setPixelColor(x, 0, m_gridPen.color());
    m_dashAcross = QBrush(across);
    resize(width, height);
}

void MapPlotter::resize(int width, int height, qreal devicePixelRatio)
{
    m_width = std::max(0, width);
    m_height = std::max(0, height);
    m_plotWidth = m_width;
    const qreal ratio = std::max<qreal>(1.0, devicePixelRatio);
    if (m_width > 0 && m_height > 0) {
        m_image = QImage(qCeil(m_width * ratio), qCeil(m_height * ratio), QImage::Format_RGB32);
        m_image.setDevicePixelRatio(ratio);
    } else {
        m_image = QImage();
    }
}

QColor MapPlotter::paletteColor(int index)
{
    static const QColor colors[kPaletteSize] = {{0, 114, 178}, {213, 94, 0}, {0, 140, 70}, {150, 60, 170},
        {170, 110, 0}, {0, 150, 160}, {200, 40, 120}, {90, 90, 200}, {120, 80, 40}, {0, 90, 60},
        {230, 120, 30}, {40, 60, 140}, {160, 40, 40}, {100, 130, 0}, {200, 80, 200}, {0, 100, 130}};
    const int wrapped = ((index % kPaletteSize) + kPaletteSize) % kPaletteSize;
    return colors[wrapped];
}

Qt::PenStyle MapPlotter::paletteLineStyle(int index)
{
    static const Qt::PenStyle styles[kLineStyleCount]
        = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
    const int wrapped = std::max(index, 0);
    return styles[(wrapped + wrapped / kPaletteSize) % kLineStyleCount];
}

float MapPlotter::fittedRpmMaximum(const IgnitionMap &map)
{
    // A map of only negative speeds (typed, not yet corrected) keeps a usable axis.
    return float(std::max(map.maxRpm(), 0)) + 300.0f;
}

float MapPlotter::fittedAngleMaximum(const IgnitionMap &map)
{
    return std::min(float(std::max(map.maxAngle(), 0)) + 8.0f, 50.0f);
}

void MapPlotter::fitAxes(const IgnitionMap &map)
{
    fitAxes(fittedRpmMaximum(map), fittedAngleMaximum(map));
}

void MapPlotter::fitAxes(float rpmMaximum, float angleMaximum)
{
    const float m = float(m_margin);
    m_x.setUp(0.0f, rpmMaximum, m, float(m_plotWidth) - m - 43.0f, false);
    m_y.setUp(0.0f, angleMaximum, m, float(m_height) - m, true);
}

MapPoint MapPlotter::dragTarget(QPoint pixel, const SensorCoefficients &coefficients, std::optional<int> keptRpm) const
{
    constexpr int kSnap = 50;
    const int raw = m_x.toValue(pixel.x());
    // Truncating division; negative speeds go toward zero, where the clamp takes them anyway.
    int rpm = raw / kSnap * kSnap;
    if (raw % kSnap > kSnap / 2)
        rpm += kSnap;
    rpm = keptRpm ? *keptRpm : std::clamp(rpm, 0, kMaxRpm);
    // The ceiling first, then zero: where the curve lies below the margin the point rests on 0.
    const int angle = std::max(std::min(m_y.toValue(pixel.y()), angleCeiling(coefficients, rpm)), 0);
    return {rpm, angle};
}

bool MapPlotter::isPixelExact(const QPainter &painter)
{
    return painter.paintEngine() && painter.paintEngine()->type() == QPaintEngine::Raster
        && painter.worldTransform().type() <= QTransform::TxTranslate;
}

int MapPlotter::xPixel(double rpm) const
{
    return clampedPixel(m_x.toPixel(rpm));
}

int MapPlotter::yPixel(double angle) const
{
    return clampedPixel(m_y.toPixel(angle));
}

QRect MapPlotter::cornerBoxOuter(int innerWidth, int innerHeight) const
{
    const int outerWidth = innerWidth + 4;
    const int outerHeight = innerHeight + 4;
    return QRect(m_width - 5 - outerWidth, m_height - 22 - outerHeight, outerWidth, outerHeight);
}

void MapPlotter::drawSingle(
    const Profile &profile, int selected, bool rescale, bool editable, const MapValidation *validation)
{
    if (m_image.isNull())
        return;
    QPainter painter(&m_image);
    paintSingle(painter, profile, selected, rescale, editable, validation);
}

void MapPlotter::drawSeveral(const std::vector<PlottedMap> &maps, const std::vector<int> &rpmLabels, bool showLimits)
{
    if (m_image.isNull())
        return;
    QPainter painter(&m_image);
    paintSeveral(painter, maps, rpmLabels, showLimits);
}

void MapPlotter::paintSingle(QPainter &painter, const Profile &profile, int selected, bool rescale,
    bool editable, const MapValidation *validation)
{
    if (m_width <= 0 || m_height <= 0)
        return;
    m_pixelExact = isPixelExact(painter);
    m_plotWidth = m_width;
    std::optional<MapValidation> ownValidation;
    if (!validation) {
        ownValidation = validate(profile);
        validation = &*ownValidation;
    }
    painter.save();
    paintBackground(painter);
    if (rescale)
        fitAxes(profile.map());
    paintForbiddenRegion(painter, profile.sensorCoefficients());
    paintGrid(painter);
    paintMap(painter, profile.map(), *validation, selected,
        editable ? m_editableCurvePen : m_readOnlyCurvePen, editable);
    const auto &rpms = profile.map().rpms();
    paintRpmLabels(painter, std::vector<int>(rpms.begin(), rpms.end()));
    if (validation->notAscending)
        paintInvalidBadge(painter, !m_pixelExact);
    paintAngleLabels(painter);
    paintFrame(painter);
    painter.restore();
}

void MapPlotter::paintSeveral(
    QPainter &painter, const std::vector<PlottedMap> &maps, const std::vector<int> &rpmLabels, bool showLimits)
{
    m_legendCount = 0;
    if (m_width <= 0 || m_height <= 0)
        return;
    m_pixelExact = isPixelExact(painter);
    QStringList labels;
    std::vector<const PlottedMap *> shown;
    for (const PlottedMap &map : maps) {
        labels << map.label;
        if (map.shown)
            shown.push_back(&map);
    }
    m_plotWidth = m_width - (maps.empty() ? 0 : legendWidth(labels));
    float rpmMaximum = fittedRpmMaximum(IgnitionMap());
    float angleMaximum = fittedAngleMaximum(IgnitionMap());
    for (const PlottedMap *map : shown) {
        rpmMaximum = std::max(rpmMaximum, fittedRpmMaximum(map->profile.map()));
        angleMaximum = std::max(angleMaximum, fittedAngleMaximum(map->profile.map()));
    }

    painter.save();
    paintBackground(painter);
    fitAxes(rpmMaximum, angleMaximum);
    // Several shaded regions would turn the plot grey without saying whose ceiling is whose.
    if (showLimits && shown.size() == 1)
        paintForbiddenRegion(painter, shown.front()->profile.sensorCoefficients());
    paintGrid(painter);
    painter.save();
    painter.setClipRect(QRect(0, 0, m_plotWidth, m_height));
    for (const PlottedMap *map : shown) {
        QPen curvePen = pen(0, 0, 0, 2, paletteLineStyle(map->paletteIndex));
        curvePen.setColor(paletteColor(map->paletteIndex));
        if (showLimits && shown.size() > 1) {
            QPen ceilingPen = curvePen;
            ceilingPen.setWidth(1);
            paintCeilingLine(painter, map->profile.sensorCoefficients(), ceilingPen);
        }
        const MapValidation validation = validate(map->profile);
        paintMap(painter, map->profile.map(), validation, -1, curvePen, false, true);
    }
    painter.restore();
    paintRpmLabels(painter, rpmLabels);
    paintAngleLabels(painter);
    if (!maps.empty())
        paintLegend(painter, maps);
    paintFrame(painter);
    painter.restore();
    m_legendCount = int(maps.size());
}

int MapPlotter::legendEntryAt(QPoint pixel) const
{
    for (int i = 0; i < m_legendCount; ++i) {
        if (legendEntryRect(i, m_legendCount).contains(pixel))
            return i;
    }
    return -1;
}

void MapPlotter::paintBackground(QPainter &painter) const
{
    const QColor strip(215, 215, 215);
    painter.fillRect(QRect(0, 0, m_width, m_height), Qt::white);
    painter.fillRect(QRect(0, 0, m_margin, m_height), strip);
    painter.fillRect(QRect(0, m_height - m_margin, m_plotWidth, m_margin), strip);
}

// The ceiling from the angle axis to the right edge of the plot, sampled in about sixteen steps,
// held at the top edge where it leaves the plot, and moved down by the given outline.
QPolygonF MapPlotter::ceilingLine(const SensorCoefficients &coefficients, double outline) const
{
    const double minimum = m_x.minimum();
    const double step = (double(m_x.maximum()) - minimum) / 15.0;
    QPolygonF polygon;
    // The corner vertex follows the curve itself; the rest keeps the 2-degree margin below it.
    polygon << QPointF(m_margin, yPixel(curveValue(coefficients, minimum)) + outline);
    // Whole engine speeds as in the checker; 64 bits so that an absurd axis cannot overflow.
    qint64 rpm = truncatedInt(minimum);
    // A valid axis reaches the right edge in about sixteen steps; the bound only guards
    // against a degenerate axis of a tiny image.
    for (int guard = 0; guard < 1000; ++guard) {
        int x = xPixel(double(rpm));
        const bool last = x >= m_plotWidth;
        if (last) {
            rpm = truncatedInt(m_x.toValueF(m_plotWidth));
            x = m_plotWidth;
        }
        polygon << QPointF(x, std::max(0, yPixel(curveValue(coefficients, double(rpm)) - 2.0)) + outline);
        if (last)
            break;
        rpm = std::max(rpm + 1, qint64(std::trunc(std::min(double(rpm) + step, 1e15))));
    }
    return polygon;
}

void MapPlotter::paintForbiddenRegion(QPainter &painter, const SensorCoefficients &coefficients) const
{
    // Outline and fill share one colour, so the region is filled half a pixel beyond the curve
    // instead: the same pixels as an outline along it, without the cost of stroking one.
    constexpr double kOutline = 0.5;
    QPolygonF polygon;
    polygon << QPointF(m_margin, 0);
    polygon << ceilingLine(coefficients, kOutline);
    polygon << QPointF(m_plotWidth, 0);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 210, 210));
    painter.setRenderHint(QPainter::Antialiasing, true); // a smooth edge, like the curve's
    painter.drawConvexPolygon(polygon);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
}

void MapPlotter::paintCeilingLine(
    QPainter &painter, const SensorCoefficients &coefficients, const QPen &pen) const
{
    // Half a pixel down, so that a level stretch covers one row of pixels, as the shaded edge does.
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(pen);
    // Without the corner vertex, which only closes the shaded region along the angle axis.
    QPolygonF line = ceilingLine(coefficients, 0.5);
    line.removeFirst();
    painter.drawPolyline(line);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void MapPlotter::paintGrid(QPainter &painter) const
{
    for (int v = 0; v < double(m_y.maximum()) - 5.0; v += 5) {
        const int y = yPixel(v);
        paintLine(painter, QPoint(m_margin, y), QPoint(m_plotWidth, y), Line::Grid);
    }
}

const MapPlotter::PointStyle &MapPlotter::pointStyle(bool editable, bool valid, bool selected) const
{
    if (!editable)
        return m_readOnlyPoint;
    if (valid)
        return selected ? m_validSelectedPoint : m_validPoint;
    return selected ? m_invalidSelectedPoint : m_invalidPoint;
}

void MapPlotter::paintMap(QPainter &painter, const IgnitionMap &map, const MapValidation &validation,
    int selected, const QPen &curvePen, bool editable, bool ownColour) const
{
    std::array<QPoint, kMapPointCount> points;
    for (int i = 0; i < kMapPointCount; ++i)
        points[size_t(i)] = QPoint(xPixel(map.point(i).rpm), yPixel(map.point(i).angle));

    const int axisY = m_height - m_margin;
    for (int i = 0; i < kMapPointCount; ++i) {
        paintLine(painter, points[size_t(i)], QPoint(points[size_t(i)].x(), axisY),
            i == selected ? Line::SelectedDrop : Line::Grid);
    }

    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(curvePen);
    painter.drawLine(QPoint(xPixel(0), points[0].y()), points[0]);
    const QPen *segmentPen = &curvePen;
    for (int k = 1; k < kMapPointCount; ++k) {
        // Deliberately, the last segment looks only at the last point: a faulty ninth point
        // colours the segment leading to it, not the one leaving it.
        const bool invalid = !validation.points[size_t(k)].isValid()
            || (!validation.points[size_t(k - 1)].isValid() && k != kMapPointCount - 1);
        segmentPen = invalid && !ownColour ? &m_invalidCurvePen : &curvePen;
        painter.setPen(*segmentPen);
        painter.drawLine(points[size_t(k - 1)], points[size_t(k)]);
    }
    painter.setPen(*segmentPen);
    const QPoint &lastPoint = points[kMapPointCount - 1];
    painter.drawLine(lastPoint, QPoint(m_plotWidth, lastPoint.y()));

    for (int i = 0; i < kMapPointCount; ++i) {
        const bool valid = validation.points[size_t(i)].isValid();
        if (ownColour) {
            // Filled with the curve's colour under a darker edge; a point out of its limits
            // stands inside a red ring.
            const QPoint &at = points[size_t(i)];
            if (!valid) {
                painter.setPen(pen(220, 0, 0, 2));
                painter.setBrush(Qt::NoBrush);
                painter.drawEllipse(QRect(at.x() - 6, at.y() - 6, 12, 12));
            }
            QPen edge = pen(0, 0, 0, 1);
            edge.setColor(curvePen.color().darker(160));
            painter.setPen(edge);
            painter.setBrush(curvePen.color());
            painter.drawEllipse(QRect(at.x() - 3, at.y() - 3, 7, 7));
            continue;
        }
        const PointStyle &style = pointStyle(editable, valid, i == selected);
        const int d = style.diameter;
        painter.setPen(style.pen);
        painter.setBrush(style.brush);
        painter.drawEllipse(QRect(points[size_t(i)].x() - d / 2, points[size_t(i)].y() - d / 2, d, d));
    }
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void MapPlotter::paintRpmLabels(QPainter &painter, const std::vector<int> &rpms) const
{
    painter.setPen(m_labelPen);
    painter.setFont(m_rpmFont);
    const int axisY = m_height - m_margin;
    int nextFreeX = 0;
    for (int rpm : rpms) {
        const int x = xPixel(rpm);
        if (x < nextFreeX)
            continue;
        paintLine(painter, QPoint(x, axisY - 5), QPoint(x, axisY), Line::Ink);
        painter.drawText(QRect(QPoint(x - 20, axisY), QPoint(x + 19, m_height - 1)), Qt::AlignCenter,
            QString::number(rpm));
        nextFreeX = x + 30;
    }
}

void MapPlotter::paintCornerBox(QPainter &painter, const QRect &outer) const
{
    painter.fillRect(outer, QColor(235, 235, 235, 180));
    const QColor edge(90, 90, 90);
    painter.fillRect(QRect(outer.left(), outer.top(), outer.width(), 2), edge);
    painter.fillRect(QRect(outer.left(), outer.bottom() - 1, outer.width(), 2), edge);
    painter.fillRect(QRect(outer.left(), outer.top() + 2, 2, outer.height() - 4), edge);
    painter.fillRect(QRect(outer.right() - 1, outer.top() + 2, 2, outer.height() - 4), edge);
}

void MapPlotter::paintInvalidBadge(QPainter &painter, bool highResolution) const
{
    const QRect outer = cornerBoxOuter(100, 29);
    paintCornerBox(painter, outer);
    const QRect inner = outer.adjusted(2, 2, -2, -2);
    const QRect icon(inner.left() + 5, inner.top() + 2, 24, 24);
    if (highResolution && !m_warningLarge.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
        painter.drawImage(icon, m_warningLarge);
    } else {
        painter.drawImage(icon.topLeft(), m_warning);
    }
    painter.setPen(m_labelPen);
    painter.setFont(m_badgeFont);
    painter.drawText(QRect(QPoint(inner.left() + 35, inner.top()), inner.bottomRight()), Qt::AlignCenter,
        QCoreApplication::translate("MapPlotter", "Invalid"));
}

namespace {

constexpr int kLegendRow = 15;
constexpr int kLegendPadding = 6;
constexpr int kLegendSample = 24; // the piece of line in the profile's colour and style
constexpr int kLegendGap = 5;

} // namespace

// The legend stands in columns right of the plot, as many as its rows need, and never takes
// more than two fifths of the width; longer labels lose their middle, since templates' names
// begin alike and differ further on.
int MapPlotter::legendWidth(const QStringList &labels) const
{
    const QFontMetrics metrics(m_legendFont);
    int textWidth = 0;
    for (const QString &label : labels)
        textWidth = std::max(textWidth, metrics.horizontalAdvance(label));
    const int rowsPerColumn = std::max(1, (m_height - 2 * kLegendPadding) / kLegendRow);
    const int columns = (int(labels.size()) + rowsPerColumn - 1) / rowsPerColumn;
    // A few pixels of slack keep rounded advances from eliding a label that fits.
    const int column = kLegendSample + kLegendGap + textWidth + 4 + kLegendPadding;
    return std::min(kLegendPadding + columns * column, m_width * 2 / 5);
}

QRect MapPlotter::legendEntryRect(int index, int count) const
{
    const int rowsPerColumn = std::max(1, (m_height - 2 * kLegendPadding) / kLegendRow);
    const int columns = (count + rowsPerColumn - 1) / rowsPerColumn;
    const int left = m_plotWidth + kLegendPadding;
    const int columnWidth = std::max(0, (m_width - left) / std::max(1, columns));
    const int x = left + (index / rowsPerColumn) * columnWidth;
    const int y = kLegendPadding + (index % rowsPerColumn) * kLegendRow;
    return QRect(x, y, std::max(0, columnWidth - kLegendPadding), kLegendRow);
}

void MapPlotter::paintLegend(QPainter &painter, const std::vector<PlottedMap> &maps) const
{
    painter.fillRect(QRect(m_plotWidth, 0, m_width - m_plotWidth, m_height), Qt::white);
    paintLine(painter, QPoint(m_plotWidth, 0), QPoint(m_plotWidth, m_height - 1), Line::Frame);
    painter.setFont(m_legendFont);
    const QFontMetrics metrics = painter.fontMetrics();
    const int count = int(maps.size());
    for (int i = 0; i < count; ++i) {
        const PlottedMap &map = maps[size_t(i)];
        const QRect entry = legendEntryRect(i, count);
        // A hidden map's entry stays, faint, to be clicked back into the drawing.
        QColor colour = paletteColor(map.paletteIndex);
        if (!map.shown)
            colour.setAlpha(70);
        QPen sample = pen(0, 0, 0, 2, paletteLineStyle(map.paletteIndex));
        sample.setColor(colour);
        painter.setPen(sample);
        const int middle = entry.top() + kLegendRow / 2;
        painter.drawLine(QPoint(entry.left(), middle), QPoint(entry.left() + kLegendSample, middle));
        const int textLeft = entry.left() + kLegendSample + kLegendGap;
        const QRect text(textLeft, entry.top(), std::max(0, entry.right() + 1 - textLeft), kLegendRow);
        painter.setPen(map.shown ? paletteColor(map.paletteIndex) : QColor(150, 150, 150));
        painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
            metrics.elidedText(map.label, Qt::ElideMiddle, text.width()));
    }
}

void MapPlotter::paintAngleLabels(QPainter &painter) const
{
    painter.setPen(m_labelPen);
    painter.setFont(m_angleFont);
    for (int v = 0; v < double(m_y.maximum()) - 5.0; v += 5) {
        const int y = yPixel(v);
        if (v != 0)
            paintLine(painter, QPoint(m_margin, y), QPoint(m_margin + 5, y), Line::Ink);
        painter.drawText(QRect(QPoint(0, y - 10), QPoint(m_margin - 4, y + 9)),
            Qt::AlignRight | Qt::AlignVCenter, QString::number(v));
    }
    if (m_margin >= 1) {
        painter.setFont(m_axisTitleFont);
        painter.drawText(QRect(2, 2, 100, 50), Qt::AlignLeft | Qt::AlignTop,
            QCoreApplication::translate("MapPlotter", "Angle"));
        painter.drawText(
            QRect(QPoint(m_plotWidth - 45, m_height - m_margin), QPoint(m_plotWidth - 3, m_height - 1)),
            Qt::AlignRight | Qt::AlignTop, QCoreApplication::translate("MapPlotter", "RPM"));
    }
}

void MapPlotter::paintFrame(QPainter &painter) const
{
    paintLine(painter, QPoint(0, 0), QPoint(m_width - 1, 0), Line::Frame);
    paintLine(painter, QPoint(0, m_height - 1), QPoint(m_width - 1, m_height - 1), Line::Frame);
    paintLine(painter, QPoint(0, 0), QPoint(0, m_height - 1), Line::Frame);
    paintLine(painter, QPoint(m_width - 1, 0), QPoint(m_width - 1, m_height - 1), Line::Frame);
}

void MapPlotter::paintLine(QPainter &painter, QPoint from, QPoint to, Line line) const
{
    const QPen &pen = line == Line::Grid ? m_gridPen
        : line == Line::SelectedDrop     ? m_selectedDropPen
        : line == Line::Ink              ? m_labelPen
                                         : m_framePen;
    const bool straight = from.x() == to.x() || from.y() == to.y();
    if (!m_pixelExact || !straight) {
        painter.setPen(pen);
        painter.drawLine(from, to);
        return;
    }
    // Filling the one-pixel rectangle is many times faster than stroking the pen, pixel for
    // pixel the same line; the dash pattern is a tiled brush.
    const QRect pixels = QRect(QPoint(std::min(from.x(), to.x()), std::min(from.y(), to.y())),
                             QPoint(std::max(from.x(), to.x()), std::max(from.y(), to.y())))
        & QRect(0, 0, m_width, m_height);
    if (pixels.isEmpty())
        return;
    if (line != Line::Grid) {
        painter.fillRect(pixels, pen.color());
    } else if (from.y() == to.y()) {
        painter.fillRect(pixels, m_dashAcross);
    } else {
        // Down a column the tiled brush fills one span per row, which Qt 6 hands to its thread
        // pool in parts, at several times the cost; dash by dash it is the same pixels.
        for (int y = pixels.top() - pixels.top() % kDashPeriod; y <= pixels.bottom(); y += kDashPeriod) {
            const QRect dash = QRect(pixels.left(), y, pixels.width(), kDashLength) & pixels;
            if (!dash.isEmpty())
                painter.fillRect(dash, pen.color());
        }
    }
}
