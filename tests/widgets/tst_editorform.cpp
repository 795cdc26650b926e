// The editor page as the user meets it, driven through its real widgets with mouse and keys: what
// a profile fills in, typing into the map table and pressing and dragging in the graph, what
// every kind of edit writes (the name and notes with their edit modes among them) as one step of
// the history, the unsaved-changes question on leaving, the side-stand rule, the reset, the hint
// labels and buttons, and the sensor advance moving the forbidden region. Also what the page and
// its hint dialog show in both languages and on the offscreen platform's small screen (800 x 600),
// without a mouse, and in light and dark palettes.
#include "editor/chintlabel.h"
#include "editor/editorform.h"
#include "editor/graphform.h"
#include "editor/hintdialog.h"
#include "editor/notesform.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "render/bracemarkup.h"
#include "render/mapplotter.h"
#include "shell/clanguageswitcher.h"
#include "support/layoutencoder.h"
#include "support/widgettestmain.h"

#include <QClipboard>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QWindow>

#include <cmath>

Q_DECLARE_METATYPE(IgnitionMap)

namespace {

const QString kTemplateName = QStringLiteral("Two-stroke single 50 cc scooter");
const IgnitionMap kScooterMap = mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 8800, 9500},
    {14, 16, 18, 20, 26, 18, 16, 14, 13, 12});
// Four points on the left, point 4 in the middle, five on the right; the last one fixes the
// graph's axes at 0..19300 rpm and 0..50 degrees.
const IgnitionMap kSpreadMap = mapOf({500, 1000, 1500, 2000, 8000, 15000, 16000, 17000, 18000, 19000},
    {5, 5, 5, 5, 20, 5, 5, 5, 5, 42});

// A factory template: under a flat ceiling of 28 degrees (sensor advance 30), the side stand
// monitored with the ground enabling ignition, the falling edge.
Profile scooterTemplate(const IgnitionMap &map = kScooterMap, const SensorCoefficients &curve = {30.0, 0, 0})
{
    Profile profile;
    profile.setMotorbikeType(0, false);
    profile.setName(kTemplateName);
    profile.setNotes(QStringLiteral("Plug B9ES"));
    profile.setMap(map);
    profile.setSensorCoefficients(curve);
    profile.setFlags(ProfileFlags {true, true, false, 0});
    profile.setVoltage(170);
    return profile;
}

// Everything the user can change, for comparing a profile before and after.
QString contentOf(const Profile &p)
{
    QStringList parts {p.name(), p.notes(), QString::number(p.voltage()) + QLatin1String(" V"),
        QString::number(p.sensorCoefficients().k0),
        QString(p.sideStandMonitoring() ? 'M' : '-') + (p.groundEnablesIgnition() ? 'E' : 'B')
            + (p.pickUpRisingEdge() ? 'R' : 'F')};
    for (int i = 0; i < kMapPointCount; ++i)
        parts << QStringLiteral("%1/%2").arg(p.map().point(i).rpm).arg(p.map().point(i).angle);
    return parts.join(QLatin1Char('|'));
}

// The contrast ratio of two colours by their relative luminance, from 1 to 21.
double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &c) {
        const auto channel
            = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
        return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)}); // by value
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

class TestEditorForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void loadingShowsTheProfile_data();
    void loadingShowsTheProfile();
    void everyEditIsOneStep_data();
    void everyEditIsOneStep();
    void leavingAsksWhileEdited();
    void pressAndDrag_data();
    void pressAndDrag();
    void arrowKeysMoveThePoint();
    void sensorAdvanceMovesTheForbiddenRegion();
    void reset_data();
    void reset();
    void sortButtonFollowsTheMap();
    void tableWorksLikeASpreadsheet_data();
    void tableWorksLikeASpreadsheet();
    void textsKeepTheirContrast_data();
    void textsKeepTheirContrast();
    void withoutMouseInEitherLanguage();

