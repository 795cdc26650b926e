#pragma once

#include <QFile>
#include <QString>

#include <tl/expected.hpp>

// Why a file could not be read or written: a kind that decides the words, and the system's own
// account of what went wrong ("No space left on device"), carried along for the message.
struct FileError
{
    enum class Kind
    {
        Missing, // not there at all
        Unreadable, // there, but could not be opened or read
        Damaged, // read, but not a file of its kind
        Refused, // exists and may not be replaced, or the folder takes no new file
        NoSpace, // the disk or the user's share of it is full
        WriteFailed, // any other failure while writing
    };
    Kind kind;
    QString detail;
};

// The one wording of a file error, for the program's message boxes and the command-line tool
// alike. A failed write always adds that the file that was there before is unchanged.
QString fileErrorText(const FileError &error);

// Every reader's answer to content that is not what it should be; the detail, where there is
// one, says where ("profiles[2].map[3][1]: expected an integer").
inline tl::unexpected<FileError> damagedFile(const QString &detail = QString())
{
    return tl::make_unexpected(FileError {FileError::Kind::Damaged, detail});
}

// Opens the file read-only; a file that is not there is told apart from one that will not open.
tl::expected<void, FileError> openForReading(QFile &file);

// Opens the file at path and hands it to read, which takes a device and answers with the value or
// a FileError, as every reader of the program's files does.
template<typename Read> auto readFileWith(const QString &path, Read read)
{
    QFile file(path);
    const tl::expected<void, FileError> opened = openForReading(file);
    return opened ? read(file) : decltype(read(file))(tl::make_unexpected(opened.error()));
}
