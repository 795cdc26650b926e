// What the program takes from and hands to the desktop: its own and Qt's translations with the
// web links they lead to, the folder the file dialogs open in and the way to an update.
#include "dialogs/cupdater.h"
#include "dialogs/cweblinks.h"
#include "shell/clanguageswitcher.h"
#include "support/widgettestmain.h"

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
    void softwareCentre_data();
    void softwareCentre();

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

    CLanguageSwitcher switcher(fileThere ? QString() : m_home.path());
    switcher.addLanguage(QStringLiteral("de"));
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
    QVERIFY(writeFile(road, ""));

    QCOMPARE(fileDialog(false, {}, road), home.filePath(QStringLiteral("Documents")));
    QCOMPARE(
        fileDialog(true, "Straße.cdi", home.filePath("saved/new.cdi")), home.filePath("bikes/Straße.cdi"));
    QCOMPARE(fileDialog(false, {}, road), home.filePath(QStringLiteral("saved")));
}

// Outside Windows the package manager updates the program; Update offers a software centre
// only where an installed application opens the program's page there.
void TestDesktop::softwareCentre_data()
{
    QTest::addColumn<QString>("entry"); // a desktop entry in the data folders' applications
    QTest::addColumn<bool>("found");
    QTest::newRow("none") << "" << false;
    QTest::newRow("a software centre")
        << "[Desktop Entry]\nName=Software\nMimeType=x-scheme-handler/appstream;x-scheme-handler/apt;\n"
        << true;
    QTest::newRow("the scheme named elsewhere")
        << "[Desktop Entry]\nComment=no x-scheme-handler/appstream here\nMimeType=text/plain;\n"
        << false;
}

void TestDesktop::softwareCentre()
{
    QFETCH(QString, entry);
    QFETCH(bool, found);
    const QTemporaryDir data;
    QVERIFY(QDir(data.path()).mkpath(QStringLiteral("applications/kde")));
    if (!entry.isEmpty())
        QVERIFY(writeFile(data.filePath(QStringLiteral("applications/kde/centre.desktop")), entry.toUtf8()));
    QCOMPARE(CUpdater::hasSoftwareCentre({m_home.path(), data.path()}), found);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
