#include "workstation/versions.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"

#include <QDir>

Versions::Versions(const QString& dataFolder)
    : m_store(QDir(dataFolder).absoluteFilePath(QLatin1String(FileVersions::FolderName))),
      m_before(REPORTGENERATOR::SetWriteGuard(this)) {}

Versions::~Versions() {
    REPORTGENERATOR::SetWriteGuard(m_before);
}

Versions::Answer Versions::FileIsChanged(const QString& path) {
    const LongWork::Standstill standstill; // while the operator is asked
    return m_question ? m_question(path) : Answer::WriteBeside;
}

void Versions::Replacing(const QString& path, const QString& aside) {
    keep(path, -1);
    if (m_follower)
        m_follower(path, aside);
}

void Versions::Unchanged(const QString& path) {
    if (m_follower)
        m_follower(path, path);
}

void Versions::Replaced(const QString& path, qint64 entries) {
    keep(path, entries);
}

void Versions::keep(const QString& path, qint64 entries) {
    if (Pause::count > 0)
        return;
    try {
        m_store.Keep(path, entries);
        m_told.clear();
    } catch (const RGException& exception) {
        if (std::exchange(m_told, exception.GetErrorText()) != m_told)
            Problems::Report("versions", Problem::FromText(m_told));
    }
}
