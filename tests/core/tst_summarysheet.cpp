// The profile summary: the printed sheet (its header line, the PDF's page and its texts in English
// and German) and the summary page's one-line status of the settings and its map table.
#include "profile/profile.h"
#include "programversion.h"
#include "render/summarysheet.h"
#include "summary/summaryform.h"
#include "support/layoutencoder.h"
#include "support/widgettestmain.h"

#include <QLabel>
#include <QProcess>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTextDocumentFragment>

class TestSummarySheet : public QObject
{
    Q_OBJECT

private slots:
    void pdf_data();
    void pdf();
    void statusLine_data();
    void statusLine();
};

void TestSummarySheet::pdf_data()
{
    QTest::addColumn<bool>("german");
    QTest::addColumn<int>("pages");
    QTest::addColumn<QStringList>("expected");
    // Some 2000 characters in paragraphs: more than the first page's notes column holds.
    QTest::newRow("English, a page of notes more")
        << false << 2
        << QStringList {"Four-stroke single 125-250 cc road",
               QStringLiteral("2026-03-14 - 09:05:07 - Sparkwright %1 - default.cds 20.000")
                   .arg(kProgramVersionText),
               "Ignition voltage:", "200 V", "Side stand monitoring:", "enabled", "Ground blocks ignition",
               "Pulse generator edge:", "trigger with rising edge", "Sensor advance:", "43.0\u00B0", "RPM",
               "Angle", "34\u00B0", "9000", "10000", "Notes (continued)",
               "Run 1:", "Run 20:", "Run 40: two degrees"};
    QTest::newRow("German") << true << 1
                            << QStringList {"Seitenständerüberwachung:", "Masse sperrt die Zündung",
                                   "Zündung bei steigender Flanke", "Plug BR8ES"};
}

// A4 pages, the long side across, with every text of the sheet on them, the notes whole.
void TestSummarySheet::pdf()
{
    QFETCH(bool, german);
    QFETCH(int, pages);
    QFETCH(QStringList, expected);
    // The longest German texts; the rest of the translation is read in tst_cli.
    WidgetTest::Translator translator({{"SummarySheet|Side stand monitoring", "Seitenständerüberwachung"},
        {"SummarySheet|Ground blocks ignition", "Masse sperrt die Zündung"},
        {"SummarySheet|trigger with rising edge", "Zündung bei steigender Flanke"}});
    if (german)
        QCoreApplication::installTranslator(&translator);
    Profile profile;
    profile.setName(QStringLiteral("Four-stroke single 125-250 cc road"));
    profile.setNotes(QStringLiteral("Plug BR8ES, gap 0.7 mm."));
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 13, 18, 24, 29, 32, 34, 34, 34, 34}));
    profile.setSensorCoefficients({43.0, -0.00035, 0.0});
    profile.setFlags(ProfileFlags {true, false, true, 0});
    for (int i = 1; i <= 40 && pages > 1; ++i)
        profile.setNotes(
            profile.notes() + QStringLiteral("\nRun %1: two degrees less above 7000 rpm, plug fine.").arg(i));
    // Thousands in the library's number are grouped with dots, whatever the locale.
    const QByteArray pdf = summarySheetPdf(
        profile, summarySheetHeaderLine(20000, QDateTime(QDate(2026, 3, 14), QTime(9, 5, 7))));
    QCoreApplication::removeTranslator(&translator);
    QVERIFY(pdf.contains("/MediaBox [0 0 842.000000 595.000000]")); // 297 x 210 mm in points

    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        QSKIP("pdftotext (poppler-utils) is not installed");
    QProcess process;
    process.start(pdftotext, {QStringLiteral("-"), QStringLiteral("-")});
    process.write(pdf);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(60000) && process.exitCode() == 0);
    const QString text = QString::fromUtf8(process.readAllStandardOutput());
    QCOMPARE(text.count(QLatin1Char('\f')), pages);
    for (const QString &piece : expected)
        QVERIFY2(text.contains(piece), qPrintable(piece));
    QVERIFY2(!text.contains(QChar(0x2026)), "nothing is cut short");
}

void TestSummarySheet::statusLine_data()
{
    QTest::addColumn<bool>("monitoring"); // with the ground blocking ignition and the rising edge
    QTest::addColumn<int>("sensorMode");
    QTest::addColumn<double>("advance");
    QTest::addColumn<QString>("line");
    QTest::newRow("monitoring off: no ground text; sensor mode 2 keeps the one name")
        << false << 2 << 10.0
        << "Ignition voltage: 200 V | Side stand monitoring: disabled | Pulse generator edge: trigger with "
           "falling edge | Sensor advance: 10.0°";
    QTest::newRow("monitoring on, ground blocks, rising edge, advance rounded")
        << true << 0 << 27.26
        << "Ignition voltage: 200 V | Side stand monitoring: enabled; ground blocks ignition | "
           "Pulse generator edge: trigger with rising edge | Sensor advance: 27.3°";
}

void TestSummarySheet::statusLine()
{
    QFETCH(bool, monitoring);
    QFETCH(int, sensorMode);
    QFETCH(double, advance);
    QFETCH(QString, line);
    Profile profile;
    profile.setFlags(ProfileFlags {monitoring, false, monitoring, quint32(sensorMode)});
    profile.setSensorCoefficients({advance, 0.0, 0.0});
    SummaryForm form(SummaryForm::kWithNotes);
    form.setProfile(profile);
    const QString shown = form.findChild<QLabel *>(QStringLiteral("statusLabel"))->text();
    QCOMPARE(QTextDocumentFragment::fromHtml(shown).toPlainText().simplified(), line);
    // The map's empty slots are listed too, as 0 and 0°, so that the table always has ten rows.
    const QTableWidget *table = form.findChild<QTableWidget *>(QStringLiteral("mapTable"));
    QStringList cells {table->horizontalHeaderItem(0)->text(), table->horizontalHeaderItem(1)->text()};
    for (int row = 0; row < table->rowCount(); ++row)
        cells << table->item(row, 0)->text() << table->item(row, 1)->text();
    QCOMPARE(cells.join(QLatin1Char(' ')),
        QStringLiteral("RPM Angle") + QStringLiteral(" 0 0°").repeated(kMapPointCount));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestSummarySheet)
#include "tst_summarysheet.moc"
