// The whole program after the disclaimer as the user drives it: every page with its prompt,
// buttons and way back, the menu commands and their shortcuts, the open, save and print flows
// with their messages, the template chooser, the panels that lead back to the profile last
// edited, and the comparison list and its graph.
#include "editor/customform.h"
#include "editor/editorform.h"
#include "frame/suggestedfilename.h"
#include "pages/comparisonform.h"
#include "pages/continueform.h"
#include "pages/multigraphform.h"
#include "profile/profilefile.h"
#include "tests/programfixture.h"
#include "tests/widgettestmain.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAll(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

const char kWelcome[] = "Welcome to Sparkwright. What would you like to do?";
const char kEditProfiles[] = "Choose where to load your profile from.";
const char kProgramming[] = "Choose what kind of profile to program your CDI with.";
const char kComparison[] = "Put together the profiles whose ignition maps you would like to compare.";
const char kChooseTemplate[] = "Select an item from the drop-down list as template for your custom profile.";
const char kProgramTemplate[] = "Select a profile from the dropdown list to program your CDI.";
const char kCompareTemplate[] = "Select a profile from the drop-down list for comparison.";
const char kConfirmPrompt[] = "Please confirm programming the CDI with this profile.";
const char kMine[] = "Mine <2>";

Profile namedProfile(const QString &name, int shift)
{
    Profile profile;
    profile.setName(name);
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 * (i + 1), 10 + i + shift);
    profile.setMap(map);
    profile.setSensorCoefficients({40.0, -0.0004, 0.0});
    return profile;
}

QStringList entries(const QListWidget *list)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->item(row)->text());
    return texts;
}

EditorForm *editorOf(const Program &program)
{
    return program.window().findChild<EditorForm *>();
}

// What the page now shown holds: the profile's name on the editor and on the confirmation page,
// the entries of the list on the comparison page.
QString shownProfile(const Program &program)
{
    if (program.prompt() == QLatin1String(kEditorPrompt))
        return editorOf(program)->profile().name();
    if (program.prompt() == QLatin1String(kConfirmPrompt))
        return program.window().findChild<CustomForm *>()->profile().name();
    // The comparison list exists once it has been shown.
    const QListWidget *list = program.child<QListWidget>("list");
    return list ? entries(list).join(QLatin1String(", ")) : QString();
}

void clickEntry(QListWidget *list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::mouseClick(
        list->viewport(), Qt::LeftButton, modifiers, list->visualItemRect(list->item(row)).center());
}

// Takes the steps, separated by blanks, as the user would: "^X" for Ctrl+X, "editor" for a
// template handed to the editor as the template chooser does it, "mine" for a profile of the
// user's in its place, "second" for the second template chosen with the keyboard, "continue" for
// the panel leading back to the profile last edited, "close" for closing the window, an action by
// its name, else the button named after the step ("next": "nextButton").
void take(Program &program, const QString &steps)
{
    for (const QString &step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (step.startsWith(QLatin1Char('^'))) {
            QTest::keyClick(&program.window(), Qt::Key(step.at(1).unicode()), Qt::ControlModifier);
        } else if (step == QLatin1String("editor")) {
            program.window().showEditor(program.firstTemplate());
        } else if (step == QLatin1String("mine")) {
            Profile mine = program.firstTemplate();
            mine.setName(kMine);
            program.window().showEditor(mine);
        } else if (step == QLatin1String("second")) {
            // The chooser offers every template and shows the information of the one chosen.
            QComboBox *combo = program.child<QComboBox>("comboBox");
            QCOMPARE(combo->count(), program.data.library()->count());
            combo->setFocus();
            QTest::keyClick(combo, Qt::Key_Down);
            const Profile &chosen = *program.data.library()->profileAt(1);
            QCOMPARE(combo->currentText(), chosen.name());
            QCOMPARE(program.child<QPlainTextEdit>("informationText")->toPlainText(), chosen.extraText(0));
        } else if (step == QLatin1String("continue")) {
            // The panel names the profile, written as it is.
            for (const ContinueForm *panel : program.window().findChildren<ContinueForm *>()) {
                if (!panel->isVisible())
                    continue;
                const QString label = panel->findChild<QLabel *>(QStringLiteral("label"))->text();
                QVERIFY2(label.contains(QStringLiteral("Mine &lt;2&gt;")), qPrintable(label));
                QTest::mouseClick(panel->findChild<QPushButton *>(QStringLiteral("button")), Qt::LeftButton);
                break;
            }
        } else if (step == QLatin1String("close")) {
            program.window().close();
        } else if (step.startsWith(QLatin1String("action"))) {
            program.child<QAction>(qPrintable(step))->trigger();
        } else {
            program.click(qPrintable(step + QLatin1String("Button")));
        }
    }
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void pagesAndBack_data();
    void pagesAndBack();
    void profileLandsWhereTheWayLeads_data();
    void profileLandsWhereTheWayLeads();
    void saveAndPrintFlows_data();
    void saveAndPrintFlows();
    void suggestedFileNames_data();
    void suggestedFileNames();
    void comparisonButtonStates_data();
    void comparisonButtonStates();
    void comparisonListsDuplicatesAndDrawsInListOrder();
    void languageSwitchReachesEveryPage();
    void exitEndsTheProgramWithZero();
    void undoAndRedoNameTheirStep();
    void recentProfilesOpenThroughTheQuestion();
    void unsavedEditsAreGuardedOnEveryPath_data();
    void unsavedEditsAreGuardedOnEveryPath();
};

