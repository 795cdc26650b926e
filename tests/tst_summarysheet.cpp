// The printed profile sheet: its header line and items, the PDF's page and text, and a layout in
// which no text leaves the page or runs into another, in English and in German.
#include "profile/profile.h"
#include "summary/summarysheet.h"
#include "tests/widgettestmain.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTranslator>

#include <vector>

namespace {

// The German texts of the sheet and its graph, as a translator would deliver them.
class German : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        static const QHash<QString, QString> texts = {
            {"SummarySheet|Ignition voltage", "Zündspannung"},
            {"SummarySheet|Side stand monitoring", "Seitenständerüberwachung"},
            {"SummarySheet|enabled", "aktiviert"},
            {"SummarySheet|disabled", "deaktiviert"},
            {"SummarySheet|Ground enables ignition", "Masse gibt die Zündung frei"},
            {"SummarySheet|Ground blocks ignition", "Masse sperrt die Zündung"},
            {"SummarySheet|Pulse generator", "Impulsgeber"},
            {"SummarySheet|trigger with rising edge", "Zündung bei steigender Flanke"},
            {"SummarySheet|trigger with falling edge", "Zündung bei fallender Flanke"},
            {"SummarySheet|Sensor advance", "Sensorvorzündung"},
            {"SummarySheet|RPM", "U/min"},
            {"SummarySheet|Angle", "Winkel"},
            {"SummarySheet|Notes", "Notizen"},
            {"MapPlotter|Angle", "Winkel"},
            {"MapPlotter|RPM", "U/min"},
            {"MapPlotter|Invalid", "Ungültig"},
        };
        return texts.value(QString::fromUtf8(context) + QLatin1Char('|') + QString::fromUtf8(source));
    }
};

// Keeps a translator installed for the lifetime of the scope.
class Installed
{
public:
    explicit Installed(QTranslator *translator)
        : m_translator(translator)
    {
        if (m_translator)
            QCoreApplication::installTranslator(m_translator);
    }
    ~Installed()
    {
        if (m_translator)
            QCoreApplication::removeTranslator(m_translator);
    }

private:
    QTranslator *m_translator;
};

struct DrawnText
{
    QString text;
    QRectF box;
};

// Records every piece of text a painter draws, with the box it takes on the page.
class RecordingEngine : public QPaintEngine
{
public:
    RecordingEngine()
        : QPaintEngine(QPaintEngine::AllFeatures)
    { }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &state) override
    {
        if (state.state() & QPaintEngine::DirtyTransform)
            m_transform = state.transform();
    }
    // Only the texts matter here; everything else is drawn nowhere.
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
    void drawImage(const QRectF &, const QImage &, const QRectF &, Qt::ImageConversionFlags) override { }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { }
    void drawPolygon(const QPoint *, int, PolygonDrawMode) override { }
    void drawPath(const QPainterPath &) override { }
    void drawLines(const QLineF *, int) override { }
    void drawLines(const QLine *, int) override { }
    void drawRects(const QRectF *, int) override { }
    void drawRects(const QRect *, int) override { }
    void drawEllipse(const QRectF &) override { }
    void drawEllipse(const QRect &) override { }
    void drawPoints(const QPointF *, int) override { }
    void drawPoints(const QPoint *, int) override { }
    void drawTextItem(const QPointF &p, const QTextItem &item) override
    {
        if (item.text().trimmed().isEmpty())
            return;
        const QRectF box(p.x(), p.y() - item.ascent(), item.width(), item.ascent() + item.descent());
        texts.push_back({item.text(), m_transform.mapRect(box)});
    }
    Type type() const override { return QPaintEngine::User; }

    std::vector<DrawnText> texts;

private:
    QTransform m_transform;
};

class RecordingDevice : public QPaintDevice
{
public:
    explicit RecordingDevice(QSize size)
        : m_size(size)
    { }
    QPaintEngine *paintEngine() const override { return &m_engine; }
    const std::vector<DrawnText> &texts() const { return m_engine.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmWidthMM:
            return int(m_size.width() * 25.4 / 96);
        case PdmHeightMM:
            return int(m_size.height() * 25.4 / 96);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDepth:
            return 32;
        case PdmNumColors:
            return INT_MAX;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        }
        return 0;
    }

private:
    QSize m_size;
    mutable RecordingEngine m_engine;
};

