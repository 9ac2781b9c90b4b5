#include "workstation/directorylock.h"

#include <QCoreApplication>
#include <QDir>
#include <QSysInfo>

DirectoryLock::DirectoryLock(const QString& directory)
    : m_file(QDir(directory).filePath(QStringLiteral("freqstore.lock"))) {
    m_file.setStaleLockTime(0); // a window may be open for weeks
    if (m_file.tryLock() || m_file.error() != QLockFile::LockFailedError)
        return;
    qint64 process = 0;
    QString host;
    QString program;
    m_file.getLockInfo(&process, &host, &program);
    const QString number = QString::number(process);
    m_other = host == QSysInfo::machineHostName()
                  ? QCoreApplication::translate("DirectoryLock", "%1 (process %2)").arg(program, number)
                  : QCoreApplication::translate("DirectoryLock", "%1 (process %2 on %3)")
                        .arg(program, number, host);
}
