// The editor page as the user meets it, driven through its real widgets with mouse and keys: what
// a profile fills in, typing into the map table and dragging in the graph, what every kind of
// edit writes (the name and notes with their edit modes among them) as one step of the history,
// the unsaved-changes question on leaving, the side-stand rule, the reset, the hint buttons and
// labels, and the sensor advance moving the forbidden region.
#include "editor/chintlabel.h"
#include "editor/editorform.h"
#include "editor/graphform.h"
#include "editor/hintdialog.h"
#include "editor/mapplotter.h"
#include "editor/notesform.h"
#include "frame/ibrowsermain.h"
#include "i18n/clanguageswitcher.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "tests/layoutencoder.h"
#include "tests/widgettestmain.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QWindow>

namespace {

using Points = QVector<QPoint>; // (rpm, angle) pairs

const QString kTemplateName = QStringLiteral("Two-stroke single 50 cc scooter");
const Points kScooterMap {{1000, 14}, {2000, 16}, {3000, 18}, {4000, 20}, {5000, 26}, {6000, 18}, {7000, 16},
    {8000, 14}, {8800, 13}, {9500, 12}};
// Four points on the left, point 4 in the middle, five on the right; the last one fixes the
// graph's axes at 0..19300 rpm and 0..50 degrees.
const Points kSpreadMap {{500, 5}, {1000, 5}, {1500, 5}, {2000, 5}, {8000, 20}, {15000, 5}, {16000, 5},
    {17000, 5}, {18000, 5}, {19000, 42}};

IgnitionMap mapOf(const Points &points)
{
    IgnitionMap map;
    for (int i = 0; i < points.size(); ++i)
        map.setPoint(i, points[i].x(), points[i].y());
    return map;
}

// A factory template: under a flat ceiling of 28 degrees (sensor advance 30), the side stand
// monitored with the ground enabling ignition, the falling edge.
Profile scooterTemplate(const Points &points = kScooterMap, const SensorCoefficients &curve = {30.0, 0, 0})
{
    Profile profile;
    profile.setMotorbikeType(0, false);
    profile.setName(kTemplateName);
    profile.setNotes(QStringLiteral("Plug B9ES"));
    profile.setMap(mapOf(points));
    profile.setSensorCoefficients(curve);
    profile.setFlags(flagsOf(true, true, false, 0));
    profile.setVoltage(170);
    profile.setExtraText(0, QStringLiteral("For automatic scooters."));
    profile.setExtraText(1, QStringLiteral("Für Automatikroller."));
    profile.setModified(false);
    return profile;
}

// The main window as far as the editor asks it.
class FakeBrowser : public IBrowserMain
{
public:
    void start() override { ++starts; }
    void setButtonState(bool, bool, bool, bool, const QString &, const QString &) override { }
    void showEditor(const Profile &) override { }
    void showProgrammingConfirmation(const Profile &profile) override { confirmations.append(profile); }
    void showPortSelection() override { }
    void showProgress() override { }
    bool mayLeaveEditor() override { return true; }
    void setNextEnabled(bool) override { }
    void requestProgramming(const Profile &, bool) override { }
    void requestConnectionTest() override { }
    void requestImport() override { }

    int starts = 0;
    QList<Profile> confirmations;
};

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

} // namespace

Q_DECLARE_METATYPE(SensorCoefficients)

class TestEditorForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void loadingShowsTheProfileUnmodified_data();
    void loadingShowsTheProfileUnmodified();
    void everyEditIsOneStep_data();
    void everyEditIsOneStep();
    void leavingAsksWhileEdited();
    void pressSelectsTheNearestPoint_data();
    void pressSelectsTheNearestPoint();
    void dragSnapsToFiftyRpm();
    void dragClamps_data();
    void dragClamps();
    void axesStayDuringTheDragAndRefitOnRelease();
    void sensorAdvanceMovesTheForbiddenRegion();
    void reset_data();
    void reset();
    void hintButtonsReachTheirHints();

