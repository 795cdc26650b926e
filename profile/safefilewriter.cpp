#include "profile/safefilewriter.h"

#include <QFileInfo>
#include <QSaveFile>

namespace {

// A file without any write permission bit counts as read-only even for a superuser, who could
// replace it: the user marked it so on purpose.
bool isReadOnly(const QFileInfo &info)
{
    const QFile::Permissions writeBits = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return !info.isWritable() || !(info.permissions() & writeBits);
}

} // namespace

FileWriteError writeFileSafely(const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    const bool existed = info.exists();
    if (existed && (info.isDir() || isReadOnly(info)))
        return FileWriteError::CannotOverwrite;

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return existed ? FileWriteError::CannotOverwrite : FileWriteError::CannotWrite;
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return FileWriteError::CannotWrite;
    }
    if (!file.commit())
        return existed ? FileWriteError::CannotOverwrite : FileWriteError::CannotWrite;
    if (!QFileInfo::exists(path))
        return FileWriteError::MissingAfterWrite;
    return FileWriteError::None;
}
