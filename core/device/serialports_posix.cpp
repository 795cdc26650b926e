// The ports as a POSIX system has them: device nodes under /dev with owners, groups and lock
// files, and the virtual CDIs' pseudo-terminals announced in a folder of the user's own.
#include "device/serialports.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char kRegistryPrefix[] = "sparkwright-virtual-cdi-";
const char kRegistryFolder[] = "sparkwright-virtual-cdi";
// Names already taken are passed over; this many is far more than one process ever announces.
constexpr int kMaxAnnouncements = 1000;

// Whoever can write to the folder can pose as a CDI, so it must be ours and closed to the group
// and to others. The folder itself is looked at, not where a link of that name would lead.
bool isPrivateFolder(const QByteArray &path, bool followLink)
{
    struct stat info
    {
    };
    const int status = followLink ? ::stat(path.constData(), &info) : ::lstat(path.constData(), &info);
    return status == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::geteuid()
        && (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Our folder inside parent, made when missing; empty when it is not ours alone.
QString registryFolderIn(const QByteArray &parent)
{
    const QByteArray path = parent + '/' + kRegistryFolder;
    if (::mkdir(path.constData(), 0700) != 0 && errno != EEXIST)
        return {};
    return isPrivateFolder(path, false) ? QFile::decodeName(path) : QString();
}

// $HOME, unless it belongs to another user (sudo may keep the caller's): then the home the
// password database gives the user we run as.
QByteArray homeFolder()
{
    const QByteArray home = qgetenv("HOME");
    struct stat info
    {
    };
    if (home.startsWith('/') && ::stat(home.constData(), &info) == 0 && S_ISDIR(info.st_mode)
        && info.st_uid == ::geteuid())
        return home;
    QByteArray buffer(16384, '\0');
    passwd entry {};
    passwd *found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), size_t(buffer.size()), &found) != 0 || !found
        || !found->pw_dir)
        return {};
    return QByteArray(found->pw_dir);
}

// The runtime folder when it is the user's own, as a login session sets it up. Without one (sudo,
// su, ssh, cron) the user's cache folder: unlike /tmp, no other user can make a folder there
// first, so it is ours or nothing. Empty when neither can be used.
QString registryFolder()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    if (runtime.startsWith('/') && isPrivateFolder(runtime, true)) {
        const QString folder = registryFolderIn(runtime);
        if (!folder.isEmpty())
            return folder;
    }
    const QByteArray home = homeFolder();
    if (!home.startsWith('/'))
        return {};
    const QByteArray cache = home + "/.cache";
    ::mkdir(cache.constData(), 0700);
    return registryFolderIn(cache);
}

bool processIsAlive(qint64 pid)
{
    return pid > 0 && (::kill(pid_t(pid), 0) == 0 || errno == EPERM);
}

QString nodePath(const QString &portName)
{
    return portName.startsWith(QLatin1Char('/')) ? portName : QStringLiteral("/dev/") + portName;
}

// The program whose lock file names the port: its PID on the first line (as text, whoever wrote
// it) and its name as the kernel keeps it.
void findLockHolder(const QString &node, DeviceRefusal &refusal)
{
    QString name = node.startsWith(QLatin1String("/dev/")) ? node.mid(5) : node;
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    for (const char *folder : {"/run/lock", "/var/lock"}) {
        QFile lock(QLatin1String(folder) + QStringLiteral("/LCK..") + name);
        if (!lock.open(QIODevice::ReadOnly))
            continue;
        bool numeric = false;
        const qint64 pid = QString::fromLatin1(lock.readLine(64)).trimmed().toLongLong(&numeric);
        if (!numeric || pid <= 0)
            continue;
        QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
        if (!comm.open(QIODevice::ReadOnly))
            continue;
        refusal.holder = QString::fromLocal8Bit(comm.readAll()).trimmed();
        refusal.holderPid = pid;
        return;
    }
}

// As ls shows them: "crw-rw----".
QString modeText(mode_t mode)
{
    QString text = S_ISCHR(mode) ? QStringLiteral("c")
        : S_ISDIR(mode)          ? QStringLiteral("d")
                                 : QStringLiteral("-");
    const mode_t bits[] = {S_IRUSR, S_IWUSR, S_IXUSR, S_IRGRP, S_IWGRP, S_IXGRP, S_IROTH, S_IWOTH, S_IXOTH};
    for (int i = 0; i < 9; ++i)
        text += (mode & bits[i]) ? QLatin1Char("rwx"[i % 3]) : QLatin1Char('-');
    return text;
}

