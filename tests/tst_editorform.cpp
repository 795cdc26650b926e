// The editor page as the user meets it, driven through its real widgets: the unsaved-changes
// flag through every kind of edit, the questions before leaving and resetting, the information
// text in both languages, the hint buttons, the blinking hint labels and the sensor advance
// moving the forbidden region.
#include "editor/cblinker.h"
#include "editor/chintlabel.h"
#include "editor/editorform.h"
#include "editor/graphform.h"
#include "editor/hintdialog.h"
#include "editor/mapplotter.h"
#include "frame/ibrowsermain.h"
#include "frame/iuserprompts.h"
#include "i18n/clanguageswitcher.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/mapvalidation.h"
#include "tests/widgettestmain.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

namespace {

const QString kTemplateName = QStringLiteral("Two-stroke single 50 cc scooter");

// A factory template: ten rising points under a flat ceiling of 28 degrees (sensor advance 30).
Profile scooterTemplate()
{
    Profile profile;
    profile.setMotorbikeType(0, false);
    profile.setName(kTemplateName);
    IgnitionMap map;
    const int points[kMapPointCount][2] = {{1000, 14}, {2000, 16}, {3000, 18}, {4000, 20}, {5000, 26},
        {6000, 18}, {7000, 16}, {8000, 14}, {8800, 13}, {9500, 12}};
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, points[i][0], points[i][1]);
    profile.setMap(map);
    profile.setSensorCoefficients({30.0, 0.0, 0.0});
    ProfileFlags flags;
    flags.sideStandMonitoring = true;
    profile.setFlags(flags);
    profile.setVoltage(170);
    profile.setPickUpEdgeSelectable(true);
    profile.setExtraText(0, QStringLiteral("For automatic scooters."));
    profile.setExtraText(1, QStringLiteral("Für Automatikroller."));
    profile.setModified(false);
    return profile;
}

std::unique_ptr<DefaultLibrary> templateLibrary()
{
    auto library = std::make_unique<DefaultLibrary>();
    library->append(scooterTemplate());
    Profile other = scooterTemplate();
    other.setMotorbikeType(1, false);
    other.setName(QStringLiteral("Four-stroke single 125 cc"));
    library->append(other);
    return library;
}

HintCatalog numberedCatalog()
{
    HintCatalog catalog;
    for (int i = 0; i < 5; ++i) {
        catalog.append({HintText {QStringLiteral("Hint %1").arg(i), QStringLiteral("Text %1").arg(i)},
            HintText {QStringLiteral("Hinweis %1").arg(i), QStringLiteral("Text %1 de").arg(i)}});
    }
    return catalog;
}

// Answers the question boxes as a user would, and remembers what was asked.
class ScriptedPrompts : public IUserPrompts
{
public:
    struct Question
    {
        QString title;
        QString text;
        QStringList buttons;
        int defaultButton;
        int escapeButton;
    };

    int ask(QWidget *, const QString &title, const QString &text, const QStringList &buttons,
        int defaultButton, int escapeButton) override
    {
        questions.append({title, text, buttons, defaultButton, escapeButton});
        return answers.isEmpty() ? -1 : answers.takeFirst();
    }
    void warn(QWidget *, const QString &, const QString &, const QString &) override { }
    QString openFileName(QWidget *, const QString &, const QString &) override { return QString(); }
    QString saveFileName(QWidget *, const QString &, const QString &, const QString &) override
    {
        return QString();
    }

    QList<int> answers;
    QList<Question> questions;
};

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
void verifySameContent(const Profile &actual, const Profile &expected)
{
    QCOMPARE(actual.name(), expected.name());
    QCOMPARE(actual.notes(), expected.notes());
    QVERIFY(actual.map() == expected.map());
    QCOMPARE(actual.voltage(), expected.voltage());
    QVERIFY(actual.flags() == expected.flags());
    QVERIFY(actual.sensorCoefficients() == expected.sensorCoefficients());
}

