#include "dialogs/cupdater.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#ifdef Q_OS_WIN
#include <windows.h>

#include <shellapi.h>
#endif

#ifdef Q_OS_WIN
const char CUpdater::kUpdaterName[] = "SparkwrightUpdater.exe";
#else
const char CUpdater::kUpdaterName[] = "SparkwrightUpdater";
#endif

QString CUpdater::updaterPath(const QString &programDirectory)
{
    QString path = programDirectory;
    if (!path.endsWith(QLatin1Char('/')) && !path.endsWith(QLatin1Char('\\')))
        path += QDir::separator();
    return path + QLatin1String(kUpdaterName);
}

QString CUpdater::launch(const QString &programDirectory, const QByteArray &manifest)
{
    const QString path = updaterPath(programDirectory);
    if (!QFileInfo::exists(path))
        return tr("file is inaccessible") + QLatin1String(": ") + path;

#ifdef Q_OS_WIN
    const QByteArray file = QDir::toNativeSeparators(path).toUtf8();
    const INT_PTR result = reinterpret_cast<INT_PTR>(
        ShellExecuteA(nullptr, "runas", file.constData(), manifest.constData(), nullptr, SW_SHOWNORMAL));
    // The shell answers with a number above 31 when the program started; below is its error.
    if (result > 31)
        return QString();
    return tr("error code") + QLatin1Char(' ') + QString::number(qint64(result));
#else
    // pkexec asks for the administrator's password and starts the updater as root. It keeps
    // running after this program has ended, which is what the updater needs.
    QProcess elevated;
    elevated.setProgram(QStringLiteral("pkexec"));
    elevated.setArguments({path, QString::fromUtf8(manifest)});
    qint64 pid = 0;
    if (elevated.startDetached(&pid))
        return QString();
    return tr("error code") + QLatin1Char(' ') + QString::number(int(elevated.error()));
#endif
}
