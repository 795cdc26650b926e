// The device pages as the user meets them: the program's own pages and dialogs against a virtual
// CDI on a pseudo-terminal, with a short tick so that no exchange takes seconds.
#include "device/cbridgewatch.h"
#include "device/cdeviceflow.h"
#include "device/cvirtualcdi.h"
#include "devicepages/devicesform.h"
#include "devicepages/waitform.h"
#include "devicepages/writeconfirmationdialog.h"
#include "render/bracemarkup.h"
#include "start/wizardform.h"
#include "support/changingports.h"
#include "support/programfixture.h"

#include <QClipboard>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

class TestDevicePages : public QObject
{
    Q_OBJECT

private slots:
    void exchanges_data();
    void exchanges();
    void portSelection();
    void bridgeState();
};

// The action is ping, import, program (the reimport box unchecked), cancel the programming, or
// program and quit at once (by Exit or by closing the window): quitting while the CDI is being
// written would cut the frame short, so the program quits only once the exchange has ended. The
// title and text are the progress page's, or those of the message box shown in its place.
void TestDevicePages::exchanges_data()
{
    for (const char *column : {"action", "fault", "title", "text"})
        QTest::addColumn<QString>(column);
    const auto row = [](const char *action, const char *fault, const char *title, const char *text) {
        QTest::addRow("%s, %s", action, fault) << QString(action) << QString(fault) << QString(title) << text;
    };
    row("ping", "none", "Test successful",
        "Your CDI responded as expected. Firmware 1.00 and serial number 123456 were reported.");
    // The pseudo-terminal's name written as PTY.
    row("ping", "hangup", "Test failed",
        "The connection to the CDI on PTY was lost. Check the cable and the USB bridge, then try again.");
    // Rich text.
    row("ping", "port in use", "Connection to the CDI",
        "<p>PTY is in use by another program: tst_devicepages (process ");
    row("import", "none", "Import OK", "Imported profile data will be sent to editor shortly.");
    row("program", "copy cannot be kept", "Programming successful",
        "Your CDI is now programmed with the profile Track. The echo confirmed receipt, but the profile "
        "cannot be read back: it was programmed without allowing reimport.\nA copy of this profile could "
        "not be kept among the programmed profiles: the file may not be written there: /proc/x.");
    // The question shows what programming changes in the CDI, read just before.
    row("cancel", "none", "",
        "Programming changes what the CDI holds (now → after programming):<br>Ignition voltage: 169 V → 170 "
        "V");
    // Quitting, nobody stays for a read back.
    const char programmed[]
        = "Your CDI is now programmed with the profile Track.\nA copy of this profile could not be kept among "
          "the programmed profiles: the file may not be written there: /proc/x.";
    row("quit by Exit", "slow", "Programming successful", programmed);
    row("quit by closing the window", "slow", "Programming successful", programmed);
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
    cdi.setFault(CVirtualCdi::faultFromName(fault).value_or(CVirtualCdi::Fault::None));
    cdi.setDelays(300, 800); // a slow answer comes in time
    // The CDI holds a profile of its own; an import builds on the template of its type.
    Profile held = program.firstTemplate();
    held.setVoltage(held.voltage() - 1);
    cdi.setProfile(held);
    QSignalSpy requests(&cdi, &CVirtualCdi::requestHandled);
    const QString port = cdi.portName(); // a hang-up moves the CDI
    CDeviceFlow &flow = program.window().deviceFlow();
    flow.setPacing({100, 30});
    flow.setImportDelay(50);
    flow.setProgrammedFolder(QStringLiteral("/proc/x"));
    flow.choosePort(cdi.portName());
    QSerialPort other(cdi.portName()); // another program's
    QVERIFY(fault != QLatin1String("port in use") || other.open(QIODevice::ReadWrite));
    Profile mine = program.firstTemplate();
    mine.setName(QStringLiteral("Track"));
    QString changes; // what the question before programming says
    if (action == QLatin1String("ping")) {
        program.window().requestConnectionTest();
    } else if (action == QLatin1String("import")) {
        program.window().requestImport();
    } else if (action.startsWith(QLatin1String("quit"))) {
        QTimer::singleShot(0, &program.window(), [&] {
            program.window().requestProgramming(mine, true);
            if (action.endsWith(QLatin1String("Exit")))
                program.window().findChild<QAction *>("actionExit")->trigger();
            else
                program.window().close();
            QVERIFY(program.window().isVisible() && flow.isBusy());
            QTimer::singleShot(5000, [] { QCoreApplication::exit(7); });
        });
        QCOMPARE(QCoreApplication::exec(), 0);
    } else {
        program.window().showEditor(mine);
        program.window().showProgrammingConfirmation(mine);
        // The question comes once the CDI was read. The reimport box starts checked: a click gone
        // astray shows as a CDI that allows a reimport.
        QTimer answer;
        answer.setInterval(20);
        connect(&answer, &QTimer::timeout, [&, confirm = action == QLatin1String("program")] {
            auto *dialog = qobject_cast<WriteConfirmationDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            answer.stop();
            changes = dialog->findChild<QLabel *>("changesLabel")->text();
            if (confirm)
                WidgetTest::clickCheckBox(dialog->findChild<QCheckBox *>("checkBoxAllowReimport"));
            const char *button = confirm ? "pushButtonConfirm" : "pushButtonCancel";
            QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
        });
        answer.start();
        program.click("nextButton");
        QTRY_VERIFY_WITH_TIMEOUT(!answer.isActive(), 5000);
    }

    WaitForm *wait = program.window().findChild<WaitForm *>();
    if (!wait->isVisible()) {
        QVERIFY(!requests.wait(300));
        QCOMPARE(program.prompts.titles().join(""), title);
        QCOMPARE(QString(program.prompts.each(&ScriptedPrompts::Shown::text).join("") + changes)
                     .replace(cdi.portName(), "PTY")
                     .left(text.size()),
            text);
        return;
    }
    if (flow.isBusy())
        QVERIFY(!program.button("nextButton")->isVisible()); // nowhere to go while it runs
    QTRY_VERIFY_WITH_TIMEOUT(!flow.isBusy(), 5000);
    QCOMPARE(wait->title(), title);
    QCOMPARE(wait->text().replace(port, "PTY"), text);
    QCOMPARE(wait->port().replace(port, "PTY"), QStringLiteral("Port: PTY (Virtual CDI)"));
    QCOMPARE(wait->look(), title.contains("failed") ? WaitForm::Look::Failure : WaitForm::Look::Success);
    // The frames, for support: closed until asked for, then copied as shown.
    auto *details = wait->findChild<QPlainTextEdit *>("detailsEdit");
    QVERIFY(!details->isVisible());
    QTest::mouseClick(wait->findChild<QToolButton *>("detailsButton"), Qt::LeftButton);
    QVERIFY(details->isVisible());
    QTest::mouseClick(wait->findChild<QPushButton *>("copyButton"), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), wait->details());
    QVERIFY2(wait->details().contains(QRegularExpression("\n +\\d+ ms +sent +4d f6 68 ")),
        qPrintable(wait->details()));
    // A programming keeps every exchange it made: the read before it, the write, the read back.
    QVERIFY(action != QLatin1String("program") || wait->details().count(QLatin1String("Opened: ")) >= 2);
    // Every failure offers another port; the port page's Back leaves like the progress page's.
    auto *otherPort = wait->findChild<QPushButton *>("otherPortButton");
    QCOMPARE(otherPort->isVisible(), wait->look() == WaitForm::Look::Failure);
    if (otherPort->isVisible()) {
        QTest::mouseClick(otherPort, Qt::LeftButton);
        QVERIFY(program.window().findChild<DevicesForm *>()->isVisible());
    }
    if (action == QLatin1String("import")) {
        // The editor opens by itself shortly after the result shows.
        QTRY_COMPARE(program.prompt(), QLatin1String(kEditorPrompt));
        QCOMPARE(program.window().findChild<EditorForm *>()->profile().voltage(), held.voltage());
        return;
    }
    QCOMPARE(cdi.reimportAllowed(), action != QLatin1String("program"));
    // Back returns to where the action was chosen; the program stays usable after a failure.
    program.click("backButton");
    QVERIFY(action == QLatin1String("program") ? program.prompt() == QLatin1String(kConfirmPrompt)
                                               : program.button("exitButton")->isVisible());
}

