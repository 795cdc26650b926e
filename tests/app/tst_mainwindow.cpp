// The whole program after the disclaimer as the user drives it: the ways between the pages and
// back, the menu commands and their shortcuts, the open, save and print flows with their
// messages, the panels that lead back to the profile last edited, the recent profiles, the
// comparison list and its graph, and the unsaved-changes question on every way out.
#include "dialogs/aboutdialog.h"
#include "editor/chintlabel.h"
#include "profile/profilefile.h"
#include "render/bracemarkup.h"
#include "render/plotfile.h"
#include "start/comparisonform.h"
#include "start/continueform.h"
#include "start/multigraphform.h"
#include "summary/customform.h"
#include "support/programfixture.h"

#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>

namespace {

const char kWelcome[] = "Welcome to Sparkwright. What would you like to do?";
const char kEditProfiles[] = "Choose where to load your profile from.";
const char kProgramming[] = "Choose what kind of profile to program your CDI with.";
const char kComparison[] = "Put together the profiles whose ignition maps you would like to compare.";
const char kChooseTemplate[] = "Select an item from the drop-down list as template for your custom profile.";
const char kGraph[] = "The graph shows the selected profiles for comparison.";
const char kMine[] = "Mine <2>";

Profile namedProfile(const QString &name)
{
    Profile profile;
    profile.setName(name);
    return profile;
}

QStringList entries(const QListWidget *list)
{
    QStringList texts;
    for (int row = 0; list && row < list->count(); ++row)
        texts.append(list->item(row)->text());
    return texts;
}

void clickEntry(QListWidget *list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::mouseClick(
        list->viewport(), Qt::LeftButton, modifiers, list->visualItemRect(list->item(row)).center());
}

// Takes the steps, separated by blanks, as the user would: "^X" for Ctrl+X, "editor" for a
// template handed to the editor as the template chooser does it, "mine" for a profile of the
// user's in its place, "second" for the second template chosen with the keyboard, "continue" for
// the panel leading back to the profile last edited, "close" for closing the window, "add" for a
// profile put on the comparison list, "click<row>", "ctrl<row>", "down" and "space<row>" (the
// entry's check box) in that list, an
// action by its name, else the button named after the step ("next": "nextButton").
void take(Program &program, const QString &steps)
{
    QListWidget *list = program.child<QListWidget>("list"); // exists once the comparison was shown
    for (const QString &step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (step.startsWith(QLatin1Char('^'))) {
            QTest::keyClick(&program.window(), Qt::Key(step.at(1).unicode()), Qt::ControlModifier);
        } else if (step == QLatin1String("editor") || step == QLatin1String("mine")) {
            Profile profile = program.firstTemplate();
            if (step == QLatin1String("mine"))
                profile.setName(kMine);
            program.window().showEditor(profile);
        } else if (step == QLatin1String("second")) {
            // The chooser shows the information of the template chosen.
            program.child<QComboBox>("comboBox")->setFocus();
            QTest::keyClick(program.child<QComboBox>("comboBox"), Qt::Key_Down);
            QCOMPARE(program.child<QPlainTextEdit>("informationText")->toPlainText(),
                program.data.library()->profileAt(1)->extraText(0));
        } else if (step == QLatin1String("continue")) {
            // The panel names the profile, written as it is.
            for (const ContinueForm *panel : program.window().findChildren<ContinueForm *>()) {
                if (panel->isVisible()) {
                    QVERIFY(panel->findChild<QLabel *>("label")->text().contains("Mine &lt;2&gt;"));
                    QTest::mouseClick(panel->findChild<QPushButton *>("button"), Qt::LeftButton);
                }
            }
        } else if (step == QLatin1String("close")) {
            program.window().close();
        } else if (step == QLatin1String("add")) {
            program.window().findChild<ComparisonForm *>()->addProfile(
                namedProfile(QString::number(list->count())));
        } else if (step.startsWith(QLatin1String("click")) || step.startsWith(QLatin1String("ctrl"))) {
            clickEntry(list, step.right(1).toInt(), step.at(1) == 't' ? Qt::ControlModifier : Qt::NoModifier);
        } else if (step.startsWith(QLatin1String("space"))) {
            clickEntry(list, step.right(1).toInt());
            QTest::keyClick(list, Qt::Key_Space);
        } else if (step == QLatin1String("down")) {
            QTest::keyClick(list, Qt::Key_Down);
        } else if (step.startsWith(QLatin1String("action"))) {
            program.child<QAction>(qPrintable(step))->trigger();
        } else {
            program.click(qPrintable(step + QLatin1String("Button")));
            list = program.child<QListWidget>("list");
        }
    }
}

// What a screen reader would miss on the window's visible widgets: a widget the keyboard reaches,
// or a picture, without a name (its own, its text or its label's), and markup in a name or a
// description.
QStringList unnamedOrMarkedUp(const QWidget &window)
{
    QStringList faults;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
        // A spin box's line edit is part of the box, which speaks for it.
        const bool part = widget->parentWidget() && widget->parentWidget()->inherits("QAbstractSpinBox");
        if (!widget->isVisible() || !iface || part)
            continue;
        const QString name = iface->text(QAccessible::Name);
        const bool reached = widget->focusPolicy() != Qt::NoFocus && widget->isEnabled();
        if ((reached || iface->role() == QAccessible::Graphic) && name.trimmed().isEmpty())
            faults << widget->objectName() + QLatin1String(" has no name");
        // A tag, not a profile named "Mine <2>".
        static const QRegularExpression tag(QStringLiteral("<\\s*/?[A-Za-z]"));
        if (name.contains(tag) || iface->text(QAccessible::Description).contains(tag))
            faults << widget->objectName() + QLatin1String(" carries markup");
    }
    return faults;
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void waysThroughThePages_data();
    void waysThroughThePages();
    void filesWritten_data();
    void filesWritten();
    void languageSwitchReachesEveryPage();
    void undoAndRedoByMenuAndKeys();
    void recentProfilesOpenThroughTheQuestion();
    void saveGoesBackToItsFile();
    void unsavedEditsAreGuardedOnEveryPath_data();
    void unsavedEditsAreGuardedOnEveryPath();
};

