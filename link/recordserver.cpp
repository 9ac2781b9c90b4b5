#include "link/recordserver.h"

#include "host/report/rgexception.h"
#include "link/bycontents.h"
#include "link/inturns.h"
#include "link/recordform.h"
#include "link/topics.h"

namespace {

/// Changes within this time are one message.
constexpr int GatherMilliseconds = 20;

using Step = ListPublisher::Step;

} // namespace

/// Brings the publisher's rows up to date with the list.
class RecordServer::Rows {
public:
    virtual ~Rows() = default;
    /// How many records `Take` looks at.
    virtual size_t Count() const = 0;
    virtual std::vector<Step> Take(ListPublisher& publisher) = 0;
};

/// Records have no serials as nodes do: they are counted here, in list order.
template <typename Record>
class RecordServer::RowsOf final : public Rows {
public:
    explicit RowsOf(const ValueList<Record>& list) : m_list(list) {}

    size_t Count() const override {
        const News news = newsNow();
        return news.isAll ? news.count + m_serials.size() : news.edited.size() + news.count;
    }
    /// The records are read first, so that rows are of one state of the list, whatever becomes of it then.
    std::vector<Step> Take(ListPublisher& publisher) override {
        std::vector<Step> steps;
        News news = newsNow();
        Contents contents;
        while (!read(news, contents)) {
            news = newsNow();
            contents = {};
        }
        m_seen = news.seen;
        if (news.isAll)
            takeAll(publisher, contents, steps);
        else
            takeNews(publisher, news, contents, steps);
        return steps;
    }

private:
    using List = ValueList<Record>;

    /// What there is to be read.
    struct News {
        typename List::Seen seen;
        bool isAll;
        std::vector<typename List::Edited> edited;
        size_t count; ///< of records at the end
    };
    /// Of records, one behind the other.
    struct Contents {
        Wire::Writer bytes;
        std::vector<qsizetype> ends;

        void Add(const Record& record) {
            RecordForm<Record>::Put(bytes, record);
            ends.push_back(bytes.Size());
        }
        size_t Count() const { return ends.size(); }
        QByteArrayView At(size_t number) const {
            const qsizetype begin = number == 0 ? 0 : ends[number - 1];
            return bytes.View().sliced(begin, ends[number] - begin);
        }
    };

    News newsNow() const {
        News news{m_list.SeenNow(), false, {}, 0};
        news.isAll = !m_list.ChangesSince(m_seen, news.edited);
        news.count = news.seen.size - (news.isAll ? 0 : m_serials.size());
        std::erase_if(news.edited, [this](const auto& e) { return e.place >= m_serials.size(); });
        return news;
    }
    /// False when the list has been rewritten meanwhile.
    bool read(const News& news, Contents& contents) const {
        const auto add = [&](const Record& record) {
            contents.Add(record);
            StepOf(contents.Count(), news.edited.size() + news.count);
            return m_list.SeenNow().rewrites == news.seen.rewrites;
        };
        const auto& records = m_list.Elements();
        auto record =
            news.isAll ? records.begin() : std::prev(records.end(), static_cast<std::ptrdiff_t>(news.count));
        for (const auto& [place, edited] : news.edited) {
            if (!add(*edited))
                return false;
        }
        for (size_t number = 0; number < news.count; ++number, ++record) {
            if (!add(*record))
                return false;
        }
        return true;
    }

    void put(ListPublisher& publisher, quint32 serial, QByteArrayView contents, std::vector<Step>& steps) {
        const auto old = publisher.rows.Find(serial);
        if (old && old->Content().contents == contents)
            return;
        const Messages::EntryId id = old ? old->id : publisher.rows.NewId();
        const quint32 chunk =
            publisher.rows.Put(serial, 0, {id, serial, publisher.NextRevision(), 0, contents});
        steps.push_back({chunk, serial, 0});
    }
    void add(ListPublisher& publisher, QByteArrayView contents, std::vector<Step>& steps) {
        m_serials.push_back(++m_lastSerial);
        put(publisher, m_lastSerial, contents, steps);
    }
    void remove(ListPublisher& publisher, quint32 serial, std::vector<Step>& steps) const {
        StepOf(steps.size(), m_serials.size());
        const Messages::EntryId id = publisher.rows.Find(serial)->id;
        steps.push_back({publisher.rows.Remove(serial), 0, id});
    }
    void takeNews(ListPublisher& publisher, const News& news, const Contents& contents,
                  std::vector<Step>& steps) {
        for (size_t number = 0; number < contents.Count(); ++number) {
            StepOf(number, contents.Count());
            if (number < news.edited.size())
                put(publisher, m_serials[news.edited[number].place], contents.At(number), steps);
            else
                add(publisher, contents.At(number), steps);
        }
    }

