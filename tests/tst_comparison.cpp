// The comparison as the user meets it: the list with its buttons, factory and own profiles added
// (the same one twice, too), and the common graph that shows them in list order and fills its
// place at every size.
#include "pages/comparisonform.h"
#include "pages/multigraphform.h"
#include "pages/wizardform.h"
#include "profile/profilefile.h"
#include "tests/programfixture.h"
#include "tests/widgettestmain.h"

#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

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

template<typename T> T *child(const QWidget &parent, const char *name)
{
    return parent.findChild<T *>(QLatin1String(name));
}

} // namespace

class TestComparison : public QObject
{
    Q_OBJECT

private slots:
    void buttonStates_data();
    void buttonStates();
    void entriesNameKindAndProfile();
    void duplicatesAreListedTwice();
    void customProfilesComeFromFiles_data();
    void customProfilesComeFromFiles();
    void graphShowsTheListInOrder();
    void graphFillsItsPlaceAtEverySize();
    void entriesFollowTheLanguage();
};

void TestComparison::buttonStates_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<bool>("showGraph");
    QTest::addColumn<bool>("removeAll");
    QTest::addColumn<bool>("remove");
    QTest::addColumn<int>("count");

    QTest::newRow("empty list") << QStringList {} << false << false << false << 0;
    QTest::newRow("one entry") << QStringList {"add"} << true << true << false << 1;
    QTest::newRow("an entry clicked") << QStringList {"add", "click 0"} << true << true << true << 1;
    QTest::newRow("the last entry removed")
        << QStringList {"add", "click 0", "remove"} << false << false << false << 0;
    QTest::newRow("one of two removed")
        << QStringList {"add", "add", "click 1", "remove"} << true << true << false << 1;
    QTest::newRow("all removed") << QStringList {"add", "add", "click 0", "remove all"} << false << false
                                 << false << 0;
}