// Where each way leads and where Back goes from there. Every way of opening a file goes through
// the same reading, so its refusals are shown once.
void TestMainWindow::waysThroughThePages_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("back"); // the prompt after Back; empty: hidden
    // The profile edited or confirmed; on the comparison page "+" or "-" for Show graph, Remove
    // all and Remove, then the list; on the graph page the profiles in its value table.
    QTest::addColumn<QString>("landed");
    QTest::addColumn<QByteArray>("file"); // null: the open dialog is cancelled or not shown
    QTest::addColumn<QString>("dialogs");

    const QByteArray saved = profileFileBytes(namedProfile(QStringLiteral("Race tune")));
    const auto row
        = [](const char *name, const char *steps, const char *prompt, const char *back,
              const char *landed = "", const QByteArray &file = QByteArray(), const char *dialogs = "") {
              QTest::newRow(name) << steps << prompt << back << landed << file << dialogs;
          };
    row("start page", "", kWelcome, "");
    row("new from template", "editProfiles createFromTemplate", kChooseTemplate, kEditProfiles);
    // Back after Ctrl+N returns to where the user was.
    row("Ctrl+N, programming", "calibrationSelection ^N", kChooseTemplate, kProgramming);
    row("Ctrl+N, editor", "editor ^N", kChooseTemplate, kEditorPrompt);
    row("Ctrl+N, confirmation", "editor next ^N", kChooseTemplate, kConfirmPrompt);
    row("template to program", "calibrationSelection calibrateDefault",
        "Select a profile from the dropdown list to program your CDI.", kProgramming);
    row("template to compare", "compare addDefault",
        "Select a profile from the drop-down list for comparison.", kComparison);
    row("editor, nothing changed", "editor", kEditorPrompt, kWelcome, "%first");
    row("confirmation", "editor next", kConfirmPrompt, kEditorPrompt, "%first");
    row("Ctrl+W on the editor", "editor ^W", kConfirmPrompt, kEditorPrompt, "%first");
    row("a profile file", "^O", kEditorPrompt, kWelcome, "Race tune", saved, "open");
    row("an unreadable file", "^O", kWelcome, "", "", "not a profile", "open warn");
    row("open cancelled", "^O", kWelcome, "", "", {}, "open");
    row("load from file", "editProfiles loadFile", kEditorPrompt, kWelcome, "Race tune", saved, "open");
    row("program a custom profile", "calibrationSelection calibrateCustom", kConfirmPrompt, kProgramming,
        "Race tune", saved, "open");
    row("compare a custom profile", "compare addCustom", kComparison, kWelcome, "++- Custom: Race tune",
        saved, "open");
    row("create from the second template", "editProfiles createFromTemplate second next", kEditorPrompt,
        kWelcome, "%second");
    row("compare the second template", "compare addDefault second next", kComparison, kWelcome,
        "++- Default: %second");
    row("the last entry removed", "compare add click0 remove", kComparison, kWelcome, "---");
    row("an entry chosen by keyboard", "compare add add down", kComparison, kWelcome,
        "+++ Custom: 0, Custom: 1");
    row("a selection taken back with Ctrl leaves nothing to remove", "compare add add click1 ctrl1",
        kComparison, kWelcome, "++- Custom: 0, Custom: 1");
    // The entry that moves into the removed one's place is selected next, the last one at the end.
    row("Remove twice in the middle", "compare add add add click1 remove remove", kComparison, kWelcome,
        "+++ Custom: 0");
    row("all removed", "compare add add click0 clear", kComparison, kWelcome, "---");
    // The graph shows the list in its order, duplicates too, also after a change back in the list.
    row("graph", "compare addDefault next addDefault next add showGraph", kGraph, kComparison,
        "Default: %first (1), Default: %first (2), Custom: 2");
    row("graph after a removal", "compare add add add showGraph back click0 remove showGraph", kGraph,
        kComparison, "Custom: 1, Custom: 2");
    row("graph without an entry cleared in the list", "compare add add add space1 showGraph", kGraph,
        kComparison, "Custom: 0, Custom: 2");
    row("continue editing", "mine back editProfiles continue", kEditorPrompt, kWelcome, kMine);
    row("program the profile last edited", "mine back calibrationSelection continue", kConfirmPrompt,
        kProgramming, kMine);
}

