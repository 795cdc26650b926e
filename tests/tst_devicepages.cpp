// The device pages as the user meets them: the program's own pages and dialog against a virtual
// CDI on a pseudo-terminal, with a short tick so that no exchange takes seconds.
#include "device/cdeviceflow.h"
#include "device/cvirtualcdi.h"
#include "device/devicesform.h"
#include "device/serialports.h"
#include "device/waitform.h"
#include "device/writeconfirmationdialog.h"
#include "profile/profilefile.h"
#include "tests/programfixture.h"

#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

namespace {

const char kConfirmPrompt[] = "Please confirm programming the CDI with this profile.";

class FixedPorts : public IPortLister
{
public:
    std::vector<SerialPortEntry> ports() const override { return entries; }
    std::vector<SerialPortEntry> entries;
};

// Answers the write confirmation as soon as it shows: Confirm with the box as given, or Cancel.
void answerConfirmation(const QString &answer)
{
    QTimer::singleShot(0, [answer] {
        auto *dialog = qobject_cast<WriteConfirmationDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        if (answer == QLatin1String("cancel")) {
            QTest::mouseClick(dialog->findChild<QPushButton *>("pushButtonCancel"), Qt::LeftButton);
            return;
        }
        auto *box = dialog->findChild<QCheckBox *>("checkBoxAllowReimport");
        QVERIFY(box->isChecked());
        if (answer == QLatin1String("no reimport"))
            WidgetTest::clickCheckBox(box);
        QTest::mouseClick(dialog->findChild<QPushButton *>("pushButtonConfirm"), Qt::LeftButton);
    });
}

} // namespace

class TestDevicePages : public QObject
{
    Q_OBJECT

private slots:
    void exchanges_data();
    void exchanges();
    void portSelection();
};

void TestDevicePages::exchanges_data()
{
    QTest::addColumn<QString>("action"); // ping, import, or program answered "reimport", "no reimport", "cancel"
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("title"); // on the progress page; empty when nothing was sent
    QTest::addColumn<QString>("text"); // a part of the result's text
    QTest::newRow("ping") << "ping" << "" << "Test successful" << "serial number 123456";
    QTest::newRow("wrong nonce") << "ping" << "wrong-nonce" << "Test failed" << "";
    // A failure without a title of its own keeps the activity's.
    QTest::newRow("unplugged") << "ping" << "hangup" << "Testing" << "";
    QTest::newRow("import") << "import" << "" << "Import OK" << "";
    QTest::newRow("program") << "reimport" << "" << "Programming successful" << "Track";
    QTest::newRow("program, no reimport") << "no reimport" << "" << "Programming successful" << "Track";
    QTest::newRow("cancelled") << "cancel" << "" << "" << "";
}

