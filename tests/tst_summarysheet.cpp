// The printed profile sheet: its header line and items, the PDF's page and text, and a layout in
// which no text leaves the page or runs into another, in English and in German.
#include "profile/profile.h"
#include "summary/summarysheet.h"
#include "tests/layoutencoder.h"
#include "tests/widgettestmain.h"

#include <QPaintEngine>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <vector>

namespace {

// The German texts of the sheet and its graph, as a translator would deliver them.
const QHash<QString, QString> kGerman = {{"SummarySheet|Ignition voltage", "Zündspannung"},
    {"SummarySheet|Side stand monitoring", "Seitenständerüberwachung"}, {"SummarySheet|enabled", "aktiviert"},
    {"SummarySheet|disabled", "deaktiviert"},
    {"SummarySheet|Ground enables ignition", "Masse gibt die Zündung frei"},
    {"SummarySheet|Ground blocks ignition", "Masse sperrt die Zündung"},
    {"SummarySheet|Pulse generator", "Impulsgeber"},
    {"SummarySheet|trigger with rising edge", "Zündung bei steigender Flanke"},
    {"SummarySheet|trigger with falling edge", "Zündung bei fallender Flanke"},
    {"SummarySheet|Sensor advance", "Sensorvorzündung"}, {"SummarySheet|RPM", "U/min"},
    {"SummarySheet|Angle", "Winkel"}, {"SummarySheet|Notes", "Notizen"}, {"MapPlotter|Angle", "Winkel"},
    {"MapPlotter|RPM", "U/min"}, {"MapPlotter|Invalid", "Ungültig"}};

// Keeps the German texts installed for the lifetime of the scope, when asked for.
class Installed
{
public:
    explicit Installed(bool german)
        : m_installed(german && QCoreApplication::installTranslator(&m_translator))
    { }
    ~Installed()
    {
        if (m_installed)
            QCoreApplication::removeTranslator(&m_translator);
    }

private:
    WidgetTest::Translator m_translator {kGerman};
    const bool m_installed;
};

struct DrawnText
{
    QString text;
    QRectF box;
};

// Records every piece of text a painter draws, with the box it takes on the page; everything
// else is drawn nowhere.
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
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
    void drawImage(const QRectF &, const QImage &, const QRectF &, Qt::ImageConversionFlags) override { }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { }
    void drawPath(const QPainterPath &) override { }
    void drawTextItem(const QPointF &p, const QTextItem &item) override
    {
        if (!item.text().trimmed().isEmpty())
            texts.push_back({item.text(),
                m_transform.mapRect(
                    QRectF(p.x(), p.y() - item.ascent(), item.width(), item.ascent() + item.descent()))});
    }
    Type type() const override { return QPaintEngine::User; }

    std::vector<DrawnText> texts;

private:
    QTransform m_transform;
};

// A page of the printable area of A4 landscape (less 18 mm on every side) at 96 dots per inch.
class RecordingPage : public QImage
{
public:
    RecordingPage()
        : QImage(qRound((297.0 - 36.0) / 25.4 * 96), qRound((210.0 - 36.0) / 25.4 * 96), Format_RGB32)
    {
        setDotsPerMeterX(qRound(96 / 0.0254));
        setDotsPerMeterY(qRound(96 / 0.0254));
    }
    QPaintEngine *paintEngine() const override { return &m_engine; }
    const std::vector<DrawnText> &texts() const { return m_engine.texts; }

private:
    mutable RecordingEngine m_engine;
};

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Four-stroke single 125-250 cc road"));
    profile.setNotes(QStringLiteral("Plug BR8ES, gap 0.7 mm. Richer main jet for the track."));
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 13, 18, 24, 29, 32, 34, 34, 34, 34}));
    profile.setSensorCoefficients({43.0, -0.00035, 0.0});
    profile.setFlags(flagsOf(true, false, true, 0));
    return profile;
}

const QString kHeader = QStringLiteral("2026-03-14 - 09:05:07 - Sparkwright 0.95.1 - default.cds 20.000");

} // namespace

Q_DECLARE_METATYPE(Profile)

class TestSummarySheet : public QObject
{
    Q_OBJECT

private slots:
    void headerLine();
    void items_data();
    void items();
    void pdf_data();
    void pdf();
    void textsStayOnThePageAndApart_data();
    void textsStayOnThePageAndApart();
};

