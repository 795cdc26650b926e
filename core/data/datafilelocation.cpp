#include "data/datafilelocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <windows.h>

#include <iterator>
#endif

#ifndef SPARKWRIGHT_DATA_FROM_BIN
#define SPARKWRIGHT_DATA_FROM_BIN "../share/sparkwright"
#endif

QString executableDirectory()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    // The version query loads the data files before any application object exists.
#ifdef Q_OS_WIN
    wchar_t path[32768];
    const DWORD length = ::GetModuleFileNameW(nullptr, path, DWORD(std::size(path)));
    if (length == 0 || length >= std::size(path))
        return QString();
    return QFileInfo(QDir::fromNativeSeparators(QString::fromWCharArray(path, int(length)))).absolutePath();
#else
    const QFileInfo self(QStringLiteral("/proc/self/exe"));
    return self.exists() ? QFileInfo(self.canonicalFilePath()).absolutePath() : QString();
#endif
}

QString locateDataFile(const QString &fileName, const QString &programDirectory)
{
    // Without a folder of its own the program has no data files at all; a relative name here
    // would again mean the working directory.
    if (programDirectory.isEmpty())
        return QString();
    const QDir beside(QFileInfo(programDirectory).absoluteFilePath());
    const QString besideProgram = QDir::cleanPath(beside.filePath(fileName));
    const QString installed
        = QDir::cleanPath(beside.filePath(QStringLiteral(SPARKWRIGHT_DATA_FROM_BIN "/") + fileName));
    if (!QFileInfo::exists(besideProgram) && QFileInfo::exists(installed))
        return installed;
    return besideProgram;
}
