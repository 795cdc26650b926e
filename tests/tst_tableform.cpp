// The map table driven through real key presses and mouse clicks: what the user types is kept as
// typed and shown in plain decimal, text that is no number falls back, the sort button shows
// only for a map that is not strictly rising, and the sort is stable.
#include "editor/iprofileeditormain.h"
#include "editor/tableform.h"
#include "profile/profile.h"
#include "tests/widgettestmain.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QTableView>
#include <QToolButton>

namespace {

using Points = QVector<QPoint>; // (rpm, angle) pairs

// Stands in for the editor page: it refills the table after every map change, as the page does,
// and remembers what the table reported.
class FakeEditor : public IProfileEditorMain
{
public:
    void updateGraph() override { }
    void setProfileName(const QString &) override { }
    void setProfileNotes(const QString &) override { }
    void onMapChanged(bool rescale) override
    {
        mapChanges << rescale;
        if (table)
            table->setProfile(profile);
    }
    void onPointSelected(int index, bool rescale) override { selections << qMakePair(index, rescale); }

    TableForm *table = nullptr;
    Profile *profile = nullptr;
    QVector<bool> mapChanges;
    QVector<QPair<int, bool>> selections;
};

IgnitionMap mapOf(const Points &points)
{
    IgnitionMap map;
    for (int i = 0; i < points.size(); ++i)
        map.setPoint(i, points[i].x(), points[i].y());
    return map;
}

Points risingPoints()
{
    Points points;
    for (int i = 0; i < kMapPointCount; ++i)
        points << QPoint(1000 * (i + 1), 10 + 2 * i);
    return points;
}

} // namespace

class TestTableForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void typedValuesAreKeptAsTyped_data();
    void typedValuesAreKeptAsTyped();
    void doubleClickDoesNotEdit();
    void sortButtonShowsForUnorderedMaps_data();
    void sortButtonShowsForUnorderedMaps();
    void typingAnUnorderedSpeedShowsTheSortButton();
    void sortIsStable();
    void clickingACellSelectsThePoint();
    void selectionFromTheGraphIsNotEchoed();
    void languageChangeRetranslatesTheHeader();

private:
    QTableView *view() const { return m_form->findChild<QTableView *>(QStringLiteral("tableView")); }
    QToolButton *sortButton() const
    {
        return m_form->findChild<QToolButton *>(QStringLiteral("toolButtonSort"));
    }
    QString cellText(int row, int column) const
    {
        return view()->model()->index(row, column).data(Qt::DisplayRole).toString();
    }
    void clickCell(int row, int column);
    void typeIntoCell(int row, int column, const QString &text);
    void load(const Points &points);

    std::unique_ptr<FakeEditor> m_editor;
    std::unique_ptr<TableForm> m_form;
    Profile m_profile;
};

void TestTableForm::init()
{
    m_editor = std::make_unique<FakeEditor>();
    m_form = std::make_unique<TableForm>(m_editor.get());
    m_editor->table = m_form.get();
    m_editor->profile = &m_profile;
    m_form->resize(m_form->width(), 420);
    m_form->show();
    QApplication::setActiveWindow(m_form.get());
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    load(risingPoints());
}

void TestTableForm::cleanup()
{
    m_form.reset();
    m_editor.reset();
}

void TestTableForm::load(const Points &points)
{
    m_profile = Profile();
    m_profile.setMap(mapOf(points));
    m_profile.setModified(false);
    m_form->setProfile(&m_profile);
    m_editor->mapChanges.clear();
    m_editor->selections.clear();
}

void TestTableForm::clickCell(int row, int column)
{
    const QRect cell = view()->visualRect(view()->model()->index(row, column));
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}

// Editing starts with the first key typed into the table; the rest goes to the cell's editor,
// and Return confirms.
void TestTableForm::typeIntoCell(int row, int column, const QString &text)
{
    clickCell(row, column);
    QCOMPARE(QApplication::focusWidget(), view());
    for (const QChar c : text)
        QTest::keyClicks(QApplication::focusWidget(), QString(c));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    // The delegate commits the editor's text through a queued call.
    QCoreApplication::processEvents();
}

void TestTableForm::typedValuesAreKeptAsTyped_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("shown");
    // Row 4 holds (5000, 18).
    QTest::newRow("speed") << 0 << "5250" << 5250 << "5250";
    QTest::newRow("leading zeros") << 0 << "005250" << 5250 << "5250";
    QTest::newRow("leading and trailing blanks") << 1 << " 21 " << 21 << "21";
    QTest::newRow("explicit plus sign") << 1 << "+21" << 21 << "21";
    QTest::newRow("negative speed kept") << 0 << "-5" << -5 << "-5";
    QTest::newRow("speed above 20000 kept") << 0 << "20001" << 20001 << "20001";
    QTest::newRow("angle above 49 kept") << 1 << "60" << 60 << "60";
    QTest::newRow("letters fall back") << 0 << "abc" << 5000 << "5000";
    QTest::newRow("trailing letters fall back") << 1 << "12abc" << 18 << "18";
    QTest::newRow("hexadecimal falls back") << 0 << "0x10" << 5000 << "5000";
    QTest::newRow("decimal fraction falls back") << 1 << "12.5" << 18 << "18";
    QTest::newRow("beyond 32 bits falls back") << 0 << "99999999999" << 5000 << "5000";
}

