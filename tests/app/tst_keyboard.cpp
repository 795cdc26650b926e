// The program works without a mouse and at the fonts its users run, in English and in German
// alike: every button the user sees carries a mnemonic, no Alt+letter reachable at once stands
// for two controls, and a label's leads into the input it names; the main window with any of its
// pages shown fits 1000 x 560 at the default font, at 12 points it stays usable at 1024 x 700,
// and up to 14 points the map table's numbers and headings are never cut.
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

// What a group's key may lead into.
bool isInput(const QWidget *widget)
{
    return qobject_cast<const QAbstractSpinBox *>(widget) || qobject_cast<const QLineEdit *>(widget)
        || qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget)
        || qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractItemView *>(widget);
}

// What Alt+letter reaches below root while it is shown: buttons, labels with a buddy, tabs,
// group boxes, which lead to their first input, and the menu bar's titles; within a menu, its
// entries. The faults: "no key: Exit" for a control that needs a key and has none,
// "Alt+E: &Enabled | B&earbeiten" for every letter that answers more than one text, and
// "&Voltage -> hintButtonVoltage" for a label or group whose letter puts the focus elsewhere than
// into the input it names (not into some control nearby such as a hint button), so that what is
// typed next goes where the label says. Each such key tried counts.
QStringList keyFaults(QWidget &root, int &tried)
{
    QMultiMap<QString, QString> texts;
    QList<QPair<QString, QWidget *>> named; // by a label or a group
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
            named.append({label->text(),
                label->buddy()->focusProxy() ? label->buddy()->focusProxy() : label->buddy()});
        } else if (const auto *box = qobject_cast<const QGroupBox *>(widget)) {
            add(box->title(), false);
            const QList<QWidget *> inside = box->findChildren<QWidget *>();
            const auto first = std::find_if(inside.begin(), inside.end(), [](const QWidget *child) {
                return isInput(child) && child->isVisible() && child->isEnabled();
            });
            named.append({box->title(), first == inside.end() ? nullptr : *first});
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
    for (const auto &[text, input] : qAsConst(named)) {
        if (!input || !input->isEnabled() || QKeySequence::mnemonic(text).isEmpty())
            continue;
        root.setFocus();
        QTest::keySequence(&root, QKeySequence::mnemonic(text));
        if (QApplication::focusWidget() != input)
            faults.append(text + QLatin1String(" -> ") + QApplication::focusWidget()->objectName());
        ++tried;
    }
    return faults;
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

private:
    const QFont m_font = QGuiApplication::font();
};

void TestKeyboard::everyPageFitsAndHasItsOwnKeys_data()
{
    QTest::addColumn<QString>("steps"); // pages, dialogs, or buttons clicked
    QTest::addColumn<bool>("german");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("labels"); // the labels and groups whose key leads into an input
    // Each page or dialog by its name, the steps to it, and its labels.
    const QList<std::tuple<const char *, const char *, int>> shown {{"start page", "editor start", 1},
        {"edit choices", "editor start editProfilesButton", 0},
        {"programming choices", "editor start calibrationSelectionButton", 0},
        {"new profile from a template", "start editProfilesButton createFromTemplateButton", 2},
        {"template to program", "start calibrationSelectionButton calibrateDefaultButton", 2},
        {"template to compare", "start compareButton addDefaultButton", 2},
        {"comparison", "start compareButton addDefaultButton nextButton", 1},
        {"comparison graph", "start compareButton addDefaultButton nextButton showGraphButton", 0},
        {"editor, renaming", "editor pushButtonRename", 2},
        {"editor, writing notes", "editor notes pushButtonEdit", 2}, {"confirmation", "confirmation", 0},
        {"confirmation of a map out of limits", "refused", 0}, {"port page", "ports", 0},
        {"progress page", "progress", 0}, {"menus", "menus", 0}, {"about", "about", 0}, {"hint", "hint", 0},
        {"write confirmation", "writeConfirmation", 0}, {"disclaimer", "disclaimer", 0}};
    for (const auto &[name, steps, labels] : shown)
        for (const bool german : {false, true})
            for (const int points : {9, 12, 14})
                QTest::addRow("%s%s, %d points", name, german ? ", German" : "", points)
                    << steps << german << points << labels;
}

void TestKeyboard::everyPageFitsAndHasItsOwnKeys()
{
    QFETCH(QString, steps);
    QFETCH(bool, german);
    QFETCH(int, points);
    QFETCH(int, labels);
    QFont font = m_font;
    font.setPointSize(points);
    QApplication::setFont(font);
    // A file opened lately brings the list of recent profiles onto the start page.
    const QTemporaryDir folder;
    QVERIFY(QFile(folder.filePath(QStringLiteral("recent.cdi"))).open(QIODevice::WriteOnly));
    CRecentProfiles().add(folder.filePath(QStringLiteral("recent.cdi")), QStringLiteral("Recent"));
    Program program;
    QVERIFY(program.ready());
    // The forms that follow the language by its change event have their texts once it is handled.
    program.switcher.addLanguage(CLanguageSwitcher::languageCode(CLanguageSwitcher::kGerman));
    if (german)
        program.switcher.setLanguage(CLanguageSwitcher::kGerman);
    QCoreApplication::processEvents();
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
    int tried = 0;
    for (QWidget *root : qAsConst(shown)) {
        const QStringList faults = keyFaults(*root, tried);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1String(", "))));
    }
    QCOMPARE(tried, labels);
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

SPARKWRIGHT_WIDGET_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
