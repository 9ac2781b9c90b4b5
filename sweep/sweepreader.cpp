#include "sweep/sweepreader.h"

#include "host/base/problems.h"
#include "sweep/sweeprow.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr char TraceSource[] = "sweepreader";
constexpr qint64 MostProblemsTold = 100;
constexpr std::size_t LongestLine = 8 * 1024 * 1024;
/// Lines among which a sweep file shows a row.
constexpr int FirstLines = 8;
constexpr qint64 FirstBytes = 64 * 1024;
constexpr std::string_view ByteOrderMark = "\xef\xbb\xbf";

/// Decimals of the last number in `levels`, and takes it off.
std::size_t takeLastDecimals(std::string_view& levels) {
    const auto comma = levels.rfind(',');
    const std::string_view last = comma == std::string_view::npos ? levels : levels.substr(comma);
    const auto point = last.rfind('.');
    levels = levels.substr(0, comma == std::string_view::npos ? 0 : comma);
    return point == std::string_view::npos ? 0 : last.size() - point;
}

} // namespace

SweepReader::SweepReader(QIODevice& device, const QString& name, const QTimeZone& zone)
    : m_input(device, name), m_name(name), m_clock(zone), m_time(std::numeric_limits<qint64>::min()) {}

bool SweepReader::Next(Sweep& sweep) {
    sweep.hops.clear();
    sweep.levels.clear();
    if (!m_atEnd) {
        try {
            readRows(sweep);
        } catch (const RGException& exception) {
            ++m_problems;
            Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
            m_atEnd = true;
        }
        if (m_atEnd)
            tellRest();
    }
    if (sweep.hops.empty())
        return false;
    ++m_sweeps;
    if (!std::ranges::is_sorted(sweep.hops, {}, &SweepHop::low))
        std::ranges::stable_sort(sweep.hops, {}, &SweepHop::low);
    return true;
}

/// Appends rows to the sweep until one belongs to the next sweep, which stays the current line.
void SweepReader::readRows(Sweep& sweep) {
    SweepRow row;
    QString reason;
    for (; nextLine(); endLine()) {
        if (IsBlank(m_line))
            continue;
        if (!row.Parse(m_line, reason)) {
            tell(TraceSource,
                 m_lineEnds ? reason : QStringLiteral("the file ends within the row: ") + reason);
            continue;
        }
        const std::optional<qint64> time =
            row.stamp == m_stamp ? m_time : m_clock.ToUtc(row.date, row.time, m_time);
        if (!time) {
            tell(TraceSource,
                 Quoted(row.stamp.substr(0, row.stamp.size() - 1)) + QStringLiteral(" is no date and time"));
            continue;
        }
        if (!sweep.hops.empty() && startsNextSweep(row, sweep))
            return;
        if (sweep.hops.empty())
            beginSweep(row, *time, sweep);
        append(row, sweep);
    }
    m_atEnd = true;
}

bool SweepReader::startsNextSweep(const SweepRow& row, const Sweep& sweep) const {
    return row.stamp != m_stamp || row.low == sweep.hops.front().low ||
           sweep.levels.size() + row.bins > SweepRow::MostBins;
}

void SweepReader::beginSweep(const SweepRow& row, qint64 time, Sweep& sweep) {
    if (time < m_time)
        tell(TraceSource, QStringLiteral("time goes back from the row before"));
    m_stamp = row.stamp;
    m_time = sweep.time = time;
}

void SweepReader::append(const SweepRow& row, Sweep& sweep) {
    const std::size_t first = sweep.levels.size();
    const Taken taken = takeLevels(row, sweep.levels);
    if (isTorn(row, taken.count)) {
        tell(TraceSource, QStringLiteral("the file ends within the row"));
        if (taken.count <= row.bins && !IsBlank(row.levels.substr(row.levels.rfind(',') + 1)))
            sweep.levels.pop_back(); // it may have lost digits
    } else if (taken.wrongCount > 0) {
        const QString wrong = Quoted(taken.firstWrong);
        tell(TraceSource, taken.wrongCount == 1 ? QStringLiteral("level %1 is not a number").arg(wrong)
                                                : QStringLiteral("%1 levels are not numbers, the first is %2")
                                                      .arg(QString::number(taken.wrongCount), wrong));
    } else {
        checkCount(row, taken.count);
    }
    const auto isMissing = [](float level) { return std::isnan(level); };
    if (std::all_of(sweep.levels.begin() + static_cast<std::ptrdiff_t>(first), sweep.levels.end(), isMissing))
        return sweep.levels.resize(first);
    sweep.hops.push_back({row.low, row.step, first, sweep.levels.size() - first});
    ++m_rows;
}

