#pragma once

#include "controls/frequencystore/listviewshandler/fileproblems.h"

#include <QFile>
#include <QString>
#include <QStringDecoder>
#include <QStringView>

#include <optional>

/// Opens a file for reading; the result says why it is refused, and is empty when it is open. Directories,
/// devices and other things that are no regular file are refused, as are files over `maxSize` bytes (0: none
/// is too large).
QString RefuseToOpen(QFile& file, qint64 maxSize = 0);

/// Traces and tells that a file is refused, under the line number of the reader's messages; always false.
bool TellRefusal(unsigned short sourceLine, const Problem& refusal);

/// Reads the lines of a text file of any size in constant memory. The encoding is that of a byte-order mark
/// at the head of the file, else the system's. Lines end with LF or CR LF.
class LineReader {
public:
    /// Longest line in characters; what lies beyond is dropped and told as a problem.
    static constexpr qsizetype MaxLine = 1 << 20;

    /// `device` is open and outlives the reader; `fileName` is for problems.
    LineReader(QIODevice& device, const QString& fileName);

    /// Why the file is refused, to be asked before the first line: its head does not look like text.
    std::optional<Problem> RefuseContent();

    /// The next line, without its end, good until the next call; false at the end of the file.
    bool Next(QStringView& line);
    /// Number of the line that `Next` gave last, 1 for the first.
    qint64 LineNumber() const { return m_lineNumber; }
    /// Tells a problem of the present line; after some hundred of one file the rest is only counted.
    void ReportProblem(const QString& reason) { m_problems.Report(m_lineNumber, reason); }
    /// Whether no problem has been told yet.
    bool IsSound() const { return m_problems.AreNone(); }

private:
    /// Tells whether a character was begun and not finished.
    class Decoder : public QStringDecoder {
    public:
        using QStringDecoder::QStringDecoder;
        bool IsWithinCharacter() const { return state.remainingChars != 0; }
    };

    bool readMore();

    QIODevice& m_device;
    Decoder m_decoder;
    QString m_buffer;
    qsizetype m_position = 0;
    qint64 m_lineNumber = 0;
    FileProblems m_problems;
    qint64 m_badLine = 0; ///< first line that is not well encoded
    bool m_isText = false;
    bool m_atEnd = false;
};
