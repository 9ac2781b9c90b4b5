#include "workstation/directorylock.h"

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
    m_other = QStringLiteral("%1 (process %2").arg(program, QString::number(process));
    if (host != QSysInfo::machineHostName())
        m_other += QStringLiteral(" on ") + host;
    m_other += QLatin1Char(')');
}
