#include "render/summarysheet.h"

#include "profile/mapvalidation.h"
#include "profile/profile.h"
#include "render/mapplotter.h"
#include "render/profilesummary.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextLayout>

#include "programversion.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Screen resolution: the fonts and the graph come out as they look on screen.
constexpr int kResolution = 96;
constexpr qreal kPageMarginMm = 18.0;
// The graph is drawn as on screen and enlarged, so that its labels read well on paper.
constexpr qreal kGraphScale = 1.25;

const QColor kInk(0, 0, 0);
const QColor kQuietInk(90, 90, 90);
const QColor kRule(140, 140, 140);
const QColor kRowShade(238, 238, 238);
const QColor kInvalidInk(150, 50, 50);

QFont sheetFont(int pointSize, bool bold)
{
    QFont font = QGuiApplication::font();
    font.setPointSize(pointSize);
    font.setBold(bold);
    return font;
}

// The measures every block of the page is placed by.
struct SheetLayout
{
    explicit SheetLayout(const QRect &page)
        : width(page.width())
        , height(page.height())
        , unit(std::min(50, page.height() / 4))
        , headerBandBottom(int(0.25 * page.height()))
        , notesTop(int(0.7 * page.height()))
        , notesHeight(int(0.3 * page.height()))
        , tableWidth(int(3.5 * unit))
        , lastRow(page.height() - 1)
        , lastColumn(page.width() - 1)
    { }

    int width;
    int height;
    int unit; // the line unit L
    int headerBandBottom; // header, title and settings end here at the latest
    int notesTop; // the notes start here under the table, at the latest
    int notesHeight;
    int tableWidth; // the table and the notes share this left column
    int lastRow;
    int lastColumn;
};

// Splits text into the lines it wraps into at the given width, paragraph breaks kept.
QStringList wrappedLines(const QString &text, const QFont &font, QPaintDevice *device, int width)
{
    QStringList lines;
    const QStringList paragraphs = text.split(QLatin1Char('\n'));
    for (const QString &paragraph : paragraphs) {
        if (paragraph.trimmed().isEmpty()) {
            lines << QString();
            continue;
        }
        QTextLayout layout(paragraph, font, device);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            lines << paragraph.mid(line.textStart(), line.textLength()).trimmed();
        }
        layout.endLayout();
    }
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

QFont notesFont()
{
    return sheetFont(10, false);
}

// A font's vertical measures on the sheet in whole pixels: ascent and descent rounded up, the
// line spacing rounded. Qt's own whole-pixel measures round differently from one Qt to the next
// (Qt 5 hints them, Qt 6 keeps the font's fractions), which would move the sheet's lines.
struct LineMetrics
{
    LineMetrics(const QFont &font, QPaintDevice *device)
    {
        const QFontMetricsF exact(font, device);
        ascent = int(std::ceil(exact.ascent()));
        height = ascent + int(std::ceil(exact.descent()));
        lineSpacing = qRound(exact.lineSpacing());
    }

    int ascent;
    int height;
    int lineSpacing;
};

// Whole pixels from line to line, never less than the glyphs' full height.
int lineHeight(const QFont &font, QPaintDevice *device)
{
    const LineMetrics metrics(font, device);
    return std::max(metrics.lineSpacing, metrics.height + 1);
}

// Draws lines from the given one on, top-aligned in the box, as many as fit; returns the index
// of the first line that did not fit.
int paintLines(QPainter &painter, const QRect &box, const QFont &font, const QStringList &lines, int first)
{
    painter.setFont(font);
    const LineMetrics metrics(font, painter.device());
    const int step = lineHeight(font, painter.device());
    const int fitting = std::max(0, box.height() / step);
    int line = first;
    for (; line < lines.size() && line - first < fitting; ++line)
        painter.drawText(
            QPoint(box.left(), box.top() + (line - first) * step + metrics.ascent), lines.at(line));
    return line;
}

void paintRule(QPainter &painter, int x1, int y1, int x2, int y2)
{
    painter.setPen(QPen(kRule, 1));
    painter.drawLine(x1, y1, x2, y2);
}

