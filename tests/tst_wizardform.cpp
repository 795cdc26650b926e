// The start page as the user walks through it: every view with its prompt and buttons and the
// way back, the tool tips with their highlighted words, the template chooser in its three
// modes, and the two panels that lead back to the profile last edited.
#include "editor/customform.h"
#include "editor/editorform.h"
#include "pages/continueform.h"
#include "pages/wizardform.h"
#include "profile/profilefile.h"
#include "tests/programfixture.h"
#include "tests/widgettestmain.h"

#include <QComboBox>
#include <QFile>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

const char kWelcome[] = "Welcome to Sparkwright. What would you like to do?";
const char kEditProfiles[] = "Choose where to load your profile from.";
const char kProgramming[] = "Choose what kind of profile to program your CDI with.";
const char kComparison[] = "Put together the profiles whose ignition maps you would like to compare.";
const char kConfirmPrompt[] = "Please confirm programming the CDI with this profile.";

} // namespace

class TestWizardForm : public QObject
{
    Q_OBJECT

private slots:
    void everyViewAndBack_data();
    void everyViewAndBack();
    void toolTipsHighlightTheBracedWords_data();
    void toolTipsHighlightTheBracedWords();
    void templateChooserActsByMode_data();
    void templateChooserActsByMode();
    void templateChooserShowsTheChosenTemplate();
    void profileFromFile_data();
    void profileFromFile();
    void deviceChoicesReachTheMainWindow_data();
    void deviceChoicesReachTheMainWindow();
    void continuePanelsHiddenWithoutProfile();
    void continuePanelsNameTheEditedProfile_data();
    void continuePanelsNameTheEditedProfile();
    void languageSwitchSetsThePageTextsAgain();
};

void TestWizardForm::everyViewAndBack_data()
{
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("nextText"); // empty: Next hidden
    QTest::addColumn<QString>("promptAfterBack");

    QTest::newRow("edit profiles") << QStringList {"editProfilesButton"} << kEditProfiles << "" << kWelcome;
    QTest::newRow("programming") << QStringList {"calibrationSelectionButton"} << kProgramming << ""
                                 << kWelcome;
    QTest::newRow("comparison") << QStringList {"compareButton"} << kComparison << "" << kWelcome;
    QTest::newRow("template for a new profile")
        << QStringList {"editProfilesButton", "createFromTemplateButton"}
        << "Select an item from the drop-down list as template for your custom profile."
        << "Create" << kEditProfiles;
    QTest::newRow("template to program")
        << QStringList {"calibrationSelectionButton", "calibrateDefaultButton"}
        << "Select a profile from the dropdown list to program your CDI."
        << "Program" << kProgramming;
    QTest::newRow("template to compare") << QStringList {"compareButton", "addDefaultButton"}
                                         << "Select a profile from the drop-down list for comparison."
                                         << "Add to list" << kComparison;
}

void TestWizardForm::everyViewAndBack()
{
    QFETCH(QStringList, clicks);
    QFETCH(QString, prompt);
    QFETCH(QString, nextText);
    QFETCH(QString, promptAfterBack);

    Program program;
    QVERIFY(program.ready());
    QCOMPARE(program.prompt(), QString::fromLatin1(kWelcome));
    QVERIFY(!program.button("backButton")->isVisible());
    QVERIFY(!program.button("nextButton")->isVisible());
    for (const QString &name : clicks)
        program.click(qPrintable(name));

    QCOMPARE(program.prompt(), prompt);
    QVERIFY(program.button("exitButton")->isVisible());
    QVERIFY(program.button("backButton")->isVisible());
    QCOMPARE(program.button("nextButton")->isVisible(), !nextText.isEmpty());
    if (!nextText.isEmpty()) {
        QCOMPARE(program.button("nextButton")->text(), nextText);
        QVERIFY(program.button("nextButton")->isEnabled());
        QVERIFY(program.child<QComboBox>("comboBox")->isVisible());
    }
    QVERIFY(program.prompts.shown.isEmpty());

    program.click("backButton");
    QCOMPARE(program.prompt(), promptAfterBack);
    while (program.button("backButton")->isVisible())
        program.click("backButton");
    QCOMPARE(program.prompt(), QString::fromLatin1(kWelcome));
}

void TestWizardForm::toolTipsHighlightTheBracedWords_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("toolTip");

    const QString on = QStringLiteral("<font color=#4B7D96>");
    const QString off = QStringLiteral("</font>");
    QTest::newRow("program") << "calibrationSelectionButton"
                             << on + "Program your CDI" + off + " with a profile of your choice";
    QTest::newRow("customize") << "editProfilesButton"
                               << "Create or modify your personal profiles with " + on + "custom parameters"
            + off;
    QTest::newRow("compare") << "compareButton"
                             << "Display two or more profiles in a graph to " + on + "compare" + off
            + " them.";
    QTest::newRow("from file") << "loadFileButton"
                               << "Load a previously created custom profile from a " + on + "file" + off;
    QTest::newRow("remove from comparison")
        << "removeButton" << on + "Remove" + off + " the selected profile from the list.";
}

