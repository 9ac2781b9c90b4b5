#include "host/gui/recordselection.h"

#include <algorithm>

void RecordSelection::Resize(int records) {
    const bool fewer = static_cast<size_t>(records) < m_selected.size();
    m_selected.resize(static_cast<size_t>(records));
    if (!m_before.empty())
        m_before.resize(m_selected.size());
    if (fewer && m_count > 0)
        countAnew();
    for (std::optional<quint32>* record : {&m_focus, &m_anchor}) {
        if (*record && **record >= static_cast<quint32>(records))
            record->reset();
    }
}

void RecordSelection::Clear() {
    DeselectAll();
    m_focus.reset();
    m_anchor.reset();
}

void RecordSelection::Set(quint32 record, bool selected) {
    if (m_selected[record] == selected)
        return;
    m_selected[record] = selected;
    m_count += selected ? 1 : -1;
}

void RecordSelection::SelectAll() {
    m_before.clear();
    if (m_rows.Count() == static_cast<int>(m_selected.size())) {
        m_selected.assign(m_selected.size(), true);
        m_count = static_cast<int>(m_selected.size());
        return;
    }
    for (int row = 0; row < m_rows.Count(); ++row)
        Set(m_rows.RecordAt(row), true);
}

std::vector<quint32> RecordSelection::Records() const {
    std::vector<quint32> records;
    records.reserve(static_cast<size_t>(m_count));
    const int rows = m_rows.Count();
    for (int row = 0; row < rows && records.size() < static_cast<size_t>(m_count); ++row) {
        if (const quint32 record = m_rows.RecordAt(row); Has(record))
            records.push_back(record);
    }
    return records;
}

void RecordSelection::Renumber(const std::vector<quint32>& numbers, int count) {
    std::vector<bool> selected(static_cast<size_t>(count));
    for (size_t record = 0; m_count > 0 && record < numbers.size(); ++record) {
        if (m_selected[record] && numbers[record] != RecordOrder::Gone)
            selected[numbers[record]] = true;
    }
    m_selected = std::move(selected);
    m_before.clear();
    countAnew();
    for (std::optional<quint32>* record : {&m_focus, &m_anchor}) {
        if (*record && numbers[**record] == RecordOrder::Gone)
            record->reset();
        else if (*record)
            *record = numbers[**record];
    }
}

void RecordSelection::Click(int row, Qt::KeyboardModifiers modifiers) {
    const bool extend = modifiers.testFlag(Qt::ShiftModifier);
    const bool toggle = modifiers.testFlag(Qt::ControlModifier);
    if (row < 0) {
        if (!extend && !toggle)
            DeselectAll();
        return;
    }
    SetFocusRow(row);
    const int anchor = extend ? m_rows.RowOf(m_anchor) : -1;
    if (anchor >= 0) {
        selectRange(anchor, row);
        return;
    }
    if (toggle)
        m_before.clear();
    else
        DeselectAll();
    m_anchor = m_focus;
    Set(*m_focus, !toggle || !Has(*m_focus));
}

void RecordSelection::selectRange(int anchor, int row) {
    if (m_before.empty()) {
        m_before = m_selected;
    } else {
        m_selected = m_before;
        countAnew();
    }
    const auto [from, to] = std::minmax(anchor, row);
    for (int i = from; i <= to; ++i)
        Set(m_rows.RecordAt(i), true);
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
    m_before.clear();
    if (m_count == 0)
        return;
    for (size_t record = 0; record < m_selected.size(); ++record)
        m_selected[record] = m_selected[record] && m_rows.IsShown(static_cast<quint32>(record));
    countAnew();
}

void RecordSelection::DeselectAll() {
    m_selected.assign(m_selected.size(), false);
    m_before.clear();
    m_count = 0;
}

void RecordSelection::countAnew() {
    m_count = static_cast<int>(std::count(m_selected.begin(), m_selected.end(), true));
}
