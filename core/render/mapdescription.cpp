#include "render/mapdescription.h"

#include "profile/mapvalidation.h"
#include "profile/profile.h"

#include <QStringList>

QString MapDescription::graphName(const QString &profileName)
{
    return profileName.isEmpty() ? tr("Graph of the ignition map")
                                 : tr("Graph of the ignition map of %1").arg(profileName);
}

QString MapDescription::describe(const Profile &profile)
{
    return describe(profile, validate(profile));
}

QString MapDescription::describe(const Profile &profile, const MapValidation &validation)
{
    const IgnitionMap &map = profile.map();
    QStringList points;
    int highest = 0;
    for (int i = 0; i < kMapPointCount; ++i) {
        const MapPoint point = map.point(i);
        points << tr("%1 rpm %2°").arg(point.rpm).arg(point.angle);
        if (point.angle > map.point(highest).angle)
            highest = i;
    }
    QString text = tr("Advance angle over engine speed, %n points: %1.", nullptr, kMapPointCount)
                       .arg(points.join(QLatin1String(", ")));
    text += QLatin1Char(' ')
        + tr("Highest advance %1° at %2 rpm.").arg(map.point(highest).angle).arg(map.point(highest).rpm);

    // The graph shades the region above the template's ceiling and draws a point inside it red.
    QStringList faults;
    for (const PointValidation &point : validation.points) {
        const MapPoint value = map.point(point.index);
        if (!point.angleMessage.isEmpty()) {
            // How far past its limit the angle is, where the limit is a number of degrees.
            int limit = -1;
            if (value.angle > kMaxAngle)
                limit = kMaxAngle;
            else if (value.angle >= 0 && point.rpmMessage.isEmpty())
                limit = angleCeiling(profile.sensorCoefficients(), value.rpm);
            QString fault = tr("Row %1: %2").arg(point.index + 1).arg(point.angleMessage);
            if (limit >= 0 && value.angle > limit) {
                const int over = value.angle - limit;
                fault += QLatin1Char(' ')
                    + (over == 1 ? tr("(%1°, one degree too much)").arg(value.angle)
                                 : tr("(%1°, %2 degrees too much)").arg(value.angle).arg(over));
            }
            faults << fault;
        }
        if (!point.rpmMessage.isEmpty())
            faults << tr("Row %1: %2").arg(point.index + 1).arg(point.rpmMessage);
    }
    const QStringList problems = validation.problems();
    if (validation.notAscending && !problems.isEmpty())
        faults << problems.constLast();
    text += QLatin1Char(' ');
    if (faults.isEmpty())
        text += tr("All points are below the limit of this profile.");
    else
        text += tr("Breaking the limits, drawn red: %1.").arg(faults.join(QLatin1String("; ")));
    return text;
}