private:
    void buildEditor(const DefaultLibrary *library);
    void load(const Profile &profile);
    void perform(const QString &edit);
    template<typename T = QWidget> T *child(const char *name) const
    {
        return m_editor->findChild<T *>(QLatin1String(name));
    }
    GraphForm *graph() const { return m_editor->findChild<GraphForm *>(); }
    QTableView *table() const { return child<QTableView>("tableView"); }
    const MapPlotter &plotter() const { return graph()->plotter(); }
    // The map as the table shows it.
    IgnitionMap shownMap() const
    {
        IgnitionMap map;
        for (int i = 0; i < kMapPointCount; ++i)
            map.setPoint(i, table()->model()->index(i, 0).data().toInt(),
                table()->model()->index(i, 1).data().toInt());
        return map;
    }
    // A spot on the graph, in the window the mouse events go to.
    QPoint graphPixel(int rpm, double angle) const
    {
        return graph()->mapTo(
            m_editor.get(), QPoint(plotter().xAxis().toPixel(rpm), plotter().yAxis().toPixel(angle)));
    }
    // Mouse input goes through the window, as the platform delivers it.
    void drag(QPoint from, QPoint to, bool release = true)
    {
        QTest::mousePress(m_editor->windowHandle(), Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(m_editor->windowHandle(), to);
        if (release)
            QTest::mouseRelease(m_editor->windowHandle(), Qt::LeftButton, Qt::NoModifier, to);
    }
    // Check boxes and radio buttons react to clicks on their indicator and text, not on the empty
    // space a layout may give them.
    void clickIndicator(const char *name)
    {
        auto *button = child<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
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
    FakeBrowser m_browser;
    std::unique_ptr<CLanguageSwitcher> m_switcher;
    std::unique_ptr<HintDialog> m_hints;
    std::unique_ptr<EditorForm> m_editor;
};

void TestEditorForm::init()
{
    m_library = std::make_unique<DefaultLibrary>();
    m_library->append(scooterTemplate());
    m_catalog = HintCatalog();
    for (int i = 0; i < 5; ++i)
        m_catalog.append({HintText {QStringLiteral("Hint %1").arg(i), QString()}, HintText {}});
    m_prompts = ScriptedPrompts();
    m_browser = FakeBrowser();
    setUserPrompts(&m_prompts);
    m_switcher = std::make_unique<CLanguageSwitcher>();
    m_hints = std::make_unique<HintDialog>(&m_catalog, *m_switcher);
    buildEditor(m_library.get());
}

void TestEditorForm::cleanup()
{
    m_editor.reset();
    m_hints.reset();
    m_switcher.reset();
    setUserPrompts(nullptr);
}

void TestEditorForm::buildEditor(const DefaultLibrary *library)
{
    m_editor.reset();
    m_editor = std::make_unique<EditorForm>(library, *m_switcher, *m_hints);
    m_editor->setBrowserMain(&m_browser);
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
        // Return confirms.
        clickCell(edit.mid(5, 1).toInt(), edit.mid(7, 1).toInt(), true);
        QVERIFY(!table()->findChild<QLineEdit *>());
        QCOMPARE(QApplication::focusWidget(), table());
        for (const QChar c : edit.section(QLatin1Char(':'), 1))
            QTest::keyClicks(QApplication::focusWidget(), QString(c));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCoreApplication::processEvents(); // the delegate commits through a queued call
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // and closes its editor
    } else if (edit == QLatin1String("drag a point")) {
        drag(graphPixel(4000, 20), graphPixel(4500, 15));
    } else if (edit.startsWith(QLatin1String("type "))) {
        auto *box = child<QAbstractSpinBox>(
            edit.contains(QLatin1String("voltage")) ? "spinBoxIgnitionVoltage" : "doubleSpinBoxHall");
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(box->width() / 3, box->height() / 2));
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(
            box, edit.contains(QLatin1String("voltage")) ? QStringLiteral("185") : QStringLiteral("20"));
    } else if (edit.startsWith(QLatin1String("click "))) {
        clickIndicator(qPrintable(edit.mid(6)));
    } else if (edit.startsWith(QLatin1String("rename"))) {
        QTest::mouseClick(child<QPushButton>("pushButtonRename"), Qt::LeftButton);
        QTest::keyClicks(child<QLineEdit>("lineEditName"), edit.mid(7));
        QTest::keyClick(child<QLineEdit>("lineEditName"), Qt::Key_Return);
    } else if (edit.startsWith(QLatin1String("name, "))) {
        // A click into the shown name starts renaming with all of it selected, and Escape
        // confirms; keys that reach it otherwise change nothing.
        auto *name = child<QLineEdit>("lineEditName");
        const bool click = edit.endsWith(QLatin1String("click"));
        if (click)
            QTest::mouseClick(name, Qt::LeftButton);
        else
            name->setFocus();
        QTest::keyClicks(name, QStringLiteral("Mine"));
        QTest::keyClick(name, click ? Qt::Key_Escape : Qt::Key_Return);
    } else if (edit.startsWith(QLatin1String("notes"))) {
        // Return is a line break in the notes; Escape confirms them, as Apply does.
        QTabBar *bar = child<QTabWidget>("tabWidget")->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(1).center());
        auto *notes = child<QPlainTextEdit>("plainTextEditNotes");
        QTest::mouseClick(notes->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 60));
        QTest::keyClick(notes, Qt::Key_Return);
        QTest::keyClicks(notes, QStringLiteral("gap 0.6"));
        if (edit.endsWith(QLatin1String("Apply")))
            QTest::mouseClick(m_editor->findChild<NotesForm *>()->findChild<QPushButton *>("pushButtonApply"),
                Qt::LeftButton);
        else
            QTest::keyClick(notes, Qt::Key_Escape);
        QVERIFY(notes->isReadOnly());
    } else {
        QVERIFY2(edit.isEmpty(), qPrintable(edit));
    }
}

