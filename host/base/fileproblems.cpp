#include "host/base/fileproblems.h"

#include "host/base/numbers.h"

#include <QCoreApplication>

namespace {

constexpr qint64 MaxReported = 200;

} // namespace

FileProblems::~FileProblems() {
    const qint64 further = m_count - MaxReported;
    if (further > 0 && m_place)
        Problems::Report(
            *m_place, {m_fileName, 0,
                       QCoreApplication::translate("Readers", "%1 further problems").arg(further), further});
}

void FileProblems::Report(qint64 line, const QString& reason) {
    if (++m_count <= MaxReported)
        ReportAlways(line, reason);
}

void FileProblems::ReportAlways(qint64 line, const QString& reason) {
    m_none = false;
    if (m_firstLine == 0)
        m_firstLine = line;
    if (m_place)
        Problems::Report(*m_place, {m_fileName, line, reason});
}

void FileProblems::CheckFrequency(qint64 line, double hertz, const QString& where) {
    if (IsFrequency(hertz))
        return;
    Report(line, QCoreApplication::translate("Readers", "%1the frequency %2 is %3")
                     .arg(where, Quor::ToShortest(hertz),
                          hertz < 0 ? QCoreApplication::translate("Readers", "below 0 Hz")
                                    : QCoreApplication::translate("Readers", "above 1 THz")));
}