void TestMainWindow::waysThroughThePages()
{
    QFETCH(QString, steps);
    QFETCH(QString, prompt);
    QFETCH(QString, back);
    QFETCH(QString, landed);
    QFETCH(QByteArray, file);
    QFETCH(QString, dialogs);

    QTemporaryDir folder;
    Program program;
    QVERIFY(program.ready());
    const QString path = folder.filePath(QStringLiteral("opened.cdi"));
    if (!file.isNull()) {
        QVERIFY(writeFile(path, file));
        program.prompts.fileAnswers.append(path);
    }
    take(program, steps);
    QCOMPARE(program.prompts.kinds().join(QLatin1Char(' ')), dialogs);
    QCOMPARE(program.prompt(), prompt);
    const bool onEditor = prompt == QLatin1String(kEditorPrompt);
    QString shown;
    if (onEditor) {
        shown = program.window().editor().profile().name();
        QVERIFY(program.window().editor().profile().isCustom()); // a template taken in becomes the user's own
    } else if (prompt == QLatin1String(kConfirmPrompt)) {
        shown = program.window().findChild<CustomForm *>()->profile().name();
    } else if (prompt == QLatin1String(kComparison)) {
        for (const char *name : {"showGraphButton", "clearButton", "removeButton"})
            shown += QLatin1Char(program.button(name)->isEnabled() ? '+' : '-');
        shown = (shown + ' ' + entries(program.child<QListWidget>("list")).join(", ")).trimmed();
    } else if (prompt == QLatin1String(kGraph)) {
        const MultiGraphForm *graph = program.window().findChild<MultiGraphForm *>();
        QCOMPARE(graph->image().size(), graph->graphSize());
        const QTableWidget *values = graph->findChild<QTableWidget *>(QStringLiteral("valueTable"));
        QCOMPARE(values->rowCount(), kMapPointCount);
        for (int column = 0; column < values->columnCount(); ++column) // a column per profile shown
            shown += QLatin1String(column ? ", " : "") + values->horizontalHeaderItem(column)->toolTip();
    }
    QCOMPARE(shown,
        landed.replace("%first", program.firstTemplate().name())
            .replace("%second", program.data.library()->profileAt(1)->name()));
    QCOMPARE(program.button("exitButton")->isVisible(), !onEditor);
    // Screen readers find a name for everything on the page, in both languages, without markup.
    program.switcher.addLanguage(QStringLiteral("de"));
    for (int language : {CLanguageSwitcher::kGerman, CLanguageSwitcher::kEnglish}) {
        program.switcher.setLanguage(language);
        QCoreApplication::processEvents();
        const QStringList faults = unnamedOrMarkedUp(program.window());
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1String(", "))));
    }

    // The commands that need a profile work on the editor only, by menu and by shortcut.
    for (const char *name : {"actionSaveAs", "actionReset", "actionExport", "actionPrint"})
        QCOMPARE(program.child<QAction>(name)->isEnabled(), onEditor);
    const bool onGraph = prompt == QLatin1String(kGraph);
    QCOMPARE(program.child<QAction>("actionExportGraph")->isEnabled(), onEditor || onGraph);
    QCOMPARE(program.child<QAction>("actionExportValues")->isEnabled(), onGraph);
    if (!onEditor)
        take(program, QStringLiteral("^S ^W ^P"));
    QCOMPARE(program.button("backButton")->isVisible(), !back.isEmpty());
    take(program, back.isEmpty() ? QString() : QStringLiteral("back"));
    QCOMPARE(program.prompt(), back.isEmpty() ? prompt : back);
    QCOMPARE(program.prompts.shown.size(), dialogs.count(' ') + int(!dialogs.isEmpty()));
}

