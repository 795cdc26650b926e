#include "device/cvirtualcdi.h"

#include "device/deviceframe.h"
#include "device/serialports.h"
#include "profile/deviceimage.h"

#include <QSocketNotifier>
#include <QTimer>


namespace {

struct FaultName
{
    CVirtualCdi::Fault fault;
    const char *name;
};

const FaultName kFaultNames[] = {
    {CVirtualCdi::Fault::None, "none"},
    {CVirtualCdi::Fault::Silent, "silent"},
    {CVirtualCdi::Fault::Short, "short"},
    {CVirtualCdi::Fault::Long, "long"},
    {CVirtualCdi::Fault::BadHeader, "bad-header"},
    {CVirtualCdi::Fault::BadChecksum, "bad-checksum"},
    {CVirtualCdi::Fault::WrongNonce, "wrong-nonce"},
    {CVirtualCdi::Fault::WrongEcho, "wrong-echo"},
    {CVirtualCdi::Fault::Slow, "slow"},
    {CVirtualCdi::Fault::TooSlow, "too-slow"},
    {CVirtualCdi::Fault::Hangup, "hangup"},
    {CVirtualCdi::Fault::UnknownType, "unknown-type"},
    {CVirtualCdi::Fault::BadValue, "bad-value"},
    {CVirtualCdi::Fault::KeepsOld, "keeps-old"},
    {CVirtualCdi::Fault::ReadSilent, "read-silent"},
};

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}

} // namespace

std::optional<CVirtualCdi::Fault> CVirtualCdi::faultFromName(const QString &name)
{
    for (const FaultName &entry : kFaultNames) {
        if (name == QLatin1String(entry.name))
            return entry.fault;
    }
    return std::nullopt;
}

QStringList CVirtualCdi::faultNames()
{
    QStringList names;
    for (const FaultName &entry : kFaultNames)
        names << QLatin1String(entry.name);
    return names;
}

CVirtualCdi::CVirtualCdi(QObject *parent)
    : QObject(parent)
{
    setProfile(Profile());
}

CVirtualCdi::~CVirtualCdi()
{
    closePty();
}

void CVirtualCdi::setProfile(const Profile &profile, bool allowReimport)
{
    QByteArray frame = DeviceFrame::build(DeviceFrame::Read);
    writeDeviceImage(profile, allowReimport, frame);
    m_image = frame.mid(DeviceImage::kTypeOffset, DeviceImage::kEnd - DeviceImage::kTypeOffset);
}

void CVirtualCdi::setDelays(int slowMs, int tooSlowMs)
{
    m_slowMs = slowMs;
    m_tooSlowMs = tooSlowMs;
}

bool CVirtualCdi::reimportAllowed() const
{
    const int flags = DeviceImage::kFlagsOffset - DeviceImage::kTypeOffset;
    return quint8(m_image.at(flags)) & DeviceFrame::kReimportBit;
}

void CVirtualCdi::hangUp()
{
    closePty();
    if (open().isEmpty())
        emit portChanged(m_portName);
}

void CVirtualCdi::receive(const QByteArray &bytes)
{
    m_input.append(bytes);
    // Resynchronise on the header; a frame with a bad checksum is dropped whole.
    while (!m_input.isEmpty()) {
        const int header = m_input.indexOf(QByteArray::fromHex("4df668"));
        if (header < 0) {
            m_input = m_input.right(2);
            return;
        }
        m_input.remove(0, header);
        if (m_input.size() < DeviceFrame::kLength)
            return;
        const QByteArray frame = m_input.left(DeviceFrame::kLength);
        m_input.remove(0, DeviceFrame::kLength);
        if (quint8(frame.back()) != DeviceFrame::checksum(frame)) {
            emit requestHandled(QStringLiteral("ignored a frame with a bad checksum: ") + hex(frame));
            continue;
        }
        handleFrame(frame);
    }
}

