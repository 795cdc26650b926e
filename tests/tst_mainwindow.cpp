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
const char kConfirmPrompt[] = "Please confirm programming the CDI with this profile.";

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

// What the page now shown holds: the profile's name on the editor and on the confirmation page,
// the entries of the list on the comparison page.
QString shownProfile(const Program &program)
{
    if (program.prompt() == QLatin1String(kEditorPrompt))
        return program.window().findChild<EditorForm *>()->profile().name();
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

// Takes a step as the user would: a button by its name, "^X" for Ctrl+X, or "editor" for a
// template handed to the editor as the template chooser does it.
void take(Program &program, const QString &step)
{
    if (step.startsWith(QLatin1Char('^')))
        QTest::keyClick(&program.window(), Qt::Key(step.at(1).unicode()), Qt::ControlModifier);
    else if (step == QLatin1String("editor"))
        program.window().showEditor(program.firstTemplate());
    else
        program.click(qPrintable(step));
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void pagesAndBack_data();
    void pagesAndBack();
    void editorShortcutsActOnlyOnTheEditor_data();
    void editorShortcutsActOnlyOnTheEditor();
    void openFlows_data();
    void openFlows();
    void saveAndPrintFlows_data();
    void saveAndPrintFlows();
    void suggestedFileNames_data();
    void suggestedFileNames();
    void templateChooser_data();
    void templateChooser();
    void continuePanels_data();
    void continuePanels();
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
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<bool>("exitVisible");
    QTest::addColumn<QStringList>("nextAndBack"); // Next's text and the prompt after Back; empty: hidden

    const QString none;
    QTest::newRow("start page") << QStringList() << kWelcome << true << QStringList {none, none};
    QTest::newRow("edit profiles") << QStringList {"editProfilesButton"} << kEditProfiles << true
                                   << QStringList {none, kWelcome};
    QTest::newRow("programming") << QStringList {"calibrationSelectionButton"} << kProgramming << true
                                 << QStringList {none, kWelcome};
    QTest::newRow("comparison") << QStringList {"compareButton"} << kComparison << true
                                << QStringList {none, kWelcome};
    QTest::newRow("template for a new profile")
        << QStringList {"editProfilesButton", "createFromTemplateButton"} << kChooseTemplate << true
        << QStringList {"Create", kEditProfiles};
    // Back after Ctrl+N returns to where the user was.
    QTest::newRow("Ctrl+N opens the template chooser")
        << QStringList {"^N"} << kChooseTemplate << true << QStringList {"Create", kWelcome};
    QTest::newRow("Ctrl+N from the programming view") << QStringList {"calibrationSelectionButton",
        "^N"} << kChooseTemplate << true << QStringList {"Create", kProgramming};
    QTest::newRow("Ctrl+N from the editor")
        << QStringList {"editor", "^N"} << kChooseTemplate << true << QStringList {"Create", kEditorPrompt};
    QTest::newRow("Ctrl+N from the confirmation") << QStringList {"editor", "nextButton",
        "^N"} << kChooseTemplate << true << QStringList {"Create", kConfirmPrompt};
    QTest::newRow("template to program")
        << QStringList {"calibrationSelectionButton", "calibrateDefaultButton"}
        << "Select a profile from the dropdown list to program your CDI." << true
        << QStringList {"Program", kProgramming};
    QTest::newRow("template to compare") << QStringList {"compareButton", "addDefaultButton"}
                                         << "Select a profile from the drop-down list for comparison." << true
                                         << QStringList {"Add to list", kComparison};
    QTest::newRow("editor, nothing changed")
        << QStringList {"editor"} << kEditorPrompt << false << QStringList {"Next", kWelcome};
    QTest::newRow("confirmation") << QStringList {"editor", "nextButton"} << kConfirmPrompt << true
                                  << QStringList {"Program the CDI", kEditorPrompt};
}

void TestMainWindow::pagesAndBack()
{
    QFETCH(QStringList, steps);
    QFETCH(QString, prompt);
    QFETCH(bool, exitVisible);
    QFETCH(QStringList, nextAndBack);
    const QString nextText = nextAndBack[0];
    const QString promptAfterBack = nextAndBack[1];

    Program program;
    QVERIFY(program.ready());
    for (const QString &step : steps)
        take(program, step);

    QCOMPARE(program.window().windowTitle(), QStringLiteral("Sparkwright"));
    QCOMPARE(program.prompt(), prompt);
    QCOMPARE(program.button("exitButton")->isVisible(), exitVisible);
    QCOMPARE(program.button("nextButton")->isVisible(), !nextText.isEmpty());
    if (!nextText.isEmpty())
        QCOMPARE(program.button("nextButton")->text(), nextText);
    // The actions that need a profile work on the editor only.
    const bool onEditor = prompt == QLatin1String(kEditorPrompt);
    for (const char *name : {"actionSaveAs", "actionReset", "actionExport", "actionPrint"})
        QCOMPARE(program.child<QAction>(name)->isEnabled(), onEditor);
    for (const char *name : {"actionNew", "actionOpen", "actionImport", "actionExit", "actionAbout"})
        QVERIFY(program.child<QAction>(name)->isEnabled());
    if (prompt == QLatin1String(kConfirmPrompt)) {
        const CustomForm *confirmation = program.window().findChild<CustomForm *>();
        QCOMPARE(confirmation->profile().name(), program.firstTemplate().name());
        QCOMPARE(confirmation->findChild<QLabel *>(QStringLiteral("labelName"))->text(),
            program.firstTemplate().name());
    }

    QCOMPARE(program.button("backButton")->isVisible(), !promptAfterBack.isEmpty());
    if (!promptAfterBack.isEmpty()) {
        program.click("backButton");
        QCOMPARE(program.prompt(), promptAfterBack);
    }
    QVERIFY(program.prompts.shown.isEmpty());
}

void TestMainWindow::editorShortcutsActOnlyOnTheEditor_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("shown"); // on the editor: the dialog title, or the prompt of the page reached

    QTest::newRow("Ctrl+S saves") << int(Qt::Key_S) << "Save CDI profile";
    QTest::newRow("Ctrl+W programs") << int(Qt::Key_W) << kConfirmPrompt;
    QTest::newRow("Ctrl+P prints") << int(Qt::Key_P) << "Print PDF";
}

