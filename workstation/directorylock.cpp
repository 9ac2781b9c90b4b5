#include "workstation/directorylock.h"

#include <QCoreApplication>
#include <QDir>
#include <QSysInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

/// A number is given to other processes in time, and in a container each has the same. The system's own lock
/// ends with its process, whatever stands in the file.
void removeWhenDead(const QString& path) {
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    if (handle < 0)
        return;
    if (::flock(handle, LOCK_EX | LOCK_NB) == 0)
        ::unlink(QFile::encodeName(path).constData());
    ::close(handle);
}

} // namespace

std::unique_ptr<QLockFile> TakeLockOfEnded(const QString& path) {
    auto lock = std::make_unique<QLockFile>(path);
    lock->setStaleLockTime(0); // a window may be open for weeks
    if (lock->tryLock())
        return lock;
    qint64 process = 0;
    QString host;
    QString program;
    if (lock->error() == QLockFile::LockFailedError && lock->getLockInfo(&process, &host, &program) &&
        host == QSysInfo::machineHostName())
        removeWhenDead(path);
    return lock->tryLock() ? std::move(lock) : nullptr;
}

DirectoryLock::DirectoryLock(const QString& directory) {
    const QString path = QDir(directory).filePath(QStringLiteral("freqstore.lock"));
    m_file = TakeLockOfEnded(path);
    if (m_file)
        return;
    const QLockFile other(path);
    qint64 process = 0;
    QString host;
    QString program;
    if (!other.getLockInfo(&process, &host, &program))
        return; // the directory takes no file
    const QString number = QString::number(process);
    m_other = host == QSysInfo::machineHostName()
                  ? QCoreApplication::translate("DirectoryLock", "%1 (process %2)").arg(program, number)
                  : QCoreApplication::translate("DirectoryLock", "%1 (process %2 on %3)")
                        .arg(program, number, host);
}