private:
    void load(const Profile &profile);
    void perform(const QString &edit);
    template<typename T = QWidget> T *child(const char *name) const
    {
        return m_editor->findChild<T *>(QLatin1String(name));
    }
    GraphForm *graph() const { return m_editor->findChild<GraphForm *>(); }
    QTableView *table() const { return child<QTableView>("tableView"); }
    // The map as the table shows it.
    IgnitionMap shownMap() const
    {
        IgnitionMap map;
        for (int i = 0; i < kMapPointCount; ++i)
            map.setPoint(i, table()->model()->index(i, 0).data().toInt(),
                table()->model()->index(i, 1).data().toInt());
        return map;
    }
    // A spot on the graph, kept inside it, in the window the mouse events go to.
    QPoint graphPixel(int rpm, double angle) const
    {
        const MapPlotter &plotter = graph()->plotter();
        return graph()->mapTo(m_editor.get(),
            QPoint(std::clamp(plotter.xAxis().toPixel(rpm), 0, graph()->width() - 1),
                std::clamp(plotter.yAxis().toPixel(angle), 0, graph()->height() - 1)));
    }
    // Mouse input goes through the window, as the platform delivers it.
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(m_editor->windowHandle(), Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(m_editor->windowHandle(), to);
        QTest::mouseRelease(m_editor->windowHandle(), Qt::LeftButton, Qt::NoModifier, to);
    }
    void clickCell(int row, int column, bool twice = false)
    {
        const QRect cell = table()->visualRect(table()->model()->index(row, column));
        if (twice)
            QTest::mouseDClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    }

    std::unique_ptr<DefaultLibrary> m_library;
    HintCatalog m_catalog;
    ScriptedPrompts m_prompts;
    QString m_cellEditorName; // the last cell editor's accessible name
    std::unique_ptr<CLanguageSwitcher> m_switcher;
    std::unique_ptr<HintDialog> m_hints;
    std::unique_ptr<EditorForm> m_editor;
};

// Each case starts on a new page; the last one stays until the end.
void TestEditorForm::init()
{
    m_editor.reset();
    m_hints.reset();
    m_library = std::make_unique<DefaultLibrary>();
    m_library->append(scooterTemplate());
    const QString longText = QStringLiteral("<p>Die Ladespannung des Zündkondensators.</p>").repeated(40);
    while (m_catalog.count() < 5) // one per hint button
        m_catalog.append({HintText {"Voltage", longText}, HintText {"Zündspannung", longText}});
    m_prompts = ScriptedPrompts();
    setUserPrompts(&m_prompts);
    m_switcher = std::make_unique<CLanguageSwitcher>();
    m_switcher->addLanguage(QStringLiteral("de")); // from the build folder
    m_hints = std::make_unique<HintDialog>(&m_catalog, *m_switcher);
    m_editor = std::make_unique<EditorForm>(m_library.get(), *m_switcher, *m_hints);
    m_switcher->registerListener(m_editor.get());
    m_editor->resize(960, 620);
    m_editor->setActive(true);
    QApplication::setActiveWindow(m_editor.get());
    QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));
}

// Loads the profile. The hint labels over the table and graph show after the first load; the
// user's mouse passes over one of them on its way into the page, which hides both.
void TestEditorForm::load(const Profile &profile)
{
    m_editor->setProfile(profile);
    CHintLabel *label = m_editor->findChildren<CHintLabel *>().first();
    // The platform drops a move to where the mouse already is, as it was left by an earlier case.
    if (label->isVisible()) {
        QTest::mouseMove(m_editor->windowHandle(), QPoint(1, 1));
        QTest::mouseMove(m_editor->windowHandle(), label->mapTo(m_editor.get(), label->rect().center()));
    }
    QVERIFY(!label->isVisible());
}

