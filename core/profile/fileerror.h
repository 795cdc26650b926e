#pragma once

#include <QString>

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
