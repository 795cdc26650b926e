// The ports as Windows has them: COM ports by name, with no device nodes, lock files or
// pseudo-terminals, so there are no virtual CDIs to announce or find.
#include "device/serialports.h"

// Windows refuses a COM port that another program has open with "access denied", which Qt
// reports as a permission error; a COM port has no access rights of its own to be closed by.
// Windows does not say which program holds it.
void explainRefusal(DeviceRefusal &refusal, const IPortLister &lister)
{
    Q_UNUSED(lister)
    if (refusal.kind == DeviceRefusal::Kind::CannotOpen && refusal.error == QSerialPort::PermissionError)
        refusal.kind = DeviceRefusal::Kind::InUse;
}

// COM3 is what the user sees in the Device Manager; \\.\COM3 is the same port.
QString portPath(const QString &portName)
{
    const QLatin1String devicePrefix("\\\\.\\");
    return portName.startsWith(devicePrefix) ? portName.mid(devicePrefix.size()) : portName;
}

namespace VirtualCdiRegistry {

QString announce(const QString &ptyPath)
{
    Q_UNUSED(ptyPath)
    return {};
}

void withdraw(const QString &file)
{
    Q_UNUSED(file)
}

QStringList ptyPaths()
{
    return {};
}

} // namespace VirtualCdiRegistry
