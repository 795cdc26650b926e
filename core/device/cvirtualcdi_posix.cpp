// The virtual CDI's line: the master side of a pseudo-terminal, whose slave side a serial port
// opens as it opens a real bridge.
#include "device/cvirtualcdi.h"

#include "device/serialports.h"

#include <QSocketNotifier>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

QString CVirtualCdi::open()
{
    closePty();
    ++m_terminal;
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        const QString error = QString::fromLocal8Bit(std::strerror(errno));
        closePty();
        return QStringLiteral("cannot create a pseudo-terminal: ") + error;
    }
    const char *slaveName = ::ptsname(m_master);
    m_portName = slaveName ? QString::fromLocal8Bit(slaveName) : QString();
    m_slave = slaveName ? ::open(slaveName, O_RDWR | O_NOCTTY) : -1;
    if (m_slave < 0) {
        const QString error = QString::fromLocal8Bit(std::strerror(errno));
        closePty();
        return QStringLiteral("cannot open the pseudo-terminal: ") + error;
    }
    // Raw bytes both ways, as on a serial line; on Linux the master's settings are the slave's.
    termios settings {};
    if (::tcgetattr(m_master, &settings) == 0) {
        ::cfmakeraw(&settings);
        ::tcsetattr(m_master, TCSANOW, &settings);
    }
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &CVirtualCdi::onReadable);
    m_announcement = VirtualCdiRegistry::announce(m_portName);
    return {};
}

void CVirtualCdi::closePty()
{
    m_notifier.reset();
    if (m_master >= 0)
        ::close(m_master);
    if (m_slave >= 0)
        ::close(m_slave);
    m_master = -1;
    m_slave = -1;
    m_input.clear();
    VirtualCdiRegistry::withdraw(m_announcement);
    m_announcement.clear();
}

void CVirtualCdi::onReadable()
{
    char buffer[256];
    QByteArray bytes;
    for (;;) {
        const ssize_t got = ::read(m_master, buffer, sizeof(buffer));
        if (got <= 0)
            break;
        bytes.append(buffer, int(got));
    }
    receive(bytes);
}

bool CVirtualCdi::writeToLine(const QByteArray &bytes)
{
    return m_master >= 0 && ::write(m_master, bytes.constData(), size_t(bytes.size())) >= 0;
}
