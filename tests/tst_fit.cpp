// The program at the fonts its users run: the map table's numbers are never cut, and the main
// window with any of its pages shown stays usable at 1024 x 700 at 12 points in either language.
#include "editor/iprofileeditormain.h"
#include "editor/tableform.h"
#include "tests/programfixture.h"

#include <QHeaderView>
#include <QLayout>
#include <QStyle>
#include <QTableView>

namespace {

class NoEditor : public IProfileEditorMain
{
public:
    void updateGraph() override { }
    void setProfileName(const QString &) override { }
    void setProfileNotes(const QString &) override { }
    void onMapChanged(bool) override { }
    void onPointSelected(int, bool) override { }
};

} // namespace

class TestFit : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void mapTableShowsTheWidestValues_data();
    void mapTableShowsTheWidestValues();
    void windowFitsAt12Points_data();
    void windowFitsAt12Points();

private:
    void setPointSize(int points);
};

void TestFit::setPointSize(int points)
{
    QFont font = QGuiApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}

void TestFit::cleanup()
{
    setPointSize(9);
}

void TestFit::mapTableShowsTheWidestValues_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("german");
    for (int points = 9; points <= 14; ++points)
        QTest::addRow("%d points", points) << points << false;
    QTest::newRow("German headings at 14 points") << 14 << true;
}

// Every cell has room for its widest allowed value inside the delegate's text margins, the
// headings are not cut, and the table shows both columns whole.
void TestFit::mapTableShowsTheWidestValues()
{
    QFETCH(int, points);
    QFETCH(bool, german);
    WidgetTest::Translator translator({{"TableForm|Angle", "Winkel"}});
    if (german)
        QCoreApplication::installTranslator(&translator);
    setPointSize(points);
    NoEditor editor;
    TableForm form(&editor);
    Profile profile;
    IgnitionMap widest;
    for (int i = 0; i < kMapPointCount; ++i)
        widest.setPoint(i, kMaxRpm, kMaxAngle);
    profile.setMap(widest);
    form.setProfile(&profile);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    // A font change after construction is followed as well.
    setPointSize(points + 1);
    setPointSize(points);

    const QTableView *view = form.findChild<QTableView *>();
    const int textMargin = view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
    const QFontMetrics cells(view->font());
    const QHeaderView *header = view->horizontalHeader();
    const QFontMetrics headings(header->font());
    const int headerMargin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    for (int column = 0; column < 2; ++column) {
        const QModelIndex cell = view->model()->index(9, column);
        QVERIFY2(cells.horizontalAdvance(cell.data().toString()) <= view->visualRect(cell).width() - 2 * textMargin,
            qPrintable(cell.data().toString()));
        const QString heading = view->model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(headings.horizontalAdvance(heading) <= header->sectionSize(column) - 2 * headerMargin,
            qPrintable(heading));
    }
    QVERIFY(header->length() <= view->viewport()->width());
    QCoreApplication::removeTranslator(&translator);
}

void TestFit::windowFitsAt12Points_data()
{
    QTest::addColumn<bool>("german");
    QTest::newRow("English") << false;
    QTest::newRow("German") << true;
}

void TestFit::windowFitsAt12Points()
{
    QFETCH(bool, german);
    setPointSize(12);
    Program program;
    QVERIFY(program.ready());
    program.switcher.addLanguage(CLanguageSwitcher::languageCode(CLanguageSwitcher::kGerman));
    if (german)
        program.switcher.setLanguage(CLanguageSwitcher::kGerman);
    const auto fits = [&program](const char *page) {
        QCoreApplication::processEvents();
        const QSize needed = program.window().minimumSizeHint().expandedTo(program.window().minimumSize());
        QVERIFY2(needed.width() <= 1024 && needed.height() <= 700, page);
    };
    fits("start page");
    program.window().showEditor(program.firstTemplate());
    fits("editor");
    program.window().showProgrammingConfirmation(program.firstTemplate());
    fits("confirmation");
    program.window().start();
    program.click("compareButton");
    fits("comparison");
    program.click("addDefaultButton");
    fits("template choice");
    program.click("nextButton");
    program.click("showGraphButton");
    fits("comparison graph");
    program.window().resize(1024, 700);
    QCOMPARE(program.window().size(), QSize(1024, 700));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestFit)
#include "tst_fit.moc"
