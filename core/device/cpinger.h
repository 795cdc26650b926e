#pragma once

#include "device/ccommunicator.h"

class QRandomGenerator;

// The connection test: the CDI echoes a random nonce and reports its firmware and serial number.
class CPinger : public CCommunicator
{
public:
    explicit CPinger(QRandomGenerator &random);
    explicit CPinger(quint8 nonce);

    QByteArray requestBytes() const override { return m_request; }

protected:
    ExchangeResult handleResponse(const QByteArray &frame) const override;

private:
    const QByteArray m_request;
};
