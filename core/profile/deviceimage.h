#pragma once

#include "profile/profile.h"

#include <QByteArray>
#include <QString>

// The 45-byte big-endian image of a profile that travels inside a device frame. Offsets are
// frame offsets: the image starts at byte 3 and ends before byte 48.
namespace DeviceImage {
constexpr int kTypeOffset = 3;
constexpr int kRpmOffset = 4;
constexpr int kAngleOffset = 24;
constexpr int kVoltageOffset = 34;
constexpr int kFlagsOffset = 35;
constexpr int kCoefficientsOffset = 36;
constexpr int kEnd = 48;
constexpr quint8 kCustomBit = 0x80;
} // namespace DeviceImage

// Checks the map and voltage of an image as the device returned it: an empty text when they
// are acceptable, else the first failure ("rpm > 20000", "angle > 49", "invalid voltage: N").
QString checkDeviceImage(const QByteArray &frame);

// Fills the profile's map, voltage, flags, coefficients and kind from the image in frame; the
// profile is left untouched when the image fails its check, and the failure text is returned.
QString readDeviceImage(const QByteArray &frame, bool isCustom, Profile &profile);

// Writes bytes 3 to 47 of a device frame, growing the frame when it is shorter.
void writeDeviceImage(const Profile &profile, bool allowReimport, QByteArray &frame);