bool showsColour(const QImage &image, bool blue)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (blue ? (c.blue() > 200 && c.red() < 60 && c.green() < 60)
                     : (c.blue() < 40 && c.red() < 40 && c.green() < 40))
                return true;
        }
    }
    return false;
}

} // namespace

class TestEditorForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void loadingGivesAnUnmodifiedCustomProfile();
    void leavingAsksOnlyWhenModified_data();
    void leavingAsksOnlyWhenModified();
    void discardingLeavesThePage();
    void hiddenEditorAsksNothing();
    void nextHandsOnTheWorkingProfile();
    void resetTakesTheTemplate_data();
    void resetTakesTheTemplate();
    void resetWithoutTemplateDoesNothing_data();
    void resetWithoutTemplateDoesNothing();
    void informationFollowsTheLanguage_data();
    void informationFollowsTheLanguage();
    void hintButtonsReachTheirHints_data();
    void hintButtonsReachTheirHints();
    void sensorAdvanceMovesTheForbiddenRegion();
    void hintLabelsBlinkAfterTheFirstLoadOnly();
    void touchingAHintLabelHidesBoth_data();
    void touchingAHintLabelHidesBoth();
    void tableHintStaysCentred();
    void textsFit_data();
    void textsFit();

private:
    void buildEditor(const DefaultLibrary *library);
    void load(const Profile &profile);
    void dismissHints();
    void moveMouseOnto(const QPoint &position);
    void perform(const QString &edit);
    template<typename T> T *child(const char *name) const
    {
        return m_editor->findChild<T *>(QLatin1String(name));
    }
    GraphForm *graph() const { return m_editor->findChild<GraphForm *>(); }
    QList<CHintLabel *> hintLabels() const { return m_editor->findChildren<CHintLabel *>(); }
    QPoint inWindow(const QWidget *widget, const QPoint &position) const
    {
        return widget->mapTo(m_editor.get(), position);
    }
    QPoint graphPixel(int rpm, double angle) const;
    void clickTab(int index);
    void typeIntoCell(int row, int column, const QString &text);

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
    m_library = templateLibrary();
    m_catalog = numberedCatalog();
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

void TestEditorForm::load(const Profile &profile)
{
    m_editor->setProfile(profile);
    // The test moves the blinker on itself instead of waiting for its timer.
    if (auto *timer = m_editor->findChild<CBlinker *>()->findChild<QTimer *>())
        timer->stop();
}

// The user's mouse passes over a hint label on its way into the page.
void TestEditorForm::dismissHints()
{
    CHintLabel *label = hintLabels().first();
    if (label->isVisible())
        moveMouseOnto(inWindow(label, label->rect().center()));
    QVERIFY(!label->isVisible());
}

// The platform drops a move to where the mouse already is, as it was left by an earlier case.
void TestEditorForm::moveMouseOnto(const QPoint &position)
{
    QTest::mouseMove(m_editor->windowHandle(), QPoint(1, 1));
    QTest::mouseMove(m_editor->windowHandle(), position);
}

QPoint TestEditorForm::graphPixel(int rpm, double angle) const
{
    const MapPlotter &plotter = graph()->plotter();
    return QPoint(plotter.xAxis().toPixel(rpm), plotter.yAxis().toPixel(angle));
}

void TestEditorForm::clickTab(int index)
{
    QTabBar *bar = child<QTabWidget>("tabWidget")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
}

void TestEditorForm::typeIntoCell(int row, int column, const QString &text)
{
    QTableView *view = child<QTableView>("tableView");
    const QRect cell = view->visualRect(view->model()->index(row, column));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    // The first key opens the cell's editor, which takes the rest.
    for (const QChar c : text)
        QTest::keyClicks(QApplication::focusWidget(), QString(c));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCoreApplication::processEvents(); // the delegate commits through a queued call
}