void TestEditorForm::loadingShowsTheProfileUnmodified_data()
{
    QTest::addColumn<bool>("monitoring");
    QTest::addColumn<bool>("groundEnables");
    QTest::addColumn<bool>("rising");
    QTest::addColumn<bool>("edgeSelectable");
    QTest::newRow("monitoring on, ground enables, falling edge") << true << true << false << true;
    QTest::newRow("monitoring off, ground blocks, rising edge not selectable")
        << false << false << true << false;
}

// Switching monitoring over frees or locks the polarity, which is kept meanwhile.
void TestEditorForm::loadingShowsTheProfileUnmodified()
{
    QFETCH(bool, monitoring);
    QFETCH(bool, groundEnables);
    QFETCH(bool, rising);
    QFETCH(bool, edgeSelectable);
    Profile factory = scooterTemplate();
    factory.setFlags(flagsOf(monitoring, groundEnables, rising, 0));
    factory.setPickUpEdgeSelectable(edgeSelectable);
    child<QTabWidget>("tabWidget")->setCurrentIndex(1);
    load(factory);

    QVERIFY(m_editor->hasProfile() && m_editor->profile().isCustom() && !m_editor->profile().isModified());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 0);
    QCOMPARE(child<QLineEdit>("lineEditName")->text(), kTemplateName);
    QCOMPARE(shownMap(), factory.map());
    QCOMPARE(child<QSpinBox>("spinBoxIgnitionVoltage")->value(), 170);
    QCOMPARE(child<QDoubleSpinBox>("doubleSpinBoxHall")->value(), 30.0);
    QVERIFY(child<QRadioButton>("radioButtonPickUpPos")->isChecked() == rising
        && child<QRadioButton>("radioButtonPickUpNeg")->isChecked() == !rising);
    QCOMPARE(child<QGroupBox>("groupBoxPickUp")->isVisible(), edgeSelectable);
    QCOMPARE(child<QPlainTextEdit>("plainTextEditInformation")->toPlainText(),
        QStringLiteral("For automatic scooters."));
    // Without monitoring the polarity means nothing, so it cannot be chosen.
    auto *enables = child<QRadioButton>("radioButtonGroundEnables");
    auto *blocks = child<QRadioButton>("radioButtonGroundDisables");
    for (const bool on : {monitoring, !monitoring}) {
        if (on != monitoring)
            clickIndicator("checkBoxSideStand");
        QVERIFY(child<QCheckBox>("checkBoxSideStand")->isChecked() == on
            && m_editor->profile().sideStandMonitoring() == on);
        QVERIFY(enables->isEnabled() == on && blocks->isEnabled() == on);
        QVERIFY(enables->isChecked() == groundEnables && blocks->isChecked() == !groundEnables);
        QCOMPARE(m_editor->profile().groundEnablesIgnition(), groundEnables);
    }
}

