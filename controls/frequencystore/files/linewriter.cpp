#include "controls/frequencystore/files/linewriter.h"

namespace {

constexpr qsizetype FlushAt = 1 << 16;

} // namespace

LineWriter::LineWriter(const QString& path)
    : m_path(path), m_file(path), m_encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom) {
    m_buffer.reserve(2 * FlushAt);
}

void LineWriter::Append(const QString& line) {
    m_lines += line.isEmpty() ? 0 : 1;
    m_buffer += line;
    m_buffer += QLatin1Char('\n');
    if (m_buffer.size() >= FlushAt)
        flush();
}

void LineWriter::flush() {
    const QByteArray bytes = m_encoder.encode(m_buffer);
    REPORTGENERATOR::WriteBytes(m_file.Device(), m_path, bytes);
    m_buffer.resize(0);
}

void LineWriter::Commit() {
    flush();
    m_file.SetEntryCount(m_lines);
    m_file.Commit();
}