// Every file the program writes, through the dialog that names it: the dialog suggests a name,
// the status bar confirms a save or an export, a failed write warns and leaves the old file as it
// was, and no write leaves a temporary file behind or moves the user to another page.
void TestMainWindow::filesWritten_data()
{
    QTest::addColumn<QString>("steps"); // to the page, then the command
    QTest::addColumn<QString>("before"); // in the file's place: "older" or "read-only"
    QTest::addColumn<QString>("answer"); // the name given in the dialog; none cancels it
    QTest::addColumn<QString>("filter"); // the file type chosen; none: the first offered
    QTest::addColumn<QString>("suggested"); // none: the system's print dialog
    QTest::addColumn<QString>("said"); // in the status bar, or the warning
    QTest::addColumn<QString>("written"); // the file in the folder after it
    const auto row
        = [](const char *name, const char *steps, const char *before, const char *answer,
              const char *suggested, const QString &said, const char *written, const char *filter = "") {
              QTest::newRow(name) << QString(steps) << QString(before) << QString(answer) << QString(filter)
                                  << QString(suggested) << said << QString(written);
          };
    const QString refused = QStringLiteral(" failed:\n\nthe file may not be written there");
    row("save over an older file", "editor ^S", "older", "mine.cdi", "%first.cdi", "Saved to %path",
        "mine.cdi");
    row("save over a read-only file", "editor ^S", "read-only", "mine.cdi", "%first.cdi",
        "Saving profile" + refused + '.', "mine.cdi");
    row("print over an older file", "editor actionPrint", "older", "mine.pdf", "%first.pdf", "", "mine.pdf");
    row("print over a read-only file", "editor actionPrint", "read-only", "mine.pdf", "%first.pdf",
        "Printing PDF" + refused + '.', "mine.pdf");
    // The printer chosen in the system's dialog is here one that writes PDF.
    row("print on a printer", "editor ^P", "", "printed.pdf", "", "", "printed.pdf");
    row("printer dialog cancelled", "editor ^P", "", "", "", "", "");
    row("the editor's graph, no suffix typed", "editor actionExportGraph", "", "out", "%first.png",
        "Exported to %path", "out.png");
    row("the comparison's graph as SVG", "compare add add showGraph actionExportGraph", "", "out",
        "comparison.png", "Exported to %path", "out.svg", "SVG drawings (*.svg)");
    // The values leave out a hidden profile.
    row("the values of the profiles shown", "compare add add space0 showGraph actionExportValues", "", "out",
        "comparison.csv", "Exported to %path", "out.csv");
}