void TestEditorForm::perform(const QString &edit)
{
    if (edit.startsWith(QLatin1String("cell "))) {
        // "cell <row> <column>:<text>". A double click does not open the cell; editing starts
        // with the first key typed into the table, the rest goes to the cell's editor, and
        // Return confirms. (That the keys reach the table, no other widget, shows in the rows
        // whose typing changes the cell.)
        clickCell(edit.mid(5, 1).toInt(), edit.mid(7, 1).toInt(), true);
        QVERIFY(!table()->findChild<QLineEdit *>());
        for (const QChar c : edit.section(QLatin1Char(':'), 1))
            QTest::keyClicks(QApplication::focusWidget(), QString(c));
        m_cellEditorName = QApplication::focusWidget()->accessibleName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCoreApplication::processEvents(); // the delegate commits through a queued call
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // and closes its editor
        QCOMPARE(QApplication::focusWidget(), table()); // the keyboard is back in the table
    } else if (edit == QLatin1String("drag a point")) {
        drag(graphPixel(4000, 20), graphPixel(4500, 15));
    } else if (edit.startsWith(QLatin1String("type "))) {
        auto *box = child<QAbstractSpinBox>(qPrintable(edit.section(QLatin1Char(' '), 1, 1)));
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(box->width() / 3, box->height() / 2));
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box, edit.section(QLatin1Char(' '), 2));
    } else if (edit.startsWith(QLatin1String("click "))) {
        // Check boxes and radio buttons react to clicks on their indicator and text, not on the
        // empty space a layout may give them.
        auto *button = child<QAbstractButton>(qPrintable(edit.mid(6)));
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    } else if (edit.startsWith(QLatin1String("rename ")) || edit.startsWith(QLatin1String("name "))) {
        // A click into the shown name starts renaming with all of it selected, as the Rename
        // button does; Return confirms the name, and so does Escape.
        auto *name = child<QLineEdit>("lineEditName");
        const bool button = edit.startsWith(QLatin1Char('r'));
        QTest::mouseClick(button ? child("pushButtonRename") : name, Qt::LeftButton);
        QTest::keyClicks(name, edit.section(QLatin1Char(' '), 1));
        QTest::keyClick(name, button ? Qt::Key_Return : Qt::Key_Escape);
    } else if (edit.startsWith(QLatin1String("notes"))) {
        // Return is a line break in the notes; Escape confirms them, as Apply does.
        child<QTabWidget>("tabWidget")->setCurrentIndex(1);
        auto *notes = child<QPlainTextEdit>("plainTextEditNotes");
        QTest::mouseClick(notes->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 60));
        QTest::keyClick(notes, Qt::Key_Return);
        QTest::keyClicks(notes, QStringLiteral("gap 0.6"));
        if (edit.endsWith(QLatin1String("Apply")))
            QTest::mouseClick(
                m_editor->findChild<NotesForm *>()->findChild<QWidget *>("pushButtonApply"), Qt::LeftButton);
        else
            QTest::keyClick(notes, Qt::Key_Escape);
        QVERIFY(notes->isReadOnly());
    } else {
        QVERIFY2(edit.isEmpty(), qPrintable(edit));
    }
}

void TestEditorForm::loadingShowsTheProfile_data()
{
    QTest::addColumn<bool>("on");
    QTest::newRow("monitoring on, ground enables, falling edge") << true;
    QTest::newRow("monitoring off, ground blocks, rising edge not selectable") << false;
}

// Without monitoring the polarity means nothing, so it cannot be chosen; switching monitoring
// over frees or locks it, which the edits table shows. That a loaded template becomes the user's
// own shows in tst_mainwindow's editor rows, that it is unmodified in the rows of
// everyEditIsOneStep that change nothing.
void TestEditorForm::loadingShowsTheProfile()
{
    QFETCH(bool, on);
    Profile factory = scooterTemplate();
    factory.setFlags(ProfileFlags {on, on, !on, 0});
    factory.setPickUpEdgeSelectable(on);
    load(factory);

    QCOMPARE(child<QSpinBox>("spinBoxIgnitionVoltage")->value(), 170);
    QCOMPARE(child<QDoubleSpinBox>("doubleSpinBoxHall")->value(), 30.0);
    QVERIFY(child<QAbstractButton>("radioButtonPickUpPos")->isChecked() == !on
        && child<QAbstractButton>("radioButtonPickUpNeg")->isChecked() == on);
    QCOMPARE(child("groupBoxPickUp")->isVisible(), on);
    QVERIFY(child<QAbstractButton>("checkBoxSideStand")->isChecked() == on
        && child("radioButtonGroundEnables")->isEnabled() == on
        && child<QAbstractButton>("radioButtonGroundEnables")->isChecked() == on
        && child<QAbstractButton>("radioButtonGroundDisables")->isChecked() == !on);

    // Each hint button opens its own hint, in this order.
    if (!on)
        return; // the pick-up edge and its hint button are hidden
    int hint = 0;
    for (const char *button : {"hintButtonVoltage", "hintButtonSideStand", "hintButtonPickUp",
             "hintButtonSensorAdvance", "hintButtonMap"}) {
        QTest::mouseClick(child(button), Qt::LeftButton);
        QVERIFY2(m_hints->isVisible() && m_hints->currentHint() == hint++, button);
    }
}

