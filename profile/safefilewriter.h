#pragma once

#include <QByteArray>
#include <QString>

// Why a file could not be written; the main window turns these into its messages.
enum class FileWriteError {
    None,
    CannotOverwrite, // the file exists and may not be replaced
    CannotWrite, // the file could not be created or written
    MissingAfterWrite, // the file was written but is not there afterwards
};

// Writes through a temporary file that replaces the target only when it is complete, so that
// a failed save never destroys the file that was there before.
FileWriteError writeFileSafely(const QString &path, const QByteArray &bytes);
