#pragma once

// A port listing the test changes while the program looks at it; it counts the looks. Copies
// share the ports, so a lister handed to the program and copied there still changes.
#include "device/serialports.h"

#include <memory>
#include <vector>

struct ChangingPorts : IPortLister
{
    struct Shared
    {
        std::vector<SerialPortEntry> ports;
        int looks = 0;
    };
    std::vector<SerialPortEntry> ports() const override
    {
        ++shared->looks;
        return shared->ports;
    }
    std::unique_ptr<IPortLister> clone() const override { return std::make_unique<ChangingPorts>(*this); }
    std::shared_ptr<Shared> shared = std::make_shared<Shared>();
};

// A plain serial port, never the CDI's.
inline const SerialPortEntry kSerialPort {QStringLiteral("ttyS0"), QString(), QString(), 0, 0, false, false};
