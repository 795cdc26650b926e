// Switching the language at run time: the translation file, the listeners and the menu.
#include "i18n/clanguagemenu.h"
#include "i18n/clanguageswitcher.h"
#include "tests/widgettestmain.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

// Notes each call together with a text as it reads at that moment, which shows whether the
// translation was already in place when the listener was told.
class RecordingListener : public ITranslatable
{
public:
    RecordingListener(const QString &name, QStringList &log)
        : m_name(name)
        , m_log(log)
    { }

    void retranslate(int language) override
    {
        m_log.append(QStringLiteral("%1 %2 %3")
                         .arg(m_name)
                         .arg(language)
                         .arg(QCoreApplication::translate("DisclaimerDialog", "Disclaimer")));
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
    void initTestCase();
    void init();
    void cleanup();

    void switchReachesListenersInOrder_data();
    void switchReachesListenersInOrder();
    void translationFile_data();
    void translationFile();
    void menu_data();
    void menu();

private:
    void provideTranslation();

    QString m_originalDirectory;
    std::unique_ptr<QTemporaryDir> m_case;
};

void TestLanguages::initTestCase()
{
    Q_INIT_RESOURCE(images);
    m_originalDirectory = QDir::currentPath();
}

// Translation files are looked for in the working directory; each case starts in an empty one.
void TestLanguages::init()
{
    m_case = std::make_unique<QTemporaryDir>();
    QVERIFY(m_case->isValid());
    QVERIFY(QDir::setCurrent(m_case->path()));
}

void TestLanguages::cleanup()
{
    QDir::setCurrent(m_originalDirectory);
    m_case.reset();
}

void TestLanguages::provideTranslation()
{
    QVERIFY(QFile::copy(qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR") + QLatin1String("/lang_de.qm"),
        m_case->filePath(QStringLiteral("lang_de.qm"))));
}

void TestLanguages::switchReachesListenersInOrder_data()
{
    QTest::addColumn<QList<int>>("choices");
    QTest::addColumn<QStringList>("calls");

    const QString english = QStringLiteral("Disclaimer");
    const QString german = QStringLiteral("Haftungsausschluss");
    const auto round = [](int language, const QString &text) {
        return QStringList {QStringLiteral("main-window %1 %2").arg(language).arg(text),
            QStringLiteral("wizard %1 %2").arg(language).arg(text),
            QStringLiteral("about %1 %2").arg(language).arg(text),
            QStringLiteral("editor %1 %2").arg(language).arg(text)};
    };

    QTest::newRow("to German") << QList<int> {1} << round(1, german);
    QTest::newRow("English again while English") << QList<int> {0} << round(0, english);
    QTest::newRow("German twice") << QList<int> {1, 1} << round(1, german) + round(1, german);
    QTest::newRow("German and back") << QList<int> {1, 0} << round(1, german) + round(0, english);
}

void TestLanguages::switchReachesListenersInOrder()
{
    QFETCH(QList<int>, choices);
    QFETCH(QStringList, calls);
    provideTranslation();

    QStringList log;
    RecordingListener mainWindow(QStringLiteral("main-window"), log);
    RecordingListener wizard(QStringLiteral("wizard"), log);
    RecordingListener about(QStringLiteral("about"), log);
    RecordingListener editor(QStringLiteral("editor"), log);
    CLanguageSwitcher switcher;
    switcher.addLanguage(QStringLiteral("de"));
    for (ITranslatable *listener :
        {static_cast<ITranslatable *>(&mainWindow), static_cast<ITranslatable *>(&wizard),
            static_cast<ITranslatable *>(&about), static_cast<ITranslatable *>(&editor)})
        switcher.registerListener(listener);

    for (int language : choices)
        switcher.setLanguage(language);
    QCOMPARE(log, calls);
    QCOMPARE(switcher.language(), choices.last());
}

void TestLanguages::translationFile_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<QString>("diagnostic");
    QTest::addColumn<QString>("germanText");

    QTest::newRow("present") << true << "loading lang_de.qm .. true"
                             << "Haftungsausschluss";
    QTest::newRow("missing: German stays selectable, texts stay English")
        << false << "loading lang_de.qm .. false"
        << "Disclaimer";
}

void TestLanguages::translationFile()
{
    QFETCH(bool, present);
    QFETCH(QString, diagnostic);
    QFETCH(QString, germanText);
    if (present)
        provideTranslation();

    QStringList log;
    RecordingListener listener(QStringLiteral("listener"), log);
    {
        CLanguageSwitcher switcher;
        // The diagnostic goes to the debug output only; the user sees nothing of it.
        QTest::ignoreMessage(QtInfoMsg, qPrintable(diagnostic));
        switcher.addLanguage(QStringLiteral("de"));
        switcher.registerListener(&listener);
        CLanguageMenu menu(switcher);
        QVERIFY(menu.actions().at(CLanguageSwitcher::kGerman)->isEnabled());

        menu.actions().at(CLanguageSwitcher::kGerman)->trigger();
        QCOMPARE(switcher.language(), int(CLanguageSwitcher::kGerman));
        QCOMPARE(log, QStringList {QStringLiteral("listener 1 ") + germanText});
    }
    // A switcher that goes away takes its translation with it.
    QCOMPARE(QCoreApplication::translate("DisclaimerDialog", "Disclaimer"), QStringLiteral("Disclaimer"));
}

void TestLanguages::menu_data()
{
    QTest::addColumn<int>("chosen");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("English") << 0 << "Language" << QStringList {"English", "German"};
    QTest::newRow("German") << 1 << "Sprache" << QStringList {"Englisch", "Deutsch"};
}

void TestLanguages::menu()
{
    QFETCH(int, chosen);
    QFETCH(QString, title);
    QFETCH(QStringList, entries);
    provideTranslation();

    CLanguageSwitcher switcher;
    switcher.addLanguage(QStringLiteral("de"));
    CLanguageMenu menu(switcher);
    QCOMPARE(menu.title(), QStringLiteral("Language"));
    QCOMPARE(menu.actions().size(), int(CLanguageSwitcher::kLanguageCount));
    QSignalSpy selected(&menu, &CLanguageMenu::languageSelected);

    menu.actions().at(chosen)->trigger();
    QCoreApplication::processEvents();

    QCOMPARE(switcher.language(), chosen);
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.first().first().toInt(), chosen);
    QCOMPARE(menu.title(), title);
    QStringList shown;
    for (const QAction *action : menu.actions())
        shown.append(action->text());
    QCOMPARE(shown, entries);
    QCOMPARE(menu.currentLanguageName(), entries.at(chosen));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestLanguages)
#include "tst_languages.moc"
