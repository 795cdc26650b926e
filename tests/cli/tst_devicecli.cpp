// The device verbs of the command-line tool as a user runs them: a virtual CDI in one process,
// ping, import and program in others, with the program's real pacing.
#include "profile/profilefile.h"
#include "support/layoutencoder.h"

#include <QDir>
#include <QProcess>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

class TestDeviceCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void session();

private:
    // The exit code, and what the tool wrote to its output and error streams.
    // as: a command the tool runs under, such as one that changes its user.
    int run(const QStringList &arguments, QString &out, QString &err, const QStringList &as = {});
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QString m_cli;
    QString m_buildDir;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QTemporaryDir m_dir;
    QTemporaryDir m_runtimeDir;
};

void TestDeviceCli::initTestCase()
{
    m_cli = qEnvironmentVariable("SPARKWRIGHT_CLI");
    m_buildDir = qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR");
    if (m_cli.isEmpty() || m_buildDir.isEmpty())
        QSKIP("SPARKWRIGHT_CLI and SPARKWRIGHT_BUILD_DIR name the tool and its data files");
    QVERIFY(m_dir.isValid() && m_runtimeDir.isValid());
    // Its own runtime folder: the virtual CDIs of this test are the only ones the tool sees.
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtimeDir.path());

    // A profile with one angle beyond every limit.
    Profile profile;
    profile.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 11, 12, 13, 60, 15, 16, 17, 18, 19}));
    QVERIFY(saveProfileFile(profile, path(QStringLiteral("bad.cdi"))));
}