void TestMainWindow::editorShortcutsActOnlyOnTheEditor()
{
    QFETCH(int, key);
    QFETCH(QString, shown);

    Program program;
    QVERIFY(program.ready());
    QTest::keyClick(&program.window(), Qt::Key(key), Qt::ControlModifier);
    QCOMPARE(program.prompt(), QString::fromLatin1(kWelcome));
    QVERIFY(program.prompts.shown.isEmpty());

    take(program, QStringLiteral("editor"));
    QTest::keyClick(&program.window(), Qt::Key(key), Qt::ControlModifier);
    if (program.prompts.shown.isEmpty())
        QCOMPARE(program.prompt(), shown);
    else
        QCOMPARE(program.prompts.titles(), QStringList {shown});
}

void TestMainWindow::openFlows_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QByteArray>("content"); // null: the dialog was cancelled
    QTest::addColumn<bool>("warned");
    QTest::addColumn<QString>("prompt");

    const QByteArray saved = profileFileBytes(namedProfile(QStringLiteral("Race tune"), 0));
    const QStringList open {"^O"};
    const QStringList compare {"compareButton", "addCustomButton"};
    QTest::newRow("a profile file") << open << saved << false << kEditorPrompt;
    QTest::newRow("an unreadable file") << open << QByteArray("not a profile at all") << true << kWelcome;
    QTest::newRow("an empty file") << open << QByteArray("") << true << kWelcome;
    QTest::newRow("cancelled") << open << QByteArray() << false << kWelcome;
    QTest::newRow("load from file on the start page")
        << QStringList {"editProfilesButton", "loadFileButton"} << saved << false << kEditorPrompt;
    QTest::newRow("program a custom profile")
        << QStringList {"calibrationSelectionButton", "calibrateCustomButton"} << saved << false
        << kConfirmPrompt;
    QTest::newRow("compare a custom profile") << compare << saved << false << kComparison;
    QTest::newRow("compare an unreadable file") << compare << QByteArray("garbage") << true << kComparison;
    QTest::newRow("compare, cancelled") << compare << QByteArray() << false << kComparison;
}

