// The program works without a mouse and at the fonts its users run, in English and in German
// alike: every button the user sees carries a mnemonic, and no Alt+letter reachable at once
// stands for two controls; the main window with any of its pages shown fits 1000 x 560 at the
// default font, at 12 points it stays usable at 1024 x 700, and up to 14 points the map table's
// numbers and headings are never cut.
#include "data/cdisclaimeracceptance.h"
#include "devicepages/waitform.h"
#include "devicepages/writeconfirmationdialog.h"
#include "dialogs/aboutdialog.h"
#include "dialogs/disclaimerdialog.h"
#include "editor/hintdialog.h"
#include "profile/recentprofiles.h"
#include "summary/customform.h"
#include "support/programfixture.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QRadioButton>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

namespace {

// What Alt+letter reaches below root while it is shown: buttons, labels with a buddy, tabs,
// group boxes, which lead to their first input, and the menu bar's titles; within a menu, its
// entries. The faults: "no key: Exit" for a control that needs a key and has none, and
// "Alt+E: &Enabled | B&earbeiten" for every letter that answers more than one text.
QStringList keyFaults(const QWidget &root)
{
    QMultiMap<QString, QString> texts;
    QStringList faults;
    const auto add = [&](const QString &text, bool needed) {
        const QString key = QKeySequence::mnemonic(text).toString(QKeySequence::PortableText);
        if (!key.isEmpty())
            texts.insert(key, text);
        else if (needed && !text.isEmpty())
            faults.append(QLatin1String("no key: ") + text);
    };
    for (const QAction *action : qobject_cast<const QMenu *>(&root) ? root.actions() : QList<QAction *>())
        add(action->text(), true);
    for (const QWidget *widget : root.findChildren<QWidget *>()) {
        if (!widget->isVisible() || !widget->isEnabled())
            continue;
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            add(button->text(), true);
        } else if (const auto *label = qobject_cast<const QLabel *>(widget); label && label->buddy()) {
            add(label->text(), true);
        } else if (const auto *box = qobject_cast<const QGroupBox *>(widget)) {
            add(box->title(), false);
        } else if (const auto *tabs = qobject_cast<const QTabBar *>(widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                add(tabs->tabText(i), tabs->isTabEnabled(i));
        } else if (const auto *bar = qobject_cast<const QMenuBar *>(widget)) {
            for (const QAction *menu : bar->actions())
                add(menu->text(), true);
        }
    }
    if (texts.isEmpty())
        faults.append(QStringLiteral("no keys found"));
    for (const QString &key : texts.uniqueKeys())
        if (texts.count(key) > 1)
            faults.append(key + QLatin1String(": ") + texts.values(key).join(QLatin1String(" | ")));
    return faults;
}

// The forms that follow the language by its change event have their texts once it is handled.
void startIn(Program &program, bool german)
{
    program.switcher.addLanguage(CLanguageSwitcher::languageCode(CLanguageSwitcher::kGerman));
    if (german)
        program.switcher.setLanguage(CLanguageSwitcher::kGerman);
    QCoreApplication::processEvents();
}

} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setFont(m_font); }
    void everyPageFitsAndHasItsOwnKeys_data();
    void everyPageFitsAndHasItsOwnKeys();
    void tabWalksTheEditorAsItReads();
    void labelKeysReachTheirInputs_data();
    void labelKeysReachTheirInputs();

private:
    const QFont m_font = QGuiApplication::font();
};

void TestKeyboard::everyPageFitsAndHasItsOwnKeys_data()
{
    QTest::addColumn<QString>("steps"); // pages, dialogs, or buttons clicked
    QTest::addColumn<bool>("german");
    QTest::addColumn<int>("points");
    const QList<QPair<const char *, const char *>> shown {{"start page", "editor start"},
        {"edit choices", "editor start editProfilesButton"},
        {"programming choices", "editor start calibrationSelectionButton"},
        {"new profile from a template", "start editProfilesButton createFromTemplateButton"},
        {"template to program", "start calibrationSelectionButton calibrateDefaultButton"},
        {"template to compare", "start compareButton addDefaultButton"},
        {"comparison", "start compareButton addDefaultButton nextButton"},
        {"comparison graph", "start compareButton addDefaultButton nextButton showGraphButton"},
        {"editor, renaming", "editor pushButtonRename"},
        {"editor, writing notes", "editor notes pushButtonEdit"}, {"confirmation", "confirmation"},
        {"confirmation of a map out of limits", "refused"}, {"port page", "ports"},
        {"progress page", "progress"}, {"menus", "menus"}, {"about", "about"}, {"hint", "hint"},
        {"write confirmation", "writeConfirmation"}, {"disclaimer", "disclaimer"}};
    for (const auto &[name, steps] : shown)
        for (const bool german : {false, true})
            for (const int points : {9, 12, 14})
                QTest::addRow("%s%s, %d points", name, german ? ", German" : "", points)
                    << steps << german << points;
}

