#pragma once

#include <QString>

namespace REPORTGENERATOR {

/// What a program sets around the files that OutputFile replaces: it is asked about a file that another
/// program has changed, and sees what goes and what comes. Without a guard such a file is kept, and the new
/// one written beside it.
class WriteGuard {
public:
    enum class Answer {
        WriteBeside,
        Replace, ///< what stands there is given up
        Cancel,  ///< nothing is written
    };

    virtual ~WriteGuard() = default;
    /// The file differs from what this process has read or written. A dialog may be shown: the new content is
    /// complete and aside.
    virtual Answer FileIsChanged(const QString& path) = 0;
    /// The file, which need not be there, is about to be replaced by the one `aside`. That one is complete
    /// and on the disk, and keeps its time when it takes the place.
    virtual void Replacing(const QString& path, const QString& aside) = 0;
    /// The file, which is on the disk, holds the new content already and is left alone.
    virtual void Unchanged(const QString& path) = 0;
    /// The file has its new content, with so many entries; -1 when the writer does not count.
    virtual void Replaced(const QString& path, qint64 entries) = 0;
};

/// The guard is not owned; null takes it away. Returns the one before.
WriteGuard* SetWriteGuard(WriteGuard* guard);

} // namespace REPORTGENERATOR
