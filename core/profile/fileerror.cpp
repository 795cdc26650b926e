#include "profile/fileerror.h"

#include <QCoreApplication>

namespace {

QString withDetail(const QString &words, const QString &detail)
{
    return detail.isEmpty() ? words : words + QLatin1String(": ") + detail;
}

} // namespace

QString fileErrorText(const FileError &error)
{
    switch (error.kind) {
    case FileError::Kind::Missing:
        return withDetail(QCoreApplication::translate("FileError", "the file does not exist"), error.detail);
    case FileError::Kind::Unreadable:
        return withDetail(
            QCoreApplication::translate("FileError", "the file could not be read"), error.detail);
    case FileError::Kind::Damaged:
        return withDetail(
            QCoreApplication::translate("FileError", "the file is damaged or of another kind"), error.detail);
    case FileError::Kind::Refused:
        return withDetail(QCoreApplication::translate("FileError", "the file may not be written there"),
                   error.detail)
            + QLatin1Char('.');
    case FileError::Kind::NoSpace:
        // The system's own words would only say the same again.
        return QCoreApplication::translate("FileError", "No space left on device") + QLatin1String(". ")
            + QCoreApplication::translate("FileError", "A file that was there before is unchanged.");
    case FileError::Kind::WriteFailed:
        return withDetail(
                   QCoreApplication::translate("FileError", "the file could not be written"), error.detail)
            + QLatin1String(". ")
            + QCoreApplication::translate("FileError", "A file that was there before is unchanged.");
    }
    return QString();
}

tl::expected<void, FileError> openForReading(QFile &file)
{
    if (!file.exists())
        return tl::make_unexpected(FileError {FileError::Kind::Missing, QString()});
    if (!file.open(QIODevice::ReadOnly))
        return tl::make_unexpected(FileError {FileError::Kind::Unreadable, file.errorString()});
    return {};
}
