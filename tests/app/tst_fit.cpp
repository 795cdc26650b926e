// The program at the fonts its users run: the map table's numbers and headings are never cut,
// the main window with any of its pages shown fits 1000 x 560 at the default font, and at
// 12 points it stays usable at 1024 x 700.
#include "summary/customform.h"
#include "support/programfixture.h"

#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QTableView>

class TestFit : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { setPointSize(9); }
    void fitsTheSystemFont_data();
    void fitsTheSystemFont();

private:
    static void setPointSize(int points)
    {
        QFont font = QGuiApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
};

void TestFit::fitsTheSystemFont_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("german");
    for (const int points : {9, 12, 14}) {
        QTest::addRow("%d points", points) << points << false;
        QTest::addRow("%d points, German", points) << points << true;
    }
}

void TestFit::fitsTheSystemFont()
{
    QFETCH(int, points);
    QFETCH(bool, german);
    setPointSize(points);
    Program program;
    QVERIFY(program.ready());
    program.switcher.addLanguage(CLanguageSwitcher::languageCode(CLanguageSwitcher::kGerman));
    if (german)
        program.switcher.setLanguage(CLanguageSwitcher::kGerman);
    const auto fits = [&program, points](const char *page) {
        QCoreApplication::processEvents();
        const QSize needed = program.window().minimumSizeHint().expandedTo(program.window().minimumSize());
        QVERIFY2(points != 9 || (needed.width() <= 1000 && needed.height() <= 560), page);
        QVERIFY2(points != 12 || (needed.width() <= 1024 && needed.height() <= 700), page);
    };
    fits("start page");

    // Every cell has room for the widest allowed value inside the delegate's text margins,
    // the headings are whole, and the view shows both columns.
    Profile widest = program.firstTemplate();
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, kMaxRpm, kMaxAngle);
    widest.setMap(map);
    program.window().showEditor(widest);
    fits("editor");
    const QTableView *view = program.child<QTableView>("tableView");
    const int textMargin = view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
    const QHeaderView *header = view->horizontalHeader();
    const int headerMargin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    for (int column = 0; column < 2; ++column) {
        const QModelIndex cell = view->model()->index(9, column);
        const QString value = cell.data().toString();
        QVERIFY2(
            view->fontMetrics().horizontalAdvance(value) <= view->visualRect(cell).width() - 2 * textMargin,
            qPrintable(value));
        const QString heading = view->model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(header->fontMetrics().horizontalAdvance(heading)
                <= header->sectionSize(column) - 2 * headerMargin,
            qPrintable(heading));
    }
    QVERIFY(header->length() <= view->viewport()->width());

    // Every point breaks its limits: the page names every row, still fits, and goes no further.
    program.window().showProgrammingConfirmation(widest);
    fits("confirmation");
    const QLabel *problem = program.window().confirmation().findChild<QLabel *>(QStringLiteral("problemLabel"));
    QVERIFY(problem->isVisible() && problem->text().contains(german ? "Zeilen 1, 2, 3" : "rows 1, 2, 3"));
    QVERIFY(!program.button("nextButton")->isEnabled());
    program.window().showPortSelection();
    fits("port selection");
    program.window().showProgress();
    fits("progress");
    program.window().showStart();
    program.click("compareButton");
    fits("comparison");
    program.click("addDefaultButton");
    fits("template choice");
    program.click("nextButton");
    program.click("showGraphButton");
    fits("comparison graph");
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestFit)
#include "tst_fit.moc"
