#include "device/cpinger.h"

#include "device/deviceframe.h"

#include <QRandomGenerator>

namespace {

QByteArray pingRequest(quint8 nonce)
{
    QByteArray frame = DeviceFrame::build(DeviceFrame::Ping);
    frame[DeviceFrame::kNonceOffset] = char(nonce);
    DeviceFrame::sealChecksum(frame);
    return frame;
}

// Up to nine characters, ended early by a zero byte.
QString firmwareOf(const QByteArray &frame)
{
    QByteArray text;
    const int end = DeviceFrame::kFirmwareOffset + DeviceFrame::kFirmwareLength;
    for (int i = DeviceFrame::kFirmwareOffset; i < end && i < frame.size() && frame.at(i) != '\0'; ++i)
        text.append(frame.at(i));
    return QString::fromUtf8(text);
}

// Missing low bytes of a short frame count as absent, not as zero: the bytes present keep
// their places from the most significant end.
quint32 serialOf(const QByteArray &frame)
{
    quint32 serial = 0;
    const int end = DeviceFrame::kSerialOffset + DeviceFrame::kSerialLength;
    for (int i = DeviceFrame::kSerialOffset; i < end && i < frame.size(); ++i)
        serial = (serial << 8) | quint8(frame.at(i));
    return serial;
}

} // namespace

CPinger::CPinger(QRandomGenerator &random)
    : CPinger(quint8(random.generate() & 0xFF))
{ }

CPinger::CPinger(quint8 nonce)
    : CCommunicator(DeviceExchange::Ping, DeviceFrame::kPingResponseLength)
    , m_request(pingRequest(nonce))
{ }

ExchangeResult CPinger::handleResponse(const QByteArray &frame) const
{
    if (frame.at(DeviceFrame::kNonceOffset) != m_request.at(DeviceFrame::kNonceOffset))
        return result(ExchangeResult::Kind::WrongNonce);
    ExchangeResult answered = result(ExchangeResult::Kind::Succeeded);
    answered.firmware = firmwareOf(frame);
    answered.serialNumber = serialOf(frame);
    return answered;
}
