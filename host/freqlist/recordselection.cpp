#include "host/freqlist/recordselection.h"

#include <algorithm>

void RecordSelection::Resize(int records) {
    const bool fewer = static_cast<size_t>(records) < m_selected.size();
    m_selected.resize(static_cast<size_t>(records));
    if (fewer && m_count > 0)
        countAnew();
    for (std::optional<quint32>* record : {&m_focus, &m_anchor}) {
        if (*record && **record >= static_cast<quint32>(records))
            record->reset();
    }
}

void RecordSelection::Clear() {
    deselectAll();
    m_focus.reset();
    m_anchor.reset();
}

void RecordSelection::Set(quint32 record, bool selected) {
    if (m_selected[record] == selected)
        return;
    m_selected[record] = selected;
    m_count += selected ? 1 : -1;
}

void RecordSelection::Click(int row, Qt::KeyboardModifiers modifiers) {
    const int anchor = modifiers.testFlag(Qt::ShiftModifier) ? m_rows.RowOf(m_anchor) : -1;
    const bool toggle = modifiers.testFlag(Qt::ControlModifier);
    if (!toggle)
        deselectAll();
    if (row < 0)
        return;
    SetFocusRow(row);
    if (anchor >= 0) {
        const auto [from, to] = std::minmax(anchor, row);
        for (int i = from; i <= to; ++i)
            Set(m_rows.RecordAt(i), true);
    } else {
        m_anchor = m_focus;
        Set(*m_focus, !toggle || !Has(*m_focus));
    }
}

int RecordSelection::CurrentRow() const {
    if (m_count == 0)
        return -1;
    const int place = std::max(FocusRow(), 0);
    const int rows = m_rows.Count();
    for (int away = 0; away < rows; ++away) {
        for (const int row : {place + away, place - away}) {
            if (IsSelected(row))
                return row;
        }
    }
    return -1;
}

void RecordSelection::KeepShown() {
    if (m_focus && !m_rows.IsShown(*m_focus))
        m_focus = m_rows.NextShown(*m_focus);
    if (m_count == 0)
        return;
    for (size_t record = 0; record < m_selected.size(); ++record)
        m_selected[record] = m_selected[record] && m_rows.IsShown(static_cast<quint32>(record));
    countAnew();
}

void RecordSelection::deselectAll() {
    m_selected.assign(m_selected.size(), false);
    m_count = 0;
}

void RecordSelection::countAnew() {
    m_count = static_cast<int>(std::count(m_selected.begin(), m_selected.end(), true));
}
