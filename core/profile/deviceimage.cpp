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

std::vector<ImageDifference> imageDifferences(const QByteArray &before, const QByteArray &after)
{
    using Field = ImageDifference::Field;
    std::vector<ImageDifference> differences;
    const auto differ = [&](Field field, double oldValue, double newValue) {
        if (oldValue != newValue)
            differences.push_back({field, 0, {}, {}, oldValue, newValue});
    };
    const quint8 oldType = byteAt(before, kTypeOffset);
    const quint8 newType = byteAt(after, kTypeOffset);
    differ(Field::MotorbikeType, int(oldType & 0x7F) - 1, int(newType & 0x7F) - 1);
    differ(Field::Kind, (oldType & kCustomBit) != 0, (newType & kCustomBit) != 0);
    for (int i = 0; i < kMapPointCount; ++i) {
        const MapPoint oldPoint {rpmAt(before, i), byteAt(before, kAngleOffset + i)};
        const MapPoint newPoint {rpmAt(after, i), byteAt(after, kAngleOffset + i)};
        if (oldPoint != newPoint)
            differences.push_back({Field::Slot, i, oldPoint, newPoint, 0.0, 0.0});
    }
    differ(Field::Voltage, byteAt(before, kVoltageOffset), byteAt(after, kVoltageOffset));

    const quint8 oldFlagByte = byteAt(before, kFlagsOffset);
    const quint8 newFlagByte = byteAt(after, kFlagsOffset);
    const ProfileFlags oldFlags = ProfileFlags::fromByte(oldFlagByte);
    const ProfileFlags newFlags = ProfileFlags::fromByte(newFlagByte);
    const size_t beforeFlags = differences.size();
    differ(Field::SideStandMonitoring, oldFlags.sideStandMonitoring, newFlags.sideStandMonitoring);
    differ(Field::GroundEnablesIgnition, oldFlags.groundEnablesIgnition, newFlags.groundEnablesIgnition);
    differ(Field::PickUpRisingEdge, oldFlags.pickUpRisingEdge, newFlags.pickUpRisingEdge);
    differ(Field::SensorMode, oldFlags.sensorMode, newFlags.sensorMode);
    differ(Field::Reimport, (oldFlagByte & ProfileFlags::kExtra) != 0,
        (newFlagByte & ProfileFlags::kExtra) != 0);
    // Bits no setting accounts for (a ground bit without monitoring, bits 6 and 7) still differ.
    if (oldFlagByte != newFlagByte && differences.size() == beforeFlags)
        differ(Field::FlagByte, oldFlagByte, newFlagByte);

    // By their bytes: 0 and -0, or two NaNs, print alike but are not what was sent.
    const Field coefficients[] = {Field::SensorAdvance, Field::K1, Field::K2};
    for (int i = 0; i < 3; ++i) {
        const int offset = kCoefficientsOffset + 4 * i;
        bool same = true;
        for (int b = offset; b < offset + 4; ++b)
            same = same && byteAt(before, b) == byteAt(after, b);
        if (!same)
            differences.push_back(
                {coefficients[i], 0, {}, {}, floatAt(before, offset), floatAt(after, offset)});
    }
    return differences;
}

std::vector<ImageDifference> profileDifferences(const Profile &before, const Profile &after)
{
    QByteArray oldImage;
    QByteArray newImage;
    writeDeviceImage(before, false, oldImage);
    writeDeviceImage(after, false, newImage);
    return imageDifferences(oldImage, newImage);
}