    /// Which record of the list before each of the list now is, by contents and in order; none for others.
    std::vector<std::optional<size_t>> keptOnes(const ListPublisher& publisher,
                                                const Contents& contents) const {
        ByContents places;
        for (size_t place = 0; place < m_serials.size(); ++place) {
            StepOf(place, m_serials.size());
            const auto row = publisher.rows.Find(m_serials[place]);
            places.Add(Wire::Hash(row->Content().contents), static_cast<quint32>(place));
        }
        std::vector<std::optional<size_t>> kept;
        kept.reserve(contents.Count());
        quint32 least = 0;
        for (size_t number = 0; number < contents.Count(); ++number) {
            StepOf(number, contents.Count());
            const std::optional<quint32> place = places.Take(Wire::Hash(contents.At(number)), least);
            kept.emplace_back(place);
            if (place)
                least = *place + 1;
        }
        return kept;
    }

    /// Serials ascend in list order. What stands between two records that are as they were takes the serials
    /// of what stood there; where there are not enough, all from there on is new.
    void takeAll(ListPublisher& publisher, const Contents& contents, std::vector<Step>& steps) {
        const std::vector<std::optional<size_t>> kept = keptOnes(publisher, contents);
        const std::vector<quint32> before = std::exchange(m_serials, {});
        std::vector<size_t> limits(kept.size()); // serials that are kept for a later record
        size_t limit = before.size();
        for (size_t place = kept.size(); place-- > 0;)
            limit = limits[place] = kept[place].value_or(limit);
        size_t old = 0;
        bool hasRoom = true;
        for (size_t place = 0; place < contents.Count(); ++place) {
            StepOf(place, contents.Count());
            while (hasRoom && kept[place] && old < *kept[place])
                remove(publisher, before[old++], steps);
            if (hasRoom && (kept[place] || old < limits[place])) {
                m_serials.push_back(before[old]);
                put(publisher, before[old++], contents.At(place), steps);
            } else {
                hasRoom = hasRoom && limits[place] == before.size();
                add(publisher, contents.At(place), steps);
            }
        }
        while (old < before.size())
            remove(publisher, before[old++], steps);
    }

    const List& m_list;
    typename List::Seen m_seen;
    std::vector<quint32> m_serials; ///< of the records, in list order
    quint32 m_lastSerial = 0;
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
    InTurns(tr("Sharing the list"), m_rows->Count(), [this] {
        m_rows->Take(m_publisher);
        m_publisher.PublishAnew();
    });
    connect(&m_claim, &ListClaim::Won, this, [this] {
        Flush();
        InTurns(tr("Sharing the list"), m_publisher.rows.Count(),
                [this] { m_publisher.StartSending(m_claim.AtBroker()); });
    });
    connect(&m_claim, &ListClaim::Overwritten, this, [this] {
        InTurns(tr("Sharing the list"), m_publisher.rows.Count(), [this] { m_publisher.PublishAnew(); });
    });
    connect(&m_claim, &ListClaim::StateChanged, this, [this] {
        if (!m_claim.IsServing())
            m_publisher.StopSending();
        emit StateChanged();
    });
    m_claim.Start();
}

RecordServer::~RecordServer() {
    const LongWork::Unbroken whole;
    if (m_value && m_claim.IsServing())
        publishChanges(); // in one turn: the window may be ending, too
}

void RecordServer::Flush() {
    m_timer.stop();
    if (m_value)
        InTurns(tr("Sharing the list"), m_rows->Count(), [this] { publishChanges(); });
}

void RecordServer::publishChanges() {
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