void TestMainWindow::pagesAndBack_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("next"); // Next's text; empty: hidden
    QTest::addColumn<QString>("back"); // the prompt after Back; empty: hidden

    QTest::newRow("start page") << "" << kWelcome << "" << QString();
    QTest::newRow("edit profiles") << "editProfiles" << kEditProfiles << "" << kWelcome;
    QTest::newRow("programming") << "calibrationSelection" << kProgramming << "" << kWelcome;
    QTest::newRow("comparison") << "compare" << kComparison << "" << kWelcome;
    QTest::newRow("new from template")
        << "editProfiles createFromTemplate" << kChooseTemplate << "Create" << kEditProfiles;
    // Back after Ctrl+N returns to where the user was.
    QTest::newRow("Ctrl+N") << "^N" << kChooseTemplate << "Create" << kWelcome;
    QTest::newRow("Ctrl+N, programming")
        << "calibrationSelection ^N" << kChooseTemplate << "Create" << kProgramming;
    QTest::newRow("Ctrl+N, editor") << "editor ^N" << kChooseTemplate << "Create" << kEditorPrompt;
    QTest::newRow("Ctrl+N, confirmation")
        << "editor next ^N" << kChooseTemplate << "Create" << kConfirmPrompt;
    QTest::newRow("template to program")
        << "calibrationSelection calibrateDefault" << kProgramTemplate << "Program" << kProgramming;
    QTest::newRow("template to compare")
        << "compare addDefault" << kCompareTemplate << "Add to list" << kComparison;
    QTest::newRow("editor, nothing changed") << "editor" << kEditorPrompt << "Next" << kWelcome;
    QTest::newRow("confirmation") << "editor next" << kConfirmPrompt << "Program the CDI" << kEditorPrompt;
    QTest::newRow("Ctrl+W on the editor")
        << "editor ^W" << kConfirmPrompt << "Program the CDI" << kEditorPrompt;
}

void TestMainWindow::pagesAndBack()
{
    QFETCH(QString, steps);
    QFETCH(QString, prompt);
    QFETCH(QString, next);
    QFETCH(QString, back);

    Program program;
    QVERIFY(program.ready());
    take(program, steps);
    QCOMPARE(program.prompt(), prompt);
    const bool onEditor = prompt == QLatin1String(kEditorPrompt);
    QCOMPARE(program.button("exitButton")->isVisible(), !onEditor);
    QAbstractButton *nextButton = program.button("nextButton");
    QCOMPARE(nextButton->isVisible() ? nextButton->text() : QString(), next);
    if (prompt == QLatin1String(kConfirmPrompt))
        QCOMPARE(program.child<QLabel>("labelName")->text(), program.firstTemplate().name());
    // Nothing was edited, so there is nothing to go on with.
    for (const ContinueForm *panel : program.window().findChildren<ContinueForm *>())
        QVERIFY(!panel->isVisible());
    // The commands that need a profile work on the editor only, by menu and by shortcut.
    for (const char *name : {"actionSaveAs", "actionReset", "actionExport", "actionPrint"})
        QCOMPARE(program.child<QAction>(name)->isEnabled(), onEditor);
    for (const char *name : {"actionNew", "actionOpen", "actionImport", "actionExit", "actionAbout"})
        QVERIFY(program.child<QAction>(name)->isEnabled());
    if (!onEditor)
        take(program, QStringLiteral("^S ^W ^P"));
    QCOMPARE(program.prompt(), prompt);

    QCOMPARE(program.button("backButton")->isVisible(), !back.isEmpty());
    if (!back.isEmpty()) {
        program.click("backButton");
        QCOMPARE(program.prompt(), back);
    }
    QVERIFY(program.prompts.shown.isEmpty());
}

