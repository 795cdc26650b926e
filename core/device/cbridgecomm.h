#pragma once

#include "device/ccommunicator.h"
#include "device/exchangetranscript.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSerialPort>
#include <QTimer>

#include <memory>

#include <tl/expected.hpp>

// The pace of an exchange. The request leaves at the first tick and waiting() comes at the
// second; after that the transaction's budget is spent at 700 ms a tick whatever
// the real tick, so a test may shorten the tick and keep the same sequence. The latest end is
// about 3.5 s after the start.
struct BridgePacing
{
    int tickMs = 700;
    // Once the expected number of bytes is in, this long without a further byte ends the exchange.
    // Before the request leaves, the line must have been this long without a byte.
    int quietMs = 100;
    // After an exchange that ended without its whole answer, the answer may still come this long
    // after the end: as long again as the CDI was given to answer. The next exchange on that port
    // sends only once it has passed.
    int lateMs = 2800;
};

// Runs one request/response exchange on the bridge port at a time, on the calling thread's
// event loop; knows nothing of pages.
class CBridgeComm : public QObject
{
    Q_OBJECT
public:
    enum class State
    {
        Idle,
        Opened,
        Sent,
        Waiting,
        Collecting
    };

    explicit CBridgeComm(QObject *parent = nullptr);
    ~CBridgeComm() override;

    // Takes the transaction only when the exchange starts; a refused one (busy, or the port cannot
    // be opened) is deleted here, since the caller has nothing left to do with it.
    tl::expected<void, DeviceRefusal> runTransaction(std::unique_ptr<CCommunicator> transaction,
        const QString &portName, const BridgePacing &pacing = BridgePacing());
    bool isBusy() const { return m_state != State::Idle; }

    static constexpr int kReceiveCapacity = 200;

    // What went over the line in the running exchange, or in the last one.
    const ExchangeTranscript &transcript() const { return m_transcript; }

signals:
    // The request has gone out and the answer is due.
    void waiting();
    // Never from within one of the port's signals: the bridge may be deleted in answer to it.
    void finished(const ExchangeResult &result);
    // The transcript has grown: the port was opened, or a frame went out or came in.
    void recorded(const ExchangeTranscript &transcript);

private:
    void onTimerTick();
    void onDataAvailable();
    void onPortError(QSerialPort::SerialPortError error);
    void send();
    // The port failed: the exchange ends at the next tick.
    void breakOff();
    void endExchange(bool broken);
    void record(ExchangeTranscript::Direction direction, const QByteArray &bytes, const QString &note = {});

    std::unique_ptr<CCommunicator> m_transaction;
    // The open port. Ports are children of the bridge, so none outlives it; a closed one goes with
    // deleteLater(), after whatever it still has on its way.
    QPointer<QSerialPort> m_port;
    QString m_portName;
    QByteArray m_received;
    BridgePacing m_pacing;
    int m_budgetMs = 0;
    // Before the request leaves: until when a late answer to an earlier exchange may come, and
    // when to send even though the line never went quiet.
    QDeadlineTimer m_lateUntil;
    QDeadlineTimer m_sendAnyway;
    // The ports whose last exchange ended without its whole answer, and until when that answer
    // may still come.
    QHash<QString, QDeadlineTimer> m_unanswered;
    QTimer m_tick;
    QTimer m_quiet;
    State m_state = State::Idle;
    // The port failed; the exchange ends at the next tick.
    bool m_broken = false;
    ExchangeTranscript m_transcript;
    // Since the port was opened.
    QElapsedTimer m_clock;
};