void TestMainWindow::filesWritten()
{
    QFETCH(QString, steps);
    QFETCH(QString, before);
    QFETCH(QString, answer);
    QFETCH(QString, filter);
    QFETCH(QString, suggested);
    QFETCH(QString, said);
    QFETCH(QString, written);
    if (written.endsWith(QLatin1String(".svg")) && !plotFormats().contains(PlotFormat::Svg))
        QSKIP("built without Qt's SVG module");
    QTemporaryDir folder;
    const QString path = folder.filePath(answer);
    const QByteArray old("the file that was there before");
    QVERIFY(before.isEmpty() || writeFile(path, old));
    if (before == QLatin1String("read-only"))
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser));

    Program program;
    QVERIFY(program.ready());
    if (!answer.isEmpty())
        program.prompts.fileAnswers.append(path);
    if (!filter.isEmpty())
        program.prompts.filterAnswers.append(filter);
    take(program, steps.section(QLatin1Char(' '), 0, -2));
    // The status bar that confirms an export takes room from the page.
    const QSize graph = program.window().editor().graphSize();
    const QString page = program.prompt();
    take(program, steps.section(QLatin1Char(' '), -1));
    QCOMPARE(program.prompts.kinds().value(0), suggested.isEmpty() ? "print" : "save");
    QCOMPARE(program.prompts.shown.value(0).buttons.value(0),
        suggested.replace("%first", program.firstTemplate().name()));
    const int warning = program.prompts.kinds().indexOf("warn");
    QCOMPARE(
        warning < 0 ? program.window().statusBar()->currentMessage() : program.prompts.shown[warning].text,
        said.replace("%path", QDir::toNativeSeparators(folder.filePath(written))));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files),
        written.isEmpty() ? QStringList() : QStringList {written});
    const QByteArray bytes = written.isEmpty() ? QByteArray() : readFile(folder.filePath(written));
    if (warning >= 0)
        QCOMPARE(bytes, written.isEmpty() ? QByteArray() : old);
    else if (written.endsWith(QLatin1String(".cdi")))
        QCOMPARE(readProfileFile(path).value_or(Profile()).map(), program.firstTemplate().map());
    else if (written.endsWith(QLatin1String(".pdf"))) // the sheet: one page, A4 landscape
        QVERIFY(bytes.startsWith("%PDF") && bytes.contains("/MediaBox [0 0 842.000000 595.000000]")
            && bytes.contains("/Count 1"));
    else if (written.endsWith(QLatin1String(".png"))) // at the size the page shows it
        QCOMPARE(QImage::fromData(bytes, "PNG").size(), graph);
    else if (written.endsWith(QLatin1String(".svg")))
        QVERIFY(bytes.startsWith("<?xml"));
    else if (written.endsWith(QLatin1String(".csv")))
        QCOMPARE(bytes.count("\r\n"), 2); // the header and the profile left shown
    QCOMPARE(program.prompt(), page);
}

void TestMainWindow::languageSwitchReachesEveryPage()
{
    Program program;
    QVERIFY(program.ready());
    take(program, QStringLiteral("compare add back editProfiles createFromTemplate"));
    WidgetTest::Translator translator({{QString("WizardForm|") + kChooseTemplate, "Wählen Sie eine Vorlage."},
        {"MainWindow|&Back", "&Zurück"}, {"CProfileItem|Custom", "Eigenes"},
        {"ComparisonForm|Remove &all", "&Alle entfernen"},
        {"WizardForm|{Program your CDI} with a profile of your choice",
            "{Programmieren Sie Ihre CDI} mit einem Profil Ihrer Wahl"}});
    QCoreApplication::installTranslator(&translator);
    program.switcher.setLanguage(CLanguageSwitcher::kEnglish); // tells every listener

    QCOMPARE(program.prompt(), QStringLiteral("Wählen Sie eine Vorlage."));
    QCOMPARE(program.button("backButton")->text(), QStringLiteral("&Zurück"));
    QCOMPARE(entries(program.child<QListWidget>("list")), QStringList {"Eigenes: 0"});
    QCOMPARE(program.button("clearButton")->text(), QStringLiteral("&Alle entfernen"));
    // The braces mark the highlighted words, in every language.
    QCOMPARE(program.button("calibrationSelectionButton")->toolTip(),
        QStringLiteral("<font color=%1>Programmieren Sie Ihre CDI</font> mit einem Profil Ihrer Wahl")
            .arg(highlightColour()));
    QCoreApplication::removeTranslator(&translator);
    // The Language menu checks the language in use.
    const QList<QAction *> languages = program.child<QMenu>("menuLanguage")->actions();
    QVERIFY(languages.size() == 2 && languages[0]->isChecked() && !languages[1]->isChecked());
    // The pages made when first needed, the editor and the about box, follow the menu too.
    program.switcher.addLanguage(QStringLiteral("de"));
    take(program, QStringLiteral("editor actionAbout"));
    languages[1]->trigger();
    QCOMPARE((QStringList {program.window().findChild<CHintLabel *>()->text(),
                 program.child<QLabel>("labelNotes")->text(),
                 program.window().findChild<AboutDialog *>()->windowTitle()}),
        (QStringList {"Zum Ändern klicken", "Eigene &Notizen", "Über"}));
}