void TestEditorForm::perform(const QString &edit)
{
    if (edit == QLatin1String("edit a cell")) {
        typeIntoCell(2, 1, QStringLiteral("15"));
    } else if (edit == QLatin1String("drag a point")) {
        QWindow *window = m_editor->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, inWindow(graph(), graphPixel(4000, 20)));
        QTest::mouseMove(window, inWindow(graph(), graphPixel(4500, 15)));
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, inWindow(graph(), graphPixel(4500, 15)));
    } else if (edit == QLatin1String("raise the voltage")) {
        auto *box = child<QSpinBox>("spinBoxIgnitionVoltage");
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(10, box->height() / 2));
        QTest::keyClick(box, Qt::Key_Up);
    } else if (edit == QLatin1String("switch off side-stand monitoring")) {
        auto *check = child<QCheckBox>("checkBoxSideStand");
        QTest::mouseClick(check, Qt::LeftButton, Qt::NoModifier, QPoint(8, check->height() / 2));
    } else if (edit == QLatin1String("raise the sensor advance")) {
        auto *box = child<QDoubleSpinBox>("doubleSpinBoxHall");
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(10, box->height() / 2));
        QTest::keyClick(box, Qt::Key_Up);
    } else if (edit == QLatin1String("rename")) {
        QTest::mouseClick(child<QPushButton>("pushButtonRename"), Qt::LeftButton);
        QTest::keyClicks(child<QLineEdit>("lineEditName"), QStringLiteral("Track <day>"));
        QTest::keyClick(child<QLineEdit>("lineEditName"), Qt::Key_Return);
    } else if (edit == QLatin1String("edit the notes")) {
        clickTab(1);
        QTest::mouseClick(child<QPushButton>("pushButtonEdit"), Qt::LeftButton);
        QTest::keyClicks(child<QPlainTextEdit>("plainTextEditNotes"), QStringLiteral("Plug B9ES"));
        QTest::keyClick(child<QPlainTextEdit>("plainTextEditNotes"), Qt::Key_Escape);
    } else if (edit == QLatin1String("rename to the same name")) {
        QTest::mouseClick(child<QPushButton>("pushButtonRename"), Qt::LeftButton);
        QTest::keyClick(child<QLineEdit>("lineEditName"), Qt::Key_Return);
    } else {
        QVERIFY2(edit.isEmpty(), qPrintable(edit));
    }
}

void TestEditorForm::loadingGivesAnUnmodifiedCustomProfile()
{
    Profile factory = scooterTemplate();
    factory.setModified(true);
    clickTab(1);
    load(factory);

    QVERIFY(m_editor->hasProfile());
    QVERIFY(!m_editor->profile().isModified());
    QVERIFY(m_editor->profile().isCustom());
    // What the page shows: the parameters, filled from the profile.
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 0);
    QCOMPARE(child<QLineEdit>("lineEditName")->text(), kTemplateName);
    QCOMPARE(child<QTableView>("tableView")->model()->index(4, 1).data().toString(), QStringLiteral("26"));
    QCOMPARE(child<QSpinBox>("spinBoxIgnitionVoltage")->value(), 170);
    QCOMPARE(child<QPlainTextEdit>("plainTextEditInformation")->toPlainText(),
        QStringLiteral("For automatic scooters."));
}

void TestEditorForm::leavingAsksOnlyWhenModified_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("name"); // as the question shows it; empty: no question
    QTest::newRow("no change") << ""
                               << "";
    QTest::newRow("rename to the same name") << "rename to the same name"
                                             << "";
    QTest::newRow("edit a cell") << "edit a cell" << kTemplateName;
    QTest::newRow("drag a point") << "drag a point" << kTemplateName;
    QTest::newRow("raise the voltage") << "raise the voltage" << kTemplateName;
    QTest::newRow("switch off side-stand monitoring") << "switch off side-stand monitoring" << kTemplateName;
    QTest::newRow("raise the sensor advance") << "raise the sensor advance" << kTemplateName;
    QTest::newRow("rename") << "rename"
                            << "Track &lt;day&gt;";
    QTest::newRow("edit the notes") << "edit the notes" << kTemplateName;
}