// The profile read lands where the way to the dialog leads.
void TestMainWindow::openFlows()
{
    QFETCH(QStringList, steps);
    QFETCH(QByteArray, content);
    QFETCH(bool, warned);
    QFETCH(QString, prompt);

    QTemporaryDir folder;
    Program program;
    QVERIFY(program.ready());
    const QString path = folder.filePath(QStringLiteral("opened.cdi"));
    if (!content.isNull()) {
        QVERIFY(writeAll(path, content));
        program.prompts.fileAnswers.append(path);
    }
    for (const QString &step : steps)
        take(program, step);

    QCOMPARE(program.prompts.shown.size(), warned ? 2 : 1);
    QCOMPARE(program.prompts.shown.at(0).kind, QStringLiteral("open"));
    QCOMPARE(program.prompts.shown.at(0).title, QStringLiteral("Open CDI profile"));
    QCOMPARE(program.prompts.shown.at(0).text, QStringLiteral("CDI profiles (*.cdi)"));
    if (warned) {
        QCOMPARE(program.prompts.shown.at(1).kind, QStringLiteral("warn"));
        QCOMPARE(program.prompts.shown.at(1).text, QStringLiteral("CDI profile could not be loaded."));
    }
    QCOMPARE(program.prompt(), prompt);
    const bool read = !content.isNull() && !warned;
    QCOMPARE(shownProfile(program),
        !read                                      ? QString()
            : prompt == QLatin1String(kComparison) ? "Custom: Race tune"
                                                   : "Race tune");
}

void TestMainWindow::saveAndPrintFlows_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("target"); // "new", "older", "read-only", "missing folder"
    QTest::addColumn<QString>("message");

    QTest::newRow("save into a new file") << int(Qt::Key_S) << "new"
                                          << "";
    QTest::newRow("save over an older file") << int(Qt::Key_S) << "older"
                                             << "";
    QTest::newRow("save over a read-only file") << int(Qt::Key_S) << "read-only"
                                                << "Saving profile failed:\n\ncould not overwrite file";
    QTest::newRow("save into a missing folder") << int(Qt::Key_S) << "missing folder"
                                                << "Saving profile failed:\n\ncould not write to file";
    QTest::newRow("print over an older file") << int(Qt::Key_P) << "older"
                                              << "";
    QTest::newRow("print over a read-only file") << int(Qt::Key_P) << "read-only"
                                                 << "Printing PDF failed:\n\ncould not overwrite file";
}