// A4 landscape less 18 mm on every side, at 96 dots per inch.
const QSize kPrintableArea(qRound((297.0 - 36.0) / 25.4 * 96), qRound((210.0 - 36.0) / 25.4 * 96));

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Four-stroke single 125-250 cc road"));
    profile.setNotes(QStringLiteral("Plug BR8ES, gap 0.7 mm. Richer main jet for the track."));
    IgnitionMap map;
    const int points[10][2] = {{1000, 10}, {2000, 13}, {3000, 18}, {4000, 24}, {5000, 29}, {6000, 32},
        {7000, 34}, {8000, 34}, {9000, 34}, {10000, 34}};
    for (int i = 0; i < 10; ++i)
        map.setPoint(i, points[i][0], points[i][1]);
    profile.setMap(map);
    profile.setSensorCoefficients({43.0, -0.00035, 0.0});
    ProfileFlags flags;
    flags.sideStandMonitoring = true;
    flags.groundEnablesIgnition = false;
    flags.pickUpRisingEdge = true;
    profile.setFlags(flags);
    return profile;
}

const QString kHeader = QStringLiteral("2026-03-14 - 09:05:07 - Sparkwright 0.95.1 - default.cds 20.000");

} // namespace

Q_DECLARE_METATYPE(Profile)

class TestSummarySheet : public QObject
{
    Q_OBJECT

private slots:
    void libraryNumber_data();
    void libraryNumber();
    void headerLine();
    void items_data();
    void items();
    void pdfIsOneA4LandscapePage();
    void pdfText_data();
    void pdfText();
    void textsStayOnThePageAndApart_data();
    void textsStayOnThePageAndApart();
};

void TestSummarySheet::libraryNumber_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << "0";
    QTest::newRow("three digits") << 999 << "999";
    QTest::newRow("four digits") << 1000 << "1.000";
    QTest::newRow("20000") << 20000 << "20.000";
    QTest::newRow("seven digits") << 1234567 << "1.234.567";
    QTest::newRow("negative") << -20000 << "-20.000";
    QTest::newRow("smallest") << INT_MIN << "-2.147.483.648";
}

void TestSummarySheet::libraryNumber()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    QCOMPARE(libraryNumberText(value), text);
}

void TestSummarySheet::headerLine()
{
    const QDateTime printedAt(QDate(2026, 3, 14), QTime(9, 5, 7));
    QCOMPARE(summarySheetHeaderLine(20000, printedAt), kHeader);
}

void TestSummarySheet::items_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<QStringList>("items");
    Profile off;
    off.setSensorCoefficients({10.0, 0.0, 0.0});
    QTest::newRow("monitoring off: no ground item")
        << off
        << QStringList {"Ignition voltage: 200 V", "Side stand monitoring: disabled",
               "Pulse generator: trigger with falling edge", "Sensor advance: 10.0\u00B0"};
    Profile on = sampleProfile();
    on.setSensorCoefficients({27.26, 0.0, 0.0});
    on.setVoltage(185);
    QTest::newRow("monitoring on: the ground item follows")
        << on
        << QStringList {"Ignition voltage: 185 V", "Side stand monitoring: enabled", "Ground blocks ignition",
               "Pulse generator: trigger with rising edge", "Sensor advance: 27.3\u00B0"};
}

void TestSummarySheet::items()
{
    QFETCH(Profile, profile);
    QFETCH(QStringList, items);
    QCOMPARE(summarySheetItems(profile), items);
}

void TestSummarySheet::pdfIsOneA4LandscapePage()
{
    const QByteArray pdf = summarySheetPdf(sampleProfile(), kHeader);
    QVERIFY(pdf.startsWith("%PDF-"));
    static const QRegularExpression mediaBox(
        QStringLiteral("/MediaBox \\[\\s*0\\s+0\\s+([\\d.]+)\\s+([\\d.]+)\\s*\\]"));
    const QString text = QString::fromLatin1(pdf.constData(), pdf.size()); // binary parts hold NULs
    QRegularExpressionMatchIterator boxes = mediaBox.globalMatch(text);
    int pages = 0;
    while (boxes.hasNext()) {
        const QRegularExpressionMatch box = boxes.next();
        // 297 x 210 mm in points, the long side across.
        QVERIFY(qAbs(box.captured(1).toDouble() - 841.9) < 1.0);
        QVERIFY(qAbs(box.captured(2).toDouble() - 595.3) < 1.0);
        ++pages;
    }
    QCOMPARE(pages, 1);
    QCOMPARE(text.count(QRegularExpression(QStringLiteral("/Type\\s*/Page\\b"))), 1);
}

