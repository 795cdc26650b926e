#include "device/cbridgecomm.h"

#include "device/serialports.h"

#include "device/devicelog.h"

namespace {

// The budget is counted in the device's own 700 ms steps (see BridgePacing).
constexpr int kNominalTickMs = 700;

} // namespace

CBridgeComm::CBridgeComm(QObject *parent)
    : QObject(parent)
{
    m_tick.setSingleShot(true);
    m_quiet.setSingleShot(true);
    connect(&m_tick, &QTimer::timeout, this, &CBridgeComm::onTimerTick);
    // Before the request leaves, the quiet timer only tells whether the line has gone quiet.
    connect(&m_quiet, &QTimer::timeout, this, [this] {
        if (m_state != State::Opened)
            endExchange(false);
    });
}

CBridgeComm::~CBridgeComm() = default;

tl::expected<void, DeviceRefusal> CBridgeComm::runTransaction(
    std::unique_ptr<CCommunicator> transaction, const QString &portName, const BridgePacing &pacing)
{
    if (isBusy())
        return tl::make_unexpected(DeviceRefusal {DeviceRefusal::Kind::Busy, {}, {}, QSerialPort::NoError});

    auto port = std::make_unique<QSerialPort>(portName);
    port->setBaudRate(QSerialPort::Baud9600);
    port->setDataBits(QSerialPort::Data8);
    port->setParity(QSerialPort::NoParity);
    port->setStopBits(QSerialPort::OneStop);
    port->setFlowControl(QSerialPort::NoFlowControl);
    if (!port->open(QIODevice::ReadWrite)) {
        qCDebug(lcDevice) << "cannot open" << portName << port->errorString();
        DeviceRefusal refusal {DeviceRefusal::Kind::CannotOpen, portName, port->errorString(), port->error()};
        explainRefusal(refusal, CSystemPortLister());
        return tl::make_unexpected(refusal);
    }

    port->setParent(this);
    m_port = port.release();
    m_portName = portName;
    m_transaction = std::move(transaction);
    m_pacing = pacing;
    m_budgetMs = m_transaction->timeoutMs();
    m_received.clear();
    m_broken = false;
    m_lateUntil = m_unanswered.take(portName);
    m_sendAnyway = QDeadlineTimer(qMax<qint64>(m_lateUntil.remainingTime(), 0) + m_pacing.lateMs);
    m_state = State::Opened;
    connect(m_port, &QSerialPort::readyRead, this, &CBridgeComm::onDataAvailable);
    connect(m_port, &QSerialPort::errorOccurred, this, &CBridgeComm::onPortError);
    qCDebug(lcDevice) << "opened" << portName;

    m_clock.start();
    const SerialPortEntry described = describePort(CSystemPortLister(), portName);
    m_transcript = ExchangeTranscript();
    m_transcript.portName = portName;
    m_transcript.description = described.description;
    m_transcript.hasIds = described.hasIds;
    m_transcript.vendorId = described.vendorId;
    m_transcript.productId = described.productId;
    m_transcript.opened = QDateTime::currentDateTime();
    emit recorded(m_transcript);

    m_tick.start(m_pacing.tickMs);
    return {};
}

void CBridgeComm::onTimerTick()
{
    if (m_broken) {
        endExchange(true);
        return;
    }
    switch (m_state) {
    case State::Idle:
        return;
    case State::Opened:
        send();
        return;
    case State::Sent:
        m_state = State::Waiting;
        m_tick.start(m_pacing.tickMs);
        emit waiting();
        return;
    case State::Waiting:
    case State::Collecting:
        m_state = State::Collecting;
        // The budget may go negative: it is tested before it is spent. While a complete answer
        // is still settling, the quiet timer decides, but never past the latest end.
        if (m_budgetMs > 0 && (m_received.size() < m_transaction->expectedLength() || m_quiet.isActive())) {
            m_budgetMs -= kNominalTickMs;
            m_tick.start(m_pacing.tickMs);
            return;
        }
        endExchange(false);
        return;
    }
}

