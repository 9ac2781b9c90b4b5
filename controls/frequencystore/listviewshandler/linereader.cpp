#include "controls/frequencystore/listviewshandler/linereader.h"

#include "host/base/trace.h"

#include <QFileInfo>

namespace {

constexpr char TraceSource[] = "listviewshandler";
constexpr qint64 ChunkBytes = 512 * 1024;

bool isControl(QChar c) {
    return c.unicode() < 0x20 && c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r') &&
           c != QLatin1Char('\f');
}

} // namespace

QString RefuseToOpen(QFile& file, qint64 maxSize) {
    const QFileInfo info(file.fileName());
    if (!info.exists())
        return QStringLiteral("no such file");
    if (!info.isFile())
        return QStringLiteral("is no regular file");
    if (maxSize > 0 && info.size() > maxSize)
        return QStringLiteral("is too large");
    return file.open(QIODevice::ReadOnly) ? QString() : file.errorString();
}

bool TellRefusal(unsigned short sourceLine, const Problem& refusal) {
    TraceLazily(TraceSource, sourceLine,
                [&] { return QStringLiteral("File cannot be opened: ") + refusal.file; });
    Problems::Report(TraceSource, sourceLine, refusal);
    return false;
}

LineReader::LineReader(QIODevice& device, const QString& fileName)
    : m_device(device), m_problems(fileName, TraceSource, 903) {
    const QByteArray head = device.peek(4);
    m_decoder = Decoder(QStringConverter::encodingForData(head).value_or(QStringConverter::System));
}

/// Appends one decoded chunk to what is left of the buffer; false at the end of the file.
bool LineReader::readMore() {
    m_buffer.remove(0, m_position);
    m_position = 0;
    const QByteArray bytes = m_device.read(ChunkBytes);
    if (bytes.isEmpty()) {
        if (!std::exchange(m_atEnd, true) && m_decoder.IsWithinCharacter())
            m_problems.ReportAlways(m_lineNumber + 1, QStringLiteral("file ends within a character"));
        return false;
    }
    const qsizetype known = m_buffer.size();
    m_buffer += m_decoder.decode(bytes);
    if (m_decoder.hasError() && m_badLine == 0) {
        const QStringView good =
            QStringView(m_buffer).left(m_buffer.indexOf(QChar(QChar::ReplacementCharacter), known));
        m_badLine = m_lineNumber + 1 + good.count(QLatin1Char('\n'));
        if (m_isText)
            m_problems.ReportAlways(m_badLine, QStringLiteral("text is not well encoded from here on"));
    }
    return true;
}

std::optional<Problem> LineReader::RefuseContent() {
    readMore();
    m_isText = true;
    if (m_badLine > 0)
        return Problem{m_problems.FileName(), m_badLine, QStringLiteral("is not well encoded text")};
    const auto control = std::find_if(m_buffer.cbegin(), m_buffer.cend(), isControl);
    if (control == m_buffer.cend())
        return std::nullopt;
    return Problem{m_problems.FileName(), 1 + std::count(m_buffer.cbegin(), control, QLatin1Char('\n')),
                   QStringLiteral("is no text file")};
}

bool LineReader::Next(QStringView& line) {
    qsizetype end = m_buffer.indexOf(QLatin1Char('\n'), m_position);
    bool tooLong = false;
    while (end < 0 && !m_atEnd) {
        qsizetype kept = m_buffer.size() - m_position;
        if (kept > MaxLine) {
            // Keep the head of the line only, so that a file without line ends takes no memory.
            m_buffer.truncate(m_position + MaxLine);
            kept = MaxLine;
            tooLong = true;
        }
        readMore();
        end = m_buffer.indexOf(QLatin1Char('\n'), m_position + kept);
    }
    if (end < 0 && m_position >= m_buffer.size())
        return false;
    const qsizetype next = end < 0 ? m_buffer.size() : end + 1;
    if (end < 0)
        end = m_buffer.size();
    line = QStringView(m_buffer).mid(m_position, std::min(end - m_position, MaxLine));
    tooLong = tooLong || end - m_position > MaxLine;
    if (line.endsWith(QLatin1Char('\r')))
        line.chop(1);
    m_position = next;
    ++m_lineNumber;
    if (tooLong)
        ReportProblem(QStringLiteral("line is too long; its end is ignored"));
    return true;
}
