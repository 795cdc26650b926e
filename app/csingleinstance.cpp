#include "csingleinstance.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFileSystemWatcher>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTimer>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

const char CSingleInstance::kKey[] = "3f9c27d4-61ab-4e08-9d35-7c1eaa42b6f0";

namespace {

QString defaultDirectory()
{
    // The runtime directory belongs to the user alone and is emptied at logout. Without one the
    // temporary directory is shared by all users, hence the user's name in the lock's name.
    // (Asked for a runtime directory that is not set, Qt would invent one and warn about it.)
    if (qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
        if (!runtime.isEmpty())
            return runtime;
    }
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation);
}

QString lockFileName()
{
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = QDir::home().dirName();
    return QStringLiteral("sparkwright-%1-%2.lock").arg(QLatin1String(CSingleInstance::kKey), user);
}

// The hand-over files: the lock's name, ".open-" and a number. QSaveFile writes each under a
// longer name first and renames it when it is complete, so a file of this name is whole.
QString handOverPrefix(const QString &lockPath)
{
    return QFileInfo(lockPath).fileName() + QLatin1String(".open-");
}

// Watches the lock's folder for hand-over files, reads each once and removes it.
class CHandOverInbox : public QObject
{
public:
    CHandOverInbox(const QString &lockPath, std::function<void(const QString &)> open, QObject *owner)
        : QObject(owner)
        , m_folder(QFileInfo(lockPath).absolutePath())
        , m_prefix(handOverPrefix(lockPath))
        , m_open(std::move(open))
    {
        m_watcher.addPath(m_folder);
        connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &CHandOverInbox::collect);
        // A question or a file dialog is open: the files wait until it is answered.
        m_retry.setSingleShot(true);
        m_retry.setInterval(500);
        connect(&m_retry, &QTimer::timeout, this, &CHandOverInbox::collect);
    }

private:
    void collect()
    {
        const QFileInfoList files = QDir(m_folder).entryInfoList(
            {m_prefix + QLatin1Char('*')}, QDir::Files | QDir::Hidden | QDir::System, QDir::Time | QDir::Reversed);
        for (const QFileInfo &file : files) {
            // Only whole files, and in a folder that other users share only the user's own.
            if (file.fileName().mid(m_prefix.size()).contains(QLatin1Char('.')) || file.isSymLink())
                continue;
#ifdef Q_OS_UNIX
            if (file.ownerId() != ::geteuid())
                continue;
#endif
            if (QApplication::activeModalWidget()) {
                m_retry.start();
                return;
            }
            QFile request(file.filePath());
            const QString path = request.open(QIODevice::ReadOnly) ? QString::fromUtf8(request.read(4096)) : QString();
            request.close();
            request.remove();
            if (!path.isEmpty())
                m_open(path);
        }
    }

    const QString m_folder;
    const QString m_prefix;
    const std::function<void(const QString &)> m_open;
    QFileSystemWatcher m_watcher;
    QTimer m_retry;
};

} // namespace

CSingleInstance::CSingleInstance(const QString &directory)
    : m_path(QDir(directory.isEmpty() ? defaultDirectory() : directory).filePath(lockFileName()))
{ }

CSingleInstance::~CSingleInstance() = default;

bool CSingleInstance::acquire()
{
    m_lock = std::make_unique<QLockFile>(m_path);
    // Only a live owner counts; its age does not, since the program may run for days.
    m_lock->setStaleLockTime(0);
    if (m_lock->tryLock(0))
        return true;
    return m_lock->error() != QLockFile::LockFailedError;
}

bool CSingleInstance::handOver(const QString &filePath) const
{
    static int count = 0;
    const QString name = handOverPrefix(m_path)
        + QStringLiteral("%1-%2-%3")
              .arg(QCoreApplication::applicationPid())
              .arg(QDateTime::currentMSecsSinceEpoch())
              .arg(++count);
    QSaveFile file(QFileInfo(m_path).dir().filePath(name));
    const QByteArray path = QFileInfo(filePath).absoluteFilePath().toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(path) == path.size() && file.commit();
}

void CSingleInstance::receiveHandOvers(QObject *owner, std::function<void(const QString &)> open) const
{
    new CHandOverInbox(m_path, std::move(open), owner); // owned by owner
}
