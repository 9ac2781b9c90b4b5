#pragma once

#include "host/base/problems.h"
#include "host/report/rgexception.h"

#include <QString>

#include <memory>
#include <optional>
#include <string>

class QIODevice;

namespace REPORTGENERATOR {

/// Writes a file, whole or not at all: the bytes go to a temporary file, which replaces the old file when it
/// is complete and on the disk. All lists are written so. A link is followed: its target is replaced, or
/// made. The new file has the permissions of the old one. A file that holds the same bytes already is left
/// alone.
///
/// A file that this process has read (see FileStamps) and another program has changed since is kept; the new
/// one is then written beside it, which is told, unless a WriteGuard knows better. Bytes that this process
/// has read from it, or written beside it already, are nothing new: then nothing is written.
///
/// All operations throw RGException "file: reason". Each failure has then been told to the operator, once:
/// whoever catches it has only to trace it. A file that is destroyed without Commit() leaves the old one
/// untouched.
///
/// \code
/// REPORTGENERATOR::OutputFile file(path);
/// REPORTGENERATOR::WriteBytes(file.Device(), path, "7055000\n");
/// file.Commit(); // the old file stands until here
/// \endcode
class OutputFile {
public:
    /// Refuses what is no ordinary file, such as a folder, a device or a pipe, without opening it. Files that
    /// killed processes of this machine left half-written in the folder are removed.
    explicit OutputFile(const QString& fileName);
    ~OutputFile();

    /// Takes the bytes; one that failed once fails at Commit() too.
    QIODevice& Device();
    /// A file that another program has changed is replaced all the same: the operator was asked.
    void ReplaceAnyway() { m_replaceAnyway = true; }
    /// How many entries have been written, for whoever keeps versions of the file.
    void SetEntryCount(qint64 count) { m_entries = count; }
    void Commit();
    /// After Commit(): where the bytes stand, which is the file's own name unless they stand beside it.
    const QString& WrittenName() const { return m_writtenName; }

private:
    class Temporary;

    QString findTarget() const;
    [[noreturn]] void fail(int error) const;
    void check(bool succeeded) const;
    bool keepsChanged();
    void moveBeside();

    QString m_fileName;
    QString m_target; ///< the file itself, behind all links
    QString m_writtenName;
    std::unique_ptr<Temporary> m_temporary;
    bool m_replaceAnyway = false;
    qint64 m_entries = -1;
};

/// The last write of this process that failed, until `ForgetWriteFailure` is called.
const std::optional<Problem>& LastWriteFailure();
void ForgetWriteFailure();

/// The first of "name-2.ext", "name-3.ext", ... in the file's folder that no file has.
QString FreeNameBeside(const QString& fileName);

/// Writes a file with the content of another one. False, told, when that fails.
[[nodiscard]] bool WriteCopy(const QString& from, const QString& fileName);

/// Writes all of the bytes or throws RGException "name: reason".
void WriteBytes(QIODevice& device, const QString& name, QByteArrayView bytes);

} // namespace REPORTGENERATOR
