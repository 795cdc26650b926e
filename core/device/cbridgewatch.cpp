#include "device/cbridgewatch.h"

#include <QCoreApplication>

CBridgeWatch::CBridgeWatch(QObject *parent)
    : QObject(parent)
    , m_ports(std::make_unique<CSystemPortLister>())
{
    // A bridge plugged in or pulled out shows within two seconds.
    m_poll.setInterval(1000);
    connect(&m_poll, &QTimer::timeout, this, &CBridgeWatch::look);
    // Listing the ports takes a while; the first look comes once the page has been drawn.
    m_firstLook.setSingleShot(true);
    m_firstLook.setInterval(150);
    connect(&m_firstLook, &QTimer::timeout, this, &CBridgeWatch::look);
}

CBridgeWatch::~CBridgeWatch() = default;

void CBridgeWatch::setPorts(const IPortLister &ports)
{
    m_ports = ports.clone();
}

void CBridgeWatch::startWatching()
{
    m_started = true;
    update();
}

void CBridgeWatch::stopWatching()
{
    m_started = false;
    update();
}

void CBridgeWatch::setExchangeRunning(bool running)
{
    m_exchangeRunning = running;
    update();
}

// Looks soon after it may look again, so that what shows is never a stale state for long.
void CBridgeWatch::update()
{
    const bool looking = m_started && !m_exchangeRunning;
    if (looking == m_poll.isActive())
        return;
    if (!looking) {
        m_poll.stop();
        m_firstLook.stop();
        return;
    }
    m_poll.start();
    m_firstLook.start();
}

void CBridgeWatch::noteResult(const ExchangeResult &result)
{
    if (result.exchange == DeviceExchange::Ping && result.succeeded()) {
        m_testedPort = portPath(result.portName);
        m_firmware = result.firmware;
        m_serialNumber = result.serialNumber;
    } else if (portPath(result.portName) == m_testedPort
        && (result.kind == ExchangeResult::Kind::NoResponse
            || result.kind == ExchangeResult::Kind::PortLost)) {
        m_testedPort.clear();
    }
    emit changed();
}

void CBridgeWatch::look()
{
    const std::vector<SerialPortEntry> ports = m_ports->ports();
    const int index = findBridgePort(ports);
    const bool found = index >= 0;
    const SerialPortEntry bridge = found ? ports[size_t(index)] : SerialPortEntry();
    // A CDI tested on a port that went away may not be the one plugged in there next.
    bool testedListed = false;
    for (const SerialPortEntry &port : ports)
        testedListed = testedListed || portPath(port.name) == m_testedPort;
    const bool forgotten = !testedListed && !m_testedPort.isEmpty();
    if (forgotten)
        m_testedPort.clear();
    if (!forgotten && found == m_found && bridge.name == m_bridge.name
        && bridge.isVirtual == m_bridge.isVirtual)
        return;
    m_found = found;
    m_bridge = bridge;
    emit changed();
}

QString CBridgeWatch::words() const
{
    if (!m_found)
        return QCoreApplication::translate("BridgeWatch", "No CDI bridge plugged in");
    const QString port = portPath(m_bridge.name);
    const QString where = m_bridge.isVirtual
        ? QCoreApplication::translate("BridgeWatch", "Virtual CDI on %1").arg(port)
        : QCoreApplication::translate("BridgeWatch", "CDI bridge on %1").arg(port);
    if (m_testedPort != port)
        return where;
    return QCoreApplication::translate("BridgeWatch", "%1: firmware %2, serial number %3")
        .arg(where, m_firmware)
        .arg(m_serialNumber);
}
