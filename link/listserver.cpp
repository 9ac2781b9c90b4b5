#include "link/listserver.h"

#include "host/base/problems.h"
#include "host/report/rgexception.h"
#include "host/valuetree/tree.h"
#include "link/topics.h"

#include <QPointer>

using Messages::EntryId;

namespace {

constexpr char TraceSource[] = "sharelink";
/// Changes within this time are one message.
constexpr int GatherMilliseconds = 20;
/// From so many on, a change is published as a new generation when it is most of the list.
constexpr size_t ManySteps = 4096;
/// Answers that are kept for each client.
constexpr size_t MostAnswers = 256;

} // namespace

/// Rows whose entries have gone, by contents: a list that is read again gets them back.
struct ListServer::Vanished {
    QHash<QByteArray, std::deque<quint32>> serials;

    quint32 Take(const QByteArray& contents) {
        const auto found = serials.find(contents);
        if (found == serials.end() || found->empty())
            return 0;
        const quint32 serial = found->front();
        found->pop_front();
        return serial;
    }
};

ListServer::ListServer(Seat& seat, const SharedList& list, const QString& listDirectory,
                       std::unique_ptr<ListJournal> journal)
    : m_seat(seat),
      m_list(list),
      m_listDirectory(listDirectory),
      m_publisher(seat.Bus(), Topics::List(seat.SiteTopic(), list.name), QString::fromUtf8(seat.Path())),
      m_journal(std::move(journal)),
      m_changes(*list.node, [this] { m_timer.start(); }),
      m_fileLoaded(this),
      m_fileName(this) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(GatherMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &ListServer::Flush);
    m_patience.setSingleShot(true);
    m_patience.setInterval(Seat::PatienceMilliseconds);
    connect(&m_patience, &QTimer::timeout, this, &ListServer::claimNow);
    if (list.hasFile) {
        m_fileLoaded.Reset(
            GetOrCreateValue<Value<bool>>(list.node->GetPathName() + QStringLiteral("_FileLoaded")));
        m_fileName.Reset(
            GetOrCreateValue<Value<QString>>(list.node->GetPathName() + QStringLiteral("_FileName")));
    }
    adopt();
    subscribe();
    connect(&seat.Bus(), &MessageBus::StateChanged, this, &ListServer::busChanged);
    connect(&seat, &Seat::Appeared, this, [this](const QByteArray& who) {
        if (m_patience.isActive() && m_claim && m_claim->seat.toUtf8() == who)
            setState(State::Refused, tr("%1 serves this list already").arg(m_seat.NameOf(who)));
    });
    connect(&seat.Bus(), &MessageBus::Refused, this, [this](const QByteArray& topic) {
        if (topic == m_publisher.Topic() + "/claim")
            setState(State::Refused, tr("the broker does not let this user serve the list"));
    });
    busChanged();
}

bool ListServer::HasUnsaved() const {
    return m_journal && m_journal->ChangeBytes() > 0;
}

ListServer::~ListServer() {
    if (m_state != State::Serving)
        return;
    Flush();
    m_seat.Bus().Publish(m_publisher.Topic() + "/claim", {}, MessageBus::Keep::Retained);
}

void ListServer::subscribe() {
    MessageBus& bus = m_seat.Bus();
    const QByteArray& topic = m_publisher.Topic();
    m_subscriptions.push_back(
        bus.Subscribe(topic + "/claim", [this](const auto&, const auto& payload) { takeClaim(payload); }));
    m_subscriptions.push_back(bus.Subscribe(topic + "/manifest", [this](const auto&, const auto& payload) {
        if (m_state == State::Claiming)
            m_manifest = Messages::Manifest::Decode(payload);
    }));
    m_subscriptions.push_back(bus.Subscribe(
        topic + "/request/+/+", [this](const auto& t, const auto& payload) { takeRequest(t, payload); }));
}

void ListServer::setState(State state, const QString& reason) {
    m_patience.stop();
    if (m_state == state && m_reason == reason)
        return;
    m_state = state;
    m_reason = reason;
    emit StateChanged();
}

QString ListServer::Reason() const {
    return m_state == State::Offline ? m_seat.Bus().Reason() : m_reason;
}

void ListServer::busChanged() {
    if (m_state == State::Refused)
        return;
    if (!m_seat.Bus().IsOnline())
        return setState(State::Offline);
    m_publisher.SetSending(false);
    m_claim.reset();
    m_manifest.reset();
    setState(State::Claiming);
    m_seat.AfterWhatIsUnderWay([self = QPointer(this)] {
        if (self)
            self->claim();
    });
}

void ListServer::takeClaim(const QByteArray& payload) {
    m_claim = Messages::Claim::Decode(payload);
    if (!m_claim || m_claim->seat.isEmpty())
        return;
    if (m_claim->nonce == m_seat.Nonce()) {
        m_sawOwnClaim = true;
    } else if (m_state == State::Serving) {
        claimNow(); // whoever claims later is the second
    } else if (!m_sawOwnClaim) {
        m_rival = m_claim->seat.toUtf8();
    }
}

/// All seats see claims in the same order: the first one since the look holds.
void ListServer::claim() {
    if (m_state != State::Claiming)
        return;
    m_rival.clear();
    m_sawOwnClaim = false;
    if (!m_claim || m_claim->seat.isEmpty() || m_claim->nonce == m_seat.Nonce())
        return claimNow();
    m_patience.start();
    m_seat.CallAll();
}