void TestEditorForm::everyEditIsOneStep_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QStringList>("change"); // in the profile's content, from and to; none: unmodified

    const QStringList none {QString(), QString()};
    QTest::newRow("no change") << QString() << none;
    QTest::newRow("rename to the same name") << "rename " << none;
    QTest::newRow("the edge already chosen") << "click radioButtonPickUpNeg" << none;
    QTest::newRow("keys into the shown name") << "name, keys" << none;
    // What is typed into the table is kept as typed; text that is no number falls back to what
    // was there, the cell still counting as edited. Row 4 holds (5000, 26).
    const QStringList same {"5000/26", "5000/26"};
    QTest::newRow("speed with leading zeros") << "cell 4 0:005250" << QStringList {"5000/26", "5250/26"};
    QTest::newRow("angle with blanks and a plus sign")
        << "cell 4 1: +21 " << QStringList {"5000/26", "5000/21"};
    QTest::newRow("negative speed kept") << "cell 4 0:-5" << QStringList {"5000/26", "-5/26"};
    QTest::newRow("trailing letters fall back") << "cell 4 1:12abc" << same;
    QTest::newRow("beyond 32 bits falls back") << "cell 4 0:99999999999" << same;
    QTest::newRow("drag a point") << "drag a point" << QStringList {"4000/20", "4500/15"};
    QTest::newRow("type a voltage") << "type a voltage" << QStringList {"170 V", "185 V"};
    QTest::newRow("type a sensor advance") << "type a sensor advance" << QStringList {"|30|", "|20|"};
    QTest::newRow("monitoring off") << "click checkBoxSideStand" << QStringList {"|MEF|", "|-EF|"};
    QTest::newRow("ground blocks") << "click radioButtonGroundDisables" << QStringList {"|MEF|", "|MBF|"};
    QTest::newRow("rising edge") << "click radioButtonPickUpPos" << QStringList {"|MEF|", "|MER|"};
    QTest::newRow("rename") << "rename Mine" << QStringList {kTemplateName, "Mine"};
    QTest::newRow("a click into the name, Escape") << "name, click" << QStringList {kTemplateName, "Mine"};
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
    QCOMPARE(m_editor->history().count(), changed ? 1 : 0);
    if (changed) {
        m_editor->history().undo();
        QCOMPARE(contentOf(m_editor->profile()), contentOf(scooterTemplate()));
        QVERIFY(!m_editor->profile().isModified());
        QCOMPARE(shownMap(), m_editor->profile().map());
        m_editor->history().redo();
        QCOMPARE(contentOf(m_editor->profile()), contentOf(edited));
        QVERIFY(m_editor->profile().isModified());
    }
}

// Leaving the edited page asks first, naming the profile as written; "Back" keeps the page and
// the edits, Return discards them and Escape is no answer of its own. Discarding leaves nothing
// to lose, and so does a save; Next hands on the working profile.
void TestEditorForm::leavingAsksWhileEdited()
{
    load(scooterTemplate());
    perform(QStringLiteral("rename Track <day>"));
    perform(QStringLiteral("cell 2 1:15"));
    const Profile edited = m_editor->profile();
    m_prompts.askAnswers = {1, 0};
    m_editor->onBack();
    QCOMPARE(m_browser.starts, 0);
    QCOMPARE(contentOf(m_editor->profile()), contentOf(edited));
    const ScriptedPrompts::Shown &question = m_prompts.shown.first();
    QVERIFY2(question.text.contains(QStringLiteral("<b>Track &lt;day&gt;</b>")), qPrintable(question.text));
    QCOMPARE(question.buttons, (QStringList {"Discard changes", "Back"}));
    QVERIFY(question.defaultButton == 0 && question.escapeButton == -1);
    m_editor->onBack();
    QCOMPARE(m_browser.starts, 1);
    QCOMPARE(contentOf(m_editor->profile()), contentOf(scooterTemplate()));
    QVERIFY(!m_editor->profile().isModified());

    perform(QStringLiteral("type a voltage"));
    m_editor->markSaved();
    m_editor->onBack();
    QCOMPARE(m_browser.starts, 2);
    QCOMPARE(m_prompts.shown.size(), 2);

    perform(QStringLiteral("cell 2 1:15"));
    m_editor->onNext();
    QCOMPARE(m_browser.confirmations.size(), 1);
    QVERIFY(m_browser.confirmations.first().map().pointEquals(2, 3000, 15));
}

void TestEditorForm::pressSelectsTheNearestPoint_data()
{
    QTest::addColumn<int>("rpmOffset");
    QTest::addColumn<int>("angleOffset");
    QTest::addColumn<bool>("selects");
    QTest::newRow("1250 rpm away selects") << 1250 << 0 << true;
    QTest::newRow("1251 rpm away does not") << 1251 << 0 << false;
    QTest::newRow("3 degrees weigh 1200 rpm") << 50 << 3 << true;
    QTest::newRow("3 degrees and 51 rpm are too far") << 51 << -3 << false;
}

