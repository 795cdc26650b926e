#include "device/serialports.h"

#include <QCoreApplication>
#include <QSerialPortInfo>

#include <array>

namespace {

const char kBridgeName[] = "Silicon Labs CP210x USB to UART Bridge";
constexpr quint16 kSiliconLabsVendor = 0x10C4;
constexpr std::array<quint16, 7> kCp210xProducts {0xEA60, 0xEA61, 0xEA63, 0xEA70, 0xEA71, 0xEA7A, 0xEA7B};

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

SerialPortEntry describePort(const IPortLister &lister, const QString &portName)
{
    const std::vector<SerialPortEntry> ports = lister.ports();
    for (const SerialPortEntry &port : ports) {
        if (port.name == portName || portPath(port.name) == portPath(portName))
            return port;
    }
    SerialPortEntry unknown;
    unknown.name = portName;
    return unknown;
}
