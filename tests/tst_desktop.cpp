// What the program takes from and hands to the desktop: its own and Qt's translations with the
// web links they lead to, the folder the file dialogs open in and the updater's launch.
#include "dialogs/cupdater.h"
#include "dialogs/cweblinks.h"
#include "i18n/clanguageswitcher.h"
#include "tests/widgettestmain.h"

#include <QFileDialog>
#include <QKeySequence>
#include <QStandardPaths>
#include <QTimer>

class TestDesktop : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void languages_data();
    void languages();
    void fileDialogsRememberTheFolder();
    void updaterLaunch_data();
    void updaterLaunch();

private:
    // Opens the real dialog, notes the folder it shows and chooses the file in it.
    QString fileDialog(bool save, const QString &suggested, const QString &choice);

    QTemporaryDir m_home;
};

void TestDesktop::initTestCase()
{
    // A home of its own; the settings have theirs already.
    qputenv("HOME", QFile::encodeName(m_home.path()));
    QStandardPaths::setTestModeEnabled(true);
}

void TestDesktop::languages_data()
{
    QTest::addColumn<bool>("fileThere");
    QTest::addColumn<int>("language");
    QTest::addColumn<QStringList>("texts"); // our own, Qt's name of the keys in menus, the home page
    const QStringList english {"Disclaimer", "Ctrl+S", "http://sparkwright.example/en"};
    QTest::newRow("German") << true << 1
                            << QStringList {"Haftungsausschluss", "Strg+S", "http://sparkwright.example/de"};
    QTest::newRow("German, back to English") << true << 0 << english;
    QTest::newRow("German without lang_de.qm stays English") << false << 1 << english;
}

void TestDesktop::languages()
{
    QFETCH(bool, fileThere);
    QFETCH(int, language);
    QFETCH(QStringList, texts);

    const QString buildDir = QDir::currentPath();
    QVERIFY(QDir::setCurrent(fileThere ? buildDir : m_home.path()));
    CLanguageSwitcher switcher;
    switcher.addLanguage(QStringLiteral("de"));
    QDir::setCurrent(buildDir);
    switcher.setLanguage(CLanguageSwitcher::kGerman);
    switcher.setLanguage(language);
    QCOMPARE(QStringList({QCoreApplication::translate("DisclaimerDialog", "Disclaimer"),
                 QKeySequence(Qt::CTRL | Qt::Key_S).toString(QKeySequence::NativeText),
                 CWebLinks::address(CWebLinks::VisitUs).toString()}),
        texts);
}

QString TestDesktop::fileDialog(bool save, const QString &suggested, const QString &choice)
{
    QString shown;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        // The save dialog shows the suggested name in the folder it opens in.
        shown = save ? dialog->selectedFiles().value(0) : dialog->directory().absolutePath();
        dialog->selectFile(choice);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    const QString chosen = save ? userPrompts().saveFileName(nullptr, "Save", suggested, "(*.cdi)")
                                : userPrompts().openFileName(nullptr, "Open", "(*.cdi)");
    return chosen == choice ? shown : QStringLiteral("chose ") + chosen;
}

// The dialogs start in the documents folder, never in the working folder, and then open where the
// user last chose a file, opening or saving.
void TestDesktop::fileDialogsRememberTheFolder()
{
    const QDir home(m_home.path());
    for (const char *folder : {"Documents", "bikes", "saved"})
        QVERIFY(home.mkpath(QLatin1String(folder)));
    const QString road = home.filePath(QStringLiteral("bikes/road.cdi"));
    QVERIFY(WidgetTest::writeFile(road, ""));

    QCOMPARE(fileDialog(false, {}, road), home.filePath(QStringLiteral("Documents")));
    QCOMPARE(
        fileDialog(true, "Straße.cdi", home.filePath("saved/new.cdi")), home.filePath("bikes/Straße.cdi"));
    QCOMPARE(fileDialog(false, {}, road), home.filePath(QStringLiteral("saved")));
}

void TestDesktop::updaterLaunch_data()
{
    QTest::addColumn<QStringList>("elevation"); // the updater and the manifest follow
    QTest::addColumn<QString>("error"); // %1: the updater, which is then missing; %2: the system's words
    const auto shell = [](const char *script) { return QStringList {"sh", "-c", script}; };
    QTest::newRow("started, the updater given the manifest")
        << shell("test -f \"$0\" && test \"$1\" = 'a.exe;9501#b.cds;2'") << "";
    QTest::newRow("no updater") << shell("exit 0") << "file is inaccessible: %1";
    QTest::newRow("password prompt dismissed")
        << shell("exit 126") << "the request for administrator rights was refused";
    QTest::newRow("not authorised") << shell("exit 127") << "administrator rights were not granted";
    QTest::newRow("other failure") << shell("exit 3") << "sh ended with exit status 3";
    QTest::newRow("crashed") << shell("kill -SEGV $$") << "sh stopped unexpectedly";
    QTest::newRow("no elevation tool") << QStringList {"/no/tool"} << "/no/tool could not be started: %2";
}

void TestDesktop::updaterLaunch()
{
    QFETCH(QStringList, elevation);
    QFETCH(QString, error);
    const QString updater = CUpdater::updaterPath(m_home.path());
    QVERIFY(
        WidgetTest::writeFile(updater, error.contains(QLatin1String("%1")) ? QByteArray() : QByteArray("")));
    const QString result = CUpdater::launch(m_home.path(), "a.exe;9501#b.cds;2", elevation);
    QVERIFY2(error.contains(QLatin1String("%2")) ? result.startsWith(error.section(QLatin1String("%2"), 0, 0))
                                                 : result == error.replace(QLatin1String("%1"), updater),
        qPrintable(result));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