// A press selects the point in the graph and its row in the table, and moves nothing; a click
// into the table selects the point in the graph.
void TestEditorForm::pressSelectsTheNearestPoint()
{
    QFETCH(int, rpmOffset);
    QFETCH(int, angleOffset);
    QFETCH(bool, selects);
    load(scooterTemplate(kSpreadMap, {60.0, 0, 0}));
    // The press goes to a fixed spot; point 4 is placed at the given distance from what that
    // spot means in rpm and degrees.
    const QPoint press = graph()->mapFrom(m_editor.get(), graphPixel(8000, 20));
    Points points = kSpreadMap;
    points[4] = QPoint(
        plotter().xAxis().toValue(press.x()) + rpmOffset, plotter().yAxis().toValue(press.y()) + angleOffset);
    load(scooterTemplate(points, {60.0, 0, 0}));

    drag(graphPixel(8000, 20), graphPixel(8000, 20));
    QCOMPARE(graph()->selectedIndex(), selects ? 4 : -1);
    if (selects)
        QCOMPARE(table()->currentIndex().row(), 4);
    QCOMPARE(m_editor->profile().map(), mapOf(points));
    QVERIFY(!m_editor->profile().isModified());
    clickCell(7, 1);
    QCOMPARE(graph()->selectedIndex(), 7);
}

// A remainder of 25 rounds down to 50 rpm (1025 gives 1000), one of 26 up (1026 gives 1050).
void TestEditorForm::dragSnapsToFiftyRpm()
{
    load(scooterTemplate(kSpreadMap, {60.0, 0, 0}));
    for (const int remainder : {25, 26}) {
        int x = plotter().xAxis().toPixel(9000);
        while (x < graph()->width() && plotter().xAxis().toValue(x) % 50 != remainder)
            ++x;
        QVERIFY2(x < graph()->width(), "no pixel column has that remainder");
        const MapPoint from = m_editor->profile().map().point(4);
        drag(graphPixel(from.rpm, from.angle),
            graph()->mapTo(m_editor.get(), QPoint(x, plotter().yAxis().toPixel(12))));
        const int snapped = plotter().xAxis().toValue(x) + (remainder == 25 ? -25 : 24);
        QCOMPARE(m_editor->profile().map().point(4), (MapPoint {snapped, 12}));
    }
}
void TestEditorForm::dragClamps_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<SensorCoefficients>("curve");
    QTest::addColumn<int>("rpm"); // where the mouse goes, kept inside the graph
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPoint>("result"); // rpm, angle
    const SensorCoefficients high {60.0, 0.0, 0.0};
    Points wide = kSpreadMap;
    wide[9].setX(19900); // the speed axis reaches 20200
    // Aiming at 6010 rpm lands within a pixel's 29 rpm of it and snaps to 6000.
    QTest::newRow("left of the axis gives 0 rpm") << kSpreadMap << high << -3000 << 20.0 << QPoint(0, 20);
    QTest::newRow("far right stops at 20000 rpm") << wide << high << 25000 << 20.0 << QPoint(20000, 20);
    QTest::newRow("below the speed axis gives 0 degrees")
        << kSpreadMap << high << 6010 << -5.0 << QPoint(6000, 0);
    QTest::newRow("the ceiling at the new speed stops the drag")
        << kSpreadMap << SensorCoefficients {40.0, -0.001, 0.0} << 6010 << 45.0 << QPoint(6000, 32);
    QTest::newRow("a negative ceiling gives 0 degrees")
        << kSpreadMap << SensorCoefficients {1.0, 0.0, 0.0} << 6010 << 20.0 << QPoint(6000, 0);
    QTest::newRow("no clamp to 49 while dragging")
        << kSpreadMap << SensorCoefficients {80.0, 0.0, 0.0} << 6010 << 50.0 << QPoint(6000, 50);
}

void TestEditorForm::dragClamps()
{
    QFETCH(Points, points);
    QFETCH(SensorCoefficients, curve);
    QFETCH(int, rpm);
    QFETCH(double, angle);
    QFETCH(QPoint, result);
    load(scooterTemplate(points, curve));
    const QPoint aim(plotter().xAxis().toPixel(rpm), plotter().yAxis().toPixel(angle));
    const QPoint to(
        std::clamp(aim.x(), 0, graph()->width() - 1), std::clamp(aim.y(), 0, graph()->height() - 1));
    drag(graphPixel(8000, 20), graph()->mapTo(m_editor.get(), to));
    const MapPoint point = m_editor->profile().map().point(4);
    QCOMPARE(QPoint(point.rpm, point.angle), result);
}

