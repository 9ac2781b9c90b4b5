#pragma once

#include "host/base/problems.h"

#include <optional>

/// Tells what is wrong in one file: after some hundred problems the rest is only counted, and the count is
/// told at the end.
class FileProblems {
public:
    /// `place` is the reader's own, for traces.
    FileProblems(const QString& fileName, TracePlace place) : m_fileName(fileName), m_place(place) {}
    /// For a mere look at a file: nothing is told.
    explicit FileProblems(const QString& fileName) : m_fileName(fileName) {}
    FileProblems(const FileProblems&) = delete;
    FileProblems& operator=(const FileProblems&) = delete;
    ~FileProblems();

    /// One of many; `line` is 1 for the first, 0 when it is no line's.
    void Report(qint64 line, const QString& reason);
    /// One that is never only counted.
    void ReportAlways(qint64 line, const QString& reason);
    /// Whether a number can be a frequency in Hz.
    static bool IsFrequency(double hertz) { return hertz >= 0 && hertz <= MaxHertz; }
    /// Tells a frequency in Hz that cannot be one: below 0 or above 1 THz.
    void CheckFrequency(qint64 line, double hertz, const QString& where = QString());
    bool AreNone() const { return m_none; }
    /// Line of the first problem that is a line's; 0 when there is none.
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