int TestDeviceCli::run(const QStringList &arguments, QString &out, QString &err, const QStringList &as)
{
    QProcess process;
    process.setWorkingDirectory(m_buildDir);
    process.setProcessEnvironment(m_environment);
    if (as.isEmpty())
        process.start(m_cli, arguments);
    else
        process.start(as.first(), as.mid(1) + QStringList {m_cli} + arguments);
    if (!process.waitForFinished(30000))
        return -1;
    out = QString::fromUtf8(process.readAllStandardOutput());
    err = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

void TestDeviceCli::session()
{
    QProcess cdi;
    cdi.setWorkingDirectory(m_buildDir);
    cdi.setProcessEnvironment(m_environment);
    cdi.start(m_cli, {"virtual-cdi", "--firmware", "3.1", "--serial", "42"});
    while (!cdi.canReadLine() && cdi.waitForReadyRead(10000)) { }
    const QString port = QString::fromUtf8(cdi.readLine()).trimmed(); // the pseudo-terminal
    QVERIFY2(port.startsWith(QLatin1String("/dev/")), qPrintable(port));

    QString out, err;
    QCOMPARE(run({"ports"}, out, err), 0);
    QVERIFY2(
        out.startsWith(QStringLiteral("port\tdescription\tmanufacturer\tUSB ID\tnotes\n")), qPrintable(out));
    QVERIFY2(out.contains(port + QStringLiteral("\tVirtual CDI\tSparkwright\t-\tbridge\tvirtual\n")),
        qPrintable(out));

    QCOMPARE(run({"ping"}, out, err), 0);
    QCOMPARE(out,
        QStringLiteral(
            "Test successful\nYour CDI responded as expected. Firmware 3.1 and serial number 42 were "
            "reported.\n"));
    QCOMPARE(run({"ping", "--port", port, "--language", "de"}, out, err), 0);
    QCOMPARE(out,
        QStringLiteral(
            "Test erfolgreich\nIhre CDI hat wie erwartet geantwortet. Gemeldet wurden die Firmware 3.1 "
            "und die Seriennummer 42.\n"));

    // A port another program holds is named with that program; a node closed to the user is
    // described as the system has it, with the fix that works there. That needs root, to hand the
    // node to root and run the tool as nobody.
    {
        QSerialPort other(port);
        QVERIFY(other.open(QIODevice::ReadWrite));
        QCOMPARE(run({"ping", "--port", port, "--language", "de"}, out, err), 2);
        QCOMPARE(err,
            QStringLiteral(
                "sparkwright-cli: %1 wird von einem anderen Programm benutzt: tst_devicecli (Prozess "
                "%2). Schließen Sie es und versuchen Sie es erneut.\n")
                .arg(port)
                .arg(QCoreApplication::applicationPid()));
    }
    const QByteArray node = port.toLocal8Bit();
    const QStringList nobody {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
    if (::geteuid() == 0 && ::chown(node.constData(), 0, 0) == 0 && ::chmod(node.constData(), 0660) == 0) {
        QCOMPARE(run({"ping", "--port", port}, out, err, nobody), 2);
        QCOMPARE(err,
            QStringLiteral(
                "sparkwright-cli: Permission denied: %1 belongs to the group root and has the access "
                "rights crw-rw----. Add your account to this group, then log out and in again: sudo "
                "usermod -aG root $USER\n")
                .arg(port));
        QVERIFY(::chmod(node.constData(), 0600) == 0);
        QCOMPARE(run({"ping", "--port", port, "--language", "de"}, out, err, nobody), 2);
        QCOMPARE(err,
            QStringLiteral("sparkwright-cli: Zugriff verweigert: %1 gehört zur Gruppe root und hat die "
                           "Zugriffsrechte crw-------. Nur der Eigentümer root darf darauf zugreifen.\n")
                .arg(port));
        QVERIFY(::chmod(node.constData(), 0620) == 0);
    }

    QCOMPARE(run({"import", path("held.cdi")}, out, err), 0);
    QCOMPARE(out, QStringLiteral("Import OK\nThe imported profile was saved as %1.\n").arg(path("held.cdi")));
    // Read back after programming, unless it may not be or is not wanted.
    QCOMPARE(run({"program", path("held.cdi")}, out, err), 0);
    QVERIFY2(out.startsWith(QStringLiteral("Programmed and verified\n")), qPrintable(out + err));
    QCOMPARE(run({"program", path("held.cdi"), "--no-verify"}, out, err), 0);
    QVERIFY2(out.startsWith(QStringLiteral("Programming successful\n")), qPrintable(out + err));
    // The differences as a CDI holding the first would get the second: names do not count.
    const tl::expected<Profile, FileError> held = readProfileFile(path("held.cdi"));
    QVERIFY(held);
    Profile other = *held;
    other.setName(QStringLiteral("Other"));
    QVERIFY(saveProfileFile(other, path("renamed.cdi")));
    other.setVoltage(220);
    IgnitionMap map = other.map();
    map.setPoint(2, 3200, 20);
    other.setMap(map);
    QVERIFY(saveProfileFile(other, path("other.cdi")));
    QCOMPARE(run({"diff", path("held.cdi"), path("renamed.cdi")}, out, err), 0);
    QCOMPARE(out + err, QString());
    QCOMPARE(run({"diff", path("held.cdi"), path("other.cdi"), "--language", "de"}, out, err), 1);
    QCOMPARE(
        out, QStringLiteral("Punkt 3: 3000 U/min, 18° → 3200 U/min, 20°\nZündspannung: 170 V → 220 V\n"));
    QCOMPARE(run({"diff", path("held.cdi"), path("none.cdi")}, out, err), 2);
    QVERIFY2(out.isEmpty() && err.contains(path("none.cdi")), qPrintable(err));
    {
        // A CDI that echoes right but keeps what it held: the difference, sent → read back.
        QProcess forgetful;
        forgetful.setWorkingDirectory(m_buildDir);
        forgetful.setProcessEnvironment(m_environment);
        forgetful.start(m_cli, {"virtual-cdi", "--fault", "keeps-old", "--profile", path("held.cdi")});
        while (!forgetful.canReadLine() && forgetful.waitForReadyRead(10000)) { }
        const QString forgetfulPort = QString::fromUtf8(forgetful.readLine()).trimmed();
        QCOMPARE(run({"program", path("other.cdi"), "--port", forgetfulPort}, out, err), 1);
        QCOMPARE(out,
            QStringLiteral(
                "Verification failed\nYour CDI echoed the profile Other, but it gives back other "
                "values than were sent (sent → read back):\nSlot 3: 3200 rpm, 20° → 3000 rpm, 18°\n"
                "Ignition voltage: 220 V → 170 V\n\nThe CDI may be programmed improperly and should "
                "not be used in its current state.\n"));
        forgetful.terminate();
        QVERIFY(forgetful.waitForFinished(10000));
    }
    QCOMPARE(run({"program", path("held.cdi"), "--no-reimport"}, out, err), 0);
    QVERIFY2(out.startsWith(QStringLiteral("Programming successful\n")), qPrintable(out + err));
    // With the frames on the error stream, for support.
    QCOMPARE(run({"import", path("refused.cdi"), "--verbose"}, out, err), 1);
    QCOMPARE(out,
        QStringLiteral(
            "Import failed\nNothing answered on %1. The CDI may have been programmed not to give its "
            "profile back; otherwise no CDI seems to be connected to this port.\n")
            .arg(port));
    QVERIFY2(err.startsWith("Sparkwright ")
            && err.contains(QStringLiteral("\nPort: %1\nDescription: Virtual CDI\nUSB IDs: none\n").arg(port))
            && err.contains(
                QRegularExpression("\n +\\d+ ms  sent +4d f6 68 00( 00){44} 02 00 d1\n +\\d+ ms  closed\n$")),
        qPrintable(err));
    QVERIFY(!QFile::exists(path("refused.cdi")));

    cdi.terminate();
    QVERIFY(cdi.waitForFinished(10000) && cdi.exitCode() == 0);
    const QString served = QString::fromUtf8(cdi.readAllStandardOutput());
    QVERIFY2(served.contains(QStringLiteral("read refused")), qPrintable(served));
    QCOMPARE(QDir(m_runtimeDir.path()).entryList(QDir::Files), QStringList());
    // Without a CDI: said below the list, which a script still reads as it is.
    QCOMPARE(run({"ports"}, out, err), 0);
    QCOMPARE(err.contains("no CP210x bridge is plugged in"), !out.contains("\tbridge"));
    // An output that cannot be written stops an import before the port is opened.
    QFile readOnly(path("read-only.cdi"));
    QVERIFY(readOnly.open(QIODevice::WriteOnly) && readOnly.setPermissions(QFile::ReadOwner));
    for (const QString &target : {m_dir.path(), readOnly.fileName(), path("none/new.cdi")}) {
        QCOMPARE(run({"import", target, "--port", "/dev/null/x"}, out, err), 1);
        QVERIFY2(err.startsWith("sparkwright-cli: " + target + ": the file may not be written there"),
            qPrintable(err));
    }
    // Everything that stops before an exchange: exit code 2 and one line on the error stream.
    const std::pair<QStringList, QString> refusals[]
        = {{{"ping"}, "no CDI found"}, {{"ping", "--port", "/dev/null/x"}, "Cannot open /dev/null/x: "},
            {{"program", path("bad.cdi")}, "The ignition map of this profile is not valid."},
            {{"virtual-cdi", "--fault", "loud"}, "unknown fault 'loud'"}};
    for (const auto &[arguments, shown] : refusals) {
        QCOMPARE(run(arguments, out, err), 2);
        QVERIFY2(out.isEmpty() && err.count(QLatin1Char('\n')) == 1 && err.contains(shown), qPrintable(err));
    }
}

QTEST_GUILESS_MAIN(TestDeviceCli)
#include "tst_devicecli.moc"
