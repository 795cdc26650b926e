#include "dialogs/cupdater.h"

#include <QDir>
#include <QEventLoop>
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

// pkexec asks for the administrator's password; setsid --fork then leaves the updater running on
// its own and ends, so that pkexec's end tells whether the updater was started.
const QStringList CUpdater::kElevation {
    QStringLiteral("pkexec"), QStringLiteral("setsid"), QStringLiteral("--fork")};

namespace {

QString refused()
{
    return CUpdater::tr("the request for administrator rights was refused");
}

} // namespace

QString CUpdater::updaterPath(const QString &programDirectory)
{
    QString path = programDirectory;
    if (!path.endsWith(QLatin1Char('/')) && !path.endsWith(QLatin1Char('\\')))
        path += QDir::separator();
    return path + QLatin1String(kUpdaterName);
}

QString CUpdater::launch(
    const QString &programDirectory, const QByteArray &manifest, const QStringList &elevation)
{
    const QString path = updaterPath(programDirectory);
    if (!QFileInfo::exists(path))
        return tr("file is inaccessible") + QLatin1String(": ") + path;

#ifdef Q_OS_WIN
    Q_UNUSED(elevation)
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
        return refused();
    case ERROR_BAD_FORMAT:
        return tr("the updater is not a program for this system");
    default:
        return result > 31 ? QString() : tr("Windows refused to start it (error %1)").arg(qint64(result));
    }
#else
    QProcess elevated;
    elevated.setProgram(elevation.value(0));
    elevated.setArguments(elevation.mid(1) << path << QString::fromUtf8(manifest));
    // The user answers the password prompt meanwhile; the windows are still drawn, but take no
    // input, so that Update cannot be chosen twice.
    QEventLoop answered;
    QObject::connect(&elevated, &QProcess::errorOccurred, &answered, &QEventLoop::quit);
    QObject::connect(
        &elevated, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &answered, &QEventLoop::quit);
    elevated.start();
    if (elevated.state() != QProcess::NotRunning)
        answered.exec(QEventLoop::ExcludeUserInputEvents);
    if (elevated.error() == QProcess::FailedToStart)
        return tr("%1 could not be started: %2").arg(elevated.program(), elevated.errorString());
    if (elevated.exitStatus() == QProcess::CrashExit)
        return tr("%1 stopped unexpectedly").arg(elevated.program());
    switch (elevated.exitCode()) {
    case 0:
        return QString();
    case 126:
        return refused();
    case 127:
        return tr("administrator rights were not granted");
    default:
        return tr("%1 ended with exit status %2").arg(elevated.program()).arg(elevated.exitCode());
    }
#endif
}