void TestEditorForm::everyEditIsOneStep_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QStringList>("change"); // in the profile's content, from and to; none: unmodified

    const QStringList none {QString(), QString()};
    QTest::newRow("rename to the same name") << "rename " << none;
    QTest::newRow("the edge already chosen") << "click radioButtonPickUpNeg" << none;
    // What is typed into the table is kept as typed; text that is no number falls back to what
    // was there and changes nothing. Row 4 holds (5000, 26).
    QTest::newRow("angle with blanks and a plus sign")
        << "cell 4 1: +21 " << QStringList {"5000/26", "5000/21"};
    QTest::newRow("negative speed kept") << "cell 4 0:-5" << QStringList {"5000/26", "-5/26"};
    QTest::newRow("trailing letters fall back") << "cell 4 1:12abc" << none;
    QTest::newRow("drag a point") << "drag a point" << QStringList {"4000/20", "4500/15"};
    QTest::newRow("type a voltage") << "type spinBoxIgnitionVoltage 185" << QStringList {"170 V", "185 V"};
    QTest::newRow("type a sensor advance") << "type doubleSpinBoxHall 20" << QStringList {"|30|", "|20|"};
    QTest::newRow("monitoring off") << "click checkBoxSideStand" << QStringList {"|MEF|", "|-EF|"};
    QTest::newRow("ground blocks") << "click radioButtonGroundDisables" << QStringList {"|MEF|", "|MBF|"};
    QTest::newRow("rising edge") << "click radioButtonPickUpPos" << QStringList {"|MEF|", "|MER|"};
    QTest::newRow("Escape confirms a name") << "name Mine" << QStringList {kTemplateName, "Mine"};
    QTest::newRow("notes, then Escape") << "notes, Escape" << QStringList {"B9ES", "B9ES\ngap 0.6"};
    QTest::newRow("notes, then Apply") << "notes, Apply" << QStringList {"B9ES", "B9ES\ngap 0.6"};
}

// Every edit marks the profile modified and is one step of the history, a whole drag too;
// undoing it is back at the loaded state, which counts as unmodified. The table shows the map
// all along.
void TestEditorForm::everyEditIsOneStep()
{
    QFETCH(QString, edit);
    QFETCH(QStringList, change);
    load(scooterTemplate());
    perform(edit);
    const Profile edited = m_editor->profile();
    const bool changed = !change[0].isEmpty();
    QCOMPARE(contentOf(edited), contentOf(scooterTemplate()).replace(change[0], change[1]));
    QCOMPARE(edited.isModified(), changed);
    QCOMPARE(shownMap(), edited.map());
    QCOMPARE(child("radioButtonGroundEnables")->isEnabled(), edited.sideStandMonitoring());
    QCOMPARE(m_editor->history().count(), changed ? 1 : 0);
    if (changed) {
        m_editor->history().undo();
        QVERIFY(contentOf(m_editor->profile()) == contentOf(scooterTemplate())
            && !m_editor->profile().isModified());
        m_editor->history().redo();
        QVERIFY(contentOf(m_editor->profile()) == contentOf(edited) && m_editor->profile().isModified());
    }
}

// Leaving the edited page asks first, naming the profile as written; Return and Escape both
// cancel (Cancel and Save show in tst_mainwindow's table of every way out). Discarding leaves
// nothing to lose, and so does a save; Next hands on the working profile.
void TestEditorForm::leavingAsksWhileEdited()
{
    QSignalSpy left(m_editor.get(), &EditorForm::leaveRequested);
    QList<Profile> confirmations;
    connect(m_editor.get(), &EditorForm::programmingRequested, this,
        [&](const Profile &profile) { confirmations.append(profile); });
    load(scooterTemplate());
    perform(QStringLiteral("rename Track <day>"));
    m_prompts.askAnswers = {1};
    m_editor->onBack();
    const ScriptedPrompts::Shown &question = m_prompts.shown.first();
    QVERIFY2(question.text.contains(QStringLiteral("<b>Track &lt;day&gt;</b>")), qPrintable(question.text));
    QCOMPARE(question.buttons, (QStringList {"&Save", "&Discard", "Cancel"}));
    QVERIFY(question.defaultButton == 2 && question.escapeButton == 2);
    QVERIFY(left.size() == 1 && contentOf(m_editor->profile()) == contentOf(scooterTemplate())
        && !m_editor->profile().isModified());

    perform(QStringLiteral("type spinBoxIgnitionVoltage 185"));
    m_editor->markSaved();
    m_editor->onBack();
    QVERIFY(left.size() == 2 && m_prompts.shown.size() == 1);

    perform(QStringLiteral("cell 2 1:15"));
    QCOMPARE(table()->currentIndex().row(), 3); // Return went on to the next row
    // The cell's editor said where it types, and the graph's words follow the map.
    QCOMPARE(m_cellEditorName, QStringLiteral("Angle at 3000 RPM, degrees (point 3)"));
    QVERIFY(child<QWidget>("GraphForm")->accessibleDescription().contains(QStringLiteral("3000 rpm 15°")));
    m_editor->onNext();
    QVERIFY(confirmations.size() == 1 && confirmations.first().map().pointEquals(2, 3000, 15));
}

