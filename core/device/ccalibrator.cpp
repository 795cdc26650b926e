#include "device/ccalibrator.h"

#include "device/deviceframe.h"
#include "device/iwaitform.h"
#include "profile/deviceimage.h"
#include "profile/mapvalidation.h"

#include <QCoreApplication>
#include <QRandomGenerator>

CCalibrator::CCalibrator(const Profile &profile, bool allowReimport, QRandomGenerator &random)
    : CCalibrator(profile, allowReimport, DeviceFrame::scramblingValue(random.generate()))
{ }

CCalibrator::CCalibrator(const Profile &profile, bool allowReimport, quint8 scramblingValue)
    : CCommunicator(1000, DeviceFrame::kLength)
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

QString CCalibrator::refusal(const Profile &profile)
{
    if (!validate(profile).hasErrors())
        return {};
    return QCoreApplication::translate(
        "QWidget", "The ignition map of this profile is not valid. Correct it before programming the CDI.");
}

void CCalibrator::start(IWaitForm &wait)
{
    wait.showActivity(QCoreApplication::translate("QWidget", "Programming"),
        QCoreApplication::translate("QWidget", "Sending profile data to the CDI"));
}

bool CCalibrator::handleResponse(const QByteArray &frame, IWaitForm &wait)
{
    if (frame != m_expectedEcho) {
        fail(wait);
        return false;
    }
    QString text
        = QCoreApplication::translate("QWidget", "Your CDI is now programmed with the profile <b>%</b>.");
    const int placeholder = text.indexOf(QLatin1Char('%'));
    if (placeholder >= 0)
        text.replace(placeholder, 1, m_profile.name().toHtmlEscaped());
    wait.showResult(QCoreApplication::translate("QWidget", "Programming successful"), text, true);
    return true;
}

void CCalibrator::fail(IWaitForm &wait)
{
    wait.showResult(QCoreApplication::translate("QWidget", "Programming failed"),
        QCoreApplication::translate("QWidget",
            "An error occurred during data transmission. The CDI may be programmed improperly and should not "
            "be "
            "used in its current state."),
        false);
}
