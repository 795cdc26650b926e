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

    // Why the profile must not be sent (its map breaks the limits), or empty when it may.
    static QString refusal(const Profile &profile);

    void start(IWaitForm &wait) override;
    QByteArray requestBytes() const override { return m_request; }
    QByteArray expectedEcho() const { return m_expectedEcho; }
    // Every failure may have left the CDI half programmed, so they all carry the same warning.
    void fail(IWaitForm &wait) override;

protected:
    bool handleResponse(const QByteArray &frame, IWaitForm &wait) override;
    void reportNoResponse(IWaitForm &wait) override { fail(wait); }

private:
    const Profile m_profile;
    QByteArray m_request;
    QByteArray m_expectedEcho;
};
