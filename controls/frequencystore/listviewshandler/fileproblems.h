#pragma once

#include "host/base/problems.h"

/// Tells what is wrong in one file: after some hundred problems the rest is only counted, and the count is
/// told at the end.
class FileProblems {
public:
    /// `sourceFile` and `sourceLine` are the reader's own, for traces.
    FileProblems(const QString& fileName, const char* sourceFile, unsigned short sourceLine)
        : m_fileName(fileName), m_sourceFile(sourceFile), m_sourceLine(sourceLine) {}
    FileProblems(const FileProblems&) = delete;
    FileProblems& operator=(const FileProblems&) = delete;
    ~FileProblems();

    /// One of many; `line` is 1 for the first, 0 when it is no line's.
    void Report(qint64 line, const QString& reason);
    /// One that is never only counted.
    void ReportAlways(qint64 line, const QString& reason);
    bool AreNone() const { return m_none; }
    const QString& FileName() const { return m_fileName; }

private:
    QString m_fileName;
    const char* m_sourceFile;
    unsigned short m_sourceLine;
    qint64 m_count = 0;
    bool m_none = true;
};
