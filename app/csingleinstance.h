#pragma once

#include <QString>

#include <memory>

class QLockFile;

// Keeps a second copy of the program from starting. The guard is a lock file that records its
// owner's process: a copy that crashed or was killed leaves a lock that the next start sees as
// stale and takes over, so it never locks the program out for good.
class CSingleInstance
{
public:
    static const char kKey[];

    // The lock lies in the given directory; empty means the user's runtime directory, or the
    // temporary directory when there is none.
    explicit CSingleInstance(const QString &directory = QString());
    ~CSingleInstance();

    // False only when another running copy holds the lock. A lock that cannot be created at all
    // (no writable directory) does not stop the program.
    bool acquire();

private:
    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};
