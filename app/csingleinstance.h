#pragma once

#include <QString>

#include <functional>
#include <memory>

class QLockFile;
class QObject;

// Keeps a second copy of the program from starting. The guard is a lock file that records its
// owner's process: a copy that crashed or was killed leaves a lock that the next start sees as
// stale and takes over, so it never locks the program out for good. A second copy started for a
// profile file (a double click on a .cdi file) leaves the file's path beside the lock, and the
// running copy opens it.
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

    // The second copy: leaves the file for the running copy. False when it could not be left.
    bool handOver(const QString &filePath) const;
    // The running copy: each file handed over from now on goes to open, one at a time and never
    // while a dialog waits for the user. The watch ends with owner.
    void receiveHandOvers(QObject *owner, std::function<void(const QString &)> open) const;

private:
    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};
