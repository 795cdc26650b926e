// The summary page as the user sees it: the map table, the graph filling its place, the notes
// and the one-line status of the settings, in the language of the moment.
#include "profile/profile.h"
#include "summary/profilesummary.h"
#include "summary/summaryform.h"
#include "tests/layoutencoder.h"
#include "tests/widgettestmain.h"

#include <QLabel>
#include <QTextEdit>

Q_DECLARE_METATYPE(Profile)

namespace {

Profile sampleProfile()
{
    Profile profile;
    profile.setNotes(QStringLiteral("Plug B9ES"));
    IgnitionMap map;
    map.setPoint(0, 1000, 12);
    map.setPoint(1, 2500, 18);
    map.setPoint(9, -5, 60);
    profile.setMap(map);
    profile.setSensorCoefficients({30.0, -0.0004, 0.0});
    return profile;
}

Profile withSettings(bool monitoring, bool groundEnables, bool risingEdge, quint32 sensorMode, double k0)
{
    Profile profile;
    profile.setFlags(flagsOf(monitoring, groundEnables, risingEdge, sensorMode));
    profile.setSensorCoefficients({k0, 0.0, 0.0});
    profile.setVoltage(185);
    return profile;
}

template<typename T> T *child(const SummaryForm &form, const char *name)
{
    return form.findChild<T *>(QString::fromLatin1(name));
}

} // namespace

class TestSummaryForm : public QObject
{
    Q_OBJECT

private slots:
    void statusLine_data();
    void statusLine();
    void mapTableShowsAllTenSlots();
    void graphFillsItsPlace();
    void mapOnlyModeLeavesOutTheNotes();
    void languageChangeRetranslates();
};

void TestSummaryForm::statusLine_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<QString>("line");
    const auto line = [](const char *stand, const char *edge, const char *advance) {
        const QString bar = QStringLiteral("&nbsp;<font color=gray>|</font>&nbsp;");
        return QStringLiteral("<nobr></nobr><b>Ignition voltage</b>: 185 V") + bar
            + QStringLiteral("<b>Side stand blocking</b>: ") + stand + bar
            + QStringLiteral("<b>Pick-up transition</b>: ") + edge + bar + QString::fromUtf8(advance);
    };
    QTest::newRow("monitoring off: no ground text and no semicolon") << withSettings(
        false, false, false, 0, 10.0) << line("disabled", "negative", "<b>Sensor advance</b>: 10.0°");
    QTest::newRow("monitoring on, ground blocks, rising edge, K0 rounded") << withSettings(true, false, true,
        0, 27.26) << line("enabled; ground blocks ignition", "positive", "<b>Sensor advance</b>: 27.3°");
    QTest::newRow("sensor mode 2 names the Hall sensor") << withSettings(true, true, false, 2,
        31.04) << line("enabled; ground enables ignition", "negative", "<b>Hall-sensor advance</b>: 31.0°");
}

void TestSummaryForm::statusLine()
{
    QFETCH(Profile, profile);
    QFETCH(QString, line);
    SummaryForm form(SummaryForm::kWithNotes);
    form.setProfile(profile);
    QCOMPARE(child<QLabel>(form, "statusLabel")->text(), line);
}

void TestSummaryForm::mapTableShowsAllTenSlots()
{
    QString expected = QStringLiteral("<html><table><tr><td><b>RPM</b></td><td><b>Angle</b></td></tr>");
    for (const auto &row : {QPoint(1000, 12), QPoint(2500, 18), QPoint(), QPoint(), QPoint(), QPoint(),
             QPoint(), QPoint(), QPoint(), QPoint(-5, 60)}) {
        expected += QStringLiteral("<tr><td align=right>%1</td><td align=right>%2\u00B0</td></tr>")
                        .arg(row.x())
                        .arg(row.y());
    }
    QCOMPARE(summaryMapTableHtml(sampleProfile()), expected + QStringLiteral("</table></html>"));

    SummaryForm form(SummaryForm::kWithNotes);
    form.resize(760, 420);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    form.setProfile(sampleProfile());
    // One cell per line: the header and all ten slots, the empty ones too.
    const QStringList cells
        = child<QTextEdit>(form, "textEdit")->toPlainText().split('\n', Qt::SkipEmptyParts);
    QCOMPARE(cells.size(), 22);
    QCOMPARE(cells.mid(0, 6), (QStringList {"RPM", "Angle", "1000", "12\u00B0", "2500", "18\u00B0"}));
    QCOMPARE(cells.mid(18), (QStringList {"0", "0\u00B0", "-5", "60\u00B0"}));
    QCOMPARE(child<QTextEdit>(form, "notesEdit")->toPlainText(), QStringLiteral("Plug B9ES"));
    QVERIFY(child<QTextEdit>(form, "notesEdit")->isVisible());
}

void TestSummaryForm::graphFillsItsPlace()
{
    SummaryForm form(SummaryForm::kWithNotes);
    form.setProfile(sampleProfile());
    form.resize(760, 420);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QLabel *graph = child<QLabel>(form, "graphLabel");
    QCOMPARE(graph->pixmap(Qt::ReturnByValue).size(), graph->size());
    form.resize(1000, 600);
    QCoreApplication::processEvents(); // the layout follows the new size
    QCOMPARE(graph->pixmap(Qt::ReturnByValue).size(), graph->size());
    QVERIFY(graph->width() > 700);
}

void TestSummaryForm::mapOnlyModeLeavesOutTheNotes()
{
    SummaryForm form(SummaryForm::kMapOnly);
    form.setProfile(sampleProfile());
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QVERIFY(!child<QTextEdit>(form, "notesEdit")->isVisible());
    QVERIFY(child<QLabel>(form, "graphLabel")->isVisible());
}

void TestSummaryForm::languageChangeRetranslates()
{
    WidgetTest::Translator german({{"SummaryForm|Ignition voltage", "Zündspannung"}});
    SummaryForm form(SummaryForm::kWithNotes);
    form.setProfile(sampleProfile());
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QCoreApplication::installTranslator(&german);
    QCoreApplication::processEvents(); // the language change is posted to the windows
    const QString status = child<QLabel>(form, "statusLabel")->text();
    QCoreApplication::removeTranslator(&german);
    QVERIFY(status.contains(QStringLiteral("<b>Zündspannung</b>: 200 V")));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestSummaryForm)
#include "tst_summaryform.moc"
