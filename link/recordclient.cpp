#include "link/recordclient.h"

#include "host/report/rgexception.h"
#include "link/inturns.h"
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
    using Places = std::unordered_map<EntryId, Shown>;

    static Record recordOf(const ListCopy::Row& row) {
        return RecordForm<Record>::Take(row.Content().contents);
    }

    /// False, with nothing done, when records have gone or come between others. The list changes in one turn.
    bool takeEach(const ListCopy& copy, const std::vector<EntryId>& ids) {
        ListCopy::Order news;
        std::vector<std::pair<Shown, Record>> changed;
        for (const EntryId id : ids) {
            StepOf(news.size() + changed.size(), ids.size());
            const ListCopy::Row* const row = copy.Find(id);
            const auto shown = m_shown.find(id);
            if (!row && shown != m_shown.end())
                return false;
            if (row && shown != m_shown.end())
                changed.emplace_back(shown->second, recordOf(*row));
            else if (row)
                news.emplace_back(row->Content().place, id);
        }
        std::sort(news.begin(), news.end());
        news.erase(std::unique(news.begin(), news.end()), news.end());
        if (!news.empty() && news.front().first <= m_lastPlace)
            return false;
        List added = recordsOf(copy, news, m_shown);
        for (auto& [shown, record] : changed)
            m_list.Edit(shown.place, *shown.record, [&now = record](Record& its) { its = std::move(now); });
        if (!changed.empty())
            m_list.HasChanged(TChangeCode::ValueChanged);
        m_list.Append(std::move(added));
        auto record = std::prev(m_list.Elements().end(), static_cast<std::ptrdiff_t>(news.size()));
        for (const auto& [place, id] : news)
            m_shown[id].record = &*record++;
        return true;
    }
    void fill(const ListCopy& copy) {
        Places shown;
        m_lastPlace = 0;
        List records = recordsOf(copy, copy.InOrder(), shown);
        m_shown = std::move(shown);
        m_list.GetList().swap(records);
        m_list.HasChanged(TChangeCode::ValueChanged);
        for (const size_t before = records.size(); !records.empty(); records.pop_front())
            StepOf(before - records.size(), before);
    }
    /// The records of rows, which are noted as shown behind those that are.
    List recordsOf(const ListCopy& copy, const ListCopy::Order& rows, Places& shown) {
        List records;
        shown.reserve(shown.size() + rows.size());
        for (const auto& [place, id] : rows) {
            StepOf(records.size(), rows.size());
            const auto number = static_cast<quint64>(shown.size());
            shown[id] = {number, &records.emplace_back(recordOf(*copy.Find(id)))};
        }
        m_lastPlace = rows.empty() ? m_lastPlace : rows.back().first;
        return records;
    }

    ValueList<Record>& m_list;
    Places m_shown;
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
    if (!m_value)
        return;
    const ListCopy& copy = m_reader.Copy();
    InTurns(tr("Showing the shared list"), changed.all ? copy.GetRows().size() : changed.ids.size(),
            [&] { m_isOfOtherKind = !m_filler->Take(copy, changed); });
}

void RecordClient::Update(Observable*, TChangeCode code) {
    if (code == TChangeCode::Removing)
        m_value = nullptr;
}