// Ctrl+Z, Ctrl+Y and Ctrl+Shift+Z walk the editor's history, whose steps the menu names, the
// reset among them. Off the editor the history stays as it is.
void TestMainWindow::undoAndRedoByMenuAndKeys()
{
    Program program;
    QVERIFY(program.ready());
    QAction *undo = program.child<QAction>("actionUndo");
    QAction *redo = program.child<QAction>("actionRedo");
    EditorForm *editor = &program.window().editor();
    take(program, QStringLiteral("editor"));
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    editor->setProfileName(QStringLiteral("Edited"));
    // What an undone step brings back shows in tst_editorform's everyEditIsOneStep.
    take(program, QStringLiteral("^Z"));
    QCOMPARE(redo->text(), QStringLiteral("Re&do rename"));
    take(program, QStringLiteral("^Y ^Z"));
    QTest::keyClick(&program.window(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));

    program.prompts.askAnswers = {0};
    take(program, QStringLiteral("actionReset next ^Z"));
    QCOMPARE(undo->text(), QStringLiteral("&Undo reset to defaults")); // still the last step
    QVERIFY(!undo->isEnabled());
}

// A file opened lately is one click away in the Profile menu and on the start page, each through
// the unsaved-changes question.
void TestMainWindow::recentProfilesOpenThroughTheQuestion()
{
    Program program;
    QVERIFY(program.ready());
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("recent.cdi"));
    QVERIFY(writeFile(path, profileFileBytes(namedProfile(QStringLiteral("Recent one")))));
    program.prompts.fileAnswers = QStringList {path};
    take(program, QStringLiteral("^O"));
    EditorForm *editor = &program.window().editor();
    editor->setProfileName(QStringLiteral("Edited"));

    QMenu *menu = program.child<QMenu>("menuRecent");
    QMetaObject::invokeMethod(menu, "aboutToShow");
    QAction *first = menu->actions().value(0);
    QVERIFY(first && first->text().startsWith(QLatin1String("&1 Recent one (recent.cdi, ")));
    program.prompts.askAnswers = {2, 1}; // Cancel, then Discard
    first->trigger();
    QCOMPARE(editor->profile().name(), QStringLiteral("Edited"));

    program.window().showStart();
    QListWidget *list = program.child<QListWidget>("recentList");
    clickEntry(list, 0);
    QCOMPARE(program.prompt(), QString::fromLatin1(kEditorPrompt));
    QCOMPARE(editor->profile().name(), QStringLiteral("Recent one"));
    QCOMPARE(program.prompts.kinds(), (QStringList {"open", "ask", "ask"}));
}

