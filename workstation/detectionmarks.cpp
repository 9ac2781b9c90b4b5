#include "workstation/detectionmarks.h"

#include "host/valuetree/tree.h"

namespace {

DetectionMark markOf(const DetectionConventional& record) {
    return {record.GetFrequency(), record.GetBandwidth(),
            record.GetStartTime(), std::max(record.GetStopTime(), record.GetStartTime()),
            record.GetID(),        record.GetLevel()};
}

} // namespace

DetectionMarks::DetectionMarks(const QString& path)
    : m_list(value_cast<ValueList<DetectionConventional>>(Tree::Instance()->GetValue(path))) {
    if (m_list)
        m_list->AddObserver(this);
}

DetectionMarks::~DetectionMarks() {
    if (m_list)
        m_list->DeleteObserver(this);
}

void DetectionMarks::Update(Observable*, TChangeCode code) {
    if (code == TChangeCode::Removing) {
        m_list = nullptr;
        m_marks.clear();
    }
    if (OnChanged)
        OnChanged();
}

const std::vector<DetectionMark>& DetectionMarks::Get() {
    if (!m_list)
        return m_marks;
    std::vector<ValueList<DetectionConventional>::Edited> edits;
    const ValueList<DetectionConventional>& list = *m_list.get();
    if (!list.ChangesSince(m_seen, edits))
        m_marks.clear();
    for (const auto& edit : edits) {
        if (edit.place < m_marks.size())
            m_marks[edit.place] = markOf(*edit.element);
    }
    m_seen = list.SeenNow();
    const auto added = static_cast<std::ptrdiff_t>(list.Size() - m_marks.size());
    for (auto at = std::prev(list.Elements().end(), added); at != list.Elements().end(); ++at)
        m_marks.push_back(markOf(*at));
    return m_marks;
}

const DetectionConventional* DetectionMarks::Record(size_t place) const {
    return m_list && place < m_list->Size() ? &m_list->At(static_cast<long>(place)) : nullptr;
}