// "Back" in the question keeps the page and the change.
void TestEditorForm::leavingAsksOnlyWhenModified()
{
    QFETCH(QString, edit);
    QFETCH(QString, name);
    load(scooterTemplate());
    dismissHints();
    perform(edit);
    const Profile edited = m_editor->profile();
    QCOMPARE(edited.isModified(), !name.isEmpty());

    m_prompts.answers = {1};
    m_editor->onBack();

    if (name.isEmpty()) {
        QVERIFY(m_prompts.questions.isEmpty());
        QCOMPARE(m_browser.starts, 1);
        return;
    }
    QCOMPARE(m_prompts.questions.size(), 1);
    const ScriptedPrompts::Question &question = m_prompts.questions.first();
    QCOMPARE(question.title, QStringLiteral("Unsaved changes"));
    QVERIFY2(question.text.contains(QStringLiteral("<b>%1</b>").arg(name)), qPrintable(question.text));
    QCOMPARE(question.buttons, (QStringList {QStringLiteral("Discard changes"), QStringLiteral("Back")}));
    QCOMPARE(question.defaultButton, 0);
    QCOMPARE(question.escapeButton, -1);
    QCOMPARE(m_browser.starts, 0);
    QVERIFY(m_editor->isVisible());
    QVERIFY(m_editor->profile().isModified());
    verifySameContent(m_editor->profile(), edited);
}

void TestEditorForm::discardingLeavesThePage()
{
    load(scooterTemplate());
    dismissHints();
    perform(QStringLiteral("edit a cell"));
    m_prompts.answers = {0};
    m_editor->onBack();
    QCOMPARE(m_prompts.questions.size(), 1);
    QCOMPARE(m_browser.starts, 1);
    QVERIFY(!m_editor->profile().isModified());

    // After a save there is nothing to lose either.
    perform(QStringLiteral("raise the voltage"));
    m_editor->markSaved();
    m_editor->onBack();
    QCOMPARE(m_prompts.questions.size(), 1);
    QCOMPARE(m_browser.starts, 2);
}

// Opening a file from another page replaces the profile without a question.
void TestEditorForm::hiddenEditorAsksNothing()
{
    load(scooterTemplate());
    dismissHints();
    perform(QStringLiteral("edit a cell"));
    m_editor->setActive(false);
    QVERIFY(m_editor->confirmDiscard());
    QVERIFY(m_prompts.questions.isEmpty());
}

void TestEditorForm::nextHandsOnTheWorkingProfile()
{
    load(scooterTemplate());
    dismissHints();
    perform(QStringLiteral("edit a cell"));
    m_editor->onNext();
    QCOMPARE(m_browser.confirmations.size(), 1);
    QCOMPARE(m_browser.confirmations.first().map().point(2), (MapPoint {3000, 15}));
    QVERIFY(m_prompts.questions.isEmpty());
}

void TestEditorForm::resetTakesTheTemplate_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("Reset profile") << 0;
    QTest::newRow("Cancel") << 1;
}

