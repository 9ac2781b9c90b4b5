#include "host/report/byteinput.h"

#include "host/base/longwork.h"
#include "host/report/filestamps.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace REPORTGENERATOR {

namespace {
constexpr qsizetype ChunkSize = 256 * 1024;
constexpr qsizetype LargestPiece = 16 * 1024 * 1024;

/// Number of the line ends, LF, CR or both, that begin before `end`; what is known goes on until `last`.
qint64 CountLineEnds(const char* begin, const char* end, const char* last) {
    qint64 count = std::count(begin, end, '\n');
    const std::string_view bytes(begin,
                                 static_cast<std::size_t>(end - begin)); // whose find() is the fast one
    for (std::size_t at = bytes.find('\r'); at != bytes.npos; at = bytes.find('\r', at + 1))
        count += begin + at + 1 == last || begin[at + 1] != '\n' ? 1 : 0;
    return count;
}
} // namespace

QString ErrorText(const QString& name, qint64 line, const QString& reason) {
    QString text = name;
    if (line > 0)
        text += (text.isEmpty() ? QString() : QStringLiteral(":")) + QString::number(line);
    return text.isEmpty() ? reason : text + QStringLiteral(": ") + reason;
}

void OpenForReading(QFile& file) {
    const QFileInfo info(file.fileName());
    if (!info.exists())
        throw RGException(ErrorText(file.fileName(), 0, QStringLiteral("there is no such file")));
    if (!info.isFile())
        throw RGException(ErrorText(file.fileName(), 0, QStringLiteral("this is no ordinary file")));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw RGException(ErrorText(file.fileName(), 0, file.errorString()));
}

void ReadWhole(const QString& fileName, const std::function<void(QFile&)>& read) {
    FileStamps::Reading reading(fileName);
    QFile file(fileName);
    OpenForReading(file);
    read(file);
    reading.Finish();
}

ByteInput::ByteInput(QIODevice& device, const QString& name)
    : m_device(device), m_name(name), m_buffer(ChunkSize, Qt::Uninitialized) {}

std::string_view ByteInput::Rest() const {
    return {m_buffer.constData() + m_begin, static_cast<std::size_t>(m_end - m_begin)};
}

bool ByteInput::More() {
    char* data = m_buffer.data();
    if (m_begin > 0) {
        m_lineEnds += CountLineEnds(data + m_counted, data + m_begin, data + m_end);
        m_counted = 0;
        std::copy(data + m_begin, data + m_end, data);
        m_end -= m_begin;
        m_begin = 0;
    }
    if (m_end == m_buffer.size()) {
        if (m_end >= LargestPiece)
            Fail(QStringLiteral("one piece of text is larger than 16 MiB"));
        m_buffer.resize(m_buffer.size() * 2);
        data = m_buffer.data();
    }
    const qint64 count = m_device.read(data + m_end, m_buffer.size() - m_end);
    if (count < 0)
        Fail(QStringLiteral("cannot be read: ") + m_device.errorString());
    m_end += count;
    if (!m_device.isSequential())
        LongWork::Step(m_device.pos(), m_device.size());
    return count > 0;
}

bool ByteInput::Ensure(std::size_t count) {
    while (Rest().size() < count)
        if (!More())
            return false;
    return true;
}

qint64 ByteInput::Line() const {
    const char* data = m_buffer.constData();
    const qint64 lineEnds = m_lineEnds + CountLineEnds(data + m_counted, data + m_begin, data + m_end);
    // A CR at the very end may turn out to be half of a line end.
    if (m_begin < m_end) {
        m_lineEnds = lineEnds;
        m_counted = m_begin;
    }
    return 1 + lineEnds;
}

void ByteInput::Fail(const QString& reason) const {
    throw RGException(ErrorText(m_name, Line(), reason));
}

} // namespace REPORTGENERATOR
