#pragma once

#include "host/base/fileproblems.h"
#include "host/base/textdecoder.h"

#include <QFile>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

/// Opens a file for reading; the result says why it is refused, and is empty when it is open. Directories,
/// devices and other things that are no regular file are refused, as are files over `maxSize` bytes (0: none
/// is too large).
QString RefuseToOpen(QFile& file, qint64 maxSize = 0);

/// Traces and tells that a file cannot be opened, under the place of who wanted it; always false.
bool TellRefusal(TracePlace place, const Problem& refusal);

/// Reads the lines of a text file of any size and encoding in constant memory. Lines end with LF, CR or both;
/// a Ctrl-Z at the end of a file is no part of its text.
class LineReader {
public:
    /// Longest line in characters; what lies beyond is dropped and told as a problem.
    static constexpr qsizetype MaxLine = 1 << 20;

    enum class Telling { Problems, Nothing };

    /// Looks at the file, see LookAtText(). `device` is open and outlives the reader; `fileName` is for
    /// problems.
    LineReader(QIODevice& device, const QString& fileName, Telling telling = Telling::Problems);

    /// Why the file is refused, to be asked before the first line: it is no text.
    std::optional<Problem> RefuseContent();

    /// The next line, without its end and without control characters, good until the next call; false at the
    /// end of the file. A last line without an end is told, since the file may be cut there.
    bool Next(QStringView& line);
    /// Takes the line that `Next` gave last apart, as `Quor::separateString` does.
    unsigned char Fields(QStringView* parts, unsigned char maxParts) const;
    /// Number of the line that `Next` gave last, 1 for the first.
    qint64 LineNumber() const { return m_lineNumber; }
    /// Tells a problem of the present line; after some hundred of one file the rest is only counted.
    void ReportProblem(const QString& reason) { m_problems.Report(m_lineNumber, reason); }
    /// Tells when a frequency of the present line, in Hz, cannot be one.
    void CheckFrequency(double hertz) { m_problems.CheckFrequency(m_lineNumber, hertz); }
    /// Whether no problem has been told yet.
    bool IsSound() const { return m_problems.AreNone(); }
    /// The first line with a problem; 0 when there is none.
    qint64 FirstProblemLine() const { return m_problems.FirstLine(); }

private:
    bool readMore();
    void finish();
    void truncate(qsizetype size);
    qsizetype findEnd();
    void passOverLineFeed();
    void takeOutControls();

    QIODevice& m_device;
    FileProblems m_problems;
    TextForm m_form;
    TextDecoder m_decoder;
    QByteArray m_bytes;
    QString m_buffer;
    QString m_cleaned; ///< the present line, when something was taken out of it
    QStringView m_line;
    qsizetype m_position = 0;
    std::vector<quint32> m_controls; ///< places of control characters in the buffer, TABs and line ends too
    size_t m_firstControl = 0;       ///< of the present line
    size_t m_nextControl = 0;        ///< the line end, once it is found
    qint64 m_lineNumber = 0;
    bool m_afterReturn = false;      ///< the last line ended with a CR, to which an LF may belong
    bool m_hasStrayControls = false; ///< in the present line
    bool m_errorTold = false;
    bool m_atEnd = false;
    bool m_endTold = false; ///< nothing more is to be said of a last line without an end
};
