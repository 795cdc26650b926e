#include "device/ccalibrator.h"

#include "device/deviceframe.h"
#include "profile/deviceimage.h"
#include "profile/mapvalidation.h"

#include <QRandomGenerator>

CCalibrator::CCalibrator(const Profile &profile, bool allowReimport, QRandomGenerator &random)
    : CCalibrator(profile, allowReimport, DeviceFrame::scramblingValue(random.generate()))
{ }

CCalibrator::CCalibrator(const Profile &profile, bool allowReimport, quint8 scramblingValue)
    : CCommunicator(DeviceExchange::Program, DeviceFrame::kLength)
    , m_profile(profile)
{
    QByteArray frame = DeviceFrame::build(DeviceFrame::Program);
    writeDeviceImage(m_profile, allowReimport, frame);
    frame[DeviceFrame::kScramblingOffset] = char(DeviceFrame::scramblingValue(scramblingValue));
    DeviceFrame::sealChecksum(frame);
    m_expectedEcho = frame;
    DeviceFrame::scramble(frame);
    m_request = frame;
}

bool CCalibrator::isProgrammable(const Profile &profile)
{
    return !validate(profile).hasErrors();
}

// The profile goes with the result, so that whoever keeps a copy of it has what was written.
ExchangeResult CCalibrator::handleResponse(const QByteArray &frame) const
{
    if (frame != m_expectedEcho)
        return result(ExchangeResult::Kind::WrongEcho);
    ExchangeResult programmed = result(ExchangeResult::Kind::Succeeded);
    programmed.profile = m_profile;
    programmed.image = m_expectedEcho;
    return programmed;
}