// The list shows what the port listing gives, the bridge selected; Next says so when nothing is.
// The page needs nothing it was given to outlive it.
void TestDevicePages::portSelection()
{
    Program program; // for its prompts
    auto ports = std::make_unique<ChangingPorts>(); // a serial port and, the bridge, a virtual CDI
    ports->shared->ports = {kSerialPort,
        {QStringLiteral("/dev/pts/7"), QStringLiteral("Virtual CDI"), QString(), 0, 0, false, true}};
    DevicesForm form(*ports);
    ports.reset();
    QSignalSpy chosen(&form, &DevicesForm::portChosen);
    form.setActive(true);
    auto *list = form.findChild<QListWidget *>();
    QCOMPARE(list->count(), 2);
    QVERIFY(list->item(1)->text().startsWith(QLatin1String("/dev/pts/7 - Virtual CDI (virtual CDI)")));
    QVERIFY(!list->item(0)->isSelected() && list->item(1)->isSelected());
    // A bridge found is not a detection that failed.
    QCOMPARE(form.findChild<QLabel *>("explanationLabel")->text(),
        QStringLiteral("The <font color=%1>USB/UART bridge</font> of your CDI was found on /dev/pts/7 and "
                       "is selected in the list below. Choose Next to use it, or select another port.")
            .arg(highlightColour()));
    form.onNext();
    QCOMPARE(chosen.takeFirst().at(0).toString(), QStringLiteral("/dev/pts/7"));
    list->clearSelection();
    form.onNext();
    QCOMPARE(program.prompts.each(&ScriptedPrompts::Shown::text), QStringList {"No port is selected."});
    QVERIFY(chosen.isEmpty());
}

