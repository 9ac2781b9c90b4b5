#include "controls/frequencystore/listviewshandler/linewriter.h"

namespace {

constexpr qsizetype FlushAt = 1 << 16;

} // namespace

LineWriter::LineWriter(const QString& path)
    : m_file(path),
      m_encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom),
      m_good(m_file.open(QIODevice::WriteOnly)) {
    m_buffer.reserve(2 * FlushAt);
}

void LineWriter::Append(const QString& line) {
    m_buffer += line;
    m_buffer += QLatin1Char('\n');
    if (m_buffer.size() >= FlushAt)
        flush();
}

void LineWriter::flush() {
    const QByteArray bytes = m_encoder.encode(m_buffer);
    m_good = m_good && m_file.write(bytes) == bytes.size();
    m_buffer.resize(0);
}

bool LineWriter::Commit() {
    flush();
    return m_good && m_file.commit();
}
