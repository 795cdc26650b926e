#include "device/cpinger.h"

#include "device/deviceframe.h"
#include "device/iwaitform.h"
#include "render/bracemarkup.h"

#include <QCoreApplication>
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

QString highlighted(const QString &value)
{
    return withBraceMarkup(QLatin1Char('{') + value.toHtmlEscaped() + QLatin1Char('}'));
}

} // namespace

CPinger::CPinger(QRandomGenerator &random)
    : CPinger(quint8(random.generate() & 0xFF))
{ }

CPinger::CPinger(quint8 nonce)
    : CCommunicator(1000, DeviceFrame::kPingResponseLength)
    , m_request(pingRequest(nonce))
{ }

void CPinger::start(IWaitForm &wait)
{
    wait.showActivity(QCoreApplication::translate("QWidget", "Testing"),
        QCoreApplication::translate("QWidget", "Sending ping to CDI"));
}

bool CPinger::handleResponse(const QByteArray &frame, IWaitForm &wait)
{
    if (frame.at(DeviceFrame::kNonceOffset) != m_request.at(DeviceFrame::kNonceOffset)) {
        wait.showResult(QCoreApplication::translate("QWidget", "Test failed"),
            QCoreApplication::translate(
                "QWidget", "Your CDI responded but an error occurred during data transmission."),
            false);
        return false;
    }
    const QString text
        = QCoreApplication::translate(
            "QWidget", "Your CDI responded as expected. Firmware %1 and serial number %2 were reported.")
              .arg(highlighted(firmwareOf(frame)), highlighted(QString::number(serialOf(frame))));
    wait.showResult(QCoreApplication::translate("QWidget", "Test successful"), text, true);
    return true;
}