void TestMainWindow::profileLandsWhereTheWayLeads_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QByteArray>("file"); // null: the open dialog is cancelled or not shown
    QTest::addColumn<QString>("shown"); // see shownProfile(); %1: the second template's name
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("dialogs");

    const QByteArray saved = profileFileBytes(namedProfile(QStringLiteral("Race tune"), 0));
    const QByteArray garbage("not a profile at all");
    const QByteArray none;
    const QString compare = QStringLiteral("compare addCustom");
    QTest::newRow("a profile file") << "^O" << saved << "Race tune" << kEditorPrompt << "open";
    QTest::newRow("an unreadable file") << "^O" << garbage << "" << kWelcome << "open warn";
    QTest::newRow("an empty file") << "^O" << QByteArray("") << "" << kWelcome << "open warn";
    QTest::newRow("open cancelled") << "^O" << none << "" << kWelcome << "open";
    QTest::newRow("load from file") << "editProfiles loadFile" << saved << "Race tune" << kEditorPrompt
                                    << "open";
    QTest::newRow("program a custom profile")
        << "calibrationSelection calibrateCustom" << saved << "Race tune" << kConfirmPrompt << "open";
    QTest::newRow("compare a custom profile")
        << compare << saved << "Custom: Race tune" << kComparison << "open";
    QTest::newRow("compare an unreadable file") << compare << garbage << "" << kComparison << "open warn";
    QTest::newRow("compare, cancelled") << compare << none << "" << kComparison << "open";
    QTest::newRow("create from the second template")
        << "editProfiles createFromTemplate second next" << none << "%1" << kEditorPrompt << QString();
    QTest::newRow("compare the second template")
        << "compare addDefault second next" << none << "Default: %1" << kComparison << QString();
    QTest::newRow("continue editing")
        << "mine back editProfiles continue" << none << kMine << kEditorPrompt << QString();
    QTest::newRow("program the profile last edited")
        << "mine back calibrationSelection continue" << none << kMine << kConfirmPrompt << QString();
}

void TestMainWindow::profileLandsWhereTheWayLeads()
{
    QFETCH(QString, steps);
    QFETCH(QByteArray, file);
    QFETCH(QString, shown);
    QFETCH(QString, prompt);
    QFETCH(QString, dialogs);

    QTemporaryDir folder;
    Program program;
    QVERIFY(program.ready());
    const QString path = folder.filePath(QStringLiteral("opened.cdi"));
    if (!file.isNull()) {
        QVERIFY(writeAll(path, file));
        program.prompts.fileAnswers.append(path);
    }
    take(program, steps);

    QCOMPARE(program.prompts.kinds().join(QLatin1Char(' ')), dialogs);
    if (!dialogs.isEmpty())
        QCOMPARE(program.prompts.shown.at(0).text, QStringLiteral("CDI profiles (*.cdi)"));
    QCOMPARE(program.prompt(), prompt);
    QCOMPARE(shownProfile(program), shown.arg(program.data.library()->profileAt(1)->name()));
    // A template taken into the editor becomes the user's own.
    QVERIFY(program.prompt() != QLatin1String(kEditorPrompt) || editorOf(program)->profile().isCustom());
}

