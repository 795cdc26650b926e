#pragma once

#include "profile/profile.h"

#include <QString>
#include <QStringList>

#include <array>

// What is wrong with one point of a map; both messages empty when the point is fine.
struct PointValidation
{
    int index = 0;
    QString rpmMessage;
    QString angleMessage;

    bool isValid() const { return rpmMessage.isEmpty() && angleMessage.isEmpty(); }
};

// The checker's verdict on a whole map: one entry per point plus the not-ascending flag.
struct MapValidation
{
    MapValidation();

    std::array<PointValidation, kMapPointCount> points;
    bool notAscending = false;

    bool hasErrors() const;
    // Every problem in words, in row order, the order of the speeds last; empty for a valid map.
    QStringList problems() const;
    // The message for one cell of the map (column 0 the speed, 1 the angle); empty when it is
    // fine. A speed out of order carries the order's message.
    QString cellMessage(int row, int column, const IgnitionMap &map) const;
};

// Checks every point against the fixed bounds and the per-rpm ceiling of the curve, and the
// order of the speeds. The messages are translated in the QObject context.
MapValidation validate(const IgnitionMap &map, const SensorCoefficients &coefficients);
MapValidation validate(const Profile &profile);
PointValidation validatePoint(int index, int rpm, int angle, const SensorCoefficients &coefficients);

// The table's sort button: a stable sort by speed.
IgnitionMap sortAscending(const IgnitionMap &map);
