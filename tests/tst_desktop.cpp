// What the program takes from and hands to the desktop: its own and Qt's translations, the
// folder the file dialogs open in, the updater's launch and the web links.
#include "dialogs/cupdater.h"
#include "dialogs/cweblinks.h"
#include "i18n/clanguageswitcher.h"
#include "tests/widgettestmain.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QKeySequence>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

class TestDesktop : public QObject
{
    Q_OBJECT

public slots:
    void openUrl(const QUrl &url) { m_opened.append(url.toString()); }

private slots:
    void initTestCase();
    void languages_data();
    void languages();
    void fileDialogsRememberTheFolder();
    void updaterLaunch_data();
    void updaterLaunch();
    void webLinksFollowTheLanguage();

private:
    // Opens the real dialog, notes the folder it shows and chooses the file in it.
    QString fileDialog(bool save, const QString &suggested, const QString &choice);

    QTemporaryDir m_home;
    QStringList m_opened;
};

void TestDesktop::initTestCase()
{
    // A home of its own, with the settings in it.
    QVERIFY(m_home.isValid());
    qputenv("HOME", QFile::encodeName(m_home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.filePath(QStringLiteral(".config"))));
    QStandardPaths::setTestModeEnabled(true);
}

void TestDesktop::languages_data()
{
    QTest::addColumn<bool>("fileThere");
    QTest::addColumn<int>("language");
    QTest::addColumn<QStringList>("texts"); // our own, and Qt's name of the keys in menus
    QTest::newRow("German") << true << 1 << QStringList {"Haftungsausschluss", "Strg+S"};
    QTest::newRow("German, back to English") << true << 0 << QStringList {"Disclaimer", "Ctrl+S"};
    QTest::newRow("German without lang_de.qm stays English")
        << false << 1 << QStringList {"Disclaimer", "Ctrl+S"};
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
                 QKeySequence(Qt::CTRL | Qt::Key_S).toString(QKeySequence::NativeText)}),
        texts);
}

QString TestDesktop::fileDialog(bool save, const QString &suggested, const QString &choice)
{
    QString shown;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        shown = dialog->directory().absolutePath();
        if (save)
            shown += QLatin1Char('/') + dialog->selectedFiles().value(0).section(QLatin1Char('/'), -1);
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
    QFile file(home.filePath(QStringLiteral("bikes/road.cdi")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();

    QCOMPARE(fileDialog(false, {}, file.fileName()), home.filePath(QStringLiteral("Documents")));
    QCOMPARE(
        fileDialog(true, "Straße.cdi", home.filePath("saved/new.cdi")), home.filePath("bikes/Straße.cdi"));
    QCOMPARE(fileDialog(false, {}, file.fileName()), home.filePath(QStringLiteral("saved")));
}

void TestDesktop::updaterLaunch_data()
{
    QTest::addColumn<bool>("updaterThere");
    QTest::addColumn<QStringList>("elevation"); // the updater and the manifest follow
    QTest::addColumn<QString>("error");
    const auto shell = [](const char *script) { return QStringList {"sh", "-c", script}; };
    QTest::newRow("started, the updater given the manifest")
        << true << shell("test -f \"$0\" && test \"$1\" = 'a.exe;9501#b.cds;2'") << "";
    QTest::newRow("no updater") << false << shell("exit 0") << "file is inaccessible: %1";
    QTest::newRow("password prompt dismissed")
        << true << shell("exit 126") << "the request for administrator rights was refused";
    QTest::newRow("not authorised") << true << shell("exit 127") << "administrator rights were not granted";
    QTest::newRow("other failure") << true << shell("exit 3") << "sh ended with exit status 3";
    QTest::newRow("crashed") << true << shell("kill -SEGV $$") << "sh stopped unexpectedly";
    QTest::newRow("no elevation tool")
        << true << QStringList {"/no/such/pkexec"} << "/no/such/pkexec could not be started: %2";
}

void TestDesktop::updaterLaunch()
{
    QFETCH(bool, updaterThere);
    QFETCH(QStringList, elevation);
    QFETCH(QString, error);

    const QString updater = CUpdater::updaterPath(m_home.path());
    QFile::remove(updater);
    QFile file(updater);
    QVERIFY(!updaterThere || file.open(QIODevice::WriteOnly));
    const QString result = CUpdater::launch(m_home.path(), "a.exe;9501#b.cds;2", elevation);
    if (error.contains(QLatin1String("%2")))
        QVERIFY2(result.startsWith(error.left(error.indexOf(QLatin1String("%2")))), qPrintable(result));
    else
        QCOMPARE(result, error.contains(QLatin1String("%1")) ? error.arg(updater) : error);
}

void TestDesktop::webLinksFollowTheLanguage()
{
    for (const char *scheme : {"https", "http"})
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "openUrl");
    CLanguageSwitcher switcher;
    switcher.addLanguage(QStringLiteral("de"));
    for (int language : {1, 0}) {
        switcher.setLanguage(language);
        CWebLinks::open(CWebLinks::ContactUs);
        CWebLinks::open(CWebLinks::VisitUs);
    }
    for (const char *scheme : {"https", "http"})
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    QCOMPARE(m_opened,
        QStringList({"https://sparkwright.example/de/kontakt", "http://sparkwright.example/de",
            "https://sparkwright.example/en/contact", "http://sparkwright.example/en"}));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
