#pragma once

#include "profile/fileerror.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

// Writes through a temporary file beside the target that replaces it only once every byte is
// known to be on the disk, so that a failed write (a full disk, a cut-off quota) never costs the
// file that was there before.
tl::expected<void, FileError> writeFileSafely(const QString &path, const QByteArray &bytes);

// Whether writeFileSafely may be tried at all: the target is no folder and no read-only file, and
// its folder exists and takes new files. For what should be known before anything else is done.
tl::expected<void, FileError> checkWritable(const QString &path);
