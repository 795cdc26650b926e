// The map table driven through real key presses and mouse clicks: what the user types is kept as
// typed and shown in plain decimal, text that is no number falls back, the sort button shows
// only for a map that is not strictly rising, and the sort is stable.
#include "editor/tableform.h"
#include "tests/editorstandins.h"
#include "tests/widgettestmain.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QTableView>
#include <QToolButton>

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
    void onlyTheUsersSelectionIsReported();
    void languageChangeRetranslatesTheHeader();

private:
    QTableView *view() const { return m_form->findChild<QTableView *>(QStringLiteral("tableView")); }
    QToolButton *sortButton() const
    {
        return m_form->findChild<QToolButton *>(QStringLiteral("toolButtonSort"));
    }
    QString cellText(int row, int column) const
    {
        return view()->model()->index(row, column).data().toString();
    }
    void clickCell(int row, int column)
    {
        const QRect cell = view()->visualRect(view()->model()->index(row, column));
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    }
    void typeIntoCell(int row, int column, const QString &text);
    void load(const Points &points)
    {
        m_profile = profileOf(points);
        m_form->setProfile(&m_profile);
        m_editor->mapChanges.clear();
        m_editor->selections.clear();
    }

    std::unique_ptr<RecordingEditor> m_editor;
    std::unique_ptr<TableForm> m_form;
    Profile m_profile;
};

void TestTableForm::init()
{
    m_editor = std::make_unique<RecordingEditor>();
    m_form = std::make_unique<TableForm>(m_editor.get());
    // The page refills the table after every map change.
    m_editor->afterMapChange = [this](bool) { m_form->setProfile(&m_profile); };
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
    QTest::addColumn<int>("stored"); // row 4 holds (5000, 18)
    QTest::newRow("speed") << 0 << "5250" << 5250;
    QTest::newRow("leading zeros") << 0 << "005250" << 5250;
    QTest::newRow("blanks and a plus sign") << 1 << " +21 " << 21;
    QTest::newRow("negative speed kept") << 0 << "-5" << -5;
    QTest::newRow("angle above 49 kept") << 1 << "60" << 60;
    QTest::newRow("trailing letters fall back") << 1 << "12abc" << 18;
    QTest::newRow("hexadecimal falls back") << 0 << "0x10" << 5000;
    QTest::newRow("decimal fraction falls back") << 1 << "12.5" << 18;
    QTest::newRow("beyond 32 bits falls back") << 0 << "99999999999" << 5000;
}

void TestTableForm::typedValuesAreKeptAsTyped()
{
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(int, stored);
    typeIntoCell(4, column, typed);

    IgnitionMap expected = mapOf(risingPoints());
    expected.setPoint(4, column == 0 ? stored : 5000, column == 0 ? 18 : stored);
    QCOMPARE(m_profile.map(), expected);
    QCOMPARE(cellText(4, column), QString::number(stored));
    QCOMPARE(m_editor->mapChanges, QVector<bool> {true});
    QVERIFY(m_profile.isModified());
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
    load({{3000, 20}, {1000, 10}, {3000, 5}, {8000, 30}, {4000, 22}, {5000, 24}, {6000, 26}, {7000, 28},
        {9000, 31}, {10000, 32}});
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

// A click is reported; a row selected from the graph is shown but not echoed back.
void TestTableForm::onlyTheUsersSelectionIsReported()
{
    clickCell(6, 0);
    QCOMPARE(m_form->currentRow(), 6);
    m_form->selectRow(7);
    QCOMPARE(m_form->currentRow(), 7);
    QCOMPARE(m_editor->selections, (QVector<QPair<int, bool>> {{6, true}}));
    // Exactly one cell is shown selected: the angle of the new row.
    const QModelIndexList selected = view()->selectionModel()->selectedIndexes();
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.first(), view()->model()->index(7, 1));
    QVERIFY(view()->hasFocus());
    clickCell(3, 1);
    QCOMPARE(m_editor->selections.last(), qMakePair(3, true));
}

void TestTableForm::languageChangeRetranslatesTheHeader()
{
    WidgetTest::Translator german(
        {{"TableForm|Angle", "Winkel"}, {"TableForm|Sort ascending", "Aufsteigend sortieren"}});
    QCoreApplication::installTranslator(&german);
    m_form->retranslate();
    QCoreApplication::removeTranslator(&german);
    QCOMPARE(view()->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Winkel"));
    QCOMPARE(view()->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("RPM"));
    QCOMPARE(sortButton()->text(), QStringLiteral("Aufsteigend sortieren"));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestTableForm)
#include "tst_tableform.moc"
