#pragma once

#include "profile/profile.h"

#include <QByteArray>
#include <QString>

#include <vector>

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

// One way in which the image a CDI holds, or is to hold, differs from another: the old and the
// new value of a slot of the map or of a setting.
struct ImageDifference
{
    enum class Field
    {
        MotorbikeType, // the template's type index
        Kind, // 1: custom
        Slot,
        Voltage,
        SideStandMonitoring,
        GroundEnablesIgnition,
        PickUpRisingEdge,
        SensorMode,
        Reimport,
        FlagByte, // bits of the flag byte that no setting accounts for
        SensorAdvance, // K0
        K1,
        K2
    };
    Field field = Field::Slot;
    int slot = 0; // Slot: 0 to 9
    MapPoint oldPoint {};
    MapPoint newPoint {};
    // All but Slot; a yes or no as 1 or 0.
    double oldValue = 0.0;
    double newValue = 0.0;
};

// Where the image in frame `after` differs from the one in `before`, in the order of the image.
// Every byte counts, so an empty list means the CDI holds, or gets, the very same bytes.
std::vector<ImageDifference> imageDifferences(const QByteArray &before, const QByteArray &after);
// The same for two profiles, as a CDI would get them.
std::vector<ImageDifference> profileDifferences(const Profile &before, const Profile &after);