void TestEditorForm::resetTakesTheTemplate()
{
    QFETCH(int, answer);
    load(scooterTemplate());
    dismissHints();
    perform(QStringLiteral("rename"));
    perform(QStringLiteral("edit a cell"));
    const Profile edited = m_editor->profile();

    m_prompts.answers = {answer};
    m_editor->resetProfile();
    QCOMPARE(m_prompts.questions.size(), 1);
    const ScriptedPrompts::Question &question = m_prompts.questions.first();
    QCOMPARE(question.title, QStringLiteral("Reset profile"));
    QVERIFY2(
        question.text.contains(QStringLiteral("<b>%1</b>").arg(kTemplateName)), qPrintable(question.text));
    QCOMPARE(question.buttons, (QStringList {QStringLiteral("Reset profile"), QStringLiteral("Cancel")}));
    QCOMPARE(question.defaultButton, 0);

    if (answer == 1) {
        verifySameContent(m_editor->profile(), edited);
        QVERIFY(m_editor->profile().isModified());
        return;
    }
    verifySameContent(m_editor->profile(), scooterTemplate());
    QVERIFY(!m_editor->profile().isModified());
    QCOMPARE(child<QLineEdit>("lineEditName")->text(), kTemplateName);
    QCOMPARE(child<QTableView>("tableView")->model()->index(2, 1).data().toString(), QStringLiteral("18"));
    // Nothing is left to lose.
    m_editor->onBack();
    QCOMPARE(m_prompts.questions.size(), 1);
    QCOMPARE(m_browser.starts, 1);
}

void TestEditorForm::resetWithoutTemplateDoesNothing_data()
{
    QTest::addColumn<bool>("withLibrary");
    QTest::addColumn<int>("motorbikeType");
    QTest::newRow("type not in the library") << true << 7;
    QTest::newRow("no library") << false << 0;
}

void TestEditorForm::resetWithoutTemplateDoesNothing()
{
    QFETCH(bool, withLibrary);
    QFETCH(int, motorbikeType);
    if (!withLibrary)
        buildEditor(nullptr);
    Profile profile = scooterTemplate();
    profile.setMotorbikeType(motorbikeType, true);
    load(profile);
    dismissHints();
    perform(QStringLiteral("edit a cell"));
    const Profile edited = m_editor->profile();

    m_editor->resetProfile();
    QVERIFY(m_prompts.questions.isEmpty());
    verifySameContent(m_editor->profile(), edited);
    QVERIFY(m_editor->profile().isModified());
}

void TestEditorForm::informationFollowsTheLanguage_data()
{
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("german");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("shown");
    QTest::newRow("English") << "For scooters."
                             << "Für Roller." << 0 << "For scooters.";
    QTest::newRow("German") << "For scooters."
                            << "Für Roller." << 1 << "Für Roller.";
    QTest::newRow("German text missing") << "For scooters."
                                         << "" << 1 << "No information available";
    QTest::newRow("English text missing") << ""
                                          << "Für Roller." << 0 << "No information available";
}

// The language is switched while the "Information" tab is open.
void TestEditorForm::informationFollowsTheLanguage()
{
    QFETCH(QString, english);
    QFETCH(QString, german);
    QFETCH(int, language);
    QFETCH(QString, shown);
    Profile profile = scooterTemplate();
    profile.setExtraText(0, english);
    profile.setExtraText(1, german);
    m_switcher->setLanguage(1 - language);
    load(profile);
    clickTab(1);
    QVERIFY(child<QPlainTextEdit>("plainTextEditInformation")->isVisible());

    m_switcher->setLanguage(language);
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 1);
    QCOMPARE(child<QPlainTextEdit>("plainTextEditInformation")->toPlainText(), shown);
    QVERIFY(!m_editor->profile().isModified());
}

void TestEditorForm::hintButtonsReachTheirHints_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("switchTo"); // a language chosen while the hint is open, -1 for none
    QTest::addColumn<QString>("title");
    QTest::newRow("voltage") << "hintButtonVoltage" << -1 << "Hint 0";
    QTest::newRow("side stand") << "hintButtonSideStand" << -1 << "Hint 1";
    QTest::newRow("pick-up edge") << "hintButtonPickUp" << -1 << "Hint 2";
    QTest::newRow("sensor advance") << "hintButtonSensorAdvance" << -1 << "Hint 3";
    QTest::newRow("ignition map") << "hintButtonMap" << -1 << "Hint 4";
    QTest::newRow("ignition map, then German") << "hintButtonMap" << 1 << "Hinweis 4";
}