void TestEditorForm::pressAndDrag_data()
{
    QTest::addColumn<IgnitionMap>("map");
    QTest::addColumn<QPointF>("curve"); // K0, K1
    QTest::addColumn<int>("rpm"); // where the mouse goes from 8000 rpm and 20 degrees, kept inside the graph
    QTest::addColumn<double>("angle");
    QTest::addColumn<bool>("selects");
    QTest::addColumn<QPoint>("result"); // point 4: rpm, angle
    const QPointF high(60.0, 0.0);
    IgnitionMap near = kSpreadMap;
    IgnitionMap far = kSpreadMap;
    near.setPoint(4, 9200, 20);
    far.setPoint(4, 8200, 23);
    // A press selects a point up to 1250 rpm away, 3 degrees weighing 1200 rpm, and moves nothing.
    QTest::newRow("1200 rpm away is selected") << near << high << 8000 << 20.0 << true << QPoint(9200, 20);
    QTest::newRow("3 degrees and 200 rpm away is too far")
        << far << high << 8000 << 20.0 << false << QPoint(8200, 23);
    // Dragged speeds snap to 50 rpm: aiming at 6010 rpm lands within a pixel's 29 rpm of it and
    // gives 6000.
    // A drag up or down wavering a few pixels sideways keeps the speed.
    QTest::newRow("a small waver keeps the speed")
        << kSpreadMap << high << 8200 << 15.0 << true << QPoint(8000, 15);
    QTest::newRow("left of the axis gives 0 rpm")
        << kSpreadMap << high << -3000 << 20.0 << true << QPoint(0, 20);
    QTest::newRow("below the speed axis gives 0 degrees")
        << kSpreadMap << high << 6010 << -5.0 << true << QPoint(6000, 0);
    QTest::newRow("the ceiling at the new speed stops the drag")
        << kSpreadMap << QPointF(40.0, -0.001) << 6010 << 45.0 << true << QPoint(6000, 32);
    QTest::newRow("no clamp to 49 while dragging")
        << kSpreadMap << QPointF(80.0, 0.0) << 6010 << 50.0 << true << QPoint(6000, 50);
}

// The point pressed is selected in the graph and in the table; a click into the table selects
// its point in the graph.
void TestEditorForm::pressAndDrag()
{
    QFETCH(IgnitionMap, map);
    QFETCH(QPointF, curve);
    QFETCH(int, rpm);
    QFETCH(double, angle);
    QFETCH(bool, selects);
    QFETCH(QPoint, result);
    load(scooterTemplate(map, {curve.x(), curve.y(), 0.0}));
    drag(graphPixel(8000, 20), graphPixel(rpm, angle));
    // A press too far from any point keeps the first row, where the editor opens with the focus.
    QCOMPARE(graph()->selectedIndex(), selects ? 4 : 0);
    QVERIFY(!selects || table()->currentIndex().row() == 4);
    const MapPoint point = m_editor->profile().map().point(4);
    QCOMPARE(QPoint(point.rpm, point.angle), result);
    QCOMPARE(m_editor->profile().isModified(), !map.pointEquals(4, result.x(), result.y()));
    clickCell(7, 1);
    QCOMPARE(graph()->selectedIndex(), 7);
}

// With the focus in the graph the arrow keys move the selected point, a degree or a speed step
// at a time, held under the ceiling as a drag is; each key is a step to undo.
void TestEditorForm::arrowKeysMoveThePoint()
{
    load(scooterTemplate()); // point 5 at 5000 rpm and 26 degrees, under a ceiling of 28
    drag(graphPixel(5000, 26), graphPixel(5000, 26)); // selects it: it is point 4 that moves
    QCOMPARE(QApplication::focusWidget(), graph());
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left})
        QTest::keyClick(graph(), key);
    const MapPoint moved = m_editor->profile().map().point(4);
    QCOMPARE(QPoint(moved.rpm, moved.angle), QPoint(5050, 28));
    QCOMPARE(m_editor->history().count(), 5); // the third Up met the ceiling
}

