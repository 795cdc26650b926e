#include "csingleinstance.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

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
