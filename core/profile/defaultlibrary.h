#pragma once

#include "profile/fileerror.h"
#include "profile/profile.h"

#include <QByteArray>

#include <vector>

class QIODevice;

// The factory templates shipped as "default.cds", one per motorbike type, in file order.
class DefaultLibrary
{
public:
    qint32 libraryValue() const { return m_libraryValue; }
    void setLibraryValue(qint32 value) { m_libraryValue = value; }

    int count() const { return int(m_profiles.size()); }
    const std::vector<Profile> &profiles() const { return m_profiles; }
    void append(const Profile &profile) { m_profiles.push_back(profile); }

    // Null when the position is out of range.
    const Profile *profileAt(int position) const;
    // The first profile of that motorbike type, or null.
    const Profile *profileForType(qint32 motorbikeType) const;

private:
    qint32 m_libraryValue = 0;
    std::vector<Profile> m_profiles;
};

// The header record starts with this text.
extern const char kLibraryMagic[];
// Written as the header's second value; readers do not check it.
constexpr qint32 kLibraryFormat = 1;

// Damaged when the container, the header or any profile record is broken. The normal-start flag
// is accepted for the start-up code's sake and does not change how the file is read.
tl::expected<DefaultLibrary, FileError> loadDefaultLibrary(QIODevice &in, bool normalStart = true);
QByteArray defaultLibraryBytes(const DefaultLibrary &library);