// Lowering the sensor advance from 30 to 20 degrees lowers the ceiling from 28 to 18 at once:
// the shaded region comes down, and the table marks the angles now above it with the checker's
// words, as the line under the map and the graph's tool tip do. Which cells the speeds' order
// marks shows in tst_profile's mapOrder.
void TestEditorForm::sensorAdvanceMovesTheForbiddenRegion()
{
    load(scooterTemplate());
    const auto problemLine = [this] {
        const QLabel *line = child<QLabel>("problemLabel");
        return line->isVisible() ? line->text() : QString();
    };
    const auto marks = [this] {
        QStringList marked;
        for (int row = 0; row < kMapPointCount; ++row) {
            for (int column = 0; column < 2; ++column) {
                const QModelIndex cell = table()->model()->index(row, column);
                if (cell.data(Qt::BackgroundRole).isValid())
                    marked << QStringLiteral("%1/%2: %3")
                                  .arg(row)
                                  .arg(column)
                                  .arg(cell.data(Qt::ToolTipRole).toString());
            }
        }
        return marked;
    };
    QCOMPARE(problemLine(), QString());
    const QColor free = m_editor->grab().toImage().pixelColor(graphPixel(500, 23));
    perform(QStringLiteral("type doubleSpinBoxHall 20"));
    QVERIFY(m_editor->grab().toImage().pixelColor(graphPixel(500, 23)) != free);
    QCOMPARE(marks(),
        (QStringList {"3/1: the angle for 4000 RPM should not exceed 18 for this profile",
            "4/1: the angle for 5000 RPM should not exceed 18 for this profile"}));
    QCOMPARE(
        problemLine(), QStringLiteral("Row 4: the angle for 4000 RPM should not exceed 18 for this profile"));
    QVERIFY(graph()->toolTip().startsWith(problemLine() + '\n'));
}

void TestEditorForm::reset_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("Reset profile") << 0;
    QTest::newRow("Cancel") << 1;
}

// A reset asks first, naming the template; it is one step of its own, and undoing it brings the
// edits back as unsaved.
void TestEditorForm::reset()
{
    QFETCH(int, answer);
    load(scooterTemplate());
    perform(QStringLiteral("rename Mine"));
    perform(QStringLiteral("cell 2 1:15"));
    const Profile edited = m_editor->profile();

    m_prompts.askAnswers = {answer};
    m_editor->resetProfile();
    QVERIFY(m_prompts.shown.value(0).text.contains(QStringLiteral("<b>%1</b>").arg(kTemplateName)));
    QCOMPARE(contentOf(m_editor->profile()), contentOf(answer == 0 ? scooterTemplate() : edited));
    QCOMPARE(m_editor->profile().isModified(), answer != 0);
    QCOMPARE(child<QLineEdit>("lineEditName")->text(), m_editor->profile().name());
    QCOMPARE(shownMap(), m_editor->profile().map());
    if (answer == 0) {
        m_editor->history().undo();
        QVERIFY(contentOf(m_editor->profile()) == contentOf(edited) && m_editor->profile().isModified());
        QCOMPARE(shownMap(), edited.map());
    }
}

// Shown exactly while the map does not rise; a click sorts the map, which hides it unless two
// speeds are equal.
void TestEditorForm::sortButtonFollowsTheMap()
{
    QWidget *sort = child("toolButtonSort");
    for (const int third : {4, 3}) {
        Profile profile;
        profile.setMap(mapOf({2, 1, 3, third, 5, 6, 7, 8, 9, 10}, {10, 12, 14, 16, 18, 20, 22, 24, 26, 28}));
        load(profile);
        QVERIFY(sort->isVisible());
        QTest::mouseClick(sort, Qt::LeftButton);
        QCOMPARE(m_editor->profile().map(),
            mapOf({1, 2, 3, third, 5, 6, 7, 8, 9, 10}, {12, 10, 14, 16, 18, 20, 22, 24, 26, 28}));
        QCOMPARE(sort->isVisible(), third == 3);
    }
}

