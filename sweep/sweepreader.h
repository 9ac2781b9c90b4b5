#pragma once

#include "host/base/traceplace.h"
#include "host/report/byteinput.h"
#include "sweep/sweep.h"
#include "sweep/sweepclock.h"

#include <string>

class QIODevice;
struct SweepRow;

/// Reads power sweeps as command-line receivers write them: rows of date, local time, lowest and highest
/// frequency, bin width (Hz), a count of samples, and levels (dB), one row per hop. Rows that follow one
/// another with the same time are one sweep, until its first hop comes again.
///
/// Rows and values that are wrong are told as problems and left out; the first hundred one by one, the others
/// by their number. Needs memory for one sweep, whatever the size of the file.
class SweepReader {
public:
    /// `name` stands for the device, which is the caller's, in problems.
    SweepReader(QIODevice& device, const QString& name, const QTimeZone& zone);

    /// Replaces `sweep` by the next one; false at the end of the file, which a failing device is, too.
    bool Next(Sweep& sweep);

    qint64 Sweeps() const { return m_sweeps; }
    /// Rows that were good enough to be part of a sweep.
    qint64 Rows() const { return m_rows; }
    qint64 Problems() const { return m_problems; }
    qint64 BytesRead() const { return m_bytes; }

private:
    /// Levels that a row holds.
    struct Taken {
        std::size_t count = 0;
        std::size_t wrongCount = 0;
        std::string_view firstWrong;
    };

    bool nextLine();
    void skipLongLine();
    void endLine();
    void readRows(Sweep& sweep);
    bool startsNextSweep(const SweepRow& row, const Sweep& sweep) const;
    void beginSweep(const SweepRow& row, qint64 time, Sweep& sweep);
    void append(const SweepRow& row, Sweep& sweep);
    static Taken takeLevels(const SweepRow& row, std::vector<float>& levels);
    void checkCount(const SweepRow& row, std::size_t count);
    bool isTorn(const SweepRow& row, std::size_t count) const;
    void tell(TracePlace place, const QString& reason);
    void tellRest();

    REPORTGENERATOR::ByteInput m_input;
    QString m_name;
    SweepClock m_clock;
    std::string_view m_line;     ///< the current line, without its end
    std::size_t m_lineBytes = 0; ///< of the line and its end
    bool m_lineEnds = true;      ///< false for a last line without a line end
    qint64 m_lineNumber = 1;
    std::string m_stamp;           ///< date and time of the current sweep
    qint64 m_time;                 ///< of the last sweep
    std::size_t m_binsBefore = 0;  ///< of the rows before
    std::size_t m_countBefore = 0; ///< their values
    qint64 m_sweeps = 0;
    qint64 m_rows = 0;
    qint64 m_problems = 0;
    qint64 m_bytes = 0;
    bool m_atEnd = false;
};

/// Whether a file holds rows of power sweeps, by its first lines. False when it cannot be read.
bool IsSweepFile(const QString& fileName);