void TestMainWindow::saveAndPrintFlows_data()
{
    QTest::addColumn<QString>("target"); // "new", "older", "read-only", "missing folder"
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("message");

    QTest::newRow("save into a new file") << "new" << int(Qt::Key_S) << "";
    QTest::newRow("save over an older file") << "older" << int(Qt::Key_S) << "";
    QTest::newRow("save over a read-only file")
        << "read-only" << int(Qt::Key_S) << "Saving profile failed:\n\ncould not overwrite file";
    QTest::newRow("save into a missing folder")
        << "missing folder" << int(Qt::Key_S) << "Saving profile failed:\n\ncould not write to file";
    QTest::newRow("print over an older file") << "older" << int(Qt::Key_P) << "";
    QTest::newRow("print over a read-only file")
        << "read-only" << int(Qt::Key_P) << "Printing PDF failed:\n\ncould not overwrite file";
}

// A failed save or print leaves the old file as it was, and no temporary file behind.
void TestMainWindow::saveAndPrintFlows()
{
    QFETCH(QString, target);
    QFETCH(int, key);
    QFETCH(QString, message);

    const bool printing = key == Qt::Key_P;
    const QString suffix = printing ? QStringLiteral(".pdf") : QStringLiteral(".cdi");
    QTemporaryDir folder;
    const QString name = QStringLiteral("mine") + suffix;
    const QString path
        = folder.filePath(target == QLatin1String("missing folder") ? QStringLiteral("gone/") + name : name);
    const QByteArray old("the file that was there before");
    if (target == QLatin1String("older") || target == QLatin1String("read-only"))
        QVERIFY(writeAll(path, old));
    if (target == QLatin1String("read-only"))
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser));

    Program program;
    QVERIFY(program.ready());
    take(program, QStringLiteral("editor"));
    program.prompts.fileAnswers.append(path);
    QTest::keyClick(&program.window(), Qt::Key(key), Qt::ControlModifier);

    QCOMPARE(
        program.prompts.kinds().join(QLatin1Char(' ')), QString(message.isEmpty() ? "save" : "save warn"));
    const ScriptedPrompts::Shown dialog = program.prompts.shown.at(0);
    QCOMPARE(
        dialog.text, printing ? QStringLiteral("PDF files (*.pdf)") : QStringLiteral("CDI profiles (*.cdi)"));
    QCOMPARE(dialog.buttons, QStringList {program.firstTemplate().name() + suffix});
    if (message.isEmpty() && printing) {
        QVERIFY(readAll(path).startsWith("%PDF"));
    } else if (message.isEmpty()) {
        const std::optional<Profile> readBack = readProfileFile(path);
        QVERIFY(readBack);
        QCOMPARE(readBack->name(), program.firstTemplate().name());
        QCOMPARE(readBack->map(), program.firstTemplate().map());
    } else {
        QCOMPARE(program.prompts.shown.at(1).text, message);
        QCOMPARE(readAll(path), target == QLatin1String("read-only") ? old : QByteArray());
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files),
        target == QLatin1String("missing folder") ? QStringList() : QStringList {name});
    QCOMPARE(program.prompt(), QString::fromLatin1(kEditorPrompt));
}

void TestMainWindow::suggestedFileNames_data()
{
    QTest::addColumn<QStringList>("names"); // the profile's, then the file's

    QTest::newRow("path separators") << QStringList {"road/track\\wet", "road_track_wet"};
    QTest::newRow("characters Windows refuses") << QStringList {"a<b>c:d\"e|f?g*h", "a_b_c_d_e_f_g_h"};
    QTest::newRow("control characters") << QStringList {"line\tone\ntwo", "line_one_two"};
    QTest::newRow("blanks and dots at the ends") << QStringList {"  . tuned. . ", "tuned"};
    QTest::newRow("nothing but dots") << QStringList {"...", "profile"};
    QTest::newRow("device name") << QStringList {"con", "con_"};
    QTest::newRow("device name with extension") << QStringList {"LPT1.old", "LPT1_.old"};
    QTest::newRow("device name inside a word") << QStringList {"CONSOLE", "CONSOLE"};
    QTest::newRow("long names are cut") << QStringList {QString(100, 'x'), QString(80, 'x')};
    QTest::newRow("a cut never splits a character")
        << QStringList {QString(79, 'x') + QString::fromUtf8("\xF0\x9F\x94\xA5") + "tail", QString(79, 'x')};
}

void TestMainWindow::suggestedFileNames()
{
    QFETCH(QStringList, names);
    QCOMPARE(suggestedFileName(names[0], QStringLiteral("profile")), names[1]);
}

