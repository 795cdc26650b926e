#include "profile/mapvalidation.h"

#include <QObject>

MapValidation::MapValidation()
{
    for (int i = 0; i < kMapPointCount; ++i)
        points[i].index = i;
}

bool MapValidation::hasErrors() const
{
    if (notAscending)
        return true;
    for (const PointValidation &point : points) {
        if (!point.isValid())
            return true;
    }
    return false;
}

namespace {

QString orderMessage()
{
    return QObject::tr("Speeds must rise from row to row");
}

} // namespace

QStringList MapValidation::problems() const
{
    QStringList list;
    for (const PointValidation &point : points) {
        for (const QString &message : {point.rpmMessage, point.angleMessage}) {
            if (!message.isEmpty())
                list << QObject::tr("Row %1: %2").arg(point.index + 1).arg(message);
        }
    }
    if (notAscending)
        list << orderMessage();
    return list;
}

QString MapValidation::cellMessage(int row, int column, const IgnitionMap &map) const
{
    if (row < 0 || row >= kMapPointCount)
        return QString();
    const PointValidation &point = points[size_t(row)];
    if (column == 1)
        return point.angleMessage;
    if (!point.rpmMessage.isEmpty())
        return point.rpmMessage;
    const bool outOfOrder = notAscending
        && ((row > 0 && map.point(row).rpm <= map.point(row - 1).rpm)
            || (row + 1 < kMapPointCount && map.point(row).rpm >= map.point(row + 1).rpm));
    return outOfOrder ? orderMessage() : QString();
}

PointValidation validatePoint(int index, int rpm, int angle, const SensorCoefficients &coefficients)
{
    PointValidation result;
    result.index = index;

    bool rpmAcceptable = true;
    if (rpm < 0) {
        result.rpmMessage = QObject::tr("RPM cannot be negative");
        rpmAcceptable = false;
    } else if (rpm > kMaxRpm) {
        result.rpmMessage = QObject::tr("RPM exceed the maximum of %max")
                                .replace(QLatin1String("%max"), QString::number(kMaxRpm));
        rpmAcceptable = false;
    }

    if (angle < 0) {
        result.angleMessage = QObject::tr("angle cannot be negative");
    } else if (angle > kMaxAngle) {
        result.angleMessage = QObject::tr("angle exceeds maximum of %max")
                                  .replace(QLatin1String("%max"), QString::number(kMaxAngle));
    } else if (rpmAcceptable) {
        // The ceiling is only meaningful for a speed inside the fixed bounds.
        const int ceiling = angleCeiling(coefficients, rpm);
        if (ceiling < angle) {
            result.angleMessage
                = QObject::tr("the angle for %rpm RPM should not exceed %max for this profile")
                      .replace(QLatin1String("%rpm"), QString::number(rpm))
                      .replace(QLatin1String("%max"), QString::number(ceiling));
        }
    }
    return result;
}

MapValidation validate(const IgnitionMap &map, const SensorCoefficients &coefficients)
{
    MapValidation result;
    for (int i = 0; i < kMapPointCount; ++i) {
        const MapPoint point = map.point(i);
        result.points[i] = validatePoint(i, point.rpm, point.angle, coefficients);
    }
    result.notAscending = !map.isStrictlyAscending();
    return result;
}

MapValidation validate(const Profile &profile)
{
    return validate(profile.map(), profile.sensorCoefficients());
}

IgnitionMap sortAscending(const IgnitionMap &map)
{
    return map.sortedAscending();
}
