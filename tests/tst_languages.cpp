// Switching the language at run time: the translation file, the listeners and the menu.
#include "i18n/clanguagemenu.h"
#include "i18n/clanguageswitcher.h"
#include "tests/widgettestmain.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

// Notes each call together with a text as it reads at that moment, which shows whether the
// translation was already in place when the listener was told.
class RecordingListener : public ITranslatable
{
public:
    RecordingListener(const char *name, QStringList &log)
        : m_name(QLatin1String(name))
        , m_log(log)
    { }
    void retranslate(int language) override
    {
        m_log << m_name + QString::number(language)
                + QCoreApplication::translate("DisclaimerDialog", "Disclaimer");
    }

private:
    const QString m_name;
    QStringList &m_log;
};

} // namespace

class TestLanguages : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void switchReachesListenersInOrder();
    void menu_data();
    void menu();

private:
    QString m_originalDirectory;
    std::unique_ptr<QTemporaryDir> m_case;
};

// Translation files are looked for in the working directory; each case starts in one that holds
// the German file.
void TestLanguages::init()
{
    Q_INIT_RESOURCE(images);
    m_originalDirectory = QDir::currentPath();
    m_case = std::make_unique<QTemporaryDir>();
    QVERIFY(m_case->isValid() && QDir::setCurrent(m_case->path()));
    QVERIFY(QFile::copy(qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR") + QLatin1String("/lang_de.qm"),
        QStringLiteral("lang_de.qm")));
}

void TestLanguages::cleanup()
{
    QDir::setCurrent(m_originalDirectory);
    m_case.reset();
}

// Every listener is told, in the order they registered, also of the language already in use.
void TestLanguages::switchReachesListenersInOrder()
{
    QStringList log;
    RecordingListener mainWindow("main window ", log);
    RecordingListener wizard("wizard ", log);
    CLanguageSwitcher switcher;
    switcher.addLanguage(QStringLiteral("de"));
    switcher.registerListener(&mainWindow);
    switcher.registerListener(&wizard);
    for (int language : {1, 1, 0})
        switcher.setLanguage(language);
    QCOMPARE(log,
        QStringList({"main window 1Haftungsausschluss", "wizard 1Haftungsausschluss",
            "main window 1Haftungsausschluss", "wizard 1Haftungsausschluss", "main window 0Disclaimer",
            "wizard 0Disclaimer"}));
    QCOMPARE(switcher.language(), 0);
}

void TestLanguages::menu_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<int>("chosen");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("text");
    QTest::newRow("English") << true << 0 << "Language" << QStringList {"English", "German"} << "Disclaimer";
    QTest::newRow("German") << true << 1 << "Sprache" << QStringList {"Englisch", "Deutsch"}
                            << "Haftungsausschluss";
    QTest::newRow("German without its file stays selectable, the texts English")
        << false << 1 << "Language" << QStringList {"English", "German"} << "Disclaimer";
}

void TestLanguages::menu()
{
    QFETCH(bool, present);
    QFETCH(int, chosen);
    QFETCH(QString, title);
    QFETCH(QStringList, entries);
    QFETCH(QString, text);
    if (!present)
        QVERIFY(QFile::remove(QStringLiteral("lang_de.qm")));

    QStringList log;
    RecordingListener listener("", log);
    {
        CLanguageSwitcher switcher;
        // The diagnostic goes to the debug output only; the user sees nothing of it.
        QTest::ignoreMessage(
            QtInfoMsg, present ? "loading lang_de.qm .. true" : "loading lang_de.qm .. false");
        switcher.addLanguage(QStringLiteral("de"));
        switcher.registerListener(&listener);
        CLanguageMenu menu(switcher);
        QSignalSpy selected(&menu, &CLanguageMenu::languageSelected);
        QVERIFY(menu.actions().at(chosen)->isEnabled());
        menu.actions().at(chosen)->trigger();
        QCoreApplication::processEvents();

        QCOMPARE(switcher.language(), chosen);
        QCOMPARE(selected.size(), 1);
        QCOMPARE(selected.first().first().toInt(), chosen);
        QCOMPARE(log, QStringList {QString::number(chosen) + text});
        QCOMPARE(menu.title(), title);
        QStringList shown;
        for (const QAction *action : menu.actions())
            shown.append(action->text());
        QCOMPARE(shown, entries);
        QCOMPARE(menu.currentLanguageName(), entries.at(chosen));
    }
    // A switcher that goes away takes its translation with it.
    QCOMPARE(QCoreApplication::translate("DisclaimerDialog", "Disclaimer"), QStringLiteral("Disclaimer"));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestLanguages)
#include "tst_languages.moc"
