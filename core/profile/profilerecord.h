#pragma once

#include "profile/fileerror.h"
#include "profile/profile.h"

#include <QByteArray>

// The record format version this program writes; readers take any version above 0 with this layout.
constexpr qint32 kRecordVersion = 1;

// Appends the profile as one tagged record.
void writeRecord(const Profile &profile, QByteArray &out);

// Reads one record into a fresh profile; damaged when any item fails. The result is not modified.
tl::expected<Profile, FileError> readRecord(const QByteArray &record);