// A failed save or print leaves the old file as it was, and no temporary file behind.
void TestMainWindow::saveAndPrintFlows()
{
    QFETCH(int, key);
    QFETCH(QString, target);
    QFETCH(QString, message);

    const bool printing = key == Qt::Key_P;
    QTemporaryDir folder;
    const QString name = printing ? QStringLiteral("sheet.pdf") : QStringLiteral("mine.cdi");
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

    const ScriptedPrompts::Shown dialog = program.prompts.shown.value(0);
    QCOMPARE(dialog.kind, QStringLiteral("save"));
    QCOMPARE(dialog.title, printing ? QStringLiteral("Print PDF") : QStringLiteral("Save CDI profile"));
    QCOMPARE(
        dialog.text, printing ? QStringLiteral("PDF files (*.pdf)") : QStringLiteral("CDI profiles (*.cdi)"));
    QCOMPARE(dialog.buttons, QStringList {program.firstTemplate().name() + (printing ? ".pdf" : ".cdi")});

    QCOMPARE(program.prompts.shown.size(), message.isEmpty() ? 1 : 2);
    if (message.isEmpty() && printing) {
        QVERIFY(readAll(path).startsWith("%PDF"));
    } else if (message.isEmpty()) {
        const std::optional<Profile> readBack = readProfileFile(path);
        QVERIFY(readBack);
        QCOMPARE(readBack->name(), program.firstTemplate().name());
        QCOMPARE(readBack->map(), program.firstTemplate().map());
    } else {
        const ScriptedPrompts::Shown warning = program.prompts.shown.at(1);
        QCOMPARE(warning.kind, QStringLiteral("warn"));
        QCOMPARE(warning.title, dialog.title);
        QCOMPARE(warning.text, message);
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

void TestMainWindow::templateChooser_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QString>("prompt"); // after Next
    QTest::newRow("create a custom profile")
        << QStringList {"editProfilesButton", "createFromTemplateButton"} << kEditorPrompt;
    QTest::newRow("add to the comparison")
        << QStringList {"compareButton", "addDefaultButton"} << kComparison;
}

// The second template, chosen with the keyboard, shows its information and map, and goes on.
void TestMainWindow::templateChooser()
{
    QFETCH(QStringList, steps);
    QFETCH(QString, prompt);

    Program program;
    QVERIFY(program.ready());
    for (const QString &step : steps)
        take(program, step);
    QComboBox *combo = program.child<QComboBox>("comboBox");
    QCOMPARE(combo->count(), program.data.library()->count());
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    const Profile &chosen = *program.data.library()->profileAt(1);
    QCOMPARE(combo->currentText(), chosen.name());
    QCOMPARE(program.child<QPlainTextEdit>("informationText")->toPlainText(), chosen.extraText(0));
    program.click("nextButton");

    QCOMPARE(program.prompt(), prompt);
    QVERIFY(program.prompts.shown.isEmpty());
    QCOMPARE(shownProfile(program),
        prompt == QLatin1String(kEditorPrompt) ? chosen.name() : "Default: " + chosen.name());
    if (prompt == QLatin1String(kEditorPrompt)) {
        QCOMPARE(program.window().findChild<EditorForm *>()->profile().map(), chosen.map());
        QVERIFY(program.window().findChild<EditorForm *>()->profile().isCustom());
    }
}

void TestMainWindow::continuePanels_data()
{
    QTest::addColumn<bool>("edited");
    QTest::addColumn<QStringList>("viewAndPanel");
    QTest::addColumn<QString>("prompt");

    const QStringList editing {"editProfilesButton", "editContinueForm"};
    const QStringList programming {"calibrationSelectionButton", "programmingContinueForm"};
    QTest::newRow("nothing edited: no panel to continue editing") << false << editing << QString();
    QTest::newRow("nothing edited: no panel to program") << false << programming << QString();
    QTest::newRow("continue editing") << true << editing << kEditorPrompt;
    QTest::newRow("program the edited profile") << true << programming << kConfirmPrompt;
}

void TestMainWindow::continuePanels()
{
    QFETCH(bool, edited);
    QFETCH(QStringList, viewAndPanel);
    QFETCH(QString, prompt);

    Program program;
    QVERIFY(program.ready());
    Profile mine = program.firstTemplate();
    mine.setName(QStringLiteral("Mine <2>"));
    if (edited) {
        program.window().showEditor(mine);
        program.click("backButton");
    }
    program.click(qPrintable(viewAndPanel[0]));
    ContinueForm *form = program.window().findChild<ContinueForm *>(viewAndPanel[1]);
    QCOMPARE(form->isVisible(), edited);
    if (!edited)
        return;
    const QString label = form->findChild<QLabel *>(QStringLiteral("label"))->text();
    QVERIFY2(label.contains(QStringLiteral("Mine &lt;2&gt;")), qPrintable(label));
    QTest::mouseClick(form->findChild<QPushButton *>(QStringLiteral("button")), Qt::LeftButton);

    QCOMPARE(program.prompt(), prompt);
    const Profile &shown = prompt == QLatin1String(kEditorPrompt)
        ? program.window().findChild<EditorForm *>()->profile()
        : program.window().findChild<CustomForm *>()->profile();
    QCOMPARE(shown.name(), mine.name());
    QCOMPARE(shown.map(), mine.map());
}

void TestMainWindow::comparisonButtonStates_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<bool>("showGraph");
    QTest::addColumn<bool>("removeAll");
    QTest::addColumn<bool>("remove");
    QTest::addColumn<QStringList>("listed");

    QTest::newRow("empty list") << QStringList {} << false << false << false << QStringList();
    QTest::newRow("one entry") << QStringList {"add"} << true << true << false << QStringList {"Custom: 0"};
    QTest::newRow("an entry clicked")
        << QStringList {"add", "click 0"} << true << true << true << QStringList {"Custom: 0"};
    QTest::newRow("the last entry removed")
        << QStringList {"add", "click 0", "remove"} << false << false << false << QStringList();
    QTest::newRow("the clicked one of two removed, the other selected next") << QStringList {
        "add", "add", "click 0", "remove"} << true << true << true << QStringList {"Custom: 1"};
    QTest::newRow("an entry chosen by keyboard") << QStringList {"add", "add", "key down"} << true << true
                                                 << true << QStringList {"Custom: 0", "Custom: 1"};
    QTest::newRow("a selection taken back with Ctrl leaves nothing to remove") << QStringList {"add", "add",
        "click 1", "ctrl-click 1"} << true << true << false << QStringList {"Custom: 0", "Custom: 1"};
    QTest::newRow("Remove twice in the middle") << QStringList {"add", "add", "add", "click 1", "remove",
        "remove"} << true << true << true << QStringList {"Custom: 0"};
    QTest::newRow("all removed") << QStringList {"add", "add", "click 0", "remove all"} << false << false
                                 << false << QStringList();
}

