#include "device/ccommunicator.h"

#include "device/deviceframe.h"

ExchangeResult CCommunicator::conclude(const QByteArray &received) const
{
    if (received.isEmpty())
        return result(ExchangeResult::Kind::NoResponse);
    if (received.size() != m_expectedLength)
        return result(ExchangeResult::Kind::WrongLength);
    if (!DeviceFrame::hasHeader(received))
        return result(ExchangeResult::Kind::BadHeader);
    if (quint8(received.back()) != DeviceFrame::checksum(received))
        return result(ExchangeResult::Kind::BadChecksum);
    return handleResponse(received);
}

ExchangeResult CCommunicator::result(ExchangeResult::Kind kind) const
{
    ExchangeResult made;
    made.exchange = m_exchange;
    made.kind = kind;
    return made;
}