// The header line in small print at the top right, the profile's name in bold at the top left.
int paintTitle(
    QPainter &painter, const SheetLayout &layout, const Profile &profile, const QString &headerLine)
{
    const QFont titleFont = sheetFont(13, true);
    const QFont smallFont = sheetFont(10, false);
    const QFontMetrics titleMetrics(titleFont, painter.device());
    const LineMetrics titleLine(titleFont, painter.device());
    const QFontMetrics smallMetrics(smallFont, painter.device());

    const int baseline = titleLine.ascent;
    const int headerWidth = smallMetrics.horizontalAdvance(headerLine);
    painter.setFont(smallFont);
    painter.setPen(kQuietInk);
    painter.drawText(QPoint(layout.width - headerWidth, baseline), headerLine);

    const int titleRoom = std::max(0, layout.width - headerWidth - layout.unit);
    painter.setFont(titleFont);
    painter.setPen(kInk);
    painter.drawText(QPoint(0, baseline), titleMetrics.elidedText(profile.name(), Qt::ElideRight, titleRoom));

    const int bottom = titleLine.height + layout.unit / 5;
    paintRule(painter, 0, bottom, layout.lastColumn, bottom);
    return bottom;
}

struct SheetItem
{
    QString label;
    QString value; // empty for an item that is a statement of its own
};

std::vector<SheetItem> sheetItems(const Profile &profile)
{
    std::vector<SheetItem> items;
    items.push_back({QCoreApplication::translate("SummarySheet", "Ignition voltage"),
        QString::number(profile.voltage()) + QStringLiteral(" V")});
    items.push_back({QCoreApplication::translate("SummarySheet", "Side stand monitoring"),
        profile.sideStandMonitoring() ? QCoreApplication::translate("SummarySheet", "enabled")
                                      : QCoreApplication::translate("SummarySheet", "disabled")});
    if (profile.sideStandMonitoring()) {
        items.push_back({profile.groundEnablesIgnition()
                ? QCoreApplication::translate("SummarySheet", "Ground enables ignition")
                : QCoreApplication::translate("SummarySheet", "Ground blocks ignition"),
            QString()});
    }
    items.push_back({QCoreApplication::translate("SummarySheet", "Pulse generator edge"),
        profile.pickUpRisingEdge()
            ? QCoreApplication::translate("SummarySheet", "trigger with rising edge")
            : QCoreApplication::translate("SummarySheet", "trigger with falling edge")});
    items.push_back(
        {QCoreApplication::translate("SummarySheet", "Sensor advance"), sensorAdvanceText(profile)});
    return items;
}

QString labelText(const SheetItem &item)
{
    return item.value.isEmpty() ? item.label : item.label + QStringLiteral(": ");
}

// The settings in two columns of "label: value", the side-stand items together on the left.
// Each column's values line up behind its longest label. Returns the bottom of the block.
int paintItems(QPainter &painter, const SheetLayout &layout, const Profile &profile, int top)
{
    const QFont itemFont = sheetFont(12, false);
    const QFontMetrics metrics(itemFont, painter.device());
    const LineMetrics line(itemFont, painter.device());
    const std::vector<SheetItem> items = sheetItems(profile);
    const size_t leftCount = items.size() - 2;
    // Half a line unit per row, less when the rows would reach beyond a quarter of the page.
    const int rows = int(leftCount);
    const int rowHeight = std::max(line.lineSpacing,
        std::min(layout.unit / 2, (layout.headerBandBottom - top - layout.unit / 2) / rows));

    struct Column
    {
        std::vector<SheetItem> items;
        int labelWidth = 0;
        int width = 0;
    };
    Column columns[2];
    for (size_t i = 0; i < items.size(); ++i) {
        Column &column = columns[i < leftCount ? 0 : 1];
        column.items.push_back(items[i]);
        const int label = metrics.horizontalAdvance(labelText(items[i]));
        if (!items[i].value.isEmpty())
            column.labelWidth = std::max(column.labelWidth, label);
    }
    // A statement of its own (the ground setting) stands in the value column, under the
    // side-stand value it belongs to.
    for (Column &column : columns) {
        for (const SheetItem &item : column.items) {
            const QString &text = item.value.isEmpty() ? item.label : item.value;
            column.width = std::max(column.width, column.labelWidth + metrics.horizontalAdvance(text));
        }
    }

    // The right column starts at 12 line units, or further left when its texts need the room;
    // two units of slack keep rounded glyph advances from eliding a text that fits.
    const int rightX = std::max(
        columns[0].width + layout.unit, std::min(12 * layout.unit, layout.width - columns[1].width - 2));
    const int xs[2] = {0, rightX};
    int bottom = top;
    painter.setFont(itemFont);
    painter.setPen(kInk);
    for (int c = 0; c < 2; ++c) {
        const int room = (c == 0 ? rightX - layout.unit : layout.width - rightX);
        int y = top + layout.unit / 4;
        for (const SheetItem &item : columns[c].items) {
            const int baseline = y + (rowHeight - line.height) / 2 + line.ascent;
            if (!item.value.isEmpty())
                painter.drawText(QPoint(xs[c], baseline), labelText(item));
            const QString &text = item.value.isEmpty() ? item.label : item.value;
            painter.drawText(QPoint(xs[c] + columns[c].labelWidth, baseline),
                metrics.elidedText(text, Qt::ElideRight, std::max(0, room - columns[c].labelWidth)));
            y += rowHeight;
        }
        bottom = std::max(bottom, y);
    }
    return bottom;
}

