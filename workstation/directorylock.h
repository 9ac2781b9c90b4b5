#pragma once

#include <QLockFile>

/// Marks a data directory as used by this process, so that a second window knows that it shares it. The mark
/// of a process that has died is taken over.
class DirectoryLock {
public:
    explicit DirectoryLock(const QString& directory);

    /// Who else uses the directory, in words; empty when nobody does, or when that cannot be told.
    QString GetOther() const { return m_other; }

private:
    QLockFile m_file;
    QString m_other;
};