// The order Tab takes shows in tst_keyboard. In either language every hint button tells a screen
// reader which setting it explains, the speed heading and the information box follow the language, which may
// have no information, and a long hint stays on a small screen, also when shown again after closing.
void TestEditorForm::withoutMouseInEitherLanguage()
{
    Profile profile;
    profile.setExtraText(0, QStringLiteral("For road use."));
    // The editor opens with the focus in the map; the first key there takes the notices away.
    m_editor->setProfile(profile);
    QTableView *table = this->table();
    const CHintLabel *notice = m_editor->findChildren<CHintLabel *>().first();
    QVERIFY(QApplication::focusWidget() == table && notice->isVisible());
    QTest::keyClick(table, Qt::Key_Down);
    QVERIFY(!notice->isVisible());
    const auto *information = child<QPlainTextEdit>("plainTextEditInformation");
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (int language : {1, 0, 1}) {
        m_switcher->setLanguage(language);
        QSet<QString> names;
        for (const QToolButton *button :
            m_editor->findChildren<QToolButton *>(QRegularExpression("^hintButton")))
            names.insert(button->accessibleName());
        QVERIFY2(names.size() == 5 && !names.contains(QString()),
            qPrintable(QStringList(names.values()).join("|")));
        QCOMPARE(table->model()->headerData(0, Qt::Horizontal).toString(), language ? "U/min" : "RPM");
        QCOMPARE(information->toPlainText(), language ? "Keine Informationen vorhanden" : "For road use.");
        m_hints->showHint(0);
        QVERIFY(QTest::qWaitForWindowExposed(m_hints.get()));
        QVERIFY2(screen.contains(m_hints->frameGeometry()), qPrintable(QString::number(language)));
        QCOMPARE(m_hints->findChild<QLabel *>(QStringLiteral("titleLabel"))->text(),
            language ? "Zündspannung" : "Voltage");
        QTest::mouseClick(m_hints->findChild<QPushButton *>(QStringLiteral("closeButton")), Qt::LeftButton);
        QVERIFY(!m_hints->isVisible());
    }
}

void TestEditorForm::tableWorksLikeASpreadsheet_data()
{
    QTest::addColumn<QPoint>("from"); // column, row of the first cell
    QTest::addColumn<QPoint>("extent"); // Shift+Right and Shift+Down presses from there
    QTest::addColumn<QString>("steps"); // keys, "paste <text>" or "set <value>"
    QTest::addColumn<QString>("map"); // the angles after it, or the clipboard after a copy
    QTest::addColumn<QString>("message"); // what a refused paste says

    const auto row = [](const char *name, QPoint from, QPoint extent, const char *steps, const QString &map,
                         const QString &refusal = QString()) {
        QTest::newRow(name) << from << extent << QString(steps) << map
                            << (refusal.isEmpty() ? refusal : refusal + " Nothing was changed.");
    };
    const QString scooter = "14 16 18 20 26 18 16 14 13 12";
    row("copy two columns", {0, 1}, {1, 1}, "^C", "2000\t16\n3000\t18\n");
    row("paste a spreadsheet's block", {0, 2}, {}, "paste 3100\t19\r\n4100\t21\r\n",
        "14 16 19 21 26 18 16 14 13 12");
    row("paste angles from a text editor", {1, 7}, {}, "paste 15\n 14\n13\n\n",
        "14 16 18 20 26 18 16 15 14 13");
    row("paste past the last row", {0, 8}, {}, "paste 1\n2\n3", scooter,
        "3 rows of 1 values do not fit into the map from row 9 on: it has 10 rows of speed and angle.");
    row("paste two columns into the angles", {1, 0}, {}, "paste 1000;15", scooter,
        "1 rows of 2 values do not fit into the map from row 1 on: it has 10 rows of speed and angle.");
    row("paste a fraction", {1, 0}, {}, "paste 12.5", scooter,
        "Only whole numbers can be pasted into the map; \"12.5\" is not one.");
    row("plus on three angles", {1, 0}, {0, 2}, "+", "15 17 19 20 26 18 16 14 13 12");
    row("minus twice on one angle", {1, 4}, {}, "- -", "14 16 18 20 24 18 16 14 13 12");
    row("minus on a speed starts typing it", {0, 4}, {}, "-", scooter);
    row("set two angles", {1, 3}, {0, 1}, "set 22", "14 16 18 22 22 18 16 14 13 12");
    // From 20 at 4000 rpm to 16 at 7000 rpm: 18.67 and 17.33, rounded.
    row("interpolate over the speeds", {1, 3}, {0, 3}, "^I", "14 16 18 20 19 17 16 14 13 12");
}

