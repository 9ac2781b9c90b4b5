#pragma once

#include <QLockFile>

#include <memory>

/// Marks a directory as used by this process, so that a second window knows that it shares it. The mark of a
/// process that has died is taken over.
class DirectoryLock {
public:
    explicit DirectoryLock(const QString& directory);

    /// Who else uses the directory, in words; empty when nobody does, or when that cannot be told.
    QString GetOther() const { return m_other; }

private:
    std::unique_ptr<QLockFile> m_file; ///< null when another process has it
    QString m_other;
};

/// Takes over the lock file of a process that has ended, or one that is not there; null while its process
/// lives, or when the file cannot be made.
std::unique_ptr<QLockFile> TakeLockOfEnded(const QString& path);
