// The program works without a mouse: every button the user sees carries a mnemonic, and no
// Alt+letter reachable at once stands for two controls, in English and in German alike.
#include "device/writeconfirmationdialog.h"
#include "dialogs/aboutdialog.h"
#include "dialogs/cdisclaimeracceptance.h"
#include "dialogs/disclaimerdialog.h"
#include "editor/hintdialog.h"
#include "profile/recentprofiles.h"
#include "tests/programfixture.h"

#include <QGroupBox>
#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>

namespace {

// The texts by their Alt+letter, and the texts of controls that need one and have none.
struct Keys
{
    QMultiMap<QString, QString> texts;
    QStringList lacking;

    void add(const QString &text, bool needed)
    {
        const QString key = QKeySequence::mnemonic(text).toString(QKeySequence::PortableText);
        if (!key.isEmpty())
            texts.insert(key, text);
        else if (needed && !text.isEmpty())
            lacking.append(text);
    }
    // "Alt+E: &Enabled | B&earbeiten" for every letter that answers more than one text.
    QStringList clashes() const
    {
        QStringList found;
        for (const QString &key : texts.uniqueKeys()) {
            if (texts.count(key) > 1)
                found.append(key + QLatin1String(": ") + texts.values(key).join(QLatin1String(" | ")));
        }
        return found;
    }
};

// What Alt+letter reaches below root while it is shown: buttons, labels with a buddy, tabs,
// group boxes, which lead to their first input, and the menu bar's titles.
Keys shownKeys(const QWidget &root)
{
    Keys keys;
    for (const QWidget *widget : root.findChildren<QWidget *>()) {
        if (!widget->isVisible() || !widget->isEnabled())
            continue;
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            keys.add(button->text(), true);
        } else if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            if (label->buddy())
                keys.add(label->text(), true);
        } else if (const auto *box = qobject_cast<const QGroupBox *>(widget)) {
            keys.add(box->title(), false);
        } else if (const auto *tabs = qobject_cast<const QTabBar *>(widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                keys.add(tabs->tabText(i), tabs->isTabEnabled(i));
        } else if (const auto *bar = qobject_cast<const QMenuBar *>(widget)) {
            for (const QAction *menu : bar->actions())
                keys.add(menu->text(), true);
        }
    }
    return keys;
}

} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void everyShownChoiceHasItsOwnKey_data();
    void everyShownChoiceHasItsOwnKey();
    void tabWalksTheEditorAsItReads();
};

void TestKeyboard::everyShownChoiceHasItsOwnKey_data()
{
    QTest::addColumn<QString>("steps"); // see take() below
    QTest::addColumn<bool>("german");
    const QList<QPair<const char *, const char *>> shown {{"start page", "editor start"},
        {"edit choices", "editor start editProfiles"},
        {"programming choices", "editor start calibrationSelection"},
        {"new profile from a template", "start editProfiles createFromTemplate"},
        {"template to program", "start calibrationSelection calibrateDefault"},
        {"template to compare", "start compare addDefault"}, {"comparison", "start compare addDefault next"},
        {"comparison graph", "start compare addDefault next showGraph"},
        {"editor, renaming", "editor rename"}, {"editor, writing notes", "editor notes"},
        {"confirmation", "confirmation"}, {"port page", "ports"}, {"progress page", "progress"},
        {"menus", "menus"}, {"about", "about"}, {"hint", "hint"}, {"write confirmation", "writeConfirmation"},
        {"disclaimer", "disclaimer"}};
    for (const auto &[name, steps] : shown) {
        QTest::addRow("%s", name) << steps << false;
        QTest::addRow("%s, German", name) << steps << true;
    }
}

void TestKeyboard::everyShownChoiceHasItsOwnKey()
{
    QFETCH(QString, steps);
    QFETCH(bool, german);
    // A file opened lately brings the list of recent profiles onto the start page.
    const QTemporaryDir folder;
    QFile recent(folder.filePath(QStringLiteral("recent.cdi")));
    QVERIFY(recent.open(QIODevice::WriteOnly));
    CRecentProfiles().add(recent.fileName(), QStringLiteral("Recent"));
    Program program;
    QVERIFY(program.ready());
    program.switcher.addLanguage(CLanguageSwitcher::languageCode(CLanguageSwitcher::kGerman));
    if (german)
        program.switcher.setLanguage(CLanguageSwitcher::kGerman);
    // The forms that follow the language by its change event have their texts once it is handled.
    QCoreApplication::processEvents();
    MainWindow &window = program.window();
    const CDisclaimerAcceptance acceptance(folder.path(), folder.path());
    DisclaimerDialog disclaimer(*program.menu, acceptance);
    auto *confirmation = window.findChild<WriteConfirmationDialog *>();
    confirmation->setProfile(program.firstTemplate());
    QList<QWidget *> shown {&window};
    for (const QString &step : steps.split(QLatin1Char(' '))) {
        if (step == QLatin1String("editor")) {
            window.showEditor(program.firstTemplate());
        } else if (step == QLatin1String("start")) {
            window.start();
        } else if (step == QLatin1String("confirmation")) {
            window.showProgrammingConfirmation(program.firstTemplate());
        } else if (step == QLatin1String("ports")) {
            window.showPortSelection();
        } else if (step == QLatin1String("progress")) {
            window.showProgress();
        } else if (step == QLatin1String("rename")) {
            program.click("pushButtonRename");
        } else if (step == QLatin1String("notes")) {
            program.child<QTabWidget>("tabWidget")->setCurrentIndex(1);
            program.click("pushButtonEdit");
        } else if (step == QLatin1String("menus")) {
            // Within a menu each entry answers its own letter.
            shown = {};
            for (const QMenu *menu : window.findChildren<QMenu *>()) {
                Keys keys;
                for (const QAction *action : menu->actions())
                    keys.add(action->text(), true);
                const QString where = menu->title() + QLatin1String(": ");
                QVERIFY2(keys.clashes().isEmpty(), qPrintable(where + keys.clashes().join(", ")));
                QVERIFY2(keys.lacking.isEmpty(), qPrintable(where + keys.lacking.join(", ")));
            }
        } else {
            // The dialogs, each on its own: while one is open, only its keys count.
            const QHash<QString, QWidget *> dialogs {{"about", &program.windows->aboutDialog()},
                {"hint", &program.windows->hintDialog()}, {"writeConfirmation", confirmation},
                {"disclaimer", &disclaimer}};
            if (QWidget *dialog = dialogs.value(step)) {
                dialog->show();
                shown = {dialog};
            } else {
                program.click(qPrintable(step + QLatin1String("Button")));
            }
        }
    }
    for (const QWidget *root : qAsConst(shown)) {
        const Keys keys = shownKeys(*root);
        QVERIFY2(!keys.texts.isEmpty(), "nothing with a key was found");
        QVERIFY2(keys.clashes().isEmpty(), qPrintable(keys.clashes().join(QLatin1String(", "))));
        QVERIFY2(keys.lacking.isEmpty(), qPrintable(QLatin1String("no key: ") + keys.lacking.join(", ")));
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
    const QStringList expected {"pushButtonRename", "qt_tabwidget_tabbar", "tableView", "hintButtonMap",
        "spinBoxIgnitionVoltage", "hintButtonVoltage", "checkBoxSideStand", "radioButtonGroundEnables",
        "hintButtonSideStand", "doubleSpinBoxHall", "hintButtonSensorAdvance", "backButton", "nextButton",
        "lineEditName"};
    QStringList walked;
    for (int i = 0; i < expected.size(); ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        walked.append(QApplication::focusWidget()->objectName());
    }
    QCOMPARE(walked, expected);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