// Ranges are selected with Shift and the arrow keys; each change is one step to undo, and a
// refused paste says why and changes nothing.
void TestEditorForm::tableWorksLikeASpreadsheet()
{
    QFETCH(QPoint, from);
    QFETCH(QPoint, extent);
    QFETCH(QString, steps);
    QFETCH(QString, map);
    QFETCH(QString, message);
    load(scooterTemplate());
    const auto angles = [this] {
        QStringList list;
        for (int i = 0; i < kMapPointCount; ++i)
            list << QString::number(m_editor->profile().map().point(i).angle);
        return list.join(' ');
    };
    const QString before = angles();
    clickCell(from.y(), from.x());
    for (int i = 0; i < extent.x(); ++i)
        QTest::keyClick(table(), Qt::Key_Right, Qt::ShiftModifier);
    for (int i = 0; i < extent.y(); ++i)
        QTest::keyClick(table(), Qt::Key_Down, Qt::ShiftModifier);
    QGuiApplication::clipboard()->clear();
    if (steps.startsWith("paste ")) {
        QGuiApplication::clipboard()->setText(steps.mid(6));
        QTest::keyClick(table(), Qt::Key_V, Qt::ControlModifier);
    } else if (steps.startsWith("set ")) {
        m_prompts.numberAnswers = {steps.mid(4).toInt()};
        QTest::keyClick(table(), Qt::Key_E, Qt::ControlModifier);
    } else {
        for (const QString &key : steps.split(' '))
            QTest::keyClick(table(),
                key == "^C"       ? Qt::Key_C
                    : key == "^I" ? Qt::Key_I
                                  : Qt::Key(key.at(0).unicode()),
                key.startsWith('^') ? Qt::ControlModifier : Qt::NoModifier);
    }
    if (steps == "^C") {
        QCOMPARE(QGuiApplication::clipboard()->text(), map);
        return;
    }
    QCOMPARE(angles(), map);
    const int warning = m_prompts.kinds().indexOf("warn");
    QCOMPARE(warning < 0 ? QString() : m_prompts.shown.at(warning).text, message);
    if (steps.startsWith("paste 3100"))
        QCOMPARE(m_editor->profile().map().point(3).rpm, 4100);
    // One step per key, or for the whole paste or setting.
    const int keys = steps.startsWith("paste") || steps.startsWith("set") ? 1 : int(steps.count(' ') + 1);
    QCOMPARE(m_editor->history().count(), map == before ? 0 : keys);
    while (m_editor->history().canUndo())
        m_editor->history().undo();
    QCOMPARE(angles(), before);
}

void TestEditorForm::textsKeepTheirContrast_data()
{
    QTest::addColumn<QColor>("window");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(0xEF, 0xEF, 0xEF) << QColor(Qt::black);
    QTest::newRow("dark") << QColor(0x35, 0x35, 0x35) << QColor(0xEE, 0xEE, 0xEE);
}

// The stressed words of descriptive texts and both colours of the blinking editor hints stay
// readable (4.5:1) on the background of the palette in use.
void TestEditorForm::textsKeepTheirContrast()
{
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    const QPalette original = QApplication::palette();
    QApplication::setPalette(QPalette(text, window));

    QVERIFY2(contrast(QColor(highlightColour()), window) >= 4.5, qPrintable(highlightColour()));
    init(); // a page built under this palette
    m_editor->setProfile(Profile()); // which shows the hint labels, blinking
    const QList<CHintLabel *> labels = m_editor->findChildren<CHintLabel *>();
    QSet<QRgb> seen;
    QStringList faint;
    const auto look = [&] {
        for (const CHintLabel *label : labels) {
            if (contrast(label->textColor(), label->palette().color(QPalette::Window)) < 4.5)
                faint << label->textColor().name();
            seen.insert(label->textColor().rgb());
        }
        return seen.size() >= 2; // both colours of the blink were looked at
    };
    QTRY_VERIFY_WITH_TIMEOUT(look(), 5000);
    QVERIFY2(faint.isEmpty(), qPrintable(faint.join(QLatin1Char(' '))));
    QApplication::setPalette(original);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestEditorForm)
#include "tst_editorform.moc"
