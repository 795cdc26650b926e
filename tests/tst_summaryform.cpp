// The summary page as the user sees it: the map table, the graph filling its place, the notes
// and the status line, in the language of the moment.
#include "profile/profile.h"
#include "summary/summaryform.h"
#include "tests/widgettestmain.h"

#include <QLabel>
#include <QTextEdit>
#include <QTranslator>

namespace {

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Two-stroke single 125 cc road"));
    profile.setNotes(QStringLiteral("Plug B9ES"));
    IgnitionMap map;
    for (int i = 0; i < 9; ++i)
        map.setPoint(i, 1000 * (i + 1), 12 + i);
    profile.setMap(map); // the last slot stays empty
    profile.setSensorCoefficients({30.0, -0.0004, 0.0});
    return profile;
}

} // namespace

class TestSummaryForm : public QObject
{
    Q_OBJECT

private slots:
    void showsTheProfile();
    void graphFillsItsPlace();
    void mapOnlyModeLeavesOutTheNotes();
    void languageChangeRetranslates();

private:
    template<typename T> T *child(const SummaryForm &form, const char *name) const
    {
        return form.findChild<T *>(QString::fromLatin1(name));
    }
};

void TestSummaryForm::showsTheProfile()
{
    SummaryForm form(SummaryForm::kWithNotes);
    form.resize(760, 420);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    form.setProfile(sampleProfile());

    const QString table = child<QTextEdit>(form, "textEdit")->toPlainText();
    // One cell per line: the header and all ten slots, the empty one too.
    const QStringList cells = table.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(cells.size(), 22);
    QCOMPARE(cells.mid(0, 4), (QStringList {"RPM", "Angle", "1000", "12\u00B0"}));
    QCOMPARE(cells.mid(20, 2), (QStringList {"0", "0\u00B0"}));
    QCOMPARE(child<QTextEdit>(form, "notesEdit")->toPlainText(), QStringLiteral("Plug B9ES"));
    QVERIFY(child<QTextEdit>(form, "notesEdit")->isVisible());
    const QString status = child<QLabel>(form, "statusLabel")->text();
    QVERIFY(status.contains(QStringLiteral("<b>Ignition voltage</b>: 200 V")));
    QVERIFY(status.contains(QStringLiteral("30.0\u00B0")));
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
    class German : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            if (QByteArray(context) == "SummaryForm" && QByteArray(source) == "Ignition voltage")
                return QStringLiteral("Zündspannung");
            return QString();
        }
    } german;
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
