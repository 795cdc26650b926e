#pragma once

// What the tests of the editor's widgets stand on: maps given as (rpm, angle) pairs, and a
// stand-in for the editor page that records what its children report.
#include "editor/iprofileeditormain.h"
#include "profile/profile.h"

#include <QPair>
#include <QPoint>
#include <QVector>

#include <functional>

using Points = QVector<QPoint>; // (rpm, angle) pairs

inline IgnitionMap mapOf(const Points &points)
{
    IgnitionMap map;
    for (int i = 0; i < points.size(); ++i)
        map.setPoint(i, points[i].x(), points[i].y());
    return map;
}

inline Profile profileOf(const Points &points, const SensorCoefficients &coefficients = {60.0, 0.0, 0.0})
{
    Profile profile;
    profile.setMap(mapOf(points));
    profile.setSensorCoefficients(coefficients);
    profile.setModified(false);
    return profile;
}

// Ten rising points, 1000 to 10000 rpm, 10 to 28 degrees.
inline Points risingPoints()
{
    Points points;
    for (int i = 0; i < kMapPointCount; ++i)
        points << QPoint(1000 * (i + 1), 10 + 2 * i);
    return points;
}

// Remembers what a child reported and, as the page does, has the children show the change.
class RecordingEditor : public IProfileEditorMain
{
public:
    void updateGraph() override { }
    void setProfileName(const QString &) override { }
    void setProfileNotes(const QString &) override { }
    void onMapChanged(bool rescale) override
    {
        mapChanges << rescale;
        if (afterMapChange)
            afterMapChange(rescale);
    }
    void onPointSelected(int index, bool rescale) override
    {
        selections << qMakePair(index, rescale);
        if (afterSelection)
            afterSelection(index, rescale);
    }

    std::function<void(bool rescale)> afterMapChange;
    std::function<void(int index, bool rescale)> afterSelection;
    QVector<bool> mapChanges;
    QVector<QPair<int, bool>> selections;
};
