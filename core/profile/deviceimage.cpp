#include "profile/deviceimage.h"

#include <cmath>
#include <cstring>
#include <limits>

using namespace DeviceImage;

namespace {

quint8 byteAt(const QByteArray &data, int offset)
{
    return offset >= 0 && offset < data.size() ? quint8(data.at(offset)) : 0;
}

int rpmAt(const QByteArray &frame, int index)
{
    return byteAt(frame, kRpmOffset + 2 * index) * 256 + byteAt(frame, kRpmOffset + 2 * index + 1);
}

int voltageOf(const QByteArray &frame)
{
    return frame.size() > kVoltageOffset ? byteAt(frame, kVoltageOffset) : 0;
}

double floatAt(const QByteArray &frame, int offset)
{
    quint32 bits = 0;
    for (int i = 0; i < 4; ++i)
        bits = (bits << 8) | byteAt(frame, offset + i);
    float value = 0.0f;
    std::memcpy(&value, &bits, sizeof(value));
    return double(value);
}

// Narrowing a double beyond the float range is undefined in C++; the device gets the IEEE result.
float toFloat(double value)
{
    constexpr double kMax = std::numeric_limits<float>::max();
    if (value > kMax)
        return std::numeric_limits<float>::infinity();
    if (value < -kMax)
        return -std::numeric_limits<float>::infinity();
    return float(value);
}

void putFloat(QByteArray &frame, int offset, double value)
{
    const float narrowed = toFloat(value);
    quint32 bits = 0;
    std::memcpy(&bits, &narrowed, sizeof(bits));
    for (int i = 0; i < 4; ++i)
        frame[offset + i] = char((bits >> (24 - 8 * i)) & 0xFF);
}

} // namespace

QString checkDeviceImage(const QByteArray &frame)
{
    for (int i = 0; i < kMapPointCount; ++i) {
        if (rpmAt(frame, i) > kMaxRpm)
            return QStringLiteral("rpm > ") + QString::number(kMaxRpm);
    }
    for (int i = 0; i < kMapPointCount; ++i) {
        if (byteAt(frame, kAngleOffset + i) > kMaxAngle)
            return QStringLiteral("angle > ") + QString::number(kMaxAngle);
    }
    const int voltage = voltageOf(frame);
    if (voltage < kMinVoltage || voltage > kMaxVoltage)
        return QStringLiteral("invalid voltage: ") + QString::number(voltage);
    return {};
}

QString readDeviceImage(const QByteArray &frame, bool isCustom, Profile &profile)
{
    const QString failure = checkDeviceImage(frame);
    if (!failure.isEmpty())
        return failure;

    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, rpmAt(frame, i), byteAt(frame, kAngleOffset + i));
    const SensorCoefficients coefficients {floatAt(frame, kCoefficientsOffset),
        floatAt(frame, kCoefficientsOffset + 4), floatAt(frame, kCoefficientsOffset + 8)};

    profile.setMap(map);
    profile.setVoltage(voltageOf(frame));
    // The device's K1 and K2 are taken as they come: no sensor-mode derivation here.
    const ProfileFlags flags = ProfileFlags::fromByte(byteAt(frame, kFlagsOffset));
    profile.setFlagsAndCoefficientsAsStored(flags, coefficients);
    // With a sensor mode, every later load derives K1 from the chosen edge's value: that value
    // becomes the device's K1, so that saving, reopening and programming give back what was read.
    if (flags.sensorMode != 0) {
        if (flags.pickUpRisingEdge)
            profile.setK1(coefficients.k1, profile.k1Falling());
        else
            profile.setK1(profile.k1Rising(), coefficients.k1);
    }
    profile.setKind(isCustom ? ProfileKind::Custom : ProfileKind::Default);
    return {};
}

void writeDeviceImage(const Profile &profile, bool allowReimport, QByteArray &frame)
{
    if (frame.size() < kEnd)
        frame.resize(kEnd);
    quint8 type = quint8((profile.motorbikeType() + 1) & 0xFF);
    if (profile.isCustom())
        type |= kCustomBit;
    frame[kTypeOffset] = char(type);

    const IgnitionMap &map = profile.map();
    for (int i = 0; i < kMapPointCount; ++i) {
        const quint16 rpm = quint16(map.rpms()[i]);
        frame[kRpmOffset + 2 * i] = char(rpm >> 8);
        frame[kRpmOffset + 2 * i + 1] = char(rpm & 0xFF);
        frame[kAngleOffset + i] = char(quint8(map.angles()[i]));
    }
    frame[kVoltageOffset] = char(quint8(profile.voltage()));
    frame[kFlagsOffset] = char(profile.flags().toByte(allowReimport));

    const SensorCoefficients &c = profile.sensorCoefficients();
    putFloat(frame, kCoefficientsOffset, c.k0);
    putFloat(frame, kCoefficientsOffset + 4, c.k1);
    putFloat(frame, kCoefficientsOffset + 8, c.k2);
}
