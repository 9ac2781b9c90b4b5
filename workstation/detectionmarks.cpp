#include "workstation/detectionmarks.h"

#include "host/valuetree/tree.h"

namespace {

DetectionMark markOf(const DetectionConventional& record) {
    return {record.GetFrequency(), record.GetBandwidth(),
            record.GetStartTime(), std::max(record.GetStopTime(), record.GetStartTime()),
            record.GetID(),        record.GetLevel()};
}

template <typename Record>
ValueList<Record>* listAt(const QString& path) {
    return value_cast<ValueList<Record>>(Tree::Instance()->GetValue(path));
}

} // namespace

/// A list, whatever its records; it may end first.
class DetectionMarks::List {
public:
    virtual ~List() = default;
    /// Brings the marks up to date.
    virtual void Follow(std::vector<DetectionMark>& marks) = 0;
    virtual const DetectionConventional* Record(size_t place) const = 0;
};

template <typename T>
class DetectionMarks::ListOf : public List, private IObserver {
public:
    ListOf(ValueList<T>& list, DetectionMarks& owner) : m_list(&list), m_owner(owner) {
        list.AddObserver(this);
    }
    ~ListOf() override {
        if (m_list)
            m_list->DeleteObserver(this);
    }
    ListOf(const ListOf&) = delete;
    ListOf& operator=(const ListOf&) = delete;

    void Follow(std::vector<DetectionMark>& marks) override {
        if (!m_list)
            return marks.clear();
        std::vector<typename ValueList<T>::Edited> edits;
        const ValueList<T>& list = *m_list.get();
        if (!list.ChangesSince(m_seen, edits))
            marks.clear();
        for (const auto& edit : edits) {
            if (edit.place < marks.size())
                marks[edit.place] = markOf(*edit.element);
        }
        m_seen = list.SeenNow();
        const auto added = static_cast<std::ptrdiff_t>(list.Size() - marks.size());
        for (auto at = std::prev(list.Elements().end(), added); at != list.Elements().end(); ++at)
            marks.push_back(markOf(*at));
    }
    const DetectionConventional* Record(size_t place) const override {
        return m_list && place < m_list->Size() ? &m_list->At(static_cast<long>(place)) : nullptr;
    }

private:
    void Update(Observable*, TChangeCode code) override {
        if (code == TChangeCode::Removing)
            m_list = nullptr;
        if (m_owner.OnChanged)
            m_owner.OnChanged();
    }

    WeakRef<ValueList<T>> m_list;
    typename ValueList<T>::Seen m_seen;
    DetectionMarks& m_owner;
};

DetectionMarks::DetectionMarks(const QString& path) {
    SetList(path);
}

DetectionMarks::~DetectionMarks() = default;

bool DetectionMarks::IsList(const QString& path) {
    return listAt<DetectionConventional>(path) || listAt<ExtendedDetectionConventional>(path);
}

void DetectionMarks::SetList(const QString& path) {
    m_list.reset();
    m_marks.clear();
    if (auto* const plain = listAt<DetectionConventional>(path))
        m_list = std::make_unique<ListOf<DetectionConventional>>(*plain, *this);
    else if (auto* const extended = listAt<ExtendedDetectionConventional>(path))
        m_list = std::make_unique<ListOf<ExtendedDetectionConventional>>(*extended, *this);
    if (OnChanged)
        OnChanged();
}

const std::vector<DetectionMark>& DetectionMarks::Get() {
    if (m_list)
        m_list->Follow(m_marks);
    return m_marks;
}

const DetectionConventional* DetectionMarks::Record(size_t place) const {
    return m_list ? m_list->Record(place) : nullptr;
}
