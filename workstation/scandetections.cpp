#include "workstation/scandetections.h"

#include "workstation/simulatedsearch.h"

#include <cmath>

namespace {

void fill(DetectionConventional& record, const ScanStop& stop) {
    record.SetFrequency(stop.frequency);
    record.SetBandwidth(stop.bandwidth);
    record.SetLevel(static_cast<short>(std::lround(stop.level)));
    record.SetStartTime(static_cast<double>(stop.start));
    record.SetStopTime(static_cast<double>(stop.stop));
    record.SetActive(stop.isActive);
}

} // namespace

void ScanDetections::Write(const ScanStop& stop) {
    if (stop.number == m_number) { // false from when the operator has cleared the list
        m_isOpen =
            m_isOpen && m_search.Amend(m_id, [&stop](DetectionConventional& record) { fill(record, stop); });
        return;
    }
    DetectionConventional record;
    fill(record, stop);
    m_number = stop.number;
    m_id = m_search.Begin(record, tr("scan"));
    m_isOpen = true;
    if (stop.channel == 0)
        return;
    // Those of detections that left the list long ago.
    if (m_notes.size() >= SimulatedSearch::MaxRecords)
        m_notes.erase(m_notes.begin(), std::next(m_notes.begin(), SimulatedSearch::MaxRecords / 2));
    m_notes[m_id] = {stop.channel, stop.comment};
}

QString ScanDetections::NoteOf(unsigned id) const {
    const auto found = m_notes.find(id);
    if (found == m_notes.end())
        return QString();
    const QString channel = tr("channel %1").arg(found->second.channel);
    const QString& comment = found->second.comment;
    return comment.isEmpty() ? channel : tr("%1, %2").arg(channel, comment);
}

QString ScanDetections::CommentOf(unsigned id) const {
    const auto found = m_notes.find(id);
    return found == m_notes.end() ? QString() : found->second.comment;
}
