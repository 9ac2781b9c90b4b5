#include "controls/frequencystore/files/linereader.h"

#include "host/base/trace.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

constexpr char TraceSource[] = "listviewshandler";
constexpr qint64 ChunkBytes = 512 * 1024;
constexpr QChar EndOfText(0x1A); ///< Ctrl-Z, which old systems put at the end

FileProblems problemsOf(const QString& fileName, LineReader::Telling telling) {
    return telling == LineReader::Telling::Nothing ? FileProblems(fileName)
                                                   : FileProblems(fileName, TraceSource);
}

} // namespace

QString RefuseToOpen(QFile& file, qint64 maxSize) {
    const QFileInfo info(file.fileName());
    if (!info.exists())
        return QCoreApplication::translate("Readers", "no such file");
    if (!info.isFile())
        return QCoreApplication::translate("Readers", "is no regular file");
    if (maxSize > 0 && info.size() > maxSize)
        return QCoreApplication::translate("Readers", "is too large");
    return file.open(QIODevice::ReadOnly) ? QString() : file.errorString();
}

bool TellRefusal(TracePlace place, const Problem& refusal) {
    TraceLazily(place, [&] { return QStringLiteral("File cannot be opened: ") + refusal.file; });
    Problems::Report(place, refusal);
    return false;
}

LineReader::LineReader(QIODevice& device, const QString& fileName, Telling telling)
    : m_device(device),
      m_problems(problemsOf(fileName, telling)),
      m_form(LookAtText(device)),
      m_decoder(m_form.encoding) {}

std::optional<Problem> LineReader::RefuseContent() {
    if (!m_form.refusal.isEmpty())
        return Problem{m_problems.FileName(), m_form.refusalLine, m_form.refusal};
    if (const QString remark = m_form.Remark(); !remark.isEmpty())
        m_problems.ReportAlways(m_form.foreignLine, remark);
    return std::nullopt;
}

/// Appends one decoded chunk to what is left of the buffer; false at the end of the file.
bool LineReader::readMore() {
    m_buffer.remove(0, m_position);
    m_position = 0;
    m_nextLineFeed = m_nextReturn = -1;
    QByteArray bytes(ChunkBytes, Qt::Uninitialized);
    const qint64 count = m_device.read(bytes.data(), ChunkBytes);
    bytes.truncate(std::max<qint64>(count, 0));
    if (count < 0)
        m_problems.ReportAlways(m_lineNumber + 1,
                                QCoreApplication::translate("Readers", "cannot be read on: ") +
                                    m_device.errorString());
    if (bytes.isEmpty()) {
        if (!std::exchange(m_atEnd, true))
            finish();
        return false;
    }
    const qsizetype known = m_buffer.size();
    m_decoder.Append(m_buffer, bytes);
    const QStringView added = QStringView(m_buffer).mid(known);
    m_hasControls = m_hasControls || std::any_of(added.begin(), added.end(), IsStrayControl);
    if (m_decoder.HasError() && !std::exchange(m_errorTold, true)) {
        const qsizetype bad = m_buffer.indexOf(QChar(QChar::ReplacementCharacter), known);
        m_problems.ReportAlways(
            m_lineNumber + 1 + CountLineEnds(QStringView(m_buffer).left(bad)),
            QCoreApplication::translate("Readers", "text is not well encoded from here on"));
    }
    return true;
}

/// Nothing more comes: what is in the buffer is the end of the text.
void LineReader::finish() {
    for (; m_buffer.endsWith(EndOfText); m_endTold = true)
        m_buffer.chop(1);
    if (m_decoder.IsWithinCharacter()) {
        m_problems.ReportAlways(m_lineNumber + 1,
                                QCoreApplication::translate("Readers", "file ends within a character"));
        m_endTold = true;
    }
}

/// Where the line at the position ends; the size of the buffer when it does not.
qsizetype LineReader::findEnd() {
    const auto find = [this](qsizetype& known, char16_t end) {
        if (known < m_position)
            known = m_buffer.indexOf(QChar(end), m_position);
        if (known < 0)
            known = m_buffer.size();
        return known;
    };
    return std::min(find(m_nextLineFeed, u'\n'), find(m_nextReturn, u'\r'));
}

void LineReader::passOverLineFeed() {
    if (m_position >= m_buffer.size())
        readMore();
    if (std::exchange(m_afterReturn, false) && m_position < m_buffer.size() &&
        m_buffer[m_position] == QLatin1Char('\n'))
        ++m_position;
}

void LineReader::takeOutControls(QStringView& line) {
    if (std::none_of(line.begin(), line.end(), IsStrayControl))
        return;
    ReportProblem(QCoreApplication::translate("Readers", "control characters are left out"));
    m_cleaned = line.toString();
    m_cleaned.removeIf(IsStrayControl);
    line = m_cleaned;
}

bool LineReader::Next(QStringView& line) {
    passOverLineFeed();
    bool tooLong = false;
    qsizetype end = findEnd();
    while (end == m_buffer.size() && !m_atEnd) {
        if (end - m_position > MaxLine) {
            // Keep the head of the line only, so that a file without line ends takes no memory.
            m_buffer.truncate(m_position + MaxLine);
            tooLong = true;
        }
        readMore();
        end = findEnd();
    }
    const bool isCut = end == m_buffer.size();
    if (isCut && m_position >= end)
        return false;
    line = QStringView(m_buffer).mid(m_position, std::min(end - m_position, MaxLine));
    tooLong = tooLong || end - m_position > MaxLine;
    m_afterReturn = !isCut && m_buffer[end] == QLatin1Char('\r');
    m_position = isCut ? end : end + 1;
    ++m_lineNumber;
    if (tooLong)
        ReportProblem(QCoreApplication::translate("Readers", "line is too long; its end is ignored"));
    if (m_hasControls)
        takeOutControls(line);
    if (isCut && !m_endTold && !line.trimmed().isEmpty())
        m_problems.ReportAlways(
            m_lineNumber,
            QCoreApplication::translate("Readers", "the last line has no line end; the file may be cut"));
    return true;
}
