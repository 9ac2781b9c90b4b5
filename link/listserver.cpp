#include "link/listserver.h"

#include "host/base/problems.h"
#include "host/report/rgexception.h"
#include "host/valuetree/tree.h"
#include "link/bycontents.h"
#include "link/inturns.h"
#include "link/topics.h"

using Messages::EntryId;

namespace {

constexpr char TraceSource[] = "sharelink";
/// Changes within this time are one message.
constexpr int GatherMilliseconds = 20;

} // namespace

ListServer::ListServer(Seat& seat, const SharedList& list, const QString& listDirectory,
                       std::unique_ptr<ListJournal> journal)
    : m_seat(seat),
      m_list(list),
      m_listDirectory(listDirectory),
      m_publisher(seat.Bus(), Topics::List(seat.SiteTopic(), list.name), QString::fromUtf8(seat.Path())),
      m_journal(std::move(journal)),
      m_changes(*list.node, [this] { m_timer.start(); }),
      m_claim(seat, m_publisher.Topic()),
      m_fileLoaded(this),
      m_fileName(this) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(GatherMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &ListServer::Flush);
    if (list.hasFile) {
        m_fileLoaded.Reset(
            GetOrCreateValue<Value<bool>>(list.node->GetPathName() + QStringLiteral("_FileLoaded")));
        m_fileName.Reset(
            GetOrCreateValue<Value<QString>>(list.node->GetPathName() + QStringLiteral("_FileName")));
    }
    InTurns(tr("Sharing the list"), list.node->ChildCount(), [this] { adopt(); });
    m_requests = seat.Bus().Subscribe(
        m_publisher.Topic() + "/request/+/+",
        [this](const auto& topic, const auto& payload) { takeRequest(topic, payload); },
        MessageBus::Waits::ForWork, MessageBus::Keep::No);
    connect(&m_claim, &ListClaim::Won, this, [this] {
        Flush();
        InTurns(tr("Sharing the list"), m_publisher.rows.Count(),
                [this] { m_publisher.StartSending(m_claim.AtBroker()); });
    });
    connect(&m_claim, &ListClaim::Overwritten, this, [this] {
        InTurns(tr("Sharing the list"), m_publisher.rows.Count(), [this] { m_publisher.PublishAnew(); });
        publishFile();
    });
    connect(&m_claim, &ListClaim::StateChanged, this, &ListServer::claimChanged);
    m_claim.Start();
}

ListServer::~ListServer() {
    const LongWork::Unbroken whole;
    if (m_claim.IsServing())
        publishChanges(m_changes.Take()); // in one turn: the window may be ending, too
}

void ListServer::claimChanged() {
    if (m_claim.IsServing())
        publishFile();
    else
        m_publisher.StopSending();
    emit StateChanged();
}

bool ListServer::HasUnsaved() const {
    return m_journal && m_journal->ChangeBytes() > 0;
}

/// Takes the list as it is.
void ListServer::adopt() {
    if (m_list.shape)
        m_publisher.layouts.Add(EntryLayout::Of(Names::Intern(m_list.entryName), m_list.shape->Fields()));
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
    std::vector<quint32> gone;
    ByContents vanished; // serials of those: a list that is read again gets its rows back
    size_t seen = 0;
    for (const quint32 serial : serials) {
        StepOf(seen++, serials.size());
        if (m_list.node->ChildBySerial(serial))
            continue;
        const auto row = m_publisher.rows.Find(serial);
        if (!row)
            continue;
        gone.push_back(serial);
        vanished.Add(Wire::Hash(row->Content().contents), serial);
    }
    size_t noted = 0;
    for (const quint32 serial : serials) {
        StepOf(noted++, serials.size());
        if (Node* const entry = m_list.node->ChildBySerial(serial))
            noteStep(*entry, vanished, steps);
    }
    size_t looked = 0;
    for (const quint32 serial : gone) {
        StepOf(looked++, gone.size());
        if (const auto row = m_publisher.rows.Find(serial)) {
            const EntryId id = row->id;
            steps.push_back({m_publisher.rows.Remove(serial), 0, id});
        }
    }
    return steps;
}

/// False when the entry is as it was published.
bool ListServer::noteStep(Node& entry, ByContents& vanished, std::vector<Step>& steps) {
    RowTable& rows = m_publisher.rows;
    const quint32 serial = entry.GetSerial();
    const quint32 layout = m_publisher.layouts.NumberOf(entry);
    Wire::Writer writer;
    m_publisher.layouts.At(layout)->Put(writer, entry);
    const QByteArray contents = writer.Take();
    EntryId id = 0;
    Messages::Revision revision = m_publisher.NextRevision();
    if (const auto row = rows.Find(serial)) {
        const Messages::Row old = row->Content();
        if (old.layout == layout && old.contents == contents)
            return false;
        id = old.id;
    } else if (const auto before = vanished.Take(Wire::Hash(contents))) {
        const Messages::Row old = rows.Find(*before)->Content();
        id = old.id;
        revision = old.revision; // edits that clients made of it are still good
    } else {
        id = rows.RemovedId(serial);
    }
    const quint32 chunk = rows.Put(serial, entry.GetOrdinal(),
                                   {id != 0 ? id : rows.NewId(), serial, revision, layout, contents});
    steps.push_back({chunk, serial, 0});
    return true;
}

void ListServer::Flush() {
    m_timer.stop();
    const std::vector<quint32> serials = m_changes.Take();
    InTurns(tr("Sharing the list"), serials.size(), [&] { publishChanges(serials); });
}

void ListServer::publishChanges(const std::vector<quint32>& serials) {
    const std::vector<Step> steps = stepsOf(serials);
    const bool hadEdits = std::exchange(m_hasEdits, false);
    if (!steps.empty()) {
        keep(steps);
        m_publisher.Publish(steps);
    }
    answer();
    if (hadEdits)
        emit Edited();
}

/// What clients are told of has been kept before.
void ListServer::keep(const std::vector<Step>& steps) {
    if (!m_journal)
        return;
    try {
        m_journal->Append(m_publisher.DeltaOf(steps), m_publisher.layouts);
    } catch (const RGException& exception) {
        // It is in the list all the same; the operator of the server has to know.
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
    }
}

void ListServer::WasSaved() {
    Flush();
    if (m_journal)
        m_journal->Begin(m_publisher.rows, m_publisher.layouts);
}

EntryId ListServer::IdOf(const Node& entry) const {
    const auto row = m_publisher.rows.Find(entry.GetSerial());
    return row && entry.GetParentNode() == m_list.node ? row->id : 0;
}