void TestTableForm::typedValuesAreKeptAsTyped()
{
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(int, stored);
    QFETCH(QString, shown);
    typeIntoCell(4, column, typed);

    const MapPoint point = m_profile.map().point(4);
    QCOMPARE(column == 0 ? point.rpm : point.angle, stored);
    QCOMPARE(column == 0 ? point.angle : point.rpm, column == 0 ? 18 : 5000);
    QCOMPARE(cellText(4, column), shown);
    QCOMPARE(m_editor->mapChanges, QVector<bool> {true});
    QVERIFY(m_profile.isModified());
    for (int row = 0; row < kMapPointCount; ++row) {
        if (row != 4)
            QCOMPARE(m_profile.map().point(row), mapOf(risingPoints()).point(row));
    }
}

void TestTableForm::doubleClickDoesNotEdit()
{
    const QRect cell = view()->visualRect(view()->model()->index(2, 1));
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QVERIFY(!view()->findChild<QLineEdit *>());
    QVERIFY(m_editor->mapChanges.isEmpty());
}

void TestTableForm::sortButtonShowsForUnorderedMaps_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<bool>("visible");
    QTest::newRow("strictly rising") << risingPoints() << false;
    Points equal = risingPoints();
    equal[3].setX(equal[2].x());
    QTest::newRow("two equal speeds") << equal << true;
    Points falling = risingPoints();
    std::reverse(falling.begin(), falling.end());
    QTest::newRow("falling") << falling << true;
    QTest::newRow("empty map") << Points() << true;
    Points outOfRange = risingPoints();
    outOfRange[9] = QPoint(25000, 60);
    QTest::newRow("rising but out of range") << outOfRange << false;
}

void TestTableForm::sortButtonShowsForUnorderedMaps()
{
    QFETCH(Points, points);
    QFETCH(bool, visible);
    load(points);
    QCOMPARE(sortButton()->isVisible(), visible);
}

void TestTableForm::typingAnUnorderedSpeedShowsTheSortButton()
{
    QVERIFY(!sortButton()->isVisible());
    typeIntoCell(2, 0, QStringLiteral("9500"));
    QVERIFY(sortButton()->isVisible());
    typeIntoCell(2, 0, QStringLiteral("3000"));
    QVERIFY(!sortButton()->isVisible());
}

void TestTableForm::sortIsStable()
{
    Points points {{3000, 20}, {1000, 10}, {3000, 5}, {8000, 30}, {4000, 22}, {5000, 24}, {6000, 26},
        {7000, 28}, {9000, 31}, {10000, 32}};
    load(points);
    QVERIFY(sortButton()->isVisible());
    QTest::mouseClick(sortButton(), Qt::LeftButton);

    const Points sorted {{1000, 10}, {3000, 20}, {3000, 5}, {4000, 22}, {5000, 24}, {6000, 26}, {7000, 28},
        {8000, 30}, {9000, 31}, {10000, 32}};
    QCOMPARE(m_profile.map(), mapOf(sorted));
    for (int row = 0; row < kMapPointCount; ++row) {
        QCOMPARE(cellText(row, 0), QString::number(sorted[row].x()));
        QCOMPARE(cellText(row, 1), QString::number(sorted[row].y()));
    }
    QCOMPARE(m_editor->mapChanges, QVector<bool> {true});
    QVERIFY(m_profile.isModified());
    // Equal speeds stay: the map is still not strictly rising.
    QVERIFY(sortButton()->isVisible());
}

void TestTableForm::clickingACellSelectsThePoint()
{
    clickCell(6, 0);
    QCOMPARE(m_form->currentRow(), 6);
    QCOMPARE(m_editor->selections, (QVector<QPair<int, bool>> {{6, true}}));
    clickCell(2, 1);
    QCOMPARE(m_editor->selections.last(), qMakePair(2, true));
}

void TestTableForm::selectionFromTheGraphIsNotEchoed()
{
    clickCell(1, 1);
    m_editor->selections.clear();
    m_form->selectRow(7);
    QCOMPARE(m_form->currentRow(), 7);
    QVERIFY(m_editor->selections.isEmpty());
    // Exactly one cell is shown selected: the angle of the new row.
    const QModelIndexList selected = view()->selectionModel()->selectedIndexes();
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.first().row(), 7);
    QCOMPARE(selected.first().column(), 1);
    QVERIFY(view()->hasFocus());
    // The user's next click is reported again.
    clickCell(3, 1);
    QCOMPARE(m_editor->selections, (QVector<QPair<int, bool>> {{3, true}}));
}

void TestTableForm::languageChangeRetranslatesTheHeader()
{
    class German : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            if (QByteArray(context) != "TableForm")
                return QString();
            if (QByteArray(source) == "Angle")
                return QStringLiteral("Winkel");
            if (QByteArray(source) == "Sort ascending")
                return QStringLiteral("Aufsteigend sortieren");
            return QString();
        }
    } german;
    QCoreApplication::installTranslator(&german);
    m_form->retranslate();
    QCoreApplication::removeTranslator(&german);
    const QAbstractItemModel *model = view()->model();
    QCOMPARE(model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Winkel"));
    QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("RPM"));
    QCOMPARE(sortButton()->text(), QStringLiteral("Aufsteigend sortieren"));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestTableForm)
#include "tst_tableform.moc"