void TestWizardForm::toolTipsHighlightTheBracedWords()
{
    QFETCH(QString, button);
    QFETCH(QString, toolTip);

    Program program;
    QVERIFY(program.ready());
    QCOMPARE(program.button(qPrintable(button))->toolTip(), toolTip);
    for (const QAbstractButton *any : program.window().findChildren<QAbstractButton *>())
        QVERIFY2(
            !any->toolTip().contains(QRegularExpression(QStringLiteral("[{}]"))), qPrintable(any->toolTip()));
}

void TestWizardForm::templateChooserActsByMode_data()
{
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<QString>("prompt"); // after Next
    QTest::addColumn<QString>("message"); // an information box, or nothing

    QTest::newRow("create a custom profile")
        << QStringList {"editProfilesButton", "createFromTemplateButton"} << kEditorPrompt << "";
    QTest::newRow("program the template")
        << QStringList {"calibrationSelectionButton", "calibrateDefaultButton"}
        << "Select a profile from the dropdown list to program your CDI."
        << "Connection to the CDI";
    QTest::newRow("add to the comparison")
        << QStringList {"compareButton", "addDefaultButton"} << kComparison << "";
}

void TestWizardForm::templateChooserActsByMode()
{
    QFETCH(QStringList, clicks);
    QFETCH(QString, prompt);
    QFETCH(QString, message);

    Program program;
    QVERIFY(program.ready());
    for (const QString &name : clicks)
        program.click(qPrintable(name));
    // The second template, chosen with the keyboard.
    QComboBox *combo = program.child<QComboBox>("comboBox");
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    const Profile &chosen = *program.data.library()->profileAt(1);
    QCOMPARE(combo->currentText(), chosen.name());
    program.click("nextButton");

    QCOMPARE(program.prompt(), prompt);
    QCOMPARE(program.prompts.titles(), message.isEmpty() ? QStringList() : QStringList {message});
    if (prompt == QLatin1String(kEditorPrompt)) {
        const EditorForm *editor = program.window().findChild<EditorForm *>();
        QCOMPARE(editor->profile().name(), chosen.name());
        QCOMPARE(editor->profile().map(), chosen.map());
        QVERIFY(editor->profile().isCustom());
    }
    if (prompt == QLatin1String(kComparison)) {
        const QListWidget *list = program.child<QListWidget>("list");
        QCOMPARE(list->count(), 1);
        QCOMPARE(list->item(0)->text(), "Default: " + chosen.name());
    }
}

void TestWizardForm::templateChooserShowsTheChosenTemplate()
{
    Program program;
    QVERIFY(program.ready());
    program.click("editProfilesButton");
    program.click("createFromTemplateButton");
    QComboBox *combo = program.child<QComboBox>("comboBox");
    QCOMPARE(combo->count(), program.data.library()->count());
    for (int i = 0; i < combo->count(); ++i)
        QCOMPARE(combo->itemText(i), program.data.library()->profileAt(i)->name());
    const QString information = program.child<QPlainTextEdit>("informationText")->toPlainText();
    QCOMPARE(information, program.firstTemplate().extraText(0));
    // The map of the chosen template fills the place below.
    const QLabel *preview = program.child<QLabel>("previewLabel");
    QVERIFY(preview->isVisible());
    QCOMPARE(preview->pixmap(Qt::ReturnByValue).size(), preview->size());
}

void TestWizardForm::profileFromFile_data()
{
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<QString>("prompt");

    QTest::newRow("load from file") << QStringList {"editProfilesButton", "loadFileButton"} << kEditorPrompt;
    QTest::newRow("use custom profile")
        << QStringList {"calibrationSelectionButton", "calibrateCustomButton"} << kConfirmPrompt;
}

