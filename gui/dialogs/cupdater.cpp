#include "dialogs/cupdater.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#ifdef Q_OS_WIN
#include <windows.h>

#include <shellapi.h>
#endif

const char CUpdater::kUpdaterName[] = "SparkwrightUpdater.exe";

namespace {

// The program's AppStream identity, as in its metainfo file.
const char kAppStreamId[] = "example.sparkwright.Sparkwright";
const char kSoftwareCentreScheme[] = "x-scheme-handler/appstream";

} // namespace

QString CUpdater::updaterPath(const QString &programDirectory)
{
    QString path = programDirectory;
    if (!path.endsWith(QLatin1Char('/')) && !path.endsWith(QLatin1Char('\\')))
        path += QDir::separator();
    return path + QLatin1String(kUpdaterName);
}

#ifdef Q_OS_WIN
QString CUpdater::launch(const QString &programDirectory, const QByteArray &manifest)
{
    const QString path = updaterPath(programDirectory);
    if (!QFileInfo::exists(path))
        return tr("file is inaccessible") + QLatin1String(": ") + path;

    const QByteArray file = QDir::toNativeSeparators(path).toUtf8();
    const INT_PTR result = reinterpret_cast<INT_PTR>(
        ShellExecuteA(nullptr, "runas", file.constData(), manifest.constData(), nullptr, SW_SHOWNORMAL));
    // The shell answers with a number above 31 when the program started; below is its error.
    switch (result) {
    case 0:
    case SE_ERR_OOM:
        return tr("not enough memory");
    case SE_ERR_FNF:
    case SE_ERR_PNF:
        return tr("file is inaccessible") + QLatin1String(": ") + path;
    case SE_ERR_ACCESSDENIED:
        return tr("the request for administrator rights was refused");
    case ERROR_BAD_FORMAT:
        return tr("the updater is not a program for this system");
    default:
        return result > 31 ? QString() : tr("Windows refused to start it (error %1)").arg(qint64(result));
    }
}
#endif

QString CUpdater::packageManagerNotice()
{
    return tr("On this system Sparkwright is updated by the package manager, together with the rest "
              "of the system (for example with \"sudo apt update && sudo apt upgrade\" in a terminal). "
              "A software centre shows when an update is ready.");
}

QUrl CUpdater::softwareCentrePage()
{
    // Without "//": the identity is not a host name, and its case counts.
    return QUrl(QLatin1String("appstream:") + QLatin1String(kAppStreamId));
}

QStringList CUpdater::desktopDataFolders()
{
    return QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
}

bool CUpdater::hasSoftwareCentre(const QStringList &dataFolders)
{
    for (const QString &folder : dataFolders) {
        QDirIterator entries(QDir(folder).filePath(QStringLiteral("applications")),
            {QStringLiteral("*.desktop")}, QDir::Files | QDir::Readable, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            QFile entry(entries.next());
            if (!entry.open(QIODevice::ReadOnly))
                continue;
            // Desktop entries are small; a MimeType line names the link kinds the application opens.
            const QList<QByteArray> lines = entry.read(64 * 1024).split('\n');
            for (const QByteArray &line : lines) {
                if (line.startsWith("MimeType=") && line.contains(kSoftwareCentreScheme))
                    return true;
            }
        }
    }
    return false;
}
