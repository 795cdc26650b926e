// The device pages as the user meets them: the program's own pages and dialog against a virtual
// CDI on a pseudo-terminal, with a short tick so that no exchange takes seconds.
#include "device/cvirtualcdi.h"
#include "device/serialports.h"
#include "devicepages/cdeviceflow.h"
#include "devicepages/devicesform.h"
#include "devicepages/waitform.h"
#include "devicepages/writeconfirmationdialog.h"
#include "profile/profilefile.h"
#include "support/programfixture.h"

#include <QDateTime>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

namespace {

const char kConfirmPrompt[] = "Please confirm programming the CDI with this profile.";

// A serial port and, the bridge among them, a virtual CDI.
struct FixedPorts : IPortLister
{
    std::vector<SerialPortEntry> ports() const override
    {
        return {{QStringLiteral("ttyS0"), QString(), QString(), 0, 0, false, false},
            {QStringLiteral("/dev/pts/7"), QStringLiteral("Virtual CDI"), QString(), 0, 0, false, true}};
    }
    std::unique_ptr<IPortLister> clone() const override { return std::make_unique<FixedPorts>(); }
};

} // namespace

class TestDevicePages : public QObject
{
    Q_OBJECT

private slots:
    void exchanges_data();
    void exchanges();
    void portSelection();
    void quittingWaitsForTheExchange_data();
    void quittingWaitsForTheExchange();
};

// The action is ping, import, program (the reimport box unchecked) or cancel the programming; the
// title is the progress page's, empty when nothing was sent; the text a part of the result's.
void TestDevicePages::exchanges_data()
{
    for (const char *column : {"action", "fault", "title", "text"})
        QTest::addColumn<QString>(column);
    const auto row = [](const char *action, const char *fault, const char *title, const char *text) {
        QTest::addRow("%s, %s", action, fault) << QString(action) << QString(fault) << QString(title) << text;
    };
    row("ping", "none", "Test successful", "Firmware 1.00 and serial number 123456");
    row("ping", "wrong-nonce", "Test failed", "");
    row("ping", "hangup", "Testing", ""); // a failure without a title of its own keeps the activity's
    row("import", "none", "Import OK", "");
    row("program", "none", "Programming successful", "Track");
    row("cancel", "none", "", "");
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
    cdi.setFault(*CVirtualCdi::faultFromName(fault));
    // The CDI holds a profile of its own; an import builds on the template of its type.
    Profile held = program.firstTemplate();
    held.setVoltage(held.voltage() - 1);
    cdi.setProfile(held);
    QSignalSpy requests(&cdi, &CVirtualCdi::requestHandled);

    QTemporaryDir copies;
    CDeviceFlow &flow = program.window().deviceFlow();
    flow.setPacing({100, 30});
    flow.setImportDelay(50);
    flow.setProgrammedFolder(copies.path());
    flow.choosePort(cdi.portName());
    if (action == QLatin1String("ping")) {
        program.window().requestConnectionTest();
    } else if (action == QLatin1String("import")) {
        program.window().requestImport();
    } else {
        Profile mine = program.firstTemplate();
        mine.setName(QStringLiteral("Track"));
        program.window().showEditor(mine);
        program.window().showProgrammingConfirmation(mine);
        // The reimport box starts checked: a click gone astray shows as a CDI that allows a reimport.
        QTimer::singleShot(0, [confirm = action == QLatin1String("program")] {
            auto *dialog = qobject_cast<WriteConfirmationDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            if (confirm)
                WidgetTest::clickCheckBox(dialog->findChild<QCheckBox *>("checkBoxAllowReimport"));
            const char *button = confirm ? "pushButtonConfirm" : "pushButtonCancel";
            QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
        });
        program.click("nextButton");
    }

    WaitForm *wait = program.window().findChild<WaitForm *>();
    if (title.isEmpty()) {
        QVERIFY(!requests.wait(300) && !wait->isVisible());
        return;
    }
    QVERIFY(wait->isVisible() && !program.button("nextButton")->isVisible()); // nowhere to go while it runs
    QTRY_VERIFY_WITH_TIMEOUT(!flow.isBusy(), 5000);
    QCOMPARE(wait->title(), title);
    QVERIFY2(wait->text().contains(text), qPrintable(wait->text()));
    QCOMPARE(
        wait->look(), fault == QLatin1String("none") ? WaitForm::Look::Success : WaitForm::Look::Failure);

    if (action == QLatin1String("import")) {
        // The editor opens by itself shortly after the result shows.
        QTRY_COMPARE(program.prompt(), QLatin1String(kEditorPrompt));
        QCOMPARE(program.window().findChild<EditorForm *>()->profile().voltage(), held.voltage());
        return;
    }
    if (action == QLatin1String("program")) {
        QVERIFY(!cdi.reimportAllowed());
        // A copy of what was programmed is kept.
        QCOMPARE(QDir(copies.path()).entryList({QStringLiteral("*Track.cdi")}, QDir::Files).size(), 1);
    }
    // Back returns to where the action was chosen; the program stays usable after a failure.
    program.click("backButton");
    QVERIFY(!wait->isVisible());
    QVERIFY(action == QLatin1String("ping") ? program.button("exitButton")->isVisible()
                                            : program.prompt() == QLatin1String(kConfirmPrompt));
}

