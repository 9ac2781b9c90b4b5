#pragma once

#include "host/report/rgexception.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <string_view>

class QFile;
class QIODevice;

namespace REPORTGENERATOR {

/// Opens a file for reading; throws RGException when it is no ordinary file (a device would never end) or
/// cannot be opened.
void OpenForReading(QFile& file);

/// Opens a file as above and has `read` read all of it; the file counts then as known to this process (see
/// FileStamps), and one that changes meanwhile is told. What `read` throws passes through.
void ReadWhole(const QString& fileName, const std::function<void(QFile&)>& read);

/// The bytes of a device as a window that readers move forward and widen to the end of the piece they work
/// on, so that a file of any size is read in bounded memory. The device is the caller's. Knows the line for
/// error texts. A piece larger than 16 MiB is an error.
class ByteInput {
public:
    /// `name` stands for the device in error texts.
    ByteInput(QIODevice& device, const QString& name);

    /// The bytes read and not yet skipped; valid until More() is called.
    std::string_view Rest() const;
    /// Adds bytes behind Rest(), which may move; false at the end of the device.
    [[nodiscard]] bool More();
    void Skip(std::size_t count) { m_begin += static_cast<qsizetype>(count); }
    /// Widens Rest() to `count` bytes if the device has them.
    [[nodiscard]] bool Ensure(std::size_t count);

    /// Number of the line at which Rest() begins, from 1.
    qint64 Line() const;
    /// Throws an RGException that names the file and the current line.
    [[noreturn]] void Fail(const QString& reason) const;

private:
    QIODevice& m_device;
    QString m_name;
    QByteArray m_buffer;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
    mutable qint64 m_lineEnds = 0;   ///< before `m_counted`
    mutable qsizetype m_counted = 0; ///< place in the buffer up to which line ends are counted
};

/// "file:line: reason", without the parts that are not known (an empty name, a line of 0).
QString ErrorText(const QString& name, qint64 line, const QString& reason);

} // namespace REPORTGENERATOR
