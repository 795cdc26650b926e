#pragma once

#include "device/exchangeresult.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

// One serial port as the port list and the detection see it.
struct SerialPortEntry
{
    QString name;
    QString description;
    QString manufacturer;
    quint16 vendorId = 0;
    quint16 productId = 0;
    bool hasIds = false;
    // A CDI served by CVirtualCdi on a pseudo-terminal.
    bool isVirtual = false;
};

// Lists the serial ports a CDI may sit behind.
class IPortLister
{
public:
    virtual ~IPortLister() = default;
    virtual std::vector<SerialPortEntry> ports() const = 0;
    // A lister of its own for whoever keeps one, so that nothing has to outlive its user.
    virtual std::unique_ptr<IPortLister> clone() const = 0;
};

// The system's serial ports, then the virtual CDIs running on this machine (pseudo-terminals
// never appear among the system's ports).
class CSystemPortLister : public IPortLister
{
public:
    std::vector<SerialPortEntry> ports() const override;
    std::unique_ptr<IPortLister> clone() const override { return std::make_unique<CSystemPortLister>(); }
};

// The CP210x bridge: by its description, or by its USB IDs, since Linux describes it without
// the vendor's name. A virtual CDI stands in for one.
bool isBridgePort(const SerialPortEntry &port);
bool isBridgeName(const QString &description);
// The first bridge in list order, or -1.
int findBridgePort(const std::vector<SerialPortEntry> &ports);
// Its name, or empty when none is plugged in.
QString findBridgePort(const IPortLister &lister);

// A port refused with a permission error is either held by another program (its lock file or the
// kernel's exclusive mode) or closed to this user: which one, and what the system says of it.
// On Windows it is always held by another program. Any other refusal stays as it is.
void explainRefusal(DeviceRefusal &refusal, const IPortLister &lister);

// Virtual CDIs announce their pseudo-terminals to the user's other processes by small files in a
// folder only that user can write: "sparkwright-virtual-cdi" in the runtime folder, else in
// ~/.cache. Only the user's own files count; one left by a process that is gone is removed when
// seen. (serialports_posix.cpp; Windows has no pseudo-terminals, so there nothing is announced
// or found: serialports_win.cpp.)
namespace VirtualCdiRegistry {
// Returns the file written, or empty when it could not be.
QString announce(const QString &ptyPath);
void withdraw(const QString &file);
QStringList ptyPaths();
} // namespace VirtualCdiRegistry

// Where the port is in the file system, as the user knows it: /dev/ttyUSB0 for ttyUSB0; on
// Windows the COM port's name (COM3).
QString portPath(const QString &portName);
// The port as the lister lists it; only its name when the lister does not know it.
SerialPortEntry describePort(const IPortLister &lister, const QString &portName);