// Dragging the last point left shows the map falling at once, on the fixed axes; the release
// fits the axes to the new map.
void TestEditorForm::axesStayDuringTheDragAndRefitOnRelease()
{
    load(scooterTemplate(kSpreadMap, {60.0, 0, 0}));
    QCOMPARE(plotter().xAxis().maximum(), 19300.0f);
    const QPoint to = graphPixel(12000, 30);
    drag(graphPixel(19000, 42), to, false);
    QCOMPARE(m_editor->profile().map().point(9).rpm, 12000);
    QCOMPARE(plotter().xAxis().maximum(), 19300.0f);
    QCOMPARE(plotter().yAxis().maximum(), 50.0f);
    QTest::mouseRelease(m_editor->windowHandle(), Qt::LeftButton, Qt::NoModifier, to);
    QCOMPARE(plotter().xAxis().maximum(), 18300.0f);
    QCOMPARE(plotter().yAxis().maximum(), 38.0f);
    QCOMPARE(graph()->selectedIndex(), 9);
}

// Lowering the sensor advance from 30 to 20 degrees lowers the ceiling from 28 to 18 at once:
// the shaded region comes down.
void TestEditorForm::sensorAdvanceMovesTheForbiddenRegion()
{
    load(scooterTemplate());
    const QColor forbidden(255, 210, 210);
    const QPoint belowOldCeiling = graphPixel(500, 23);
    QVERIFY(m_editor->grab().toImage().pixelColor(belowOldCeiling) != forbidden);
    perform(QStringLiteral("type a sensor advance"));
    QCOMPARE(m_editor->grab().toImage().pixelColor(belowOldCeiling), forbidden);
}

void TestEditorForm::reset_data()
{
    QTest::addColumn<bool>("withLibrary");
    QTest::addColumn<int>("motorbikeType");
    QTest::addColumn<int>("answer"); // -1: nothing is asked
    QTest::newRow("Reset profile") << true << 0 << 0;
    QTest::newRow("Cancel") << true << 0 << 1;
    QTest::newRow("type not in the library") << true << 7 << -1;
    QTest::newRow("no library") << false << 0 << -1;
}

// A reset is one step of its own, and undoing it brings the edits back as unsaved.
void TestEditorForm::reset()
{
    QFETCH(bool, withLibrary);
    QFETCH(int, motorbikeType);
    QFETCH(int, answer);
    if (!withLibrary)
        buildEditor(nullptr);
    Profile profile = scooterTemplate();
    profile.setMotorbikeType(motorbikeType, true);
    load(profile);
    perform(QStringLiteral("rename Mine"));
    perform(QStringLiteral("cell 2 1:15"));
    const Profile edited = m_editor->profile();

    m_prompts.askAnswers = {answer};
    m_editor->resetProfile();
    QCOMPARE(m_prompts.shown.size(), answer < 0 ? 0 : 1);
    if (answer >= 0) {
        QVERIFY(m_prompts.shown.first().text.contains(QStringLiteral("<b>%1</b>").arg(kTemplateName)));
        QCOMPARE(m_prompts.shown.first().buttons, (QStringList {"Reset profile", "Cancel"}));
    }
    QCOMPARE(contentOf(m_editor->profile()), contentOf(answer == 0 ? scooterTemplate() : edited));
    QCOMPARE(m_editor->profile().isModified(), answer != 0);
    QCOMPARE(child<QLineEdit>("lineEditName")->text(), m_editor->profile().name());
    QCOMPARE(shownMap(), m_editor->profile().map());
    if (answer == 0) {
        m_editor->history().undo();
        QCOMPARE(contentOf(m_editor->profile()), contentOf(edited));
        QVERIFY(m_editor->profile().isModified());
        QCOMPARE(shownMap(), edited.map());
    }
}

// Each hint button opens its own hint, beside the page.
void TestEditorForm::hintButtonsReachTheirHints()
{
    load(scooterTemplate());
    const char *buttons[] {"hintButtonVoltage", "hintButtonSideStand", "hintButtonPickUp",
        "hintButtonSensorAdvance", "hintButtonMap"};
    for (int hint = 0; hint < 5; ++hint) {
        QTest::mouseClick(child<QToolButton>(buttons[hint]), Qt::LeftButton);
        QVERIFY(QTest::qWaitForWindowExposed(m_hints.get()));
        QVERIFY(!m_hints->isModal());
        QCOMPARE(m_hints->findChild<QLabel *>(QStringLiteral("titleLabel"))->text(),
            QStringLiteral("Hint %1").arg(hint));
    }
    QVERIFY(!m_editor->profile().isModified());
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestEditorForm)
#include "tst_editorform.moc"