void TestKeyboard::everyPageFitsAndHasItsOwnKeys()
{
    QFETCH(QString, steps);
    QFETCH(bool, german);
    QFETCH(int, points);
    QFont font = m_font;
    font.setPointSize(points);
    QApplication::setFont(font);
    // A file opened lately brings the list of recent profiles onto the start page.
    const QTemporaryDir folder;
    QVERIFY(QFile(folder.filePath(QStringLiteral("recent.cdi"))).open(QIODevice::WriteOnly));
    CRecentProfiles().add(folder.filePath(QStringLiteral("recent.cdi")), QStringLiteral("Recent"));
    Program program;
    QVERIFY(program.ready());
    startIn(program, german);
    MainWindow &window = program.window();
    const CDisclaimerAcceptance acceptance(folder.path());
    DisclaimerDialog disclaimer(*program.menu, acceptance);
    WriteConfirmationDialog writeConfirmation(&window); // the program makes its own on first use
    writeConfirmation.setProfile(program.firstTemplate());
    // The editor shows the widest values allowed, every point breaking its limits.
    Profile widest = program.firstTemplate();
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, kMaxRpm, kMaxAngle);
    widest.setMap(map);
    const QHash<QString, std::function<void()>> pages {{"editor", [&] { window.showEditor(widest); }},
        {"start", [&] { window.showStart(); }}, {"ports", [&] { window.showPortSelection(); }},
        {"confirmation", [&] { window.showProgrammingConfirmation(program.firstTemplate()); }},
        {"refused", [&] { window.showProgrammingConfirmation(widest); }},
        {"progress", // after a failure, its details open
            [&] {
                window.showProgress();
                window.findChild<WaitForm *>()->showResult(ExchangeResult());
                program.click("detailsButton");
            }},
        {"notes", [&] { program.child<QTabWidget>("tabWidget")->setCurrentIndex(1); }}};
    // The dialogs and the menus each on their own: while one is open, only its keys count.
    const QHash<QString, QWidget *> dialogs {{"about", &program.windows->aboutDialog()},
        {"hint", &program.windows->hintDialog()}, {"writeConfirmation", &writeConfirmation},
        {"disclaimer", &disclaimer}};
    QList<QWidget *> shown {&window};
    for (const QString &step : steps.split(QLatin1Char(' '))) {
        if (QWidget *dialog = dialogs.value(step)) {
            dialog->show();
            shown = {dialog};
        } else if (step == QLatin1String("menus")) {
            shown.clear();
            // The recent profiles' menu is filled only as it opens.
            for (QMenu *menu : window.findChildren<QMenu *>()) {
                QMetaObject::invokeMethod(menu, "aboutToShow");
                shown.append(menu);
            }
        } else if (pages.contains(step)) {
            pages[step]();
        } else {
            program.click(qPrintable(step));
        }
    }
    for (const QWidget *root : qAsConst(shown))
        QVERIFY2(keyFaults(*root).isEmpty(), qPrintable(keyFaults(*root).join(QLatin1String(", "))));

    QCoreApplication::processEvents();
    const QSize needed = window.minimumSizeHint().expandedTo(window.minimumSize());
    QVERIFY(points != 9 || (needed.width() <= 1000 && needed.height() <= 560));
    QVERIFY(points != 12 || (needed.width() <= 1024 && needed.height() <= 700));
    // Every cell has room for the widest value inside the delegate's text margins, the headings
    // are whole, and the view shows both columns.
    const QTableView *view = program.child<QTableView>("tableView");
    QCOMPARE(view && view->isVisible(), steps == QLatin1String("editor pushButtonRename"));
    for (int column = 0; view && view->isVisible() && column < 2; ++column) {
        const int textMargin = view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
        const QHeaderView *header = view->horizontalHeader();
        const int headerMargin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
        const QString value = view->model()->index(9, column).data().toString();
        QVERIFY2(view->fontMetrics().horizontalAdvance(value)
                <= view->visualRect(view->model()->index(9, column)).width() - 2 * textMargin,
            qPrintable(value));
        const QString heading = view->model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(header->fontMetrics().horizontalAdvance(heading)
                <= header->sectionSize(column) - 2 * headerMargin,
            qPrintable(heading));
        QVERIFY(header->length() <= view->viewport()->width());
    }
    // The page names every row out of limits, and goes no further.
    if (steps == QLatin1String("refused")) {
        const auto *problem = window.confirmation().findChild<QLabel *>(QStringLiteral("problemLabel"));
        QVERIFY(problem->isVisible() && problem->text().contains(german ? "Zeilen 1, 2, 3" : "rows 1, 2, 3"));
        QVERIFY(!program.button("nextButton")->isEnabled());
    }
}

