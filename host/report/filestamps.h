#pragma once

#include <QString>

#include <optional>
#include <sys/types.h>

/// The state of the files that this process has read or written. A writer sees by it that another program has
/// changed a file since. Any thread.
namespace FileStamps {

/// Notes the file, as it stands now, as read or written by this process.
void NoteRead(const QString& path);
/// Whether the file's content differs from what this process knows of it; false for a file that it never
/// read, and for one that has gone.
[[nodiscard]] bool IsChanged(const QString& path);
/// Whether `copy` has the content that this process knows of `path`, whatever `path` holds now. Such a writer
/// has nothing new.
[[nodiscard]] bool IsKnown(const QString& path, const QString& copy);
/// Notes the content of `copy`, which was written beside the file, as the known content of `path`.
void NoteBeside(const QString& path, const QString& copy);
/// Forgets all files; for programs that start again in one process.
void ForgetAll();

/// Tells two states of a file apart without reading it.
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

    /// Call this when all is read: notes the file as read. False when it changed meanwhile, which is told.
    bool Finish();
    /// Does the same for a file that nobody writes, and does not note it.
    bool Check();

private:
    QString m_path;
    std::optional<State> m_before;
    bool m_checked = false;
};

} // namespace FileStamps
