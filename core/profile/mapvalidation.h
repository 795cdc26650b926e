#pragma once

#include "profile/profile.h"

#include <QString>

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
};

// Checks every point against the fixed bounds and the per-rpm ceiling of the curve, and the
// order of the speeds. The messages are translated in the QObject context.
MapValidation validate(const IgnitionMap &map, const SensorCoefficients &coefficients);
MapValidation validate(const Profile &profile);
PointValidation validatePoint(int index, int rpm, int angle, const SensorCoefficients &coefficients);

// The table's sort button: a stable sort by speed.
IgnitionMap sortAscending(const IgnitionMap &map);