void TestComparison::buttonStates()
{
    QFETCH(QStringList, steps);
    QFETCH(bool, showGraph);
    QFETCH(bool, removeAll);
    QFETCH(bool, remove);
    QFETCH(int, count);

    ComparisonForm form;
    form.resize(700, 420);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QListWidget *list = child<QListWidget>(form, "list");
    for (const QString &step : steps) {
        if (step == QLatin1String("add")) {
            form.addProfile(namedProfile(QStringLiteral("Entry %1").arg(list->count()), 0));
        } else if (step.startsWith(QLatin1String("click "))) {
            QListWidgetItem *item = list->item(step.mid(6).toInt());
            QTest::mouseClick(
                list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(item).center());
        } else {
            QPushButton *button
                = child<QPushButton>(form, step == QLatin1String("remove") ? "removeButton" : "clearButton");
            QVERIFY(button->isEnabled());
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    QCOMPARE(child<QPushButton>(form, "showGraphButton")->isEnabled(), showGraph);
    QCOMPARE(child<QPushButton>(form, "clearButton")->isEnabled(), removeAll);
    QCOMPARE(child<QPushButton>(form, "removeButton")->isEnabled(), remove);
    QCOMPARE(list->count(), count);
    if (steps.endsWith(QStringLiteral("remove")) && count == 1)
        QCOMPARE(list->item(0)->text(), QStringLiteral("Custom: Entry 0")); // the clicked one went
}

void TestComparison::entriesNameKindAndProfile()
{
    ComparisonForm form;
    Profile factory = namedProfile(QStringLiteral("Enduro 250"), 0);
    factory.setKind(ProfileKind::Default);
    form.addProfile(factory);
    form.addProfile(namedProfile(QStringLiteral("My enduro"), 2));
    QListWidget *list = child<QListWidget>(form, "list");
    QCOMPARE(list->item(0)->text(), QStringLiteral("Default: Enduro 250"));
    QCOMPARE(list->item(1)->text(), QStringLiteral("Custom: My enduro"));
    QCOMPARE(form.profiles().at(1).map(), namedProfile(QString(), 2).map());
}

void TestComparison::duplicatesAreListedTwice()
{
    Program program;
    QVERIFY(program.ready());
    program.click("compareButton");
    for (int i = 0; i < 2; ++i) {
        program.click("addDefaultButton");
        program.click("nextButton"); // the first template, as offered
    }
    const QListWidget *list = program.child<QListWidget>("list");
    QCOMPARE(list->count(), 2);
    const QString expected = QStringLiteral("Default: ") + program.firstTemplate().name();
    QCOMPARE(list->item(0)->text(), expected);
    QCOMPARE(list->item(1)->text(), expected);
    QVERIFY(program.button("showGraphButton")->isEnabled());
}

void TestComparison::customProfilesComeFromFiles_data()
{
    QTest::addColumn<QByteArray>("content"); // null: the dialog was cancelled
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("a profile file") << profileFileBytes(namedProfile(QStringLiteral("Street"), 0))
                                    << QStringList {"Open CDI profile"} << QStringList {"Custom: Street"};
    QTest::newRow("an unreadable file")
        << QByteArray("garbage") << QStringList {"Open CDI profile", "Open CDI profile"} << QStringList {};
    QTest::newRow("cancelled") << QByteArray() << QStringList {"Open CDI profile"} << QStringList {};
}

void TestComparison::customProfilesComeFromFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, titles);
    QFETCH(QStringList, entries);

    QTemporaryDir folder;
    Program program;
    QVERIFY(program.ready());
    if (!content.isNull()) {
        const QString path = folder.filePath(QStringLiteral("street.cdi"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        program.prompts.fileAnswers.append(path);
    }
    program.click("compareButton");
    program.click("addCustomButton");

    QCOMPARE(program.prompts.titles(), titles);
    const QListWidget *list = program.child<QListWidget>("list");
    QStringList listed;
    for (int row = 0; row < list->count(); ++row)
        listed.append(list->item(row)->text());
    QCOMPARE(listed, entries);
    QCOMPARE(program.button("showGraphButton")->isEnabled(), !entries.isEmpty());
}

void TestComparison::graphShowsTheListInOrder()
{
    Program program;
    QVERIFY(program.ready());
    program.click("compareButton");
    ComparisonForm *comparison = program.window().findChild<ComparisonForm *>();
    comparison->addProfile(namedProfile(QStringLiteral("Zeta"), 0));
    comparison->addProfile(namedProfile(QStringLiteral("Alpha"), 3));
    comparison->addProfile(namedProfile(QStringLiteral("Zeta"), 0));
    program.click("showGraphButton");

    MultiGraphForm *graph = program.window().findChild<MultiGraphForm *>();
    QVERIFY(graph->isVisible());
    QCOMPARE(program.prompt(), QStringLiteral("The graph shows the selected profiles for comparison."));
    QStringList legend;
    for (const Profile &profile : graph->profiles())
        legend.append(profile.name());
    QCOMPARE(legend, (QStringList {"Zeta", "Alpha", "Zeta"}));
    QCOMPARE(graph->image().size(), graph->size());

    // Back in the list, a changed list gives a new graph.
    program.click("backButton");
    QVERIFY(!graph->isVisible());
    QListWidget *list = program.child<QListWidget>("list");
    QTest::mouseClick(
        list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(list->item(0)).center());
    program.click("removeButton");
    program.click("showGraphButton");
    legend.clear();
    for (const Profile &profile : graph->profiles())
        legend.append(profile.name());
    QCOMPARE(legend, (QStringList {"Alpha", "Zeta"}));
}

void TestComparison::graphFillsItsPlaceAtEverySize()
{
    MultiGraphForm graph;
    graph.setProfiles({namedProfile(QStringLiteral("One"), 0), namedProfile(QStringLiteral("Two"), 4)});
    graph.resize(640, 360);
    graph.show();
    QVERIFY(QTest::qWaitForWindowExposed(&graph));
    QCOMPARE(graph.image().size(), QSize(640, 360));
    const QImage before = graph.image();
    graph.resize(900, 500);
    QCOMPARE(graph.image().size(), QSize(900, 500));
    QVERIFY(graph.grab().toImage().convertToFormat(QImage::Format_RGB32)
        == graph.image().convertToFormat(QImage::Format_RGB32));
    QVERIFY(before.size() != graph.image().size());
}

void TestComparison::entriesFollowTheLanguage()
{
    ComparisonForm form;
    form.addProfile(namedProfile(QStringLiteral("Mine"), 0));
    SmallTranslator translator;
    translator.texts.insert(
        qMakePair(QByteArray("CProfileItem"), QByteArray("Custom")), QStringLiteral("Eigenes"));
    translator.texts.insert(
        qMakePair(QByteArray("ComparisonForm"), QByteArray("Remove all")), QStringLiteral("Alle entfernen"));
    QCoreApplication::installTranslator(&translator);
    form.retranslate();
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(child<QListWidget>(form, "list")->item(0)->text(), QStringLiteral("Eigenes: Mine"));
    QCOMPARE(child<QPushButton>(form, "clearButton")->text(), QStringLiteral("Alle entfernen"));
    QCOMPARE(child<QPushButton>(form, "addDefaultButton")->toolTip(),
        QStringLiteral("Select a <font color=#4B7D96>default</font> profile to add to the list."));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestComparison)
#include "tst_comparison.moc"
