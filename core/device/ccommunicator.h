#pragma once

#include "device/exchangeresult.h"

#include <QByteArray>

// One request/response exchange with the CDI. The bridge writes requestBytes(), collects the
// answer and hands it to conclude(), which decides the outcome from the bytes alone.
class CCommunicator
{
public:
    CCommunicator(DeviceExchange exchange, int expectedLength, int timeoutMs = 1000)
        : m_exchange(exchange)
        , m_expectedLength(expectedLength)
        , m_timeoutMs(timeoutMs)
    { }
    virtual ~CCommunicator() = default;

    DeviceExchange exchange() const { return m_exchange; }
    int expectedLength() const { return m_expectedLength; }
    int timeoutMs() const { return m_timeoutMs; }

    virtual QByteArray requestBytes() const = 0;

    // Everything that arrived, judged.
    ExchangeResult conclude(const QByteArray &received) const;
    // The exchange broke off: the bridge was pulled out or took no request.
    ExchangeResult brokenOff(bool requestSent = true) const
    {
        ExchangeResult lost = result(ExchangeResult::Kind::PortLost);
        lost.requestSent = requestSent;
        return lost;
    }

protected:
    // Receives an answer that passed the length, header and checksum test.
    virtual ExchangeResult handleResponse(const QByteArray &frame) const = 0;
    ExchangeResult result(ExchangeResult::Kind kind) const;

private:
    const DeviceExchange m_exchange;
    const int m_expectedLength;
    const int m_timeoutMs;
};
