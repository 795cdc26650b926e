#pragma once

#include "profile/fileerror.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

// Writes through a temporary file beside the target that replaces it only once every byte is
// known to be on the disk, so that a failed write (a full disk, a cut-off quota) never costs the
// file that was there before.
tl::expected<void, FileError> writeFileSafely(const QString &path, const QByteArray &bytes);