/// Appends the levels of a row, but not more than it has bins.
SweepReader::Taken SweepReader::takeLevels(const SweepRow& row, std::vector<float>& levels) {
    Taken taken;
    for (std::string_view rest = row.levels; !IsBlank(rest); ++taken.count) {
        float level;
        std::string_view wrong;
        if (!TakeLevel(rest, level, wrong) && taken.wrongCount++ == 0)
            taken.firstWrong = wrong;
        if (taken.count < row.bins)
            levels.push_back(level);
    }
    return taken;
}

/// One value less or two more than there are bins are usual: receivers cut off and round, and some write
/// their last bin twice. What else differs from that, or from earlier rows of as many bins, is told.
void SweepReader::checkCount(const SweepRow& row, std::size_t count) {
    if (count + 1 < row.bins || count > row.bins + 2)
        return tell(TraceSource, QStringLiteral("%1 levels do not fill %2 bins").arg(count).arg(row.bins));
    if (row.bins != m_binsBefore) {
        m_binsBefore = row.bins;
        m_countBefore = count;
    } else if (count != m_countBefore) {
        tell(TraceSource,
             QStringLiteral("%1 levels, where rows before have %2").arg(count).arg(m_countBefore));
    }
}

/// Whether a last row without a line end lacks values, or its last one has lost decimals: "-6" of "-64.72"
/// would be a strong signal.
bool SweepReader::isTorn(const SweepRow& row, std::size_t count) const {
    if (m_lineEnds)
        return false;
    if (count < (row.bins == m_binsBefore ? m_countBefore : row.bins))
        return true;
    std::string_view levels = row.levels;
    const std::size_t decimals = takeLastDecimals(levels);
    return count > 1 && decimals != takeLastDecimals(levels);
}

/// Finds the current line; false at the end of the file.
bool SweepReader::nextLine() {
    std::size_t searched = 0;
    for (;;) {
        const std::string_view rest = m_input.Rest();
        const auto end = rest.find('\n', searched);
        searched = rest.size();
        m_lineEnds = end != std::string_view::npos;
        if (!m_lineEnds && searched >= LongestLine) {
            tell(TraceSource, QStringLiteral("the line is too long"));
            skipLongLine();
            searched = 0;
        } else if (m_lineEnds || !m_input.More()) {
            m_line = m_input.Rest().substr(0, end);
            m_lineBytes = m_line.size() + (m_lineEnds ? 1 : 0);
            if (m_lineNumber == 1 && m_line.starts_with(ByteOrderMark))
                m_line.remove_prefix(ByteOrderMark.size());
            if (m_line.ends_with('\r'))
                m_line.remove_suffix(1);
            return m_lineBytes > 0;
        }
    }
}

void SweepReader::skipLongLine() {
    auto end = std::string_view::npos;
    do {
        m_lineBytes = m_input.Rest().size();
        if (end = m_input.Rest().find('\n'); end != std::string_view::npos)
            m_lineBytes = end + 1;
        m_input.Skip(m_lineBytes);
        m_bytes += static_cast<qint64>(m_lineBytes);
    } while (end == std::string_view::npos && m_input.More());
    ++m_lineNumber;
}

void SweepReader::endLine() {
    m_input.Skip(m_lineBytes);
    m_bytes += static_cast<qint64>(m_lineBytes);
    ++m_lineNumber;
}

void SweepReader::tell(TracePlace place, const QString& reason) {
    if (++m_problems <= MostProblemsTold)
        Problems::Report(place, {m_name, m_lineNumber, reason});
}

void SweepReader::tellRest() {
    if (m_problems > MostProblemsTold)
        Problems::Report(TraceSource,
                         {m_name, 0, QStringLiteral("%1 more problems").arg(m_problems - MostProblemsTold)});
}

bool IsSweepFile(const QString& fileName) {
    const QFileInfo info(fileName);
    QFile file(fileName);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    SweepClock clock(QTimeZone::utc());
    for (int line = 0; line < FirstLines && !file.atEnd(); ++line) {
        // A row may be long, but what tells it stands at its beginning.
        const QByteArray bytes = file.readLine(FirstBytes);
        SweepRow row;
        QString reason;
        if (row.Parse({bytes.constData(), static_cast<std::size_t>(bytes.size())}, reason) &&
            clock.ToUtc(row.date, row.time, 0))
            return true;
    }
    return false;
}
