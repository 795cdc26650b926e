#pragma once

#include "device/ccommunicator.h"
#include "profile/profile.h"

class QRandomGenerator;

// Programs one profile: sends it scrambled and expects the CDI to echo it unscrambled, byte for
// byte, which proves it arrived intact.
class CCalibrator : public CCommunicator
{
public:
    CCalibrator(const Profile &profile, bool allowReimport, QRandomGenerator &random);
    CCalibrator(const Profile &profile, bool allowReimport, quint8 scramblingValue);

    // False when the profile's map breaks the limits: such a profile is never sent.
    static bool isProgrammable(const Profile &profile);

    QByteArray requestBytes() const override { return m_request; }
    QByteArray expectedEcho() const { return m_expectedEcho; }

protected:
    ExchangeResult handleResponse(const QByteArray &frame) const override;

private:
    const Profile m_profile;
    QByteArray m_request;
    QByteArray m_expectedEcho;
};
