#include "profile/safefilewriter.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <optional>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

// A file without any write permission bit counts as read-only even for a superuser, who could
// replace it: the user marked it so on purpose.
bool isReadOnly(const QFileInfo &info)
{
    const QFile::Permissions writeBits = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return !info.isWritable() || !(info.permissions() & writeBits);
}

FileError failureOf(const QSaveFile &file, FileError::Kind otherwise)
{
    // Qt reports a full disk (ENOSPC, and a full quota with it) as a resource error.
    const FileError::Kind kind
        = file.error() == QFileDevice::ResourceError ? FileError::Kind::NoSpace : otherwise;
    return {kind, file.errorString()};
}

FileError systemFailure(int error)
{
#ifdef EDQUOT
    const bool full = error == ENOSPC || error == EDQUOT;
#else
    const bool full = error == ENOSPC;
#endif
    return {full ? FileError::Kind::NoSpace : FileError::Kind::WriteFailed,
        QString::fromLocal8Bit(std::strerror(error))};
}

// Straight to the file, past Qt's buffer, so that each failure is seen with the system's reason
// ("No space left on device", "File too large").
std::optional<FileError> writeAll(QSaveFile &file, const QByteArray &bytes)
{
#ifdef Q_OS_WIN
    if (file.write(bytes) == bytes.size() && file.flush())
        return std::nullopt;
    return failureOf(file, FileError::Kind::WriteFailed);
#else
    const char *data = bytes.constData();
    qint64 left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(file.handle(), data, size_t(left));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return systemFailure(written < 0 ? errno : ENOSPC);
        data += written;
        left -= written;
    }
    return std::nullopt;
#endif
}

// The bytes on the disk, not only in the system's cache; a full disk may show only here.
std::optional<FileError> syncToDisk(QSaveFile &file)
{
#ifdef Q_OS_WIN
    if (::_commit(file.handle()) == 0)
        return std::nullopt;
#else
    if (::fsync(file.handle()) == 0)
        return std::nullopt;
#endif
    return systemFailure(errno);
}

} // namespace

tl::expected<void, FileError> checkWritable(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && (info.isDir() || isReadOnly(info)))
        return tl::make_unexpected(FileError {FileError::Kind::Refused, QString()});
    // The new file is made beside the target, so the folder must take one.
    const QFileInfo folder(info.absolutePath());
    if (!folder.isDir() || !folder.isWritable())
        return tl::make_unexpected(FileError {FileError::Kind::Refused, folder.filePath()});
    return {};
}

tl::expected<void, FileError> writeFileSafely(const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    if (info.exists() && (info.isDir() || isReadOnly(info)))
        return tl::make_unexpected(FileError {FileError::Kind::Refused, QString()});

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return tl::make_unexpected(failureOf(file, FileError::Kind::Refused));
    // Qt would keep small writes in its buffer, and committing does not tell whether emptying it
    // failed: write and check first, then make sure the bytes are on the disk before the new
    // file takes the old one's place.
    std::optional<FileError> error = writeAll(file, bytes);
    if (!error)
        error = syncToDisk(file);
    if (error) {
        file.cancelWriting();
        return tl::make_unexpected(*error);
    }
    if (!file.commit())
        return tl::make_unexpected(failureOf(file, FileError::Kind::WriteFailed));
    return {};
}
