// The profile summary: the printed sheet (its header line, the PDF's page and its texts in English
// and German) and the one-line status of the settings on the summary page.
#include "profile/profile.h"
#include "summary/summaryform.h"
#include "summary/summarysheet.h"
#include "tests/layoutencoder.h"
#include "tests/widgettestmain.h"

#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextDocumentFragment>

namespace {

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Four-stroke single 125-250 cc road"));
    profile.setNotes(QStringLiteral("Plug BR8ES, gap 0.7 mm."));
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
    void pdf_data();
    void pdf();
    void statusLine_data();
    void statusLine();
};

// Thousands in the library's number are grouped with dots, whatever the locale.
void TestSummarySheet::headerLine()
{
    QCOMPARE(summarySheetHeaderLine(20000, QDateTime(QDate(2026, 3, 14), QTime(9, 5, 7))), kHeader);
    QCOMPARE(libraryNumberText(999), QStringLiteral("999"));
    QCOMPARE(libraryNumberText(INT_MIN), QStringLiteral("-2.147.483.648"));
}

void TestSummarySheet::pdf_data()
{
    QTest::addColumn<bool>("german");
    QTest::addColumn<QString>("notes");
    QTest::addColumn<int>("pages");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << false << QString() << 1
                             << QStringList {"Four-stroke single 125-250 cc road", kHeader,
                                    "Ignition voltage:", "200 V", "Side stand monitoring:", "enabled",
                                    "Ground blocks ignition", "Pulse generator:", "trigger with rising edge",
                                    "Sensor advance:", "43.0\u00B0", "RPM", "Angle", "34\u00B0", "Notes",
                                    "Plug BR8ES"};
    // Some 2000 characters in paragraphs: more than the first page's notes column holds.
    QString long_;
    for (int i = 1; i <= 40; ++i)
        long_ += QStringLiteral("Run %1: two degrees less above 7000 rpm, plug fine.\n").arg(i);
    QTest::newRow("a page of notes goes on over another page")
        << false << long_ << 2
        << QStringList {"Notes (continued)", "Run 1:", "Run 20:", "Run 40: two degrees"};
    QTest::newRow("German") << true << QString() << 1
                            << QStringList {"Zündspannung:", "Seitenständerüberwachung:", "aktiviert",
                                   "Masse sperrt die Zündung", "Zündung bei steigender Flanke", "U/min"};
}

// A4 pages, the long side across, with every text of the sheet on them, the notes whole.
void TestSummarySheet::pdf()
{
    QFETCH(bool, german);
    QFETCH(QString, notes);
    QFETCH(int, pages);
    QFETCH(QStringList, expected);
    WidgetTest::Translator translator({{"SummarySheet|Ignition voltage", "Zündspannung"},
        {"SummarySheet|Side stand monitoring", "Seitenständerüberwachung"},
        {"SummarySheet|enabled", "aktiviert"},
        {"SummarySheet|Ground blocks ignition", "Masse sperrt die Zündung"},
        {"SummarySheet|trigger with rising edge", "Zündung bei steigender Flanke"},
        {"SummarySheet|RPM", "U/min"}});
    if (german)
        QCoreApplication::installTranslator(&translator);
    Profile profile = sampleProfile();
    if (!notes.isEmpty())
        profile.setNotes(notes);
    const QByteArray pdf = summarySheetPdf(profile, kHeader);
    QCoreApplication::removeTranslator(&translator);
    QVERIFY(pdf.startsWith("%PDF-"));
    const QString raw = QString::fromLatin1(pdf.constData(), pdf.size()); // binary parts hold NULs
    const QRegularExpressionMatch box
        = QRegularExpression(QStringLiteral("/MediaBox \\[\\s*0\\s+0\\s+([\\d.]+)\\s+([\\d.]+)\\s*\\]"))
              .match(raw);
    QVERIFY(box.hasMatch());
    // 297 x 210 mm in points.
    QVERIFY(qAbs(box.captured(1).toDouble() - 841.9) < 1.0 && qAbs(box.captured(2).toDouble() - 595.3) < 1.0);
    QCOMPARE(raw.count(QRegularExpression(QStringLiteral("/Type\\s*/Page\\b"))), pages);

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
    QVERIFY2(!text.contains(QChar(0x2026)), "nothing is cut short");
}

void TestSummarySheet::statusLine_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<QString>("line");
    Profile off;
    off.setSensorCoefficients({10.0, 0.0, 0.0});
    QTest::newRow("monitoring off: no ground text")
        << off
        << QStringLiteral("Ignition voltage: 200 V | Side stand blocking: disabled | "
                          "Pick-up transition: negative | Sensor advance: 10.0°");
    Profile on = sampleProfile();
    on.setSensorCoefficients({27.26, 0.0, 0.0});
    on.setVoltage(185);
    QTest::newRow("monitoring on, ground blocks, rising edge, K0 rounded")
        << on
        << QStringLiteral("Ignition voltage: 185 V | Side stand blocking: enabled; ground blocks ignition | "
                          "Pick-up transition: positive | Sensor advance: 27.3°");
    on.setFlags(flagsOf(true, true, false, 2));
    QTest::newRow("sensor mode 2 names the Hall sensor")
        << on
        << QStringLiteral("Ignition voltage: 185 V | Side stand blocking: enabled; ground enables ignition | "
                          "Pick-up transition: negative | Hall-sensor advance: 27.3°");
}

void TestSummarySheet::statusLine()
{
    QFETCH(Profile, profile);
    QFETCH(QString, line);
    SummaryForm form(SummaryForm::kWithNotes);
    form.setProfile(profile);
    const QString shown = form.findChild<QLabel *>(QStringLiteral("statusLabel"))->text();
    QCOMPARE(QTextDocumentFragment::fromHtml(shown).toPlainText().simplified(), line);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestSummarySheet)
#include "tst_summarysheet.moc"