// Thousands in the library's number are grouped with dots, whatever the locale.
void TestSummarySheet::headerLine()
{
    QCOMPARE(summarySheetHeaderLine(20000, QDateTime(QDate(2026, 3, 14), QTime(9, 5, 7))), kHeader);
    QCOMPARE(libraryNumberText(999), QStringLiteral("999"));
    QCOMPARE(libraryNumberText(1234567), QStringLiteral("1.234.567"));
    QCOMPARE(libraryNumberText(INT_MIN), QStringLiteral("-2.147.483.648"));
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

void TestSummarySheet::pdf_data()
{
    QTest::addColumn<bool>("german");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << false
                             << QStringList {"Four-stroke single 125-250 cc road", kHeader,
                                    "Ignition voltage:", "200 V", "Side stand monitoring:", "enabled",
                                    "Ground blocks ignition", "Pulse generator:", "trigger with rising edge",
                                    "Sensor advance:", "43.0\u00B0", "RPM", "Angle", "34\u00B0", "Notes",
                                    "Plug BR8ES"};
    QTest::newRow("German") << true
                            << QStringList {"Zündspannung:", "Seitenständerüberwachung:", "aktiviert",
                                   "Masse sperrt die Zündung",
                                   "Impulsgeber:", "Zündung bei steigender Flanke",
                                   "Sensorvorzündung:", "U/min", "Winkel", "Notizen"};
}

// One A4 page, the long side across, with every text of the sheet on it.
void TestSummarySheet::pdf()
{
    QFETCH(bool, german);
    QFETCH(QStringList, expected);
    QByteArray pdf;
    {
        Installed installed(german);
        pdf = summarySheetPdf(sampleProfile(), kHeader);
    }
    QVERIFY(pdf.startsWith("%PDF-"));
    const QString raw = QString::fromLatin1(pdf.constData(), pdf.size()); // binary parts hold NULs
    static const QRegularExpression mediaBox(
        QStringLiteral("/MediaBox \\[\\s*0\\s+0\\s+([\\d.]+)\\s+([\\d.]+)\\s*\\]"));
    const QRegularExpressionMatch box = mediaBox.match(raw);
    QVERIFY(box.hasMatch());
    // 297 x 210 mm in points.
    QVERIFY(qAbs(box.captured(1).toDouble() - 841.9) < 1.0 && qAbs(box.captured(2).toDouble() - 595.3) < 1.0);
    QCOMPARE(raw.count(QRegularExpression(QStringLiteral("/Type\\s*/Page\\b"))), 1);

    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        QSKIP("pdftotext (poppler-utils) is not installed");
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("sheet.pdf")));
    QVERIFY(dir.isValid() && file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size());
    file.close();
    QProcess process;
    process.start(
        pdftotext, {QStringLiteral("-enc"), QStringLiteral("UTF-8"), file.fileName(), QStringLiteral("-")});
    QVERIFY(process.waitForFinished(60000) && process.exitCode() == 0);
    const QString text = QString::fromUtf8(process.readAllStandardOutput());
    for (int rpm = 1000; rpm <= 10000; rpm += 1000)
        expected << QString::number(rpm);
    for (const QString &piece : expected)
        QVERIFY2(text.contains(piece), qPrintable(piece));
}

void TestSummarySheet::textsStayOnThePageAndApart_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<bool>("german");
    QTest::newRow("English") << sampleProfile() << false;
    Profile longTexts = sampleProfile();
    longTexts.setName(
        QStringLiteral("A very long profile name that a user typed without thinking of the paper ")
            .repeated(3));
    longTexts.setNotes(
        QStringLiteral("Notes that go on and on about jets, plugs and the weather. ").repeated(60)
        + QStringLiteral("\nWithAWordFarTooLongForTheColumnWithAWordFarTooLongForTheColumn"));
    QTest::newRow("long name and notes, German") << longTexts << true;
    Profile fast = sampleProfile();
    IgnitionMap map = fast.map();
    map.setPoint(9, 20000, 34);
    map.setPoint(3, 2000, 60); // not ascending, above the bounds: the badge and red values
    fast.setMap(map);
    QTest::newRow("20000 rpm and the badge, German") << fast << true;
    map.setPoint(9, 21000, 34);
    fast.setMap(map);
    QTest::newRow("beyond 20000 rpm") << fast << false;
}

void TestSummarySheet::textsStayOnThePageAndApart()
{
    QFETCH(Profile, profile);
    QFETCH(bool, german);
    Installed installed(german);
    RecordingPage page;
    {
        QPainter painter(&page);
        paintSummarySheet(painter, page.rect(), profile, kHeader);
    }
    const std::vector<DrawnText> &texts = page.texts();
    QVERIFY(texts.size() > 40);
    const QRectF inside = QRectF(page.rect()).adjusted(-0.5, -0.5, 0.5, 0.5);
    for (size_t i = 0; i < texts.size(); ++i) {
        QVERIFY2(inside.contains(texts[i].box),
            qPrintable(QStringLiteral("'%1' leaves the page").arg(texts[i].text)));
        for (size_t j = i + 1; j < texts.size(); ++j) {
            const QRectF overlap = texts[i].box.intersected(texts[j].box);
            QVERIFY2(overlap.width() < 0.5 || overlap.height() < 0.5,
                qPrintable(QStringLiteral("'%1' runs into '%2'").arg(texts[i].text, texts[j].text)));
        }
    }
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestSummarySheet)
#include "tst_summarysheet.moc"