void TestDevicePages::exchanges()
{
    QFETCH(QString, action);
    QFETCH(QString, fault);
    QFETCH(QString, title);
    QFETCH(QString, text);

    Program program;
    QVERIFY(program.ready());
    CVirtualCdi cdi;
    QVERIFY(cdi.open().isEmpty());
    if (!fault.isEmpty())
        cdi.setFault(*CVirtualCdi::faultFromName(fault));
    // The CDI holds a map of its own; an import builds on the template of its type.
    Profile held = program.firstTemplate();
    IgnitionMap map = held.map();
    map.setPoint(9, map.point(9).rpm + 100, map.point(9).angle - 1);
    held.setMap(map);
    cdi.setProfile(held);
    QSignalSpy requests(&cdi, &CVirtualCdi::requestHandled);

    QTemporaryDir copies;
    CDeviceFlow &flow = program.window().deviceFlow();
    flow.setPacing({100, 30});
    flow.setImportDelay(50);
    flow.setProgrammedFolder(copies.path());
    flow.choosePort(cdi.portName());

    Profile mine = program.firstTemplate();
    mine.setName(QStringLiteral("Track"));
    if (action == QLatin1String("ping")) {
        program.window().requestConnectionTest();
    } else if (action == QLatin1String("import")) {
        program.window().requestImport();
    } else {
        program.window().showEditor(mine);
        program.window().showProgrammingConfirmation(mine);
        answerConfirmation(action);
        program.click("nextButton");
    }

    WaitForm *wait = program.window().findChild<WaitForm *>();
    if (title.isEmpty()) {
        QTest::qWait(300);
        QCOMPARE(requests.count(), 0);
        QVERIFY(!wait->isVisible());
        return;
    }
    QVERIFY(wait->isVisible());
    QVERIFY(!program.button("nextButton")->isVisible()); // nowhere to go while it runs
    QTRY_VERIFY_WITH_TIMEOUT(!flow.isBusy(), 5000);
    QCOMPARE(wait->title(), title);
    QVERIFY2(wait->text().contains(text), qPrintable(wait->text()));
    QCOMPARE(wait->look(), fault.isEmpty() ? WaitForm::Look::Success : WaitForm::Look::Failure);

    if (action == QLatin1String("import")) {
        // The editor opens by itself shortly after the result shows.
        QTRY_COMPARE(program.prompt(), QLatin1String(kEditorPrompt));
        QCOMPARE(program.window().findChild<EditorForm *>()->profile().map(), held.map());
        return;
    }
    if (action.contains(QLatin1String("reimport"))) {
        QCOMPARE(cdi.reimportAllowed(), action == QLatin1String("reimport"));
        const QStringList kept = QDir(copies.path()).entryList({QStringLiteral("*Track.cdi")}, QDir::Files);
        QCOMPARE(kept.size(), 1);
        const std::optional<Profile> copy = readProfileFile(QDir(copies.path()).filePath(kept.first()));
        QVERIFY(copy && copy->map() == mine.map());
    }
    // Back returns to where the action was chosen; the program stays usable after a failure.
    program.click("backButton");
    QVERIFY(!wait->isVisible());
    QVERIFY(action == QLatin1String("ping") ? program.button("exitButton")->isVisible()
                                              : program.prompt() == QLatin1String(kConfirmPrompt));
}

// The list shows what the port listing gives, bridges selected; Next and the detection say so
// when there is nothing to go on.
void TestDevicePages::portSelection()
{
    ScriptedPrompts prompts;
    setUserPrompts(&prompts);
    FixedPorts ports;
    ports.entries = {{QStringLiteral("ttyS0"), QString(), QString(), 0, 0, false, false},
        {QStringLiteral("/dev/pts/7"), QStringLiteral("Virtual CDI"), QStringLiteral("Sparkwright"), 0, 0, false,
            true}};
    DevicesForm form(ports);
    QSignalSpy chosen(&form, &DevicesForm::portChosen);
    form.setActive(true);
    auto *list = form.findChild<QListWidget *>();
    QCOMPARE(list->count(), 2);
    QVERIFY(list->item(0)->text().startsWith(QLatin1String("ttyS0")));
    QVERIFY(list->item(1)->text().contains(QLatin1String("Enum: /dev/pts/7")));
    QVERIFY(!list->item(0)->isSelected() && list->item(1)->isSelected());
    form.onNext();
    QCOMPARE(chosen.takeFirst().at(0).toString(), QStringLiteral("/dev/pts/7"));

    list->clearSelection();
    form.onNext();
    ports.entries.pop_back();
    form.onRetryAutoDetection();
    QCOMPARE(prompts.titles(), (QStringList {"Sparkwright", "Sparkwright"}));
    QCOMPARE(prompts.shown.at(0).text, QStringLiteral("No port is selected."));
    QCOMPARE(prompts.shown.at(1).text, QStringLiteral("Automatic detection failed."));
    QVERIFY(chosen.isEmpty());
    setUserPrompts(nullptr);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestDevicePages)
#include "tst_devicepages.moc"
