#include "link/recordclient.h"

#include "host/report/rgexception.h"
#include "link/recordform.h"

#include <algorithm>

using Messages::EntryId;

/// Brings the list up to date with the copy; false when the copy has records of another kind.
class RecordClient::Filler {
public:
    virtual ~Filler() = default;
    virtual bool Take(const ListCopy& copy, const ListCopy::Changed& changed) = 0;
};

namespace {

/// Whether all rows of a list are records of this kind.
template <typename Record>
bool areRecords(const ListCopy& copy) {
    const EntryLayout* const layout = copy.Layouts().Count() == 1 ? copy.Layouts().At(0) : nullptr;
    return layout && RecordForm<Record>::IsLayoutOf(*layout);
}

} // namespace

template <typename Record>
class RecordClient::FillerOf final : public Filler {
public:
    explicit FillerOf(ValueList<Record>& list) : m_list(list) {}

    bool Take(const ListCopy& copy, const ListCopy::Changed& changed) override {
        if (!areRecords<Record>(copy))
            return false;
        if (changed.all || !takeEach(copy, changed.ids))
            fill(copy);
        return true;
    }

private:
    using List = std::list<Record>;
    struct Shown {
        quint64 place; ///< in the list, from 0
        const Record* record;
    };

    static Record recordOf(const ListCopy::Row& row) {
        return RecordForm<Record>::Take(row.Content().contents);
    }

    /// False, with nothing done, when records have gone or come between others.
    bool takeEach(const ListCopy& copy, const std::vector<EntryId>& ids) {
        std::vector<std::pair<quint32, EntryId>> news;
        for (const EntryId id : ids) {
            const ListCopy::Row* const row = copy.Find(id);
            if (!row && m_shown.count(id) > 0)
                return false;
            if (row && m_shown.count(id) == 0)
                news.emplace_back(row->Content().place, id);
        }
        std::sort(news.begin(), news.end());
        news.erase(std::unique(news.begin(), news.end()), news.end());
        if (!news.empty() && news.front().first <= m_lastPlace)
            return false;
        bool isEdited = false;
        for (const EntryId id : ids) {
            const auto shown = m_shown.find(id);
            if (shown == m_shown.end())
                continue;
            isEdited = true;
            m_list.Edit(shown->second.place, *shown->second.record,
                        [&](Record& record) { record = recordOf(*copy.Find(id)); });
        }
        if (isEdited)
            m_list.HasChanged(TChangeCode::ValueChanged);
        List added;
        for (const auto& [place, id] : news)
            added.push_back(recordOf(*copy.Find(id)));
        m_list.Append(std::move(added));
        auto record = std::prev(m_list.Elements().end(), static_cast<std::ptrdiff_t>(news.size()));
        for (const auto& [place, id] : news)
            note(id, place, *record++);
        return true;
    }
    void fill(const ListCopy& copy) {
        std::vector<std::pair<quint32, EntryId>> rows;
        rows.reserve(copy.GetRows().size());
        for (const auto& [id, row] : copy.GetRows())
            rows.emplace_back(row.Content().place, id);
        std::sort(rows.begin(), rows.end());
        m_shown.clear();
        m_lastPlace = 0;
        List records;
        for (const auto& [place, id] : rows)
            note(id, place, records.emplace_back(recordOf(*copy.Find(id))));
        m_list.GetList() = std::move(records);
        m_list.HasChanged(TChangeCode::ValueChanged);
    }
    void note(EntryId id, quint32 place, const Record& record) {
        const auto number = static_cast<quint64>(m_shown.size());
        m_shown[id] = {number, &record};
        m_lastPlace = place;
    }

    ValueList<Record>& m_list;
    std::unordered_map<EntryId, Shown> m_shown;
    quint32 m_lastPlace = 0; ///< of the last row
};

std::optional<ValueType> RecordClient::TypeOf(const ListCopy& copy) {
    if (areRecords<DetectionConventional>(copy))
        return ValueType::DetectionList;
    if (areRecords<ExtendedDetectionConventional>(copy))
        return ValueType::ExtendedDetectionList;
    return std::nullopt;
}

RecordClient::RecordClient(ListReader& reader, ValueBase& records) : m_reader(reader), m_value(&records) {
    const bool isOne = WithRecords(records, [this]<typename Record>(ValueList<Record>& list) {
        m_filler = std::make_unique<FillerOf<Record>>(list);
    });
    if (!isOne)
        throw RGException(tr("%1 is no list of records").arg(records.GetName()));
    records.AddObserver(this);
    connect(&reader, &ListReader::RowsChanged, this, &RecordClient::take);
    if (reader.Copy().Revision() != 0)
        take({true, {}});
}

RecordClient::~RecordClient() = default;

void RecordClient::take(const ListCopy::Changed& changed) {
    if (m_value)
        m_isOfOtherKind = !m_filler->Take(m_reader.Copy(), changed);
}

void RecordClient::Update(Observable*, TChangeCode code) {
    if (code == TChangeCode::Removing)
        m_value = nullptr;
}
