#include "controls/frequencystore/listviewshandler/fileproblems.h"

namespace {

constexpr qint64 MaxReported = 200;

} // namespace

FileProblems::~FileProblems() {
    const qint64 further = m_count - MaxReported;
    if (further > 0)
        Problems::Report(m_sourceFile, m_sourceLine,
                         {m_fileName, 0, QStringLiteral("%1 further problems").arg(further), further});
}

void FileProblems::Report(qint64 line, const QString& reason) {
    if (++m_count <= MaxReported)
        ReportAlways(line, reason);
}

void FileProblems::ReportAlways(qint64 line, const QString& reason) {
    m_none = false;
    Problems::Report(m_sourceFile, m_sourceLine, {m_fileName, line, reason});
}
