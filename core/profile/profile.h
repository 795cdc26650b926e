#pragma once

#include <QString>
#include <QtGlobal>

#include <array>

// Fixed bounds of every ignition map, whatever the template.
constexpr int kMaxRpm = 20000;
constexpr int kMaxAngle = 49;
constexpr int kMinVoltage = 100;
constexpr int kMaxVoltage = 250;
constexpr int kMapPointCount = 10;

// One point of the ignition map: engine speed and advance angle before top dead centre.
struct MapPoint
{
    qint32 rpm = 0;
    qint32 angle = 0;

    // A slot the user has not filled: both values at or below zero.
    bool isEmpty() const { return rpm <= 0 && angle <= 0; }
    bool operator==(const MapPoint &other) const { return rpm == other.rpm && angle == other.angle; }
    bool operator!=(const MapPoint &other) const { return !(*this == other); }
};

// Exactly ten points in the user's order; the order is never changed behind the user's back.
class IgnitionMap
{
public:
    IgnitionMap() = default;

    MapPoint point(int index) const;
    void setPoint(int index, int rpm, int angle);
    bool pointEquals(int index, int rpm, int angle) const;

    // Index of the first empty slot, or -1 when all ten are used.
    int firstEmptySlot() const;
    // Puts the point into the first empty slot; a full map stays as it is.
    void addPoint(int rpm, int angle);

    int maxRpm() const;
    int maxAngle() const;
    bool isStrictlyAscending() const;
    // Stable sort by engine speed; angles travel with their speeds, empty slots sort to the front.
    IgnitionMap sortedAscending() const;
    // Index of the point nearest to (rpm, angle) by |drpm| + 400 |dangle|, or -1 when none is within 1250.
    int nearestPoint(double rpm, double angle) const;

    const std::array<qint32, kMapPointCount> &rpms() const { return m_rpm; }
    const std::array<qint32, kMapPointCount> &angles() const { return m_angle; }

    bool operator==(const IgnitionMap &other) const;
    bool operator!=(const IgnitionMap &other) const { return !(*this == other); }

private:
    std::array<qint32, kMapPointCount> m_rpm {};
    std::array<qint32, kMapPointCount> m_angle {};
};

// The sensor advance polynomial K0 + K1 rpm + K2 rpm^2; K0 is the sensor advance in degrees.
struct SensorCoefficients
{
    double k0 = 0.0;
    double k1 = 0.0;
    double k2 = 0.0;

    bool operator==(const SensorCoefficients &other) const
    {
        return k0 == other.k0 && k1 == other.k1 && k2 == other.k2;
    }
    bool operator!=(const SensorCoefficients &other) const { return !(*this == other); }
};

// True when each pair is equal or the smaller divided by the larger exceeds 0.99.
bool coefficientsAboutEqual(const SensorCoefficients &a, const SensorCoefficients &b);

// Largest angle allowed at an engine speed: the limit curve less a fixed 2-degree margin,
// truncated toward zero. Values beyond the int range (broken coefficients) saturate.
int angleCeiling(const SensorCoefficients &coefficients, int rpm);

// Side-stand, pick-up and sensor-mode settings; they travel as one flag byte.
struct ProfileFlags
{
    bool sideStandMonitoring = false;
    bool groundEnablesIgnition = true;
    bool pickUpRisingEdge = false;
    quint32 sensorMode = 0;

    static constexpr quint8 kSideStandMonitoring = 0x01;
    static constexpr quint8 kGroundBlocksIgnition = 0x02;
    static constexpr quint8 kPickUpRisingEdge = 0x04;
    static constexpr quint8 kSensorMode1 = 0x08;
    static constexpr quint8 kSensorMode2 = 0x10;
    static constexpr quint8 kExtra = 0x20;

    static ProfileFlags fromByte(quint8 byte);
    quint8 toByte(bool extra) const;

    bool operator==(const ProfileFlags &other) const;
    bool operator!=(const ProfileFlags &other) const { return !(*this == other); }
};

// A profile is either a factory template ("Default") or the user's own ("Custom").
enum class ProfileKind
{
    Default,
    Custom
};

// The limits a map is checked against; only the ceiling differs between profiles.
struct ProfileLimits
{
    static constexpr int maxRpm = kMaxRpm;
    static constexpr int maxAngle = kMaxAngle;
    SensorCoefficients ceilingCurve;

    int ceilingAt(int rpm) const { return angleCeiling(ceilingCurve, rpm); }
};

// One ignition profile. A plain value: copying copies every field.
class Profile
{
public:
    Profile() = default;

    qint32 motorbikeType() const { return m_motorbikeType; }
    qint32 templateType() const { return m_templateType; }
    bool isCustom() const { return m_isCustom; }
    ProfileKind kind() const { return m_isCustom ? ProfileKind::Custom : ProfileKind::Default; }
    bool auxFlag() const { return m_auxFlag; }
    const QString &name() const { return m_name; }
    const QString &notes() const { return m_notes; }
    const QString &extraText(int index) const { return m_extraText.at(index == 0 ? 0 : 1); }
    const IgnitionMap &map() const { return m_map; }
    const SensorCoefficients &sensorCoefficients() const { return m_coefficients; }
    ProfileLimits limits() const { return ProfileLimits {m_coefficients}; }
    const ProfileFlags &flags() const { return m_flags; }
    bool sideStandMonitoring() const { return m_flags.sideStandMonitoring; }
    bool groundEnablesIgnition() const { return m_flags.groundEnablesIgnition; }
    bool pickUpRisingEdge() const { return m_flags.pickUpRisingEdge; }
    quint32 sensorMode() const { return m_flags.sensorMode; }
    qint32 voltage() const { return m_voltage; }
    bool pickUpEdgeSelectable() const { return m_pickUpEdgeSelectable; }
    double k1Rising() const { return m_k1Rising; }
    double k1Falling() const { return m_k1Falling; }
    bool isModified() const { return m_modified; }

    // Every setter marks the profile modified.
    void setName(const QString &name);
    void setNotes(const QString &notes);
    void setVoltage(qint32 voltage);
    void setMap(const IgnitionMap &map);
    void setSensorCoefficients(const SensorCoefficients &coefficients);
    void setFlags(const ProfileFlags &flags);
    void setMotorbikeType(qint32 type, bool isCustom);
    void setKind(ProfileKind kind);
    void setTemplateType(qint32 type);
    void setAuxFlag(bool auxFlag);
    void setExtraText(int index, const QString &text);
    void setPickUpEdgeSelectable(bool selectable);
    void setK1(double rising, double falling);
    // Takes flags and coefficients exactly as a device holds them, without deriving K1 and K2.
    void setFlagsAndCoefficientsAsStored(const ProfileFlags &flags, const SensorCoefficients &coefficients);

    // Cleared after a load and after saving.
    void setModified(bool modified) { m_modified = modified; }

    // With sensor mode 1 or 2, K1 follows the chosen pick-up edge and K2 is zero; K0 stays the user's.
    void applySensorMode();

private:
    qint32 m_motorbikeType = 0;
    qint32 m_templateType = 0;
    bool m_isCustom = true;
    bool m_auxFlag = false;
    QString m_name = QStringLiteral("Unnamed");
    QString m_notes;
    std::array<QString, 2> m_extraText;
    IgnitionMap m_map;
    SensorCoefficients m_coefficients;
    ProfileFlags m_flags;
    qint32 m_voltage = 200;
    bool m_pickUpEdgeSelectable = true;
    double m_k1Rising = 0.0;
    double m_k1Falling = 0.0;
    bool m_modified = false;
};
