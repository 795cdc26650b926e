#include "device/deviceframe.h"

namespace DeviceFrame {

namespace {

const char kHeader[] = {'\x4D', '\xF6', '\x68'};

// The amount added to byte i: it depends only on t (byte 3), r (byte 49) and the position, so
// the CDI recovers the payload from the frame alone.
quint8 keyAt(int i, quint8 t, quint8 r)
{
    int m = (t & 0x80) ? (r - t + 70) & 0xFF : (r + 4 * t + 23) & 0xFF;
    if (m <= 3)
        m = 4;
    const int k = (((16 * i - r) & 0xFF) % m) + (((m + i) & 0xFF) % r);
    return quint8(k);
}

void applyKey(QByteArray &frame, int sign)
{
    if (frame.size() != kLength)
        return;
    const quint8 t = quint8(frame.at(kTypeOffset));
    const quint8 r = quint8(frame.at(kScramblingOffset));
    if (r == 0)
        return; // never produced by scramblingValue(); nothing sensible to undo
    for (int i = kPayloadBegin; i < kPayloadEnd; ++i)
        frame[i] = char(quint8(quint8(frame.at(i)) + sign * keyAt(i, t, r)));
    sealChecksum(frame);
}

} // namespace

quint8 checksum(const QByteArray &frame)
{
    quint8 sum = 0;
    for (int i = 0; i + 1 < frame.size(); ++i)
        sum ^= quint8(frame.at(i));
    return sum;
}

void sealChecksum(QByteArray &frame)
{
    if (frame.size() > 1)
        frame[frame.size() - 1] = char(checksum(frame));
}

bool hasHeader(const QByteArray &frame)
{
    return frame.size() >= 3 && frame.startsWith(QByteArray::fromRawData(kHeader, 3));
}

QByteArray build(Command command)
{
    QByteArray frame(kLength, '\0');
    frame.replace(0, 3, QByteArray::fromRawData(kHeader, 3));
    frame[kCommandOffset] = char(command);
    sealChecksum(frame);
    return frame;
}

quint8 scramblingValue(quint32 random)
{
    const quint8 low = quint8(random & 0xFF);
    return low < 3 ? 3 : low;
}

void scramble(QByteArray &frame)
{
    applyKey(frame, 1);
}

void unscramble(QByteArray &frame)
{
    applyKey(frame, -1);
}

} // namespace DeviceFrame
