#pragma once

#include "host/base/problems.h"

#include <optional>

/// Tells the problems of one file. The first hundred or so are told one by one; the others are counted, and
/// the count is told at the end.
class FileProblems {
public:
    /// `place` is the reader's own, for traces.
    FileProblems(const QString& fileName, TracePlace place) : m_fileName(fileName), m_place(place) {}
    /// Tells nothing; for a first look at a file.
    explicit FileProblems(const QString& fileName) : m_fileName(fileName) {}
    FileProblems(const FileProblems&) = delete;
    FileProblems& operator=(const FileProblems&) = delete;
    ~FileProblems();

    /// Reports one of many problems; `line` counts from 1, and 0 means no line.
    void Report(qint64 line, const QString& reason);
    /// Reports a problem that is told however many there are.
    void ReportAlways(qint64 line, const QString& reason);
    /// Whether a number can be a frequency in Hz.
    static bool IsFrequency(double hertz) { return hertz >= 0 && hertz <= MaxHertz; }
    /// Reports a frequency in Hz below 0 or above 1 THz.
    void CheckFrequency(qint64 line, double hertz, const QString& where = QString());
    bool AreNone() const { return m_none; }
    /// Line of the first problem that has a line; 0 when there is none.
    qint64 FirstLine() const { return m_firstLine; }
    const QString& FileName() const { return m_fileName; }

private:
    static constexpr double MaxHertz = 1e12;

    QString m_fileName;
    std::optional<TracePlace> m_place; ///< none for a mere look
    qint64 m_count = 0;
    qint64 m_firstLine = 0;
    bool m_none = true;
};