void TestMainWindow::comparisonButtonStates()
{
    QFETCH(QStringList, steps);
    QFETCH(bool, showGraph);
    QFETCH(bool, removeAll);
    QFETCH(bool, remove);
    QFETCH(QStringList, listed);

    ComparisonForm form;
    form.resize(700, 420);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QListWidget *list = form.findChild<QListWidget *>(QStringLiteral("list"));
    const auto button
        = [&form](const char *name) { return form.findChild<QPushButton *>(QLatin1String(name)); };
    for (const QString &step : steps) {
        if (step == QLatin1String("add"))
            form.addProfile(namedProfile(QString::number(list->count()), 0));
        else if (step.startsWith(QLatin1String("click ")))
            clickEntry(list, step.mid(6).toInt());
        else if (step.startsWith(QLatin1String("ctrl-click ")))
            clickEntry(list, step.mid(11).toInt(), Qt::ControlModifier);
        else if (step == QLatin1String("key down"))
            QTest::keyClick(list, Qt::Key_Down);
        else
            QTest::mouseClick(
                button(step == QLatin1String("remove") ? "removeButton" : "clearButton"), Qt::LeftButton);
    }
    QCOMPARE(button("showGraphButton")->isEnabled(), showGraph);
    QCOMPARE(button("clearButton")->isEnabled(), removeAll);
    QCOMPARE(button("removeButton")->isEnabled(), remove);
    QCOMPARE(entries(list), listed);
}

// The same template twice is listed twice; the graph shows the list in its order, also after a
// change back in the list.
void TestMainWindow::comparisonListsDuplicatesAndDrawsInListOrder()
{
    Program program;
    QVERIFY(program.ready());
    program.click("compareButton");
    for (int i = 0; i < 2; ++i) {
        program.click("addDefaultButton");
        program.click("nextButton"); // the first template, as offered
    }
    QListWidget *list = program.child<QListWidget>("list");
    const QString factory = QStringLiteral("Default: ") + program.firstTemplate().name();
    QCOMPARE(entries(list), (QStringList {factory, factory}));
    program.window().findChild<ComparisonForm *>()->addProfile(namedProfile(QStringLiteral("Alpha"), 3));
    program.click("showGraphButton");

    MultiGraphForm *graph = program.window().findChild<MultiGraphForm *>();
    QVERIFY(graph->isVisible());
    QCOMPARE(program.prompt(), QStringLiteral("The graph shows the selected profiles for comparison."));
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
    program.click("removeButton");
    program.click("showGraphButton");
    QCOMPARE(legend(), (QStringList {name, "Alpha"}));
}

