// The virtual-cdi verb: a CDI served on a pseudo-terminal until SIGINT or SIGTERM.
#include "clicommands.h"

#include "data/datafiles.h"
#include "device/cvirtualcdi.h"
#include "profile/defaultlibrary.h"

#include <QCoreApplication>
#include <QMap>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace {

// SIGINT and SIGTERM end the event loop through a pipe, the one thing a handler may safely do.
int g_signalPipe[2] = {-1, -1};

void onTerminationSignal(int)
{
    const char byte = 1;
    if (::write(g_signalPipe[1], &byte, 1) < 0) {
        // Nothing to do: the loop is already being told.
    }
}

} // namespace

const char *CliCommands::virtualCdiHelp()
{
    return "                                     serve a CDI on a pseudo-terminal until interrupted;\n"
           "                                     prints its path first, then one line per request\n";
}

int CliCommands::virtualCdi(const QStringList &arguments)
{
    QStringList positional;
    QMap<QString, QString> options;
    if (!parseOptions(QStringLiteral("virtual-cdi"), arguments,
            {QStringLiteral("--firmware"), QStringLiteral("--serial"), QStringLiteral("--profile"),
                QStringLiteral("--fault")},
            {}, positional, options))
        return kUsageError;
    if (!positional.isEmpty())
        return usage(QStringLiteral("wrong number of arguments for 'virtual-cdi'"));

    CVirtualCdi cdi;
    if (options.contains(QStringLiteral("--firmware"))) {
        const QByteArray firmware = options.value(QStringLiteral("--firmware")).toUtf8();
        if (firmware.size() > 9)
            return usage(QStringLiteral("--firmware takes at most 9 bytes"));
        cdi.setFirmware(firmware);
    }
    if (options.contains(QStringLiteral("--serial"))) {
        bool ok = false;
        const uint serial = options.value(QStringLiteral("--serial")).toUInt(&ok);
        if (!ok || serial > 0xFFFFFF)
            return usage(QStringLiteral("--serial expects a number from 0 to 16777215"));
        cdi.setSerialNumber(serial);
    }
    if (options.contains(QStringLiteral("--fault"))) {
        const std::optional<CVirtualCdi::Fault> fault
            = CVirtualCdi::faultFromName(options.value(QStringLiteral("--fault")));
        if (!fault) {
            return usage(QStringLiteral("unknown fault '%1': expected one of %2")
                             .arg(options.value(QStringLiteral("--fault")),
                                 CVirtualCdi::faultNames().join(QStringLiteral(", "))));
        }
        cdi.setFault(*fault);
    }
    // Without a profile of its own the CDI holds the first factory template, when there is one.
    const tl::expected<DefaultLibrary, FileError> library = loadInstalledLibrary();
    if (library && library->profileAt(0))
        cdi.setProfile(*library->profileAt(0));
    if (options.contains(QStringLiteral("--profile"))) {
        Profile profile;
        if (!readProfile(options.value(QStringLiteral("--profile")), profile))
            return kFileError;
        cdi.setProfile(profile);
    }

    const QString error = cdi.open();
    if (!error.isEmpty()) {
        m_err << "sparkwright-cli: " << error << "\n";
        m_err.flush();
        return kFileError;
    }
    m_out << cdi.portName() << "\n";
    m_out.flush();
    QObject::connect(&cdi, &CVirtualCdi::requestHandled, [this](const QString &line) {
        m_out << line << "\n";
        m_out.flush();
    });
    QObject::connect(&cdi, &CVirtualCdi::portChanged, [this](const QString &port) {
        m_out << "hung up; now serving on " << port << "\n";
        m_out.flush();
    });

    if (::pipe2(g_signalPipe, O_CLOEXEC) != 0) {
        m_err << "sparkwright-cli: cannot watch for signals\n";
        return kFileError;
    }
    QSocketNotifier stopper(g_signalPipe[0], QSocketNotifier::Read);
    QObject::connect(
        &stopper, &QSocketNotifier::activated, QCoreApplication::instance(), &QCoreApplication::quit);
    struct sigaction action
    {
    };
    action.sa_handler = onTerminationSignal;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
    QCoreApplication::exec();
    ::signal(SIGINT, SIG_DFL);
    ::signal(SIGTERM, SIG_DFL);
    ::close(g_signalPipe[0]);
    ::close(g_signalPipe[1]);
    return kOk;
}
