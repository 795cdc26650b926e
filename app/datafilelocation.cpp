#include "app/datafilelocation.h"

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

QString locateDataFile(const QString &fileName)
{
    if (QFileInfo::exists(fileName))
        return fileName;
    const QString programDirectory = executableDirectory();
    if (programDirectory.isEmpty())
        return fileName;
    const QDir beside(programDirectory);
    for (const QString &candidate : {beside.filePath(fileName),
             beside.filePath(QStringLiteral(SPARKWRIGHT_DATA_FROM_BIN "/") + fileName)}) {
        if (QFileInfo::exists(candidate))
            return QDir::cleanPath(candidate);
    }
    return fileName;
}
