#pragma once

#include "profile/profile.h"
#include "profile/safefilewriter.h"

#include <QByteArray>
#include <QString>

class QIODevice;

// A ".cdi" profile file: a container holding exactly one profile record.
QByteArray profileFileBytes(const Profile &profile);

// Reads the first record of a container as the profile; further records are ignored.
tl::expected<Profile, FileError> readProfileFile(QIODevice &in);
tl::expected<Profile, FileError> readProfileFile(const QString &path);

tl::expected<void, FileError> saveProfileFile(const Profile &profile, const QString &path);