void TestWizardForm::profileFromFile()
{
    QFETCH(QStringList, clicks);
    QFETCH(QString, prompt);

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("track.cdi"));
    Profile track;
    track.setName(QStringLiteral("Track day"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(profileFileBytes(track));
    file.close();

    Program program;
    QVERIFY(program.ready());
    program.prompts.fileAnswers.append(path);
    for (const QString &name : clicks)
        program.click(qPrintable(name));

    QCOMPARE(program.prompts.titles(), QStringList {"Open CDI profile"});
    QCOMPARE(program.prompt(), prompt);
    if (prompt == QLatin1String(kConfirmPrompt))
        QCOMPARE(program.window().findChild<CustomForm *>()->profile().name(), QStringLiteral("Track day"));
    else
        QCOMPARE(program.window().findChild<EditorForm *>()->profile().name(), QStringLiteral("Track day"));
}

void TestWizardForm::deviceChoicesReachTheMainWindow_data()
{
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<QString>("prompt");

    QTest::newRow("test connection") << QStringList {"testConnectionButton"} << kWelcome;
    QTest::newRow("import") << QStringList {"editProfilesButton", "importFromCDIButton"} << kEditProfiles;
}

void TestWizardForm::deviceChoicesReachTheMainWindow()
{
    QFETCH(QStringList, clicks);
    QFETCH(QString, prompt);

    Program program;
    QVERIFY(program.ready());
    for (const QString &name : clicks)
        program.click(qPrintable(name));
    QCOMPARE(program.prompts.titles(), QStringList {"Connection to the CDI"});
    QCOMPARE(program.prompt(), prompt);
}

void TestWizardForm::continuePanelsHiddenWithoutProfile()
{
    Program program;
    QVERIFY(program.ready());
    program.click("editProfilesButton");
    QVERIFY(program.child("editProfilesView")->isVisible());
    QVERIFY(!program.child("editContinueForm")->isVisible());
    program.click("backButton");
    program.click("calibrationSelectionButton");
    QVERIFY(program.child("programmingView")->isVisible());
    QVERIFY(!program.child("programmingContinueForm")->isVisible());
}

void TestWizardForm::continuePanelsNameTheEditedProfile_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("buttonText");
    QTest::addColumn<QString>("prompt");

    const QString name = QStringLiteral(":<br><font color=#4B7D96>Mine &lt;2&gt;</font>");
    QTest::newRow("continue editing")
        << "editProfilesButton"
        << "editContinueForm"
        << "Continue editing profile" + name << "Continue editing" << kEditorPrompt;
    QTest::newRow("program the edited profile")
        << "calibrationSelectionButton"
        << "programmingContinueForm"
        << "Program the CDI with the profile recently opened in editor" + name << "Continue"
        << kConfirmPrompt;
}

void TestWizardForm::continuePanelsNameTheEditedProfile()
{
    QFETCH(QString, view);
    QFETCH(QString, panel);
    QFETCH(QString, text);
    QFETCH(QString, buttonText);
    QFETCH(QString, prompt);

    Program program;
    QVERIFY(program.ready());
    Profile mine = program.firstTemplate();
    mine.setName(QStringLiteral("Mine <2>"));
    program.window().showEditor(mine);
    program.click("backButton");
    QCOMPARE(program.prompt(), QString::fromLatin1(kWelcome));

    program.click(qPrintable(view));
    ContinueForm *form = program.window().findChild<ContinueForm *>(panel);
    QVERIFY(form->isVisible());
    QCOMPARE(form->findChild<QLabel *>(QStringLiteral("label"))->text(), text);
    QPushButton *button = form->findChild<QPushButton *>(QStringLiteral("button"));
    QCOMPARE(button->text(), buttonText);
    QTest::mouseClick(button, Qt::LeftButton);

    QCOMPARE(program.prompt(), prompt);
    const Profile &shown = prompt == QLatin1String(kEditorPrompt)
        ? program.window().findChild<EditorForm *>()->profile()
        : program.window().findChild<CustomForm *>()->profile();
    QCOMPARE(shown.name(), mine.name());
    QCOMPARE(shown.map(), mine.map());
}

void TestWizardForm::languageSwitchSetsThePageTextsAgain()
{
    Program program;
    QVERIFY(program.ready());
    program.click("editProfilesButton");
    program.click("createFromTemplateButton");

    SmallTranslator translator;
    translator.texts.insert(
        qMakePair(QByteArray("WizardForm"),
            QByteArray("Select an item from the drop-down list as template for your custom profile.")),
        QStringLiteral("Wählen Sie eine Vorlage."));
    translator.texts.insert(
        qMakePair(QByteArray("WizardForm"), QByteArray("Create")), QStringLiteral("Erstellen"));
    translator.texts.insert(
        qMakePair(QByteArray("WizardForm"), QByteArray("{Program your CDI} with a profile of your choice")),
        QStringLiteral("{Programmieren Sie Ihre CDI} mit einem Profil Ihrer Wahl"));
    QCoreApplication::installTranslator(&translator);
    program.switcher.setLanguage(CLanguageSwitcher::kEnglish); // tells every listener
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(program.prompt(), QStringLiteral("Wählen Sie eine Vorlage."));
    QCOMPARE(program.button("nextButton")->text(), QStringLiteral("Erstellen"));
    QCOMPARE(program.button("calibrationSelectionButton")->toolTip(),
        QStringLiteral("<font color=#4B7D96>Programmieren Sie Ihre CDI</font> mit einem Profil Ihrer Wahl"));
    program.click("backButton");
    QCOMPARE(program.prompt(), QString::fromLatin1(kEditProfiles));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestWizardForm)
#include "tst_wizardform.moc"