void TestMainWindow::comparisonButtonStates_data()
{
    QTest::addColumn<QString>("steps"); // "add", "click<row>", "ctrl<row>", "down", "remove", "clear"
    QTest::addColumn<QStringList>("listed");
    QTest::addColumn<QString>("enabled"); // "+" or "-" for Show graph, Remove all and Remove

    QTest::newRow("empty list") << "" << QStringList() << "---";
    QTest::newRow("one entry") << "add" << QStringList {"Custom: 0"} << "++-";
    QTest::newRow("an entry clicked") << "add click0" << QStringList {"Custom: 0"} << "+++";
    QTest::newRow("the last entry removed") << "add click0 remove" << QStringList() << "---";
    QTest::newRow("the clicked one of two removed, the other selected next")
        << "add add click0 remove" << QStringList {"Custom: 1"} << "+++";
    QTest::newRow("an entry chosen by keyboard")
        << "add add down" << QStringList {"Custom: 0", "Custom: 1"} << "+++";
    QTest::newRow("a selection taken back with Ctrl leaves nothing to remove")
        << "add add click1 ctrl1" << QStringList {"Custom: 0", "Custom: 1"} << "++-";
    QTest::newRow("Remove twice in the middle")
        << "add add add click1 remove remove" << QStringList {"Custom: 0"} << "+++";
    QTest::newRow("all removed") << "add add click0 clear" << QStringList() << "---";
}

void TestMainWindow::comparisonButtonStates()
{
    QFETCH(QString, steps);
    QFETCH(QStringList, listed);
    QFETCH(QString, enabled);

    ComparisonForm form;
    form.resize(700, 420);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QListWidget *list = form.findChild<QListWidget *>(QStringLiteral("list"));
    const auto button
        = [&form](const QString &name) { return form.findChild<QPushButton *>(name + "Button"); };
    for (const QString &step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (step == QLatin1String("add"))
            form.addProfile(namedProfile(QString::number(list->count()), 0));
        else if (step.startsWith(QLatin1String("click")))
            clickEntry(list, step.mid(5).toInt());
        else if (step.startsWith(QLatin1String("ctrl")))
            clickEntry(list, step.mid(4).toInt(), Qt::ControlModifier);
        else if (step == QLatin1String("down"))
            QTest::keyClick(list, Qt::Key_Down);
        else
            QTest::mouseClick(button(step), Qt::LeftButton);
    }
    QString state;
    for (const char *name : {"showGraph", "clear", "remove"})
        state += QLatin1Char(button(QLatin1String(name))->isEnabled() ? '+' : '-');
    QCOMPARE(state, enabled);
    QCOMPARE(entries(list), listed);
}

// The same template twice is listed twice; the graph shows the list in its order, also after a
// change back in the list.
void TestMainWindow::comparisonListsDuplicatesAndDrawsInListOrder()
{
    Program program;
    QVERIFY(program.ready());
    take(
        program, QStringLiteral("compare addDefault next addDefault next")); // the first template, as offered
    QListWidget *list = program.child<QListWidget>("list");
    const QString factory = QStringLiteral("Default: ") + program.firstTemplate().name();
    QCOMPARE(entries(list), (QStringList {factory, factory}));
    program.window().findChild<ComparisonForm *>()->addProfile(namedProfile(QStringLiteral("Alpha"), 3));
    program.click("showGraphButton");

    MultiGraphForm *graph = program.window().findChild<MultiGraphForm *>();
    QVERIFY(graph->isVisible());
    const auto legend = [graph] {
        QStringList names;
        for (const Profile &profile : graph->profiles())
            names.append(profile.name());
        return names;
    };
    const QString name = program.firstTemplate().name();
    QCOMPARE(legend(), (QStringList {name, name, "Alpha"}));
    QCOMPARE(graph->image().size(), graph->graphSize());
    // Under the graph, two rows of values per profile, named as in the legend.
    const QTableWidget *values = graph->findChild<QTableWidget *>(QStringLiteral("valueTable"));
    QCOMPARE(values->rowCount(), 6);
    QCOMPARE(values->item(2, 0)->text(), factory + QStringLiteral(" (2)"));

    program.click("backButton");
    clickEntry(list, 0);
    take(program, QStringLiteral("remove showGraph"));
    QCOMPARE(legend(), (QStringList {name, "Alpha"}));
}