void CVirtualCdi::handleFrame(const QByteArray &frame)
{
    const quint8 command = quint8(frame.at(DeviceFrame::kCommandOffset));
    if (command == DeviceFrame::Ping) {
        QByteArray answer(DeviceFrame::kPingResponseLength, '\0');
        answer.replace(0, 3, frame.left(3));
        answer[DeviceFrame::kNonceOffset] = frame.at(DeviceFrame::kNonceOffset);
        if (m_fault == Fault::WrongNonce)
            answer[DeviceFrame::kNonceOffset] = char(quint8(frame.at(DeviceFrame::kNonceOffset)) + 1);
        answer.replace(DeviceFrame::kFirmwareOffset, m_firmware.size(), m_firmware);
        for (int i = 0, shift = 8 * (DeviceFrame::kSerialLength - 1); shift >= 0; ++i, shift -= 8)
            answer[DeviceFrame::kSerialOffset + i] = char((m_serial >> shift) & 0xFF);
        DeviceFrame::sealChecksum(answer);
        send(answer, QStringLiteral("ping, nonce %1").arg(quint8(frame.at(DeviceFrame::kNonceOffset))));
        return;
    }
    if (command == DeviceFrame::Read) {
        if (!reimportAllowed()) {
            emit requestHandled(QStringLiteral("read refused: the profile was programmed without reimport"));
            return;
        }
        if (m_fault == Fault::ReadSilent) {
            emit requestHandled(QStringLiteral("read: stays silent"));
            return;
        }
        QByteArray answer = DeviceFrame::build(DeviceFrame::Read);
        answer.replace(DeviceImage::kTypeOffset, m_image.size(), m_image);
        if (m_fault == Fault::UnknownType)
            answer[DeviceImage::kTypeOffset] = '\0';
        if (m_fault == Fault::BadValue)
            answer[DeviceImage::kVoltageOffset] = char(99);
        DeviceFrame::sealChecksum(answer);
        send(answer, QStringLiteral("read"));
        return;
    }
    if (command == DeviceFrame::Program) {
        QByteArray plain = frame;
        DeviceFrame::unscramble(plain);
        if (m_fault != Fault::KeepsOld)
            m_image = plain.mid(DeviceImage::kTypeOffset, DeviceImage::kEnd - DeviceImage::kTypeOffset);
        send(m_fault == Fault::WrongEcho ? frame : plain,
            QStringLiteral("program, reimport %1")
                .arg(quint8(plain.at(DeviceImage::kFlagsOffset)) & DeviceFrame::kReimportBit
                        ? QStringLiteral("allowed")
                        : QStringLiteral("not allowed")));
        return;
    }
    emit requestHandled(QStringLiteral("ignored unknown command %1").arg(command));
}

void CVirtualCdi::send(QByteArray answer, const QString &line)
{
    int delay = 0;
    switch (m_fault) {
    case Fault::Silent:
        emit requestHandled(line + QStringLiteral(": stays silent"));
        return;
    case Fault::Short:
        answer.chop(1);
        break;
    case Fault::Long:
        answer.append('\0');
        break;
    case Fault::BadHeader:
        answer[0] = 'N';
        DeviceFrame::sealChecksum(answer);
        break;
    case Fault::BadChecksum:
        answer[answer.size() - 1] = char(~quint8(answer.back()));
        break;
    case Fault::Slow:
        delay = m_slowMs;
        break;
    case Fault::TooSlow:
        delay = m_tooSlowMs;
        break;
    default:
        break;
    }
    emit requestHandled(line + QStringLiteral(": answered ") + hex(answer));
    const quint64 terminal = m_terminal;
    if (m_fault == Fault::Hangup) {
        // Half the answer, then the line goes dead; the CDI comes back on a new terminal.
        const QByteArray half = answer.left(answer.size() / 2);
        if (!writeToLine(half))
            return;
        QTimer::singleShot(50, this, [this, terminal] {
            if (terminal == m_terminal)
                hangUp();
        });
        return;
    }
    QTimer::singleShot(delay, this, [this, terminal, answer] {
        if (terminal != m_terminal || m_master < 0)
            return;
        if (!writeToLine(answer))
            emit requestHandled(QStringLiteral("could not write the answer"));
    });
}