// Save writes a profile back to the file it came from without a dialog (the status bar's words
// after a save show in filesWritten); Save as asks and moves the profile to the new file, which
// the title then names: it names the profile and its file once written and marks unsaved changes.
void TestMainWindow::saveGoesBackToItsFile()
{
    Program program;
    QVERIFY(program.ready());
    QMainWindow &window = program.window();
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("road.cdi"));
    const QString other = dir.filePath(QStringLiteral("other.cdi"));
    QVERIFY(writeFile(path, profileFileBytes(namedProfile(QStringLiteral("Road")))));
    program.prompts.fileAnswers = QStringList {path};
    take(program, QStringLiteral("^O"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Road (road.cdi)[*] - Sparkwright"));
    QVERIFY(!window.isWindowModified());
    program.window().editor().setProfileName(QStringLiteral("Track"));
    QVERIFY(window.isWindowModified());

    take(program, QStringLiteral("^S"));
    QCOMPARE(program.prompts.kinds(), QStringList {"open"});
    QCOMPARE(readProfileFile(path).value_or(Profile()).name(), QStringLiteral("Track"));
    QVERIFY(!window.isWindowModified());

    program.prompts.fileAnswers = QStringList {other};
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(program.prompts.shown.value(1).buttons, QStringList {path});
    QCOMPARE(window.windowTitle(), QStringLiteral("Track (other.cdi)[*] - Sparkwright"));
}

void TestMainWindow::unsavedEditsAreGuardedOnEveryPath_data()
{
    QTest::addColumn<bool>("fromStartPage"); // else from the programming confirmation
    QTest::addColumn<QString>("path");

    for (const bool fromStart : {false, true}) {
        for (const char *path :
            {"exit", "close", "^N", "^O", "editProfiles createFromTemplate next", "editProfiles loadFile"}) {
            if (fromStart || !QByteArray(path).contains(' ')) // the start page's own buttons
                QTest::addRow("%s from the %s", path, fromStart ? "start page" : "confirmation")
                    << fromStart << path;
        }
    }
}

// The edited profile lives on behind the other pages. Every path that replaces it or ends the
// program asks first (opening a file once the file was chosen): Cancel keeps the edits, Discard
// takes them away for good, so neither a cancelled file dialog nor the continue panel brings them
// back, and Save writes them to a file before the path goes on. Where the path ends the program,
// the program's event loop ends with 0; else the call queued behind the path ends it with 7.
void TestMainWindow::unsavedEditsAreGuardedOnEveryPath()
{
    QFETCH(bool, fromStartPage);
    QFETCH(QString, path);

    const bool replaces = path.contains(QLatin1String("^O")) || path.contains(QLatin1String("load"))
        || path.contains(QLatin1String("next"));
    for (const int answer : {2, 1, 0}) { // Cancel, Discard, Save
        Program program;
        QVERIFY(program.ready());
        QTemporaryDir folder;
        const QString opened = folder.filePath(QStringLiteral("opened.cdi"));
        const QString saved = folder.filePath(QStringLiteral("saved.cdi"));
        QVERIFY(writeFile(opened, profileFileBytes(program.firstTemplate())));
        EditorForm *editor = &program.window().editor();
        take(program, QStringLiteral("editor"));
        editor->setProfileName(QStringLiteral("Edited"));
        program.click("nextButton");
        if (fromStartPage)
            program.window().showStart(); // as after programming
        QVERIFY(program.prompts.shown.isEmpty());

        program.prompts.askAnswers = {answer};
        if (path.contains(QLatin1String("^O")) || path.contains(QLatin1String("loadFile")))
            program.prompts.fileAnswers << opened;
        program.prompts.fileAnswers << saved;
        QTimer::singleShot(0, &program.window(), [&program, &path] {
            take(program, path);
            QTimer::singleShot(0, [] { QCoreApplication::exit(7); });
        });
        const bool kept = answer == 2;
        const bool ends = path == QLatin1String("exit") || path == QLatin1String("close");
        QCOMPARE(QCoreApplication::exec(), ends && !kept ? 0 : 7);
        QVERIFY(program.prompts.titles().contains(QStringLiteral("Unsaved changes")));
        if (answer == 0)
            QCOMPARE(readProfileFile(saved).value_or(Profile()).name(), QStringLiteral("Edited"));
        else
            QVERIFY(!QFile::exists(saved));
        QCOMPARE(editor->profile().name(),
            kept || (answer == 0 && !replaces) ? "Edited" : program.firstTemplate().name());
        QCOMPARE(editor->profile().isModified(), kept);
        // Once discarded, leaving asks nothing more.
        program.prompts.shown.clear();
        QVERIFY(kept || (editor->confirmDiscard() && program.prompts.shown.isEmpty()));
    }
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
