#include "render/plotfile.h"

#include "render/mapplotter.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

#ifdef SPARKWRIGHT_HAVE_SVG
#include <QSvgGenerator>
#endif

QList<PlotFormat> plotFormats()
{
#ifdef SPARKWRIGHT_HAVE_SVG
    return {PlotFormat::Png, PlotFormat::Svg};
#else
    return {PlotFormat::Png};
#endif
}

QString plotFormatSuffix(PlotFormat format)
{
    return format == PlotFormat::Svg ? QStringLiteral("svg") : QStringLiteral("png");
}

std::optional<PlotFormat> plotFormatOfPath(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    for (const PlotFormat format : plotFormats()) {
        if (suffix == plotFormatSuffix(format))
            return format;
    }
    return std::nullopt;
}

QString pathWithPlotSuffix(const QString &path, PlotFormat chosen)
{
    if (path.isEmpty() || plotFormatOfPath(path))
        return path;
    return path + QLatin1Char('.') + plotFormatSuffix(chosen);
}

QByteArray plotFileBytes(PlotFormat format, QSize size, const PlotDrawing &drawing, const QString &title)
{
    if (size.isEmpty())
        return QByteArray();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    MapPlotter plotter(size.width(), size.height());
    if (format == PlotFormat::Png) {
        QImage image(size, QImage::Format_RGB32);
        {
            QPainter painter(&image);
            drawing(plotter, painter);
        }
        if (!image.save(&buffer, "PNG"))
            return QByteArray();
        return buffer.data();
    }
#ifdef SPARKWRIGHT_HAVE_SVG
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    generator.setTitle(title);
    {
        QPainter painter;
        if (!painter.begin(&generator))
            return QByteArray();
        drawing(plotter, painter);
    }
    return buffer.data();
#else
    Q_UNUSED(title)
    return QByteArray();
#endif
}