// Ten rows of speed and angle under a bold heading; values the checker rejects are printed in
// the graph's colour for invalid segments.
void paintMapTable(QPainter &painter, const QRect &box, const Profile &profile)
{
    const QFont headFont = sheetFont(12, true);
    const QFont cellFont = sheetFont(12, false);
    const MapValidation validation = validate(profile);
    const int rows = kMapPointCount + 1;
    const int rowHeight = box.height() / rows;
    const int pad = 6;
    const int rpmRight = box.left() + box.width() * 11 / 20;
    const QRect rpmColumn(box.left() + pad, 0, rpmRight - box.left() - 2 * pad, rowHeight);
    const QRect angleColumn(rpmRight + pad, 0, box.right() - rpmRight - 2 * pad, rowHeight);

    painter.setFont(headFont);
    painter.setPen(kInk);
    painter.drawText(rpmColumn.translated(0, box.top()), Qt::AlignRight | Qt::AlignVCenter,
        QCoreApplication::translate("SummarySheet", "RPM"));
    painter.drawText(angleColumn.translated(0, box.top()), Qt::AlignRight | Qt::AlignVCenter,
        QCoreApplication::translate("SummarySheet", "Angle"));

    painter.setFont(cellFont);
    for (int i = 0; i < kMapPointCount; ++i) {
        const int top = box.top() + (i + 1) * rowHeight;
        if (i % 2 == 0)
            painter.fillRect(QRect(box.left(), top, box.width(), rowHeight), kRowShade);
        const MapPoint point = profile.map().point(i);
        const PointValidation &check = validation.points[size_t(i)];
        painter.setPen(check.rpmMessage.isEmpty() ? kInk : kInvalidInk);
        painter.drawText(
            rpmColumn.translated(0, top), Qt::AlignRight | Qt::AlignVCenter, QString::number(point.rpm));
        painter.setPen(check.angleMessage.isEmpty() ? kInk : kInvalidInk);
        painter.drawText(angleColumn.translated(0, top), Qt::AlignRight | Qt::AlignVCenter,
            QString::number(point.angle) + QChar(0x00B0));
    }
    paintRule(painter, box.left(), box.top() + rowHeight, box.right(), box.top() + rowHeight);
    paintRule(painter, rpmRight, box.top(), rpmRight, box.top() + rows * rowHeight);
}

// The heading, then the notes wrapped to the box's width as far as they fit; returns the lines
// that did not.
QStringList paintNotes(QPainter &painter, const QRect &box, const Profile &profile)
{
    const QFont headFont = sheetFont(12, true);
    const LineMetrics headLine(headFont, painter.device());
    painter.setFont(headFont);
    painter.setPen(kInk);
    painter.drawText(QPoint(box.left(), box.top() + headLine.ascent),
        QCoreApplication::translate("SummarySheet", "Notes"));
    const int textTop = box.top() + headLine.lineSpacing;
    const QStringList lines = wrappedLines(profile.notes(), notesFont(), painter.device(), box.width());
    const int drawn = paintLines(
        painter, QRect(box.left(), textTop, box.width(), box.bottom() - textTop + 1), notesFont(), lines, 0);
    return lines.mid(drawn);
}

// A page of notes that did not fit on the sheet: the title line again, a heading, and the lines
// in as many columns of the sheet's notes width as the page holds. Returns what is still left.
QStringList paintNotesPage(QPainter &painter, const QRect &page, const Profile &profile,
    const QString &headerLine, const QStringList &lines)
{
    const SheetLayout layout(page);
    painter.save();
    painter.translate(page.topLeft());
    const int titleBottom = paintTitle(painter, layout, profile, headerLine);
    const QFont headFont = sheetFont(12, true);
    const LineMetrics headLine(headFont, painter.device());
    const int headTop = titleBottom + layout.unit / 4;
    painter.setFont(headFont);
    painter.setPen(kInk);
    painter.drawText(QPoint(0, headTop + headLine.ascent),
        QCoreApplication::translate("SummarySheet", "Notes (continued)"));
    const int textTop = headTop + headLine.lineSpacing;
    const int gap = layout.unit / 2;
    int next = 0;
    for (int left = 0; left + layout.tableWidth <= layout.width && next < lines.size();
         left += layout.tableWidth + gap) {
        next = paintLines(painter, QRect(left, textTop, layout.tableWidth, layout.lastRow - textTop + 1),
            notesFont(), lines, next);
    }
    painter.restore();
    return lines.mid(next);
}

} // namespace

