#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QString>

#include <functional>
#include <optional>

class MapPlotter;
class QPainter;

// The graphs as files: a PNG of the pixels the screen shows, or, where the build has Qt's SVG
// module, an SVG drawing that stays sharp at any size.
enum class PlotFormat
{
    Png,
    Svg
};

// The formats this build writes, PNG first.
QList<PlotFormat> plotFormats();
// "png" or "svg".
QString plotFormatSuffix(PlotFormat format);
// The format a file name's suffix asks for, in any case; nothing for another suffix or none.
std::optional<PlotFormat> plotFormatOfPath(const QString &path);
// A file name typed without a known suffix gets the suffix of the format chosen in the dialog.
QString pathWithPlotSuffix(const QString &path, PlotFormat chosen);

// Draws with a plotter of the given size and returns the file's bytes; empty when the drawing
// could not be encoded. The drawing paints a plotter's picture onto the painter.
using PlotDrawing = std::function<void(MapPlotter &plotter, QPainter &painter)>;
QByteArray plotFileBytes(
    PlotFormat format, QSize size, const PlotDrawing &drawing, const QString &title = QString());
