#include "link/recordserver.h"

#include "host/report/rgexception.h"
#include "link/recordform.h"
#include "link/topics.h"

#include <QHash>

namespace {

/// Changes within this time are one message.
constexpr int GatherMilliseconds = 20;

using Step = ListPublisher::Step;

} // namespace

/// Brings the publisher's rows up to date with the list.
class RecordServer::Rows {
public:
    virtual ~Rows() = default;
    virtual std::vector<Step> Take(ListPublisher& publisher) = 0;
};

/// Records have no serials as nodes do: they are counted here, in list order.
template <typename Record>
class RecordServer::RowsOf final : public Rows {
public:
    explicit RowsOf(const ValueList<Record>& list) : m_list(list) {}

    std::vector<Step> Take(ListPublisher& publisher) override {
        std::vector<Step> steps;
        std::vector<typename ValueList<Record>::Edited> edited;
        if (m_list.ChangesSince(m_seen, edited)) {
            for (const auto& [place, record] : edited) {
                if (place < m_serials.size())
                    put(publisher, m_serials[place], *record, steps);
            }
            const auto news = static_cast<std::ptrdiff_t>(m_list.Size() - m_serials.size());
            for (auto record = std::prev(m_list.Elements().end(), news); record != m_list.Elements().end();
                 ++record)
                add(publisher, *record, steps);
        } else {
            takeAll(publisher, steps);
        }
        m_seen = m_list.SeenNow();
        return steps;
    }

private:
    void put(ListPublisher& publisher, quint32 serial, const Record& record, std::vector<Step>& steps) {
        m_writer.Clear();
        RecordForm<Record>::Put(m_writer, record);
        const auto old = publisher.rows.Find(serial);
        if (old && old->Content().contents == m_writer.View())
            return;
        const Messages::EntryId id = old ? old->id : publisher.rows.NewId();
        const quint32 chunk =
            publisher.rows.Put(serial, 0, {id, serial, publisher.NextRevision(), 0, m_writer.View()});
        steps.push_back({chunk, serial, 0});
    }
    void add(ListPublisher& publisher, const Record& record, std::vector<Step>& steps) {
        m_serials.push_back(++m_lastSerial);
        put(publisher, m_lastSerial, record, steps);
    }
    void remove(ListPublisher& publisher, quint32 serial, std::vector<Step>& steps) const {
        const Messages::EntryId id = publisher.rows.Find(serial)->id;
        steps.push_back({publisher.rows.Remove(serial), 0, id});
    }

    /// Which record of the list before each of the list now is, by contents and in order; none for others.
    std::vector<std::optional<size_t>> keptOnes(const ListPublisher& publisher) {
        QHash<quint64, std::deque<size_t>> places;
        for (size_t place = 0; place < m_serials.size(); ++place)
            places[Wire::Hash(publisher.rows.Find(m_serials[place])->Content().contents)].push_back(place);
        std::vector<std::optional<size_t>> kept;
        size_t least = 0;
        for (const Record& record : m_list.Elements()) {
            m_writer.Clear();
            RecordForm<Record>::Put(m_writer, record);
            kept.emplace_back();
            const auto found = places.find(Wire::Hash(m_writer.View()));
            while (found != places.end() && !found->empty() && found->front() < least)
                found->pop_front();
            if (found != places.end() && !found->empty()) {
                kept.back() = found->front();
                least = found->front() + 1;
            }
        }
        return kept;
    }

    /// Serials ascend in list order. What stands between two records that are as they were takes the serials
    /// of what stood there; where there are not enough, all from there on is new.
    void takeAll(ListPublisher& publisher, std::vector<Step>& steps) {
        const std::vector<std::optional<size_t>> kept = keptOnes(publisher);
        const std::vector<quint32> before = std::exchange(m_serials, {});
        std::vector<size_t> limits(kept.size()); // serials that are kept for a later record
        size_t limit = before.size();
        for (size_t place = kept.size(); place-- > 0;)
            limit = limits[place] = kept[place].value_or(limit);
        size_t old = 0, place = 0;
        bool hasRoom = true;
        for (const Record& record : m_list.Elements()) {
            while (hasRoom && kept[place] && old < *kept[place])
                remove(publisher, before[old++], steps);
            if (hasRoom && (kept[place] || old < limits[place])) {
                m_serials.push_back(before[old]);
                put(publisher, before[old++], record, steps);
            } else {
                hasRoom = hasRoom && limits[place] == before.size();
                add(publisher, record, steps);
            }
            ++place;
        }
        while (old < before.size())
            remove(publisher, before[old++], steps);
    }

    const ValueList<Record>& m_list;
    typename ValueList<Record>::Seen m_seen;
    std::vector<quint32> m_serials; ///< of the records, in list order
    quint32 m_lastSerial = 0;
    Wire::Writer m_writer;
};

RecordServer::RecordServer(Seat& seat, ValueBase& records, const QString& name)
    : m_value(&records),
      m_publisher(seat.Bus(), Topics::List(seat.SiteTopic(), name), QString::fromUtf8(seat.Path())),
      m_claim(seat, m_publisher.Topic()) {
    const bool isOne = WithRecords(records, [this]<typename Record>(const ValueList<Record>& list) {
        m_rows = std::make_unique<RowsOf<Record>>(list);
        m_publisher.layouts.Add(RecordForm<Record>::Layout());
    });
    if (!isOne)
        throw RGException(tr("%1 is no list of records").arg(name));
    records.AddObserver(this);
    m_timer.setSingleShot(true);
    m_timer.setInterval(GatherMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &RecordServer::Flush);
    m_rows->Take(m_publisher);
    m_publisher.PublishAnew();
    connect(&m_claim, &ListClaim::Won, this, [this] {
        Flush();
        m_publisher.StartSending(m_claim.AtBroker());
    });
    connect(&m_claim, &ListClaim::StateChanged, this, [this] {
        if (!m_claim.IsServing())
            m_publisher.StopSending();
        emit StateChanged();
    });
    m_claim.Start();
}

RecordServer::~RecordServer() {
    if (m_claim.IsServing())
        Flush();
}

void RecordServer::Flush() {
    m_timer.stop();
    if (!m_value)
        return;
    const std::vector<Step> steps = m_rows->Take(m_publisher);
    if (!steps.empty())
        m_publisher.Publish(steps);
}

/// What was published last stays when the list ends.
void RecordServer::Update(Observable*, TChangeCode code) {
    if (code == TChangeCode::Removing)
        m_value = nullptr;
    else if (!m_timer.isActive())
        m_timer.start();
}