// The start page says where the bridge is, within two seconds of a change and without a click,
// and what a successful test reported; the ports are left alone while the page is hidden and
// while an exchange runs.
void TestDevicePages::bridgeState()
{
    Program program;
    QVERIFY(program.ready());
    CVirtualCdi cdi;
    QVERIFY(cdi.open().isEmpty());
    ChangingPorts ports;
    ports.shared->ports = {kSerialPort};
    CBridgeWatch &watch = program.window().findChild<WizardForm *>()->bridgeWatch();
    watch.setPorts(ports);
    watch.setInterval(50);
    auto *label = program.child<QLabel>("bridgeStateLabel");
    QTRY_COMPARE_WITH_TIMEOUT(label->text(), QStringLiteral("No CDI bridge plugged in"), 2000);
    ports.shared->ports.push_back(
        {QStringLiteral("ttyUSB0"), QString(), QString(), 0x10C4, 0xEA60, true, false});
    QTRY_COMPARE_WITH_TIMEOUT(label->text(), QStringLiteral("CDI bridge on /dev/ttyUSB0"), 2000);
    ports.shared->ports = {{cdi.portName(), QStringLiteral("Virtual CDI"), QString(), 0, 0, false, true}};
    QTRY_COMPARE_WITH_TIMEOUT(label->text(), QStringLiteral("Virtual CDI on %1").arg(cdi.portName()), 2000);

    CDeviceFlow &flow = program.window().deviceFlow();
    flow.setPacing({100, 30});
    flow.choosePort(cdi.portName());
    program.window().requestConnectionTest();
    QVERIFY(flow.isBusy() && !watch.isLooking());
    QTRY_VERIFY_WITH_TIMEOUT(!flow.isBusy(), 5000);
    const int looks = ports.shared->looks;
    QTest::qWait(300);
    QCOMPARE(ports.shared->looks, looks); // the progress page shows
    program.click("backButton");
    QCOMPARE(label->text(),
        QStringLiteral("Virtual CDI on %1: firmware 1.00, serial number 123456").arg(cdi.portName()));
    QVERIFY(watch.isLooking());
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestDevicePages)
#include "tst_devicepages.moc"