void TestEditorForm::hintButtonsReachTheirHints()
{
    QFETCH(QString, button);
    QFETCH(int, switchTo);
    QFETCH(QString, title);
    load(scooterTemplate());
    dismissHints();

    QTest::mouseClick(m_editor->findChild<QToolButton *>(button), Qt::LeftButton);
    if (switchTo >= 0)
        m_switcher->setLanguage(switchTo);
    QVERIFY(m_hints->isVisible());
    QCOMPARE(m_hints->findChild<QLabel *>(QStringLiteral("titleLabel"))->text(), title);
    QVERIFY(!m_editor->profile().isModified());
}

// Lowering the sensor advance from 30 to 20 degrees lowers the ceiling from 28 to 18 at once:
// the shaded region comes down and the points above it turn invalid.
void TestEditorForm::sensorAdvanceMovesTheForbiddenRegion()
{
    load(scooterTemplate());
    dismissHints();
    const QColor forbidden(255, 210, 210);
    const QColor validFill(58, 133, 190);
    const QColor invalidFill(167, 73, 53);
    const QPoint belowOldCeiling = graphPixel(500, 23);
    const QPoint point4 = graphPixel(5000, 26);
    QVERIFY(graph()->plotter().image().pixelColor(belowOldCeiling) != forbidden);
    QCOMPARE(graph()->plotter().image().pixelColor(point4), validFill);
    QVERIFY(!validate(m_editor->profile()).hasErrors());

    auto *box = child<QDoubleSpinBox>("doubleSpinBoxHall");
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(10, box->height() / 2));
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, QStringLiteral("20"));

    QCOMPARE(m_editor->profile().sensorCoefficients().k0, 20.0);
    const QImage shown = graph()->grab().toImage();
    QCOMPARE(shown.pixelColor(belowOldCeiling), forbidden);
    QCOMPARE(shown.pixelColor(point4), invalidFill);
    const MapValidation validation = validate(m_editor->profile());
    QVERIFY(!validation.points[4].isValid());
    QVERIFY(!validation.points[3].isValid());
    QVERIFY(validation.points[2].isValid());
}

void TestEditorForm::hintLabelsBlinkAfterTheFirstLoadOnly()
{
    const QList<CHintLabel *> labels = hintLabels();
    QCOMPARE(labels.size(), 2);
    for (CHintLabel *label : labels)
        QVERIFY(!label->isVisible());
    auto *blinker = m_editor->findChild<CBlinker *>();

    load(scooterTemplate());
    QVERIFY(blinker->isRunning());
    auto colours = [&labels](bool blue) {
        for (CHintLabel *label : labels) {
            if (!label->isVisible() || showsColour(label->grab().toImage(), !blue))
                return false;
        }
        return true;
    };
    QVERIFY(colours(false));
    for (int tick = 1; tick < CBlinker::kTickCount; ++tick) {
        blinker->tick();
        // A quarter of a second in each colour, black first.
        const bool blue = (tick / CBlinker::kTicksPerColour) % 2 == 1;
        QVERIFY2(colours(blue), qPrintable(QStringLiteral("tick %1").arg(tick)));
    }
    blinker->tick(); // eight seconds are over
    QVERIFY(!blinker->isRunning());
    for (CHintLabel *label : labels)
        QVERIFY(!label->isVisible());

    // Later loads in the same run leave them away.
    load(scooterTemplate());
    QVERIFY(!blinker->isRunning());
    for (CHintLabel *label : labels)
        QVERIFY(!label->isVisible());
}

void TestEditorForm::touchingAHintLabelHidesBoth_data()
{
    QTest::addColumn<int>("label"); // 0 over the table, 1 over the graph
    QTest::addColumn<bool>("press");
    QTest::newRow("mouse passes over the table's label") << 0 << false;
    QTest::newRow("mouse passes over the graph's label") << 1 << false;
    QTest::newRow("press on the graph's label") << 1 << true;
}