// Whatever came before the request cannot be its answer. A late answer to an earlier exchange
// could still be on its way, though, and be taken for this one's: so the request waits until
// that answer's time has passed and the line has gone quiet, unless the line never does.
void CBridgeComm::send()
{
    const bool settled = m_lateUntil.hasExpired() && !m_quiet.isActive();
    if (!settled && !m_sendAnyway.hasExpired()) {
        const qint64 remaining = qMax<qint64>(m_lateUntil.remainingTime(), m_quiet.remainingTime());
        m_tick.start(int(qMax<qint64>(1, qMin(remaining, m_sendAnyway.remainingTime()))));
        return;
    }
    m_quiet.stop();
    m_port->clear(QSerialPort::Input);
    m_port->readAll();
    m_received.clear();
    const QByteArray request = m_transaction->requestBytes();
    qCDebug(lcDevice) << "sent" << request.toHex(' ');
    m_state = State::Sent;
    record(ExchangeTranscript::Direction::Sent, request);
    if (m_port->write(request) != request.size()) {
        // Whatever part of it went out may still be answered; the exchange ends as broken off.
        qCDebug(lcDevice) << "cannot write" << m_port->errorString();
        record(ExchangeTranscript::Direction::PortError, {}, m_port->errorString());
        breakOff();
        return;
    }
    m_tick.start(m_pacing.tickMs);
}

void CBridgeComm::onDataAvailable()
{
    if (!m_port)
        return;
    const QByteArray chunk = m_port->readAll();
    if (m_state == State::Idle || m_broken || chunk.isEmpty())
        return;
    if (m_state == State::Opened) {
        qCDebug(lcDevice) << "discarded" << chunk.toHex(' ');
        record(ExchangeTranscript::Direction::Discarded, chunk);
        m_quiet.start(m_pacing.quietMs);
        return;
    }
    qCDebug(lcDevice) << "received" << chunk.toHex(' ');
    record(ExchangeTranscript::Direction::Received, chunk);
    m_received.append(chunk.left(kReceiveCapacity - m_received.size()));
    if (m_received.size() >= m_transaction->expectedLength())
        m_quiet.start(m_pacing.quietMs);
}

void CBridgeComm::onPortError(QSerialPort::SerialPortError error)
{
    if (error == QSerialPort::NoError || m_state == State::Idle || m_broken)
        return;
    qCDebug(lcDevice) << "port error" << error << (m_port ? m_port->errorString() : QString());
    record(ExchangeTranscript::Direction::PortError, {}, m_port ? m_port->errorString() : QString());
    // A pulled-out bridge keeps signalling read errors until the port is closed. The exchange ends
    // on the next turn of the event loop rather than inside the port's signal, so that whoever
    // hears finished may do anything with the bridge.
    if (error == QSerialPort::ReadError || error == QSerialPort::ResourceError
        || error == QSerialPort::WriteError)
        breakOff();
}

void CBridgeComm::breakOff()
{
    m_broken = true;
    m_port->close();
    m_quiet.stop();
    m_tick.start(0);
}

void CBridgeComm::endExchange(bool broken)
{
    if (m_state == State::Idle)
        return;
    const bool sent = m_state != State::Opened;
    m_state = State::Idle;
    m_broken = false;
    m_tick.stop();
    m_quiet.stop();
    // An answer that is not all in may still come, for the next exchange on this port to let pass.
    if (sent && (broken || m_received.size() < m_transaction->expectedLength()))
        m_unanswered.insert(m_portName, QDeadlineTimer(m_pacing.lateMs));
    else if (!sent && !m_lateUntil.hasExpired())
        m_unanswered.insert(m_portName, m_lateUntil);
    if (m_port) {
        m_port->disconnect(this);
        m_port->close();
        m_port->deleteLater();
        m_port = nullptr;
    }
    const std::unique_ptr<CCommunicator> transaction = std::move(m_transaction);
    if (!broken)
        qCDebug(lcDevice) << "exchange ended with" << m_received.size() << "bytes";
    record(ExchangeTranscript::Direction::Closed, {});
    ExchangeResult result = broken ? transaction->brokenOff(sent) : transaction->conclude(m_received);
    result.portName = m_portName;
    emit finished(result);
}

// The pieces of one answer make one entry, timed by its first byte. A line that floods keeps only
// its first bytes and their count, so that the transcript stays small whatever arrives.
void CBridgeComm::record(
    ExchangeTranscript::Direction direction, const QByteArray &bytes, const QString &note)
{
    std::vector<ExchangeTranscript::Entry> &entries = m_transcript.entries;
    if (entries.empty() || direction == ExchangeTranscript::Direction::Sent
        || entries.back().direction != direction || !note.isEmpty())
        entries.push_back({m_clock.elapsed(), direction, {}, note, 0});
    ExchangeTranscript::Entry &entry = entries.back();
    entry.bytes += bytes.left(ExchangeTranscript::kShownBytes - entry.bytes.size());
    entry.count += bytes.size();
    emit recorded(m_transcript);
}
