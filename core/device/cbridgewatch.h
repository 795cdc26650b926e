#pragma once

#include "device/exchangeresult.h"
#include "device/serialports.h"

#include <QObject>
#include <QTimer>

#include <memory>

// Keeps track of the CDI's bridge for whoever shows it: the port it is plugged in on, if any,
// and what the last successful connection test on that port reported. It looks at the ports
// only while started and while no exchange holds one.
class CBridgeWatch : public QObject
{
    Q_OBJECT
public:
    explicit CBridgeWatch(QObject *parent = nullptr);
    ~CBridgeWatch() override;

    // The system's ports unless told otherwise; a lister of its own is kept.
    void setPorts(const IPortLister &ports);
    void setInterval(int ms) { m_poll.setInterval(ms); }

    void startWatching();
    void stopWatching();
    void setExchangeRunning(bool running);
    // A connection test that succeeded names the CDI on its port; silence or a lost line there
    // forgets it.
    void noteResult(const ExchangeResult &result);

    bool isLooking() const { return m_poll.isActive(); }
    // One line, plain text.
    QString words() const;

signals:
    void changed();

private:
    void look();
    void update();

    std::unique_ptr<const IPortLister> m_ports;
    QTimer m_poll;
    QTimer m_firstLook;
    bool m_started = false;
    bool m_exchangeRunning = false;
    bool m_found = false;
    SerialPortEntry m_bridge;
    QString m_testedPort;
    QString m_firmware;
    quint32 m_serialNumber = 0;
};