QString groupName(gid_t gid)
{
    QByteArray buffer(16384, '\0');
    group entry {};
    group *found = nullptr;
    if (::getgrgid_r(gid, &entry, buffer.data(), size_t(buffer.size()), &found) != 0 || !found)
        return QString::number(gid);
    return QString::fromLocal8Bit(found->gr_name);
}

QString userName(uid_t uid)
{
    QByteArray buffer(16384, '\0');
    passwd entry {};
    passwd *found = nullptr;
    if (::getpwuid_r(uid, &entry, buffer.data(), size_t(buffer.size()), &found) != 0 || !found)
        return QString::number(uid);
    return QString::fromLocal8Bit(found->pw_name);
}

} // namespace

// Qt reports a lock file held by another program, a port in the kernel's exclusive mode and a
// node closed to us alike; whether we may read and write the node tells them apart.
void explainRefusal(DeviceRefusal &refusal, const IPortLister &lister)
{
    if (refusal.kind != DeviceRefusal::Kind::CannotOpen || refusal.error != QSerialPort::PermissionError)
        return;
    const QString node = nodePath(refusal.portName);
    const QByteArray path = QFile::encodeName(node);
    if (::access(path.constData(), R_OK | W_OK) == 0) {
        refusal.kind = DeviceRefusal::Kind::InUse;
        findLockHolder(node, refusal);
        return;
    }
    struct stat info
    {
    };
    if (::stat(path.constData(), &info) != 0)
        return;
    refusal.kind = DeviceRefusal::Kind::NoPermission;
    refusal.node = node;
    refusal.owner = userName(info.st_uid);
    refusal.group = groupName(info.st_gid);
    refusal.mode = modeText(info.st_mode);
    refusal.groupMayUse = (info.st_mode & (S_IRGRP | S_IWGRP)) == (S_IRGRP | S_IWGRP);
    for (const SerialPortEntry &port : lister.ports()) {
        if (nodePath(port.name) == node && !port.isVirtual && isBridgePort(port))
            refusal.bridge = true;
    }
}

QString portPath(const QString &portName)
{
    return nodePath(portName);
}

namespace VirtualCdiRegistry {

// The file is always a new one: a name already taken, whether by a file an earlier process of the
// same number left or by a link, is passed over, never followed or written.
QString announce(const QString &ptyPath)
{
    const QString folder = registryFolder();
    if (folder.isEmpty())
        return {};
    const QByteArray content = ptyPath.toUtf8();
    const QString stem = folder + QLatin1Char('/') + QLatin1String(kRegistryPrefix)
        + QString::number(::getpid()) + QLatin1Char('-');
    for (int serial = 1; serial <= kMaxAnnouncements; ++serial) {
        const QString file = stem + QString::number(serial);
        const QByteArray path = QFile::encodeName(file);
        const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        if (fd < 0) {
            if (errno == EEXIST)
                continue;
            return {};
        }
        const bool written = ::write(fd, content.constData(), size_t(content.size())) == content.size();
        ::close(fd);
        if (written)
            return file;
        ::unlink(path.constData());
        return {};
    }
    return {};
}

void withdraw(const QString &file)
{
    if (!file.isEmpty())
        QFile::remove(file);
}

// Only plain files of our own count. Anything else is left as it is: another user's file is
// neither read nor removed.
QStringList ptyPaths()
{
    QStringList paths;
    const QString folderPath = registryFolder();
    if (folderPath.isEmpty())
        return paths;
    const QDir folder(folderPath);
    const QStringList files = folder.entryList({QLatin1String(kRegistryPrefix) + QLatin1Char('*')},
        QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    const uid_t self = ::geteuid();
    for (const QString &name : files) {
        const QByteArray path = QFile::encodeName(folder.filePath(name));
        struct stat info
        {
        };
        if (::lstat(path.constData(), &info) != 0 || !S_ISREG(info.st_mode) || info.st_uid != self)
            continue;
        const QStringList parts = name.mid(int(sizeof(kRegistryPrefix)) - 1).split(QLatin1Char('-'));
        bool numeric = false;
        const qint64 pid = parts.value(0).toLongLong(&numeric);
        if (!numeric || !processIsAlive(pid)) {
            ::unlink(path.constData());
            continue;
        }
        const int fd = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (fd < 0)
            continue;
        // It may have been replaced since it was looked at.
        QByteArray content(4096, '\0');
        const ssize_t got = ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == self
            ? ::read(fd, content.data(), size_t(content.size()))
            : -1;
        ::close(fd);
        if (got <= 0)
            continue;
        content.truncate(int(got));
        const QString ptyPath = QString::fromUtf8(content).trimmed();
        if (ptyPath.startsWith(QLatin1Char('/')) && QFile::exists(ptyPath))
            paths << ptyPath;
    }
    return paths;
}

} // namespace VirtualCdiRegistry
