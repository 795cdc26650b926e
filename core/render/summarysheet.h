#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QPageLayout>
#include <QRect>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;

class Profile;
class QPainter;

// The printed profile sheet: an A4 landscape page with the header line, the profile's name and
// settings, the map as a table and as a graph, and the notes, which go on over further pages
// when they need more room than the first page has. It is produced in memory; the
// caller stores the bytes (through the safe file writer, so a failed print never destroys an old
// file). Texts are translated in the "SummarySheet" context.

// The program version named in the header line.
QString programVersion();

// The library number with "." between groups of three digits from the right: 20000 gives "20.000".
QString libraryNumberText(qint32 value);

// "2024-05-01 - 14:30:00 - Sparkwright 0.95.1 - default.cds 20.000".
QString summarySheetHeaderLine(qint32 libraryValue, const QDateTime &printedAt);

// The settings as the sheet prints them, one "label: value" text per item; the ground item
// appears only while the side stand is monitored.
QStringList summarySheetItems(const Profile &profile);

// Paints the first page into the page's printable area (device units, origin at its top left)
// and returns the lines of the notes that did not fit on it.
QStringList paintSummarySheet(
    QPainter &painter, const QRect &page, const Profile &profile, const QString &headerLine);

// The sheet's page: A4 landscape with its margins, laid out at this resolution (dots per inch).
QPageLayout summarySheetPageLayout();
int summarySheetResolution();

// The whole document on a paged device, a PDF file or a printer, whose page layout and
// resolution are the sheet's; false when a page could not be painted.
bool paintSummarySheetDocument(QPagedPaintDevice &device, const Profile &profile, const QString &headerLine);

// The whole document as PDF bytes, empty when it could not be produced.
QByteArray summarySheetPdf(const Profile &profile, const QString &headerLine);