void TestEditorForm::touchingAHintLabelHidesBoth()
{
    QFETCH(int, label);
    QFETCH(bool, press);
    load(scooterTemplate());
    CHintLabel *touched = label == 0 ? m_editor->findChild<QTableView *>()->findChild<CHintLabel *>()
                                     : graph()->findChild<CHintLabel *>();
    QVERIFY(touched && touched->isVisible());
    const QPoint at = inWindow(touched, touched->rect().center());

    if (press) {
        QTest::mousePress(m_editor->windowHandle(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseRelease(m_editor->windowHandle(), Qt::LeftButton, Qt::NoModifier, at);
    } else {
        moveMouseOnto(at);
    }
    for (CHintLabel *hint : hintLabels())
        QVERIFY(!hint->isVisible());
    QVERIFY(!m_editor->findChild<CBlinker *>()->isRunning());
    // The label took the press; the graph below it saw nothing.
    QCOMPARE(graph()->selectedIndex(), -1);
    QVERIFY(!m_editor->profile().isModified());
}

void TestEditorForm::tableHintStaysCentred()
{
    load(scooterTemplate());
    QTableView *view = m_editor->findChild<QTableView *>();
    CHintLabel *hint = view->findChild<CHintLabel *>();
    // As first shown, then after the page was resized.
    for (const QSize size : {m_editor->size(), QSize(1000, 700), QSize(900, 560)}) {
        m_editor->resize(size);
        QCoreApplication::processEvents();
        const QPoint offset = hint->geometry().center() - view->rect().center();
        QVERIFY2(qAbs(offset.x()) <= 6 && qAbs(offset.y()) <= 1,
            qPrintable(QStringLiteral("%1, %2").arg(offset.x()).arg(offset.y())));
    }
}

void TestEditorForm::textsFit_data()
{
    QTest::addColumn<int>("language");
    QTest::newRow("English") << int(CLanguageSwitcher::kEnglish);
    QTest::newRow("German") << int(CLanguageSwitcher::kGerman);
}

// The page fits the main window's content area, and at that size no text of it is cut off.
void TestEditorForm::textsFit()
{
    QFETCH(int, language);
    m_switcher->addLanguage(QStringLiteral("de")); // from the build folder, the working directory
    m_switcher->setLanguage(language);
    load(scooterTemplate());
    // The language change, then the layout requests it causes.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const QSize contentArea(940, 560);
    QVERIFY2(m_editor->minimumSizeHint().width() <= contentArea.width(),
        qPrintable(QString::number(m_editor->minimumSizeHint().width())));
    QVERIFY2(m_editor->minimumSizeHint().height() <= contentArea.height(),
        qPrintable(QString::number(m_editor->minimumSizeHint().height())));
    m_editor->resize(contentArea);
    for (int tab = 0; tab < 2; ++tab) {
        clickTab(tab);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        for (QWidget *widget : m_editor->findChildren<QWidget *>()) {
            if (!widget->isVisible())
                continue;
            const QString name = widget->objectName() + QLatin1Char(' ') + widget->metaObject()->className();
            if (qobject_cast<QLabel *>(widget) || qobject_cast<QAbstractButton *>(widget)) {
                QVERIFY2(widget->width() >= widget->sizeHint().width(), qPrintable(name));
                QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), qPrintable(name));
            } else if (auto *group = qobject_cast<QGroupBox *>(widget)) {
                QVERIFY2(group->width() >= group->minimumSizeHint().width(), qPrintable(name));
            }
            const QRect inPage(widget->mapTo(m_editor.get(), QPoint(0, 0)), widget->size());
            QVERIFY2(m_editor->rect().contains(inPage), qPrintable(name));
        }
    }
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestEditorForm)
#include "tst_editorform.moc"