// Tab walks the editor as it reads, from the name to the last setting's hint and on to the
// buttons, and comes round again.
void TestKeyboard::tabWalksTheEditorAsItReads()
{
    Program program;
    QVERIFY(program.ready());
    program.window().showEditor(program.firstTemplate());
    program.child("lineEditName")->setFocus();
    const QStringList expected {"pushButtonRename", "qt_tabwidget_tabbar", "tableView", "GraphForm",
        "hintButtonMap", "spinBoxIgnitionVoltage", "hintButtonVoltage", "checkBoxSideStand",
        "radioButtonGroundEnables", "hintButtonSideStand", "doubleSpinBoxHall", "hintButtonSensorAdvance",
        "backButton", "nextButton", "lineEditName"};
    for (const QString &name : expected) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), name);
    }
}

void TestKeyboard::labelKeysReachTheirInputs_data()
{
    QTest::addColumn<bool>("german");
    QTest::newRow("English") << false;
    QTest::newRow("German") << true;
}

// A label's or a group's Alt+letter puts the focus into the input it names (the label's buddy,
// the group's first input), not into some control nearby such as a hint button, so that what is
// typed next goes where the label says.
void TestKeyboard::labelKeysReachTheirInputs()
{
    QFETCH(bool, german);
    Program program;
    QVERIFY(program.ready());
    startIn(program, german);
    program.window().showEditor(program.firstTemplate());
    const auto isInput = [](const QWidget *widget) {
        return qobject_cast<const QAbstractSpinBox *>(widget) || qobject_cast<const QLineEdit *>(widget)
            || qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget)
            || qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractItemView *>(widget);
    };
    QStringList missed;
    int named = 0;
    for (QWidget *widget : program.window().findChildren<QWidget *>()) {
        QString text;
        QWidget *input = nullptr;
        if (const auto *label = qobject_cast<const QLabel *>(widget); label && label->buddy()) {
            text = label->text();
            input = label->buddy()->focusProxy() ? label->buddy()->focusProxy() : label->buddy();
        } else if (const auto *box = qobject_cast<const QGroupBox *>(widget)) {
            text = box->title();
            const QList<QWidget *> inside = box->findChildren<QWidget *>();
            const auto first = std::find_if(inside.begin(), inside.end(), [&](const QWidget *child) {
                return isInput(child) && child->isVisible() && child->isEnabled();
            });
            input = first == inside.end() ? nullptr : *first;
        }
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!input || key.isEmpty() || !widget->isVisible() || !input->isEnabled())
            continue;
        program.child("backButton")->setFocus();
        QTest::keySequence(&program.window(), key);
        if (QApplication::focusWidget() != input)
            missed << text + QLatin1String(" -> ") + QApplication::focusWidget()->objectName();
        ++named;
    }
    QVERIFY(named >= 2); // the voltage and the sensor advance

    QVERIFY2(missed.isEmpty(), qPrintable(missed.join(QLatin1String(", "))));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
