#pragma once

#include <QCoreApplication>
#include <QString>

class Profile;
struct MapValidation;

// What a drawn map says to someone who cannot see it: the ten points, the highest advance and
// where, and each point that breaks a limit, in the checker's words and by how much. Screen
// readers get it as the graph's description; it is plain text, without markup.
class MapDescription
{
    Q_DECLARE_TR_FUNCTIONS(MapDescription)

public:
    // The graph's name where it shows one profile read-only (the template preview, the
    // confirmation page).
    static QString graphName(const QString &profileName);
    // Checks the profile itself.
    static QString describe(const Profile &profile);
    // With the verdict the caller already has.
    static QString describe(const Profile &profile, const MapValidation &validation);
};
