#pragma once

#include <QString>

#include <optional>
#include <sys/types.h>

/// What this process knows of the files that it has read or written, so that a writer sees when another
/// program has changed one of them since. To be used from one thread, like the problems of readers.
namespace FileStamps {

/// Notes the file, as it stands now, as read or written by this process.
void NoteRead(const QString& path);
/// Whether the file's content differs from what this process knows of it; false for a file that it never
/// read, and for one that has gone.
[[nodiscard]] bool IsChanged(const QString& path);
/// Whether `copy` holds what this process knows of `path`, whatever stands there now: a writer with nothing
/// new.
[[nodiscard]] bool IsKnown(const QString& path, const QString& copy);
/// Notes the content of `copy`, which stands beside the file, as what this process knows of `path`.
void NoteBeside(const QString& path, const QString& copy);
/// Forgets all files, as a program does that begins anew within its process.
void ForgetAll();

/// What tells one state of a file from another without reading it.
struct State {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    qint64 modified = 0; ///< nanoseconds since 1970

    bool operator==(const State&) const = default;
    /// Nothing when there is no such file.
    [[nodiscard]] static std::optional<State> Of(const QString& path);
};

/// One reading of a file; it begins before the file is opened. A file that changes meanwhile is told as a
/// problem, at the end of the object at the latest, and counts as changed for writers.
class Reading {
public:
    explicit Reading(const QString& path);
    ~Reading();
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    /// To be called when all was read; notes the file as read. False when it changed meanwhile.
    bool Finish();
    /// Does the same for a file that nobody writes, and does not note it.
    bool Check();

private:
    QString m_path;
    std::optional<State> m_before;
    bool m_checked = false;
};

} // namespace FileStamps