// The list shows what the port listing gives, the bridge selected; Next says so when nothing is.
// The page needs nothing it was given to outlive it.
void TestDevicePages::portSelection()
{
    Program program; // for its prompts
    auto ports = std::make_unique<FixedPorts>();
    DevicesForm form(*ports);
    ports.reset();
    QSignalSpy chosen(&form, &DevicesForm::portChosen);
    form.setActive(true);
    auto *list = form.findChild<QListWidget *>();
    QCOMPARE(list->count(), 2);
    QVERIFY(list->item(1)->text().startsWith(QLatin1String("/dev/pts/7 - Virtual CDI (virtual CDI)")));
    QVERIFY(!list->item(0)->isSelected() && list->item(1)->isSelected());
    form.onNext();
    QCOMPARE(chosen.takeFirst().at(0).toString(), QStringLiteral("/dev/pts/7"));
    list->clearSelection();
    form.onNext();
    QCOMPARE(program.prompts.each(&ScriptedPrompts::Shown::text), QStringList {"No port is selected."});
    QVERIFY(chosen.isEmpty());
}

// Quitting while the CDI is being written would cut the frame short: the program quits only once
// the exchange has ended, and what was written is kept as a copy of its own even when a copy of
// the same name and second is there already.
void TestDevicePages::quittingWaitsForTheExchange_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("Exit") << "exit";
    QTest::newRow("closing the window") << "close";
}

void TestDevicePages::quittingWaitsForTheExchange()
{
    QFETCH(QString, way);
    Program program;
    QVERIFY(program.ready());
    CVirtualCdi cdi;
    QVERIFY(cdi.open().isEmpty());
    cdi.setFault(CVirtualCdi::Fault::Slow);
    cdi.setDelays(300, 800);
    QTemporaryDir copies;
    CDeviceFlow &flow = program.window().deviceFlow();
    flow.setPacing({100, 30});
    flow.setProgrammedFolder(copies.path());
    flow.choosePort(cdi.portName());
    // Copies of the same name from this second and the next few are there already.
    const QDateTime now = QDateTime::currentDateTime();
    QStringList earlier;
    for (int second = 0; second < 5; ++second) {
        earlier << now.addSecs(second).toString(QStringLiteral("yyyy-MM-dd HH-mm-ss"))
                + QStringLiteral(" Track.cdi");
        QVERIFY(WidgetTest::writeFile(copies.filePath(earlier.last()), "an earlier copy"));
    }

    Profile mine = program.firstTemplate();
    mine.setName(QStringLiteral("Track"));
    QTimer::singleShot(0, &program.window(), [&] {
        program.window().requestProgramming(mine, true);
        QVERIFY(flow.isBusy());
        if (way == QLatin1String("exit"))
            program.window().findChild<QAction *>("actionExit")->trigger();
        else
            program.window().close();
        QVERIFY(program.window().isVisible());
        QTimer::singleShot(5000, [] { QCoreApplication::exit(7); });
    });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(program.window().findChild<WaitForm *>()->title(), QStringLiteral("Programming successful"));
    QCOMPARE(cdi.storedImage().size(), 45);
    QStringList kept = QDir(copies.path()).entryList(QDir::Files);
    for (const QString &name : qAsConst(earlier)) {
        QVERIFY(kept.removeOne(name));
        QCOMPARE(WidgetTest::readFile(copies.filePath(name)), QByteArray("an earlier copy"));
    }
    QCOMPARE(kept.size(), 1);
    QVERIFY2(kept.first().endsWith(QLatin1String(" Track (2).cdi")), qPrintable(kept.first()));
    const tl::expected<Profile, FileError> copy = readProfileFile(copies.filePath(kept.first()));
    QVERIFY(copy && copy->map() == mine.map() && copy->name() == mine.name());
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestDevicePages)
#include "tst_devicepages.moc"