void ListServer::claimNow() {
    m_seat.Bus().Publish(m_publisher.Topic() + "/claim",
                         Messages::Claim{QString::fromUtf8(m_seat.Path()), m_seat.Nonce()}.Encode(),
                         MessageBus::Keep::Retained);
    if (m_state != State::Claiming)
        return;
    m_seat.AfterWhatIsUnderWay([self = QPointer(this)] {
        if (self)
            self->decide();
    });
}

void ListServer::decide() {
    if (m_state != State::Claiming)
        return;
    if (!m_rival.isEmpty())
        return setState(State::Refused, tr("%1 serves this list already").arg(m_seat.NameOf(m_rival)));
    if (!m_sawOwnClaim)
        return setState(State::Refused, tr("the broker does not let this user serve the list"));
    serve();
}

void ListServer::serve() {
    m_timer.stop();
    if (!m_changes.IsEmpty())
        Flush();
    m_publisher.SetSending(true);
    m_publisher.CatchUp(m_manifest);
    setState(State::Serving);
    if (m_claim && m_claim->nonce != m_seat.Nonce())
        claimNow(); // the second one's stands there
    publishFile();
}

/// Takes the list as it is.
void ListServer::adopt() {
    if (m_list.shape)
        m_publisher.layouts.Add(EntryLayout::Of(Names::Intern(m_list.entryName), *m_list.shape));
    if (m_journal) {
        const EntryChanges::Deaf deaf(m_changes);
        m_journal->Restore(m_list, m_publisher.NextRevision(), m_publisher.rows, m_publisher.layouts);
    }
    std::vector<quint32> serials;
    for (const Node* entry : m_list.node->Children())
        serials.push_back(entry->GetSerial());
    stepsOf(serials);
    m_publisher.PublishAnew();
}

std::vector<ListServer::Step> ListServer::stepsOf(const std::vector<quint32>& serials) {
    std::vector<Step> steps;
    Vanished vanished;
    for (const quint32 serial : serials) {
        const RowTable::Row* const row = m_publisher.rows.Find(serial);
        if (row && !m_list.node->ChildBySerial(serial))
            vanished.serials[row->Content().contents.toByteArray()].push_back(serial);
    }
    for (const quint32 serial : serials) {
        if (Node* const entry = m_list.node->ChildBySerial(serial))
            noteStep(*entry, vanished, steps);
    }
    for (const auto& left : vanished.serials) {
        for (const quint32 serial : left) {
            const EntryId id = m_publisher.rows.Find(serial)->id;
            steps.push_back({0, id, m_publisher.rows.Remove(serial)});
        }
    }
    return steps;
}

/// False when the entry is as it was published.
bool ListServer::noteStep(Node& entry, Vanished& vanished, std::vector<Step>& steps) {
    RowTable& rows = m_publisher.rows;
    const quint32 serial = entry.GetSerial();
    const quint32 layout = m_publisher.layouts.NumberOf(entry);
    Wire::Writer writer;
    m_publisher.layouts.At(layout)->Put(writer, entry);
    const QByteArray contents = writer.Take();
    EntryId id = 0;
    if (const RowTable::Row* const row = rows.Find(serial)) {
        const Messages::Row old = row->Content();
        if (old.layout == layout && old.contents == contents)
            return false;
        id = old.id;
    } else if (const quint32 before = vanished.Take(contents)) {
        id = rows.Find(before)->id;
    } else {
        id = rows.RemovedId(serial);
    }
    rows.Put(serial, entry.GetOrdinal(),
             {id != 0 ? id : rows.NewId(), serial, m_publisher.NextRevision(), layout, contents});
    steps.push_back({serial, 0, 0});
    return true;
}

void ListServer::Flush() {
    m_timer.stop();
    const std::vector<quint32> serials = m_changes.Take();
    const std::vector<Step> steps = stepsOf(serials);
    const bool hadEdits = std::exchange(m_hasEdits, false);
    if (!steps.empty())
        publishSteps(steps);
    answer();
    if (hadEdits)
        emit Edited();
}

/// What clients are told has been kept before.
void ListServer::publishSteps(const std::vector<Step>& steps) {
    try {
        if (m_journal)
            m_journal->Append(m_publisher.DeltaOf(steps), m_publisher.layouts);
    } catch (const RGException& exception) {
        // It is in the list all the same; the operator of the server has to know.
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
    }
    if (steps.size() > std::max(ManySteps, m_publisher.rows.Count() / 2)) {
        m_publisher.PublishAnew();
    } else {
        m_publisher.Publish(steps);
    }
}

void ListServer::answer() {
    for (auto& [seat, answer, added] : std::exchange(m_answers, {})) {
        if (const RowTable::Row* const row = m_publisher.rows.Find(added))
            answer.id = row->id;
        m_seat.Bus().Publish(m_publisher.Topic() + "/answer/" + seat, answer.Encode());
        std::deque<Messages::Answer>& answered = m_answered[seat];
        answered.push_back(answer);
        if (answered.size() > MostAnswers)
            answered.pop_front();
    }
}

void ListServer::WasSaved() {
    Flush();
    if (m_journal)
        m_journal->Begin(m_publisher.rows, m_publisher.layouts);
}

EntryId ListServer::IdOf(const Node& entry) const {
    const RowTable::Row* const row = m_publisher.rows.Find(entry.GetSerial());
    return row && entry.GetParentNode() == m_list.node ? row->id : 0;
}