QString programVersion()
{
    return QLatin1String(kProgramVersionText);
}

QString libraryNumberText(qint32 value)
{
    const QString digits = QString::number(qAbs(qint64(value)));
    QString grouped;
    for (int i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += QLatin1Char('.');
        grouped += digits.at(i);
    }
    return value < 0 ? QLatin1Char('-') + grouped : grouped;
}

QString summarySheetHeaderLine(qint32 libraryValue, const QDateTime &printedAt)
{
    const QString stamp = printedAt.toString(Qt::ISODate).replace(QLatin1Char('T'), QStringLiteral(" - "));
    return stamp + QStringLiteral(" - Sparkwright ") + programVersion() + QStringLiteral(" - default.cds ")
        + libraryNumberText(libraryValue);
}

QStringList summarySheetItems(const Profile &profile)
{
    QStringList texts;
    for (const SheetItem &item : sheetItems(profile))
        texts << labelText(item) + item.value;
    return texts;
}

QStringList paintSummarySheet(
    QPainter &painter, const QRect &page, const Profile &profile, const QString &headerLine)
{
    const SheetLayout layout(page);
    painter.save();
    painter.translate(page.topLeft());

    const int titleBottom = paintTitle(painter, layout, profile, headerLine);
    const int itemsBottom = paintItems(painter, layout, profile, titleBottom);
    // The band of header and settings takes what it needs (at most a quarter of the page), so
    // that the graph gets the rest.
    const int bandBottom = itemsBottom + layout.unit / 4;
    paintRule(painter, 0, bandBottom, layout.lastColumn, bandBottom);

    const int mainTop = bandBottom + layout.unit / 4;
    const int notesTop = std::max(layout.notesTop, std::min(mainTop + 6 * layout.unit, layout.lastRow));
    const QRect tableBox(0, mainTop, layout.tableWidth, notesTop - layout.unit / 4 - mainTop);
    paintMapTable(painter, tableBox, profile);
    paintRule(painter, 0, notesTop - layout.unit / 8, layout.tableWidth - 1, notesTop - layout.unit / 8);
    const QStringList rest
        = paintNotes(painter, QRect(0, notesTop, layout.tableWidth, layout.lastRow - notesTop + 1), profile);

    const int graphLeft = layout.tableWidth + layout.unit / 2;
    const QRect graphBox(graphLeft, mainTop, layout.width - graphLeft, layout.height - mainTop);
    MapPlotter graph(int(graphBox.width() / kGraphScale), int(graphBox.height() / kGraphScale));
    painter.save();
    painter.setClipRect(graphBox);
    painter.translate(graphBox.topLeft());
    painter.scale(kGraphScale, kGraphScale);
    graph.paintSingle(painter, profile, -1, true, true);
    painter.restore();

    painter.restore();
    return rest;
}

int summarySheetResolution()
{
    return kResolution;
}

QPageLayout summarySheetPageLayout()
{
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
        QMarginsF(kPageMarginMm, kPageMarginMm, kPageMarginMm, kPageMarginMm), QPageLayout::Millimeter);
}

bool paintSummarySheetDocument(QPagedPaintDevice &device, const Profile &profile, const QString &headerLine)
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const QRect sheet(QPoint(0, 0), device.pageLayout().paintRectPixels(device.logicalDpiX()).size());
    QStringList rest = paintSummarySheet(painter, sheet, profile, headerLine);
    // Long notes go on over further pages; a page that takes no line ends it.
    while (!rest.isEmpty()) {
        if (!device.newPage())
            return false;
        const int before = rest.size();
        rest = paintNotesPage(painter, sheet, profile, headerLine, rest);
        if (rest.size() == before)
            return false;
    }
    return painter.end();
}

QByteArray summarySheetPdf(const Profile &profile, const QString &headerLine)
{
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly))
        return {};
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(kResolution);
        writer.setPageLayout(summarySheetPageLayout());
        writer.setCreator(QStringLiteral("Sparkwright ") + programVersion());
        writer.setTitle(profile.name());
        if (!paintSummarySheetDocument(writer, profile, headerLine))
            return {};
    }
    return buffer.data();
}