void TestMainWindow::languageSwitchReachesEveryPage()
{
    Program program;
    QVERIFY(program.ready());
    program.click("editProfilesButton");
    program.click("createFromTemplateButton");
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
    program.click("compareButton"); // the list is built when first shown
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

// Ctrl+Z takes back the last change, the reset included, which keeps its own question in the menu.
void TestMainWindow::undoAndRedoNameTheirStep()
{
    Program program;
    QVERIFY(program.ready());
    QAction *undo = program.child<QAction>("actionUndo");
    QAction *redo = program.child<QAction>("actionRedo");
    const auto keys = [&program](Qt::KeyboardModifiers modifiers, Qt::Key key) {
        QTest::keyClick(&program.window(), key, modifiers);
    };
    EditorForm *editor = program.window().findChild<EditorForm *>();
    const QString name = program.firstTemplate().name();
    take(program, QStringLiteral("editor"));
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    editor->setProfileName(QStringLiteral("Edited"));
    QCOMPARE(undo->text(), QStringLiteral("Undo rename"));

    keys(Qt::ControlModifier, Qt::Key_Z);
    QCOMPARE(editor->profile().name(), name);
    QVERIFY(!editor->profile().isModified());
    QCOMPARE(redo->text(), QStringLiteral("Redo rename"));
    keys(Qt::ControlModifier, Qt::Key_Y);
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));
    keys(Qt::ControlModifier, Qt::Key_Z);
    keys(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z);
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));
    QVERIFY(editor->profile().isModified());
    QVERIFY(program.prompts.shown.isEmpty());

    program.prompts.askAnswers = {0};
    program.child<QAction>("actionReset")->trigger();
    QCOMPARE(program.prompts.titles(), QStringList {"Reset profile"});
    QCOMPARE(undo->text(), QStringLiteral("Undo reset to defaults"));
    keys(Qt::ControlModifier, Qt::Key_Z);
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));

    // Off the editor the history stays as it is.
    program.click("nextButton");
    QVERIFY(!undo->isEnabled());
    keys(Qt::ControlModifier, Qt::Key_Z);
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));
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
    EditorForm *editor = program.window().findChild<EditorForm *>();
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
    QTest::addColumn<QStringList>("path");

    const QList<QPair<const char *, QStringList>> paths {{"Exit", {"exitButton"}},
        {"closing the window", {"close"}}, {"Ctrl+N", {"^N"}}, {"Ctrl+O", {"^O"}},
        {"Update", {"actionUpdate"}},
        {"create from template", {"editProfilesButton", "createFromTemplateButton", "nextButton"}},
        {"load from file", {"editProfilesButton", "loadFileButton"}}};
    for (const bool fromStart : {false, true}) {
        for (const auto &path : paths) {
            if (!fromStart && path.second.size() > 1)
                continue; // the start page's own buttons
            QTest::addRow("%s from the %s", path.first, fromStart ? "start page" : "confirmation")
                << fromStart << path.second;
        }
    }
}

// The edited profile lives on behind the other pages. Every path that replaces it or ends the
// program asks first: "Back" keeps the edits, "Discard changes" takes them away for good, so
// neither a cancelled file dialog nor the continue panel brings them back.
void TestMainWindow::unsavedEditsAreGuardedOnEveryPath()
{
    QFETCH(bool, fromStartPage);
    QFETCH(QStringList, path);
    const QString edited = QStringLiteral("Edited");

    for (const int answer : {1, 0}) {
        Program program;
        QVERIFY(program.ready());
        EditorForm *editor = program.window().findChild<EditorForm *>();
        take(program, QStringLiteral("editor"));
        editor->setProfileName(edited);
        program.click("nextButton");
        if (fromStartPage)
            program.window().start(); // as after programming
        QVERIFY(program.prompts.shown.isEmpty());

        program.prompts.askAnswers = {answer};
        for (const QString &step : path) {
            if (step == QLatin1String("close"))
                program.window().close();
            else if (step.startsWith(QLatin1String("action")))
                program.child<QAction>(qPrintable(step))->trigger();
            else
                take(program, step);
        }
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
