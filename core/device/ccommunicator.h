#pragma once

#include <QByteArray>
#include <QString>

class IWaitForm;

// One request/response exchange with the CDI. The bridge writes requestBytes(), collects the
// answer and hands it to conclude(), which decides the outcome from the bytes alone.
class CCommunicator
{
public:
    CCommunicator(int timeoutMs, int expectedLength)
        : m_timeoutMs(timeoutMs)
        , m_expectedLength(expectedLength)
    { }
    virtual ~CCommunicator() = default;

    int timeoutMs() const { return m_timeoutMs; }
    int expectedLength() const { return m_expectedLength; }

    virtual void start(IWaitForm &wait) = 0;
    virtual QByteArray requestBytes() const = 0;

    void showWaiting(IWaitForm &wait);
    // Everything that arrived, checked and reported; true when the exchange succeeded.
    bool conclude(const QByteArray &received, IWaitForm &wait);
    // The exchange broke off (the bridge was pulled out): reported as a failed answer.
    virtual void fail(IWaitForm &wait);

protected:
    // Receives an answer that passed the length, header and checksum test.
    virtual bool handleResponse(const QByteArray &frame, IWaitForm &wait) = 0;
    // Nothing at all arrived.
    virtual void reportNoResponse(IWaitForm &wait);

private:
    const int m_timeoutMs;
    const int m_expectedLength;
};
