#include "data/datafilelocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#ifndef SPARKWRIGHT_DATA_FROM_BIN
#define SPARKWRIGHT_DATA_FROM_BIN "../share/sparkwright"
#endif

QString executableDirectory()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    // The version query loads the data files before any application object exists.
    const QFileInfo self(QStringLiteral("/proc/self/exe"));
    return self.exists() ? QFileInfo(self.canonicalFilePath()).absolutePath() : QString();
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
