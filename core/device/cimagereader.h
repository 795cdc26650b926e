#pragma once

#include "device/ccommunicator.h"

// Reads the device image the CDI holds, as it comes, to compare it with another: before a profile
// is written over it, or right after, to see that it arrived. Nothing is decoded or checked
// against the templates, so that every byte counts in the comparison.
class CImageReader : public CCommunicator
{
public:
    // ReadHeld or ReadBack.
    explicit CImageReader(DeviceExchange exchange);

    QByteArray requestBytes() const override { return m_request; }

protected:
    ExchangeResult handleResponse(const QByteArray &frame) const override;

private:
    const QByteArray m_request;
};

// Whether a programming that ended so may be read back: it succeeded and allowed reimporting.
bool mayReadBack(const ExchangeResult &programmed);
// The programming's result once it was read back: verified, the differences from what was sent
// (sent, then read back), or how the read failed. The echo already proved the frame arrived, so a
// failed read does not say the programming failed, only that it is not verified.
ExchangeResult readBackVerdict(const ExchangeResult &programmed, const ExchangeResult &readBack);
