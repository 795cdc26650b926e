#include "profile/profile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

bool validIndex(int index)
{
    return index >= 0 && index < kMapPointCount;
}

bool aboutEqual(double a, double b)
{
    if (a == b)
        return true;
    const double smaller = std::min(a, b);
    const double larger = std::max(a, b);
    if (larger == 0.0)
        return false;
    return smaller / larger > 0.99;
}

} // namespace

MapPoint IgnitionMap::point(int index) const
{
    if (!validIndex(index))
        return {};
    return {m_rpm[index], m_angle[index]};
}

void IgnitionMap::setPoint(int index, int rpm, int angle)
{
    if (!validIndex(index))
        return;
    m_rpm[index] = rpm;
    m_angle[index] = angle;
}

bool IgnitionMap::pointEquals(int index, int rpm, int angle) const
{
    return validIndex(index) && m_rpm[index] == rpm && m_angle[index] == angle;
}

int IgnitionMap::firstEmptySlot() const
{
    for (int i = 0; i < kMapPointCount; ++i) {
        if (point(i).isEmpty())
            return i;
    }
    return -1;
}

void IgnitionMap::addPoint(int rpm, int angle)
{
    setPoint(firstEmptySlot(), rpm, angle);
}

int IgnitionMap::maxRpm() const
{
    return *std::max_element(m_rpm.begin(), m_rpm.end());
}

int IgnitionMap::maxAngle() const
{
    return *std::max_element(m_angle.begin(), m_angle.end());
}

bool IgnitionMap::isStrictlyAscending() const
{
    for (int i = 1; i < kMapPointCount; ++i) {
        if (m_rpm[i] <= m_rpm[i - 1])
            return false;
    }
    return true;
}

IgnitionMap IgnitionMap::sortedAscending() const
{
    // std::stable_sort keeps equal speeds in their original order, which is what the user expects
    // when two rows share a speed: the earlier row stays first.
    std::array<int, kMapPointCount> order {};
    for (int i = 0; i < kMapPointCount; ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(), [this](int a, int b) { return m_rpm[a] < m_rpm[b]; });
    IgnitionMap sorted;
    for (int i = 0; i < kMapPointCount; ++i)
        sorted.setPoint(i, m_rpm[order[i]], m_angle[order[i]]);
    return sorted;
}

int IgnitionMap::nearestPoint(double rpm, double angle) const
{
    int best = -1;
    double bestDistance = 0.0;
    for (int i = 0; i < kMapPointCount; ++i) {
        const double distance = std::abs(m_rpm[i] - rpm) + 400.0 * std::abs(m_angle[i] - angle);
        if (best < 0 || distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return bestDistance < 1251.0 ? best : -1;
}

bool IgnitionMap::operator==(const IgnitionMap &other) const
{
    return m_rpm == other.m_rpm && m_angle == other.m_angle;
}

bool coefficientsAboutEqual(const SensorCoefficients &a, const SensorCoefficients &b)
{
    return aboutEqual(a.k0, b.k0) && aboutEqual(a.k1, b.k1) && aboutEqual(a.k2, b.k2);
}

int angleCeiling(const SensorCoefficients &c, int rpm)
{
    const double r = rpm;
    const double value = std::trunc(c.k0 + c.k1 * r + c.k2 * r * r - 2.0);
    // A NaN curve allows nothing; an overflowing one saturates instead of invoking undefined behaviour.
    if (std::isnan(value) || value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (value >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

ProfileFlags ProfileFlags::fromByte(quint8 byte)
{
    ProfileFlags flags;
    flags.sideStandMonitoring = byte & kSideStandMonitoring;
    // Bit 1 only counts while the side stand is monitored; without monitoring ground always enables.
    flags.groundEnablesIgnition = !(flags.sideStandMonitoring && (byte & kGroundBlocksIgnition));
    flags.pickUpRisingEdge = byte & kPickUpRisingEdge;
    if (byte & kSensorMode1)
        flags.sensorMode = 1;
    else if (byte & kSensorMode2)
        flags.sensorMode = 2;
    else
        flags.sensorMode = 0;
    return flags;
}

quint8 ProfileFlags::toByte(bool extra) const
{
    quint8 byte = 0;
    if (sideStandMonitoring)
        byte |= kSideStandMonitoring;
    // "Ground blocks" only means something while the side stand is monitored.
    if (sideStandMonitoring && !groundEnablesIgnition)
        byte |= kGroundBlocksIgnition;
    if (pickUpRisingEdge)
        byte |= kPickUpRisingEdge;
    if (sensorMode == 1)
        byte |= kSensorMode1;
    else if (sensorMode == 2)
        byte |= kSensorMode2;
    if (extra)
        byte |= kExtra;
    return byte;
}

bool ProfileFlags::operator==(const ProfileFlags &other) const
{
    return sideStandMonitoring == other.sideStandMonitoring
        && groundEnablesIgnition == other.groundEnablesIgnition && pickUpRisingEdge == other.pickUpRisingEdge
        && sensorMode == other.sensorMode;
}

void Profile::setName(const QString &name)
{
    m_name = name;
    m_modified = true;
}

void Profile::setNotes(const QString &notes)
{
    m_notes = notes;
    m_modified = true;
}

void Profile::setVoltage(qint32 voltage)
{
    m_voltage = voltage;
    m_modified = true;
}

void Profile::setMap(const IgnitionMap &map)
{
    m_map = map;
    m_modified = true;
}

void Profile::setSensorCoefficients(const SensorCoefficients &coefficients)
{
    m_coefficients = coefficients;
    m_modified = true;
    applySensorMode();
}

void Profile::setFlags(const ProfileFlags &flags)
{
    m_flags = flags;
    m_modified = true;
    applySensorMode();
}

void Profile::setMotorbikeType(qint32 type, bool isCustom)
{
    m_motorbikeType = type;
    m_isCustom = isCustom;
    m_modified = true;
}

void Profile::setKind(ProfileKind kind)
{
    m_isCustom = kind == ProfileKind::Custom;
    m_modified = true;
}

void Profile::setTemplateType(qint32 type)
{
    m_templateType = type;
    m_modified = true;
}

void Profile::setAuxFlag(bool auxFlag)
{
    m_auxFlag = auxFlag;
    m_modified = true;
}

void Profile::setExtraText(int index, const QString &text)
{
    m_extraText.at(index == 0 ? 0 : 1) = text;
    m_modified = true;
}

void Profile::setPickUpEdgeSelectable(bool selectable)
{
    m_pickUpEdgeSelectable = selectable;
    m_modified = true;
}

void Profile::setK1(double rising, double falling)
{
    m_k1Rising = rising;
    m_k1Falling = falling;
    m_modified = true;
}

void Profile::setFlagsAndCoefficientsAsStored(
    const ProfileFlags &flags, const SensorCoefficients &coefficients)
{
    m_flags = flags;
    m_coefficients = coefficients;
    m_modified = true;
}

void Profile::applySensorMode()
{
    if (m_flags.sensorMode == 0)
        return;
    m_coefficients.k1 = m_flags.pickUpRisingEdge ? m_k1Rising : m_k1Falling;
    m_coefficients.k2 = 0.0;
}