void TestSummarySheet::pdfText_data()
{
    QTest::addColumn<bool>("german");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << false
                             << QStringList {"Four-stroke single 125-250 cc road", kHeader,
                                    "Ignition voltage:", "200 V", "Side stand monitoring:", "enabled",
                                    "Ground blocks ignition", "Pulse generator:", "trigger with rising edge",
                                    "Sensor advance:", "43.0\u00B0", "RPM", "Angle", "10000", "34\u00B0",
                                    "Notes", "Plug BR8ES"};
    QTest::newRow("German") << true
                            << QStringList {"Zündspannung:", "200 V",
                                   "Seitenständerüberwachung:", "aktiviert", "Masse sperrt die Zündung",
                                   "Impulsgeber:", "Zündung bei steigender Flanke",
                                   "Sensorvorzündung:", "U/min", "Winkel", "Notizen"};
}

void TestSummarySheet::pdfText()
{
    QFETCH(bool, german);
    QFETCH(QStringList, expected);
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        QSKIP("pdftotext (poppler-utils) is not installed");
    German translator;
    QByteArray pdf;
    {
        Installed installed(german ? &translator : nullptr);
        pdf = summarySheetPdf(sampleProfile(), kHeader);
    }
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFile file(dir.filePath(QStringLiteral("sheet.pdf")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(pdf);
    file.close();
    QProcess process;
    process.start(
        pdftotext, {QStringLiteral("-enc"), QStringLiteral("UTF-8"), file.fileName(), QStringLiteral("-")});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 0);
    const QString text = QString::fromUtf8(process.readAllStandardOutput());
    for (const QString &piece : expected)
        QVERIFY2(text.contains(piece), qPrintable(piece));
    // All ten speeds of the table.
    for (int rpm = 1000; rpm <= 10000; rpm += 1000)
        QVERIFY(text.contains(QString::number(rpm)));
}

void TestSummarySheet::textsStayOnThePageAndApart_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<bool>("german");
    QTest::newRow("English") << sampleProfile() << false;
    QTest::newRow("German") << sampleProfile() << true;
    Profile longTexts = sampleProfile();
    longTexts.setName(
        QStringLiteral("A very long profile name that a user typed without thinking of the paper ")
            .repeated(3));
    longTexts.setNotes(
        QStringLiteral("Notes that go on and on about jets, plugs and the weather. ").repeated(60)
        + QStringLiteral("\nWithAWordFarTooLongForTheColumnWithAWordFarTooLongForTheColumn"));
    QTest::newRow("long name and notes") << longTexts << true;
    Profile fast = sampleProfile();
    IgnitionMap map = fast.map();
    map.setPoint(9, 20000, 34);
    map.setPoint(3, 2000, 60); // not ascending, above the bounds: the badge and red values
    fast.setMap(map);
    QTest::newRow("20000 rpm and the badge") << fast << true;
    Profile invalid = sampleProfile();
    map.setPoint(9, 21000, 34);
    invalid.setMap(map);
    QTest::newRow("beyond 20000 rpm") << invalid << false;
}

void TestSummarySheet::textsStayOnThePageAndApart()
{
    QFETCH(Profile, profile);
    QFETCH(bool, german);
    German translator;
    Installed installed(german ? &translator : nullptr);
    RecordingDevice device(kPrintableArea);
    {
        QPainter painter(&device);
        paintSummarySheet(painter, QRect(QPoint(0, 0), kPrintableArea), profile, kHeader);
    }
    const std::vector<DrawnText> &texts = device.texts();
    QVERIFY(texts.size() > 40);
    const QRectF page = QRectF(QPointF(0, 0), kPrintableArea).adjusted(-0.5, -0.5, 0.5, 0.5);
    for (const DrawnText &text : texts) {
        QVERIFY2(page.contains(text.box), qPrintable(QStringLiteral("'%1' leaves the page").arg(text.text)));
    }
    for (size_t i = 0; i < texts.size(); ++i) {
        for (size_t j = i + 1; j < texts.size(); ++j) {
            const QRectF overlap = texts[i].box.intersected(texts[j].box);
            QVERIFY2(overlap.width() < 0.5 || overlap.height() < 0.5,
                qPrintable(QStringLiteral("'%1' runs into '%2'").arg(texts[i].text, texts[j].text)));
        }
    }
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestSummarySheet)
#include "tst_summarysheet.moc"