void TestMainWindow::languageSwitchReachesEveryPage()
{
    Program program;
    QVERIFY(program.ready());
    take(program, QStringLiteral("editProfiles createFromTemplate"));
    WidgetTest::Translator translator({{QString("WizardForm|") + kChooseTemplate, "Wählen Sie eine Vorlage."},
        {"WizardForm|Create", "Erstellen"},
        {"WizardForm|{Program your CDI} with a profile of your choice",
            "{Programmieren Sie Ihre CDI} mit einem Profil Ihrer Wahl"},
        {"MainWindow|&Profile", "&Profil"}, {"MainWindow|Back", "Zurück"}, {"CProfileItem|Custom", "Eigenes"},
        {"ComparisonForm|Remove all", "Alle entfernen"}});
    QCoreApplication::installTranslator(&translator);
    program.switcher.setLanguage(CLanguageSwitcher::kEnglish); // tells every listener

    QCOMPARE(program.prompt(), QStringLiteral("Wählen Sie eine Vorlage."));
    QCOMPARE(program.button("nextButton")->text(), QStringLiteral("Erstellen"));
    QCOMPARE(program.button("backButton")->text(), QStringLiteral("Zurück"));
    QCOMPARE(program.child<QMenu>("menuProfile")->title(), QStringLiteral("&Profil"));
    // The braces mark the highlighted words, in every language.
    QCOMPARE(program.button("calibrationSelectionButton")->toolTip(),
        QStringLiteral("<font color=#3E6C82>Programmieren Sie Ihre CDI</font> mit einem Profil Ihrer Wahl"));
    for (const QAbstractButton *any : program.window().findChildren<QAbstractButton *>())
        QVERIFY2(!any->toolTip().contains(QLatin1Char('{')), qPrintable(any->toolTip()));

    program.window().start();
    take(program, QStringLiteral("compare")); // the list is built when first shown
    program.window().findChild<ComparisonForm *>()->addProfile(namedProfile(QStringLiteral("Mine"), 0));
    program.switcher.setLanguage(CLanguageSwitcher::kEnglish);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(entries(program.child<QListWidget>("list")), QStringList {"Eigenes: Mine"});
    QCOMPARE(program.button("clearButton")->text(), QStringLiteral("Alle entfernen"));
}

// The program's own event loop ends with 0. A loop that is still running after the click ends
// with 7 through the call queued behind it.
void TestMainWindow::exitEndsTheProgramWithZero()
{
    Program program;
    QVERIFY(program.ready());
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&program, &loop] {
        program.click("exitButton");
        QTimer::singleShot(0, &loop, [&loop] { loop.exit(7); });
    });
    QCOMPARE(loop.exec(), 0);
}

// Ctrl+Z and Ctrl+Y walk the editor's history, whose steps the menu names, the reset among them.
void TestMainWindow::undoAndRedoNameTheirStep()
{
    Program program;
    QVERIFY(program.ready());
    QAction *undo = program.child<QAction>("actionUndo");
    QAction *redo = program.child<QAction>("actionRedo");
    const auto undoKey = [&program] { QTest::keyClick(&program.window(), Qt::Key_Z, Qt::ControlModifier); };
    EditorForm *editor = editorOf(program);
    const QString name = program.firstTemplate().name();
    take(program, QStringLiteral("editor"));
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    editor->setProfileName(QStringLiteral("Edited"));
    QCOMPARE(undo->text(), QStringLiteral("Undo rename"));

    undoKey();
    QCOMPARE(editor->profile().name(), name);
    QCOMPARE(redo->text(), QStringLiteral("Redo rename"));
    take(program, QStringLiteral("^Y"));
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));
    undoKey();
    QTest::keyClick(&program.window(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));
    QVERIFY(editor->profile().isModified());
    QVERIFY(program.prompts.shown.isEmpty());

    program.prompts.askAnswers = {0};
    take(program, QStringLiteral("actionReset"));
    QCOMPARE(program.prompts.titles(), QStringList {"Reset profile"});
    QCOMPARE(undo->text(), QStringLiteral("Undo reset to defaults"));

    // Off the editor the history stays as it is: the reset is not taken back.
    program.click("nextButton");
    QVERIFY(!undo->isEnabled());
    undoKey();
    QCOMPARE(editor->profile().name(), name);
}

