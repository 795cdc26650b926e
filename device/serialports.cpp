#include "device/serialports.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSerialPortInfo>
#include <QStandardPaths>

#include <array>

#include <cerrno>
#include <signal.h>
#include <unistd.h>

namespace {

const char kBridgeName[] = "Silicon Labs CP210x USB to UART Bridge";
constexpr quint16 kSiliconLabsVendor = 0x10C4;
constexpr std::array<quint16, 7> kCp210xProducts {0xEA60, 0xEA61, 0xEA63, 0xEA70, 0xEA71, 0xEA7A, 0xEA7B};
const char kRegistryPrefix[] = "sparkwright-virtual-cdi-";

QString registryFolder()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QDir(runtime).exists())
        return runtime;
    return QDir::tempPath();
}

bool processIsAlive(qint64 pid)
{
    return pid > 0 && (::kill(pid_t(pid), 0) == 0 || errno == EPERM);
}

} // namespace

std::vector<SerialPortEntry> CSystemPortLister::ports() const
{
    std::vector<SerialPortEntry> ports;
    const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos) {
        SerialPortEntry entry;
        entry.name = info.portName();
        entry.description = info.description();
        entry.manufacturer = info.manufacturer();
        entry.hasIds = info.hasVendorIdentifier() && info.hasProductIdentifier();
        entry.vendorId = info.vendorIdentifier();
        entry.productId = info.productIdentifier();
        ports.push_back(entry);
    }
    const QStringList virtualPorts = VirtualCdiRegistry::ptyPaths();
    for (const QString &path : virtualPorts) {
        SerialPortEntry entry;
        entry.name = path;
        entry.description = QCoreApplication::translate("QWidget", "Virtual CDI");
        entry.manufacturer = QStringLiteral("Sparkwright");
        entry.isVirtual = true;
        ports.push_back(entry);
    }
    return ports;
}

bool isBridgeName(const QString &description)
{
    return description.contains(QLatin1String(kBridgeName), Qt::CaseInsensitive);
}

bool isBridgePort(const SerialPortEntry &port)
{
    if (port.isVirtual || isBridgeName(port.description))
        return true;
    if (!port.hasIds || port.vendorId != kSiliconLabsVendor)
        return false;
    for (const quint16 product : kCp210xProducts) {
        if (port.productId == product)
            return true;
    }
    return false;
}

int findBridgePort(const std::vector<SerialPortEntry> &ports)
{
    for (size_t i = 0; i < ports.size(); ++i) {
        if (isBridgePort(ports[i]))
            return int(i);
    }
    return -1;
}

QString findBridgePort(const IPortLister &lister)
{
    const std::vector<SerialPortEntry> ports = lister.ports();
    const int index = findBridgePort(ports);
    return index < 0 ? QString() : ports[size_t(index)].name;
}

namespace VirtualCdiRegistry {

QString announce(const QString &ptyPath)
{
    static int serial = 0;
    const QString file = QDir(registryFolder())
                             .filePath(QLatin1String(kRegistryPrefix) + QString::number(::getpid())
                                 + QLatin1Char('-') + QString::number(++serial));
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return {};
    out.write(ptyPath.toUtf8());
    return out.error() == QFile::NoError ? file : QString();
}

void withdraw(const QString &file)
{
    if (!file.isEmpty())
        QFile::remove(file);
}

QStringList ptyPaths()
{
    QStringList paths;
    const QDir folder(registryFolder());
    const QStringList files
        = folder.entryList({QLatin1String(kRegistryPrefix) + QLatin1Char('*')}, QDir::Files, QDir::Name);
    for (const QString &name : files) {
        const QStringList parts = name.mid(int(sizeof(kRegistryPrefix)) - 1).split(QLatin1Char('-'));
        bool numeric = false;
        const qint64 pid = parts.value(0).toLongLong(&numeric);
        if (!numeric || !processIsAlive(pid)) {
            QFile::remove(folder.filePath(name));
            continue;
        }
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString path = QString::fromUtf8(file.read(4096)).trimmed();
        if (path.startsWith(QLatin1Char('/')) && QFile::exists(path))
            paths << path;
    }
    return paths;
}

} // namespace VirtualCdiRegistry
