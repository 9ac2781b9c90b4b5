#include "controls/frequencystore/files/linereader.h"

#include "host/base/longwork.h"
#include "host/base/tokenizer.h"
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
    m_controls.erase(m_controls.begin(), m_controls.begin() + static_cast<std::ptrdiff_t>(m_firstControl));
    m_nextControl -= std::exchange(m_firstControl, 0);
    for (quint32& place : m_controls)
        place -= static_cast<quint32>(m_position);
    m_position = 0;
    m_bytes.reserve(ChunkBytes); // no more than that, which growth would take
    m_bytes.resize(ChunkBytes);
    const qint64 count = m_device.read(m_bytes.data(), ChunkBytes);
    LongWork::Step(m_device.pos(), m_device.size());
    m_bytes.truncate(std::max<qint64>(count, 0));
    if (count < 0)
        m_problems.ReportAlways(m_lineNumber + 1,
                                QCoreApplication::translate("Readers", "cannot be read on: ") +
                                    m_device.errorString());
    if (m_bytes.isEmpty()) {
        if (!std::exchange(m_atEnd, true))
            finish();
        return false;
    }
    const qsizetype known = m_buffer.size();
    m_decoder.Append(m_buffer, m_bytes);
    AppendControls(m_buffer, known, m_controls);
    if (m_decoder.HasError() && !std::exchange(m_errorTold, true)) {
        const qsizetype bad = m_buffer.indexOf(QChar(QChar::ReplacementCharacter), known);
        m_problems.ReportAlways(
            m_lineNumber + 1 + CountLineEnds(QStringView(m_buffer).left(bad)),
            QCoreApplication::translate("Readers", "text is not well encoded from here on"));
    }
    return true;
}

void LineReader::truncate(qsizetype size) {
    m_buffer.truncate(size);
    while (!m_controls.empty() && m_controls.back() >= static_cast<quint32>(size))
        m_controls.pop_back();
    m_nextControl = std::min(m_nextControl, m_controls.size());
    m_hasStrayControls = std::any_of(m_controls.begin() + static_cast<std::ptrdiff_t>(m_firstControl),
                                     m_controls.begin() + static_cast<std::ptrdiff_t>(m_nextControl),
                                     [&](quint32 place) { return IsStrayControl(m_buffer.at(place)); });
}

/// Nothing more comes: what is in the buffer is the end of the text.
void LineReader::finish() {
    qsizetype size = m_buffer.size();
    for (; size > 0 && m_buffer[size - 1] == EndOfText; m_endTold = true)
        --size;
    truncate(size);
    if (m_decoder.IsWithinCharacter()) {
        m_problems.ReportAlways(m_lineNumber + 1,
                                QCoreApplication::translate("Readers", "file ends within a character"));
        m_endTold = true;
    }
}

/// Where the line at the position ends; the size of the buffer when it does not.
qsizetype LineReader::findEnd() {
    for (; m_nextControl < m_controls.size(); ++m_nextControl) {
        const qsizetype place = m_controls[m_nextControl];
        const QChar found = m_buffer.constData()[place];
        if (found == QLatin1Char('\n') || found == QLatin1Char('\r'))
            return place;
        m_hasStrayControls = m_hasStrayControls || IsStrayControl(found);
    }
    return m_buffer.size();
}

/// Begins a line, behind the LF of a CR with which the line before ended.
void LineReader::passOverLineFeed() {
    if (m_position >= m_buffer.size())
        readMore();
    m_hasStrayControls = false;
    if (!std::exchange(m_afterReturn, false) || m_position >= m_buffer.size() ||
        m_buffer.constData()[m_position] != QLatin1Char('\n'))
        return;
    ++m_position;
    m_firstControl = ++m_nextControl;
}

void LineReader::takeOutControls() {
    ReportProblem(QCoreApplication::translate("Readers", "control characters are left out"));
    m_cleaned = m_line.toString();
    m_cleaned.removeIf(IsStrayControl);
    m_line = m_cleaned;
}

bool LineReader::Next(QStringView& line) {
    m_firstControl = m_nextControl;
    passOverLineFeed();
    bool tooLong = false;
    qsizetype end = findEnd();
    while (end == m_buffer.size() && !m_atEnd) {
        if (end - m_position > MaxLine) {
            // Keep the head of the line only, so that a file without line ends takes no memory.
            truncate(m_position + MaxLine);
            tooLong = true;
        }
        readMore();
        end = findEnd();
    }
    const bool isCut = end == m_buffer.size();
    if (isCut && m_position >= end)
        return false;
    m_line = QStringView(m_buffer).mid(m_position, std::min(end - m_position, MaxLine));
    tooLong = tooLong || end - m_position > MaxLine;
    m_afterReturn = !isCut && m_buffer.constData()[end] == QLatin1Char('\r');
    m_position = isCut ? end : end + 1;
    m_nextControl += isCut ? 0 : 1;
    ++m_lineNumber;
    if (tooLong)
        ReportProblem(QCoreApplication::translate("Readers", "line is too long; its end is ignored"));
    if (m_hasStrayControls)
        takeOutControls();
    line = m_line;
    if (isCut && !m_endTold && !line.trimmed().isEmpty())
        m_problems.ReportAlways(
            m_lineNumber,
            QCoreApplication::translate("Readers", "the last line has no line end; the file may be cut"));
    return true;
}

unsigned char LineReader::Fields(QStringView* parts, unsigned char maxParts) const {
    const char16_t* const chars = QStringView(m_buffer).utf16();
    if (m_line.utf16() == QStringView(m_cleaned).utf16())
        return Quor::separateString(m_line, parts, maxParts);
    const auto end = static_cast<quint32>(m_line.utf16() - chars + m_line.size());
    auto start = static_cast<quint32>(m_line.utf16() - chars);
    unsigned char count = 0;
    for (size_t next = m_firstControl; start < end && count < maxParts; ++next) {
        while (next < m_controls.size() && m_controls[next] < end && chars[m_controls[next]] != u'\t')
            ++next;
        const quint32 stop = next < m_controls.size() ? std::min(m_controls[next], end) : end;
        parts[count++] = QStringView(chars + start, stop - start);
        start = stop + 1;
    }
    return count;
}