// A file opened lately is one click away in the Profile menu, through the unsaved-changes question.
void TestMainWindow::recentProfilesOpenThroughTheQuestion()
{
    Program program;
    QVERIFY(program.ready());
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("recent.cdi"));
    QVERIFY(writeAll(path, profileFileBytes(namedProfile(QStringLiteral("Recent one"), 0))));
    program.prompts.fileAnswers = QStringList {path};
    take(program, QStringLiteral("^O"));
    EditorForm *editor = editorOf(program);
    editor->setProfileName(QStringLiteral("Edited"));

    QMenu *menu = program.child<QMenu>("menuRecent");
    QMetaObject::invokeMethod(menu, "aboutToShow");
    QVERIFY(!menu->actions().isEmpty());
    QAction *first = menu->actions().first();
    QVERIFY2(first->text().startsWith(QLatin1String("Recent one (recent.cdi, ")), qPrintable(first->text()));
    program.prompts.shown.clear();
    program.prompts.askAnswers = {1, 0};
    first->trigger();
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));
    first->trigger();
    QCOMPARE(editor->profile().name(), QStringLiteral("Recent one"));
    QCOMPARE(program.prompts.titles(), (QStringList {"Unsaved changes", "Unsaved changes"}));

    // The start page lists it as well; one click opens it.
    program.window().start();
    QListWidget *list = program.child<QListWidget>("recentList");
    QVERIFY(list->isVisible());
    QCOMPARE(list->item(0)->text(), first->text());
    editor->setProfileName(QStringLiteral("Edited"));
    program.prompts.askAnswers = {0};
    clickEntry(list, 0);
    QCOMPARE(program.prompt(), QString::fromLatin1(kEditorPrompt));
    QCOMPARE(editor->profile().name(), QStringLiteral("Recent one"));
}

void TestMainWindow::unsavedEditsAreGuardedOnEveryPath_data()
{
    QTest::addColumn<bool>("fromStartPage"); // else from the programming confirmation
    QTest::addColumn<QString>("path");

    const QList<QPair<const char *, const char *>> paths {{"Exit", "exit"}, {"closing the window", "close"},
        {"Ctrl+N", "^N"}, {"Ctrl+O", "^O"}, {"Update", "actionUpdate"},
        {"create from template", "editProfiles createFromTemplate next"},
        {"load from file", "editProfiles loadFile"}};
    for (const bool fromStart : {false, true}) {
        for (const auto &path : paths) {
            if (!fromStart && QByteArray(path.second).contains(' '))
                continue; // the start page's own buttons
            QTest::addRow("%s from the %s", path.first, fromStart ? "start page" : "confirmation")
                << fromStart << QString::fromLatin1(path.second);
        }
    }
}

// The edited profile lives on behind the other pages. Every path that replaces it or ends the
// program asks first: "Back" keeps the edits, "Discard changes" takes them away for good, so
// neither a cancelled file dialog nor the continue panel brings them back.
void TestMainWindow::unsavedEditsAreGuardedOnEveryPath()
{
    QFETCH(bool, fromStartPage);
    QFETCH(QString, path);
    const QString edited = QStringLiteral("Edited");

    for (const int answer : {1, 0}) {
        Program program;
        QVERIFY(program.ready());
        EditorForm *editor = editorOf(program);
        take(program, QStringLiteral("editor"));
        editor->setProfileName(edited);
        program.click("nextButton");
        if (fromStartPage)
            program.window().start(); // as after programming
        QVERIFY(program.prompts.shown.isEmpty());

        program.prompts.askAnswers = {answer};
        take(program, path);
        QVERIFY(!program.prompts.shown.isEmpty());
        QCOMPARE(program.prompts.shown.first().title, QStringLiteral("Unsaved changes"));
        const bool kept = answer == 1;
        QCOMPARE(editor->profile().name(), kept ? edited : program.firstTemplate().name());
        QCOMPARE(editor->profile().isModified(), kept);
        // Once discarded, leaving asks nothing more.
        program.prompts.shown.clear();
        if (!kept) {
            QVERIFY(editor->confirmDiscard());
            QVERIFY(program.prompts.shown.isEmpty());
        }
    }
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
