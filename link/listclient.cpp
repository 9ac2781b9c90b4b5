#include "link/listclient.h"

#include "host/valuetree/tree.h"
#include "link/bycontents.h"
#include "link/inturns.h"
#include "link/topics.h"

using Messages::Request;

namespace {

/// Changes within this time are asked for together.
constexpr int GatherMilliseconds = 20;

} // namespace

ListClient::ListClient(ListReader& reader, const SharedList& list)
    : m_reader(reader),
      m_list(list),
      m_changes(*list.node, [this] { m_timer.start(); }),
      m_mirror(list, reader.Copy()),
      m_requestTopic(reader.Topic() + "/request/" + reader.GetSeat().Path()),
      m_fileLoaded(this),
      m_fileName(this) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(GatherMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &ListClient::Flush);
    m_retry.setInterval(Seat::PatienceMilliseconds);
    connect(&m_retry, &QTimer::timeout, this, &ListClient::retry);
    if (list.hasFile) {
        const QString path = list.node->GetPathName();
        m_fileLoaded.Reset(GetOrCreateValue<Value<bool>>(path + QStringLiteral("_FileLoaded")));
        m_fileName.Reset(GetOrCreateValue<Value<QString>>(path + QStringLiteral("_FileName")));
    }
    m_answers = reader.GetSeat().Bus().Subscribe(
        reader.Topic() + "/answer/" + reader.GetSeat().Path(),
        [this](const auto&, const auto& payload) { takeAnswer(payload); }, MessageBus::Waits::ForWork,
        MessageBus::Keep::No);
    connect(&reader, &ListReader::RowsChanged, this, &ListClient::takeRows);
    connect(&reader, &ListReader::StateChanged, this, &ListClient::stateChanged);
    connect(&reader, &ListReader::FileChanged, this, &ListClient::takeFile);
    connect(&reader.GetSeat().Bus(), &MessageBus::Refused, this, &ListClient::takeRefusedTopic);
    if (reader.Copy().Revision() != 0)
        takeRows({true, {}});
    stateChanged();
}

QString ListClient::WhyNoEditing() const {
    if (m_reader.GetState() != ListReader::State::Whole)
        return m_reader.StateText();
    if (m_isReadOnly)
        return tr("the broker lets this user only read the list");
    if (m_mayEdit)
        return {};
    return m_unanswered < MostUnanswered ? tr("waits for the server's leave to edit")
                                         : tr("no answer: this user may not ask the server, or it has gone");
}

Messages::EntryId ListClient::IdOf(const Node& entry) const {
    return entry.GetParentNode() == m_list.node ? m_mirror.IdOf(entry.GetSerial()) : 0;
}

QStringList ListClient::EditorsOf(const Node& entry) const {
    QStringList names;
    const EntryId id = IdOf(entry);
    Seat& seat = m_reader.GetSeat();
    for (const auto& [path, presence] : seat.Present()) {
        if (id != 0 && presence.id == id && presence.list == m_list.name && path != seat.Path())
            names << presence.name;
    }
    return names;
}

void ListClient::SetEditing(const Node* entry) {
    const EntryId id = entry ? IdOf(*entry) : 0;
    m_reader.GetSeat().SetEditing(id != 0 ? m_list.name : QString(), id);
}

void ListClient::takeRows(const ListCopy::Changed& changed) {
    if (m_mirror.IsShown())
        Flush(); // what was changed here was changed on the rows before these
    const size_t count = changed.all ? m_reader.Copy().GetRows().size() : changed.ids.size();
    InTurns(tr("Showing the shared list"), count, [&] { showRows(changed); });
    if (changed.all)
        askAgain();
    takeFile();
}

void ListClient::showRows(const ListCopy::Changed& changed) {
    const EntryChanges::Deaf deaf(m_changes);
    if (changed.all) {
        const auto isOurs = [this](EntryId id) { return m_changing.count(id) + m_removing.count(id) > 0; };
        dropAddedThatAreHere();
        m_mirror.ShowAll(isOurs);
    }
    size_t taken = 0;
    for (const EntryId id : changed.ids) {
        StepOf(taken++, changed.ids.size());
        takeRow(id);
    }
}

/// The answer to a request may have been lost with the server: then its entry is among the rows.
void ListClient::dropAddedThatAreHere() {
    if (m_adding.empty())
        return;
    ByContents added;
    for (const auto& [serial, asked] : m_adding)
        added.Add(Wire::Hash(asked.request.contents), serial);
    for (const auto& [id, row] : m_reader.Copy().GetRows()) {
        const auto serial = m_mirror.Has(id) ? std::nullopt : added.Take(Wire::Hash(row.Content().contents));
        if (!serial)
            continue;
        m_adding.erase(*serial);
        m_list.node->DeleteNode(m_list.node->ChildBySerial(*serial));
    }
}

void ListClient::takeRow(EntryId id) {
    const ListCopy::Row* const found = m_reader.Copy().Find(id);
    if (!found) {
        m_removing.erase(id);
        if (m_changing.count(id) > 0)
            refuseChange(id, tr("the entry has been removed"));
        if (m_mirror.Has(id))
            m_mirror.Destroy(id);
        return;
    }
    const Messages::Row row = found->Content();
    if (!m_mirror.Has(id))
        return takeNewRow(id, row);
    const auto asked = m_changing.find(id);
    if (asked == m_changing.end())
        m_mirror.Set(id, row);
    else if (asked->second.isAccepted || asked->second.request.contents == row.contents)
        settleChange(id);
}

/// A row may be that of an entry which has been added or is to be removed here.
void ListClient::takeNewRow(EntryId id, const Messages::Row& row) {
    if (m_removing.count(id) > 0)
        return;
    const auto isIt = [&](const auto& added) {
        return added.second.id != 0 ? added.second.id == id : added.second.request.contents == row.contents;
    };
    const auto added = std::find_if(m_adding.begin(), m_adding.end(), isIt);
    if (added == m_adding.end())
        m_mirror.Attach(id, row);
    else
        settleAdded(added->first, id);
}

/// The server has what was asked for; what has been changed here since is asked for next.
void ListClient::settleChange(EntryId id) {
    const Asked asked = m_changing[id];
    m_changing.erase(id);
    const Messages::Row row = m_reader.Copy().Find(id)->Content();
    Node* const entry = m_mirror.EntryOf(id);
    if (!entry) { // removed here meanwhile
        m_mirror.SetRevision(id, row.revision, row.layout);
        return noteRemoved(id);
    }
    const bool isAsAsked = m_mirror.IsAs(*entry, m_mirror.LayoutOf(id), asked.request.contents);
    if (isAsAsked)
        return m_mirror.Set(id, row);
    m_mirror.SetRevision(id, row.revision, row.layout);
    noteChanged(id, *entry);
}

void ListClient::settleAdded(quint32 serial, EntryId id) {
    const Asked asked = m_adding[serial];
    m_adding.erase(serial);
    const Messages::Row row = m_reader.Copy().Find(id)->Content();
    Node* entry = m_list.node->ChildBySerial(serial);
    if (!entry) { // removed here before the server knew of it
        m_mirror.Attach(id, row);
        m_list.node->DeleteNode(m_mirror.EntryOf(id));
        return noteRemoved(id);
    }
    const bool isEdited = !isAsAsked(*entry, asked.request);
    if (m_mirror.Has(id) || !m_mirror.Bind(id, row, *entry)) {
        std::unique_ptr<Node> same = isEdited ? m_mirror.CopyOf(*entry) : nullptr;
        m_list.node->DeleteNode(entry);
        if (m_mirror.Has(id))
            m_mirror.Destroy(id);
        entry = m_mirror.Attach(id, row, std::move(same));
    }
    if (!isEdited)
        return m_mirror.Set(id, row);
    if (row.contents == asked.request.contents)
        return noteChanged(id, *entry);
    m_changing[id] = {};
    refuseChange(id, tr("the entry has been changed meanwhile"));
}

/// A newly loaded list is announced when it is here.
void ListClient::takeFile() {
    const auto& file = m_reader.File();
    // Revisions of an earlier server tell nothing of this one's.
    const ListCopy& copy = m_reader.Copy();
    if (!file || !m_mirror.IsShown() || !copy.IsWhole() || copy.Revision() < file->revision)
        return;
    setFileValues();
    if (!file->isLoaded || m_announced == file->announced)
        return;
    m_announced = file->announced;
    if (m_fileLoaded)
        m_fileLoaded->NotifyObservers(TChangeCode::Announcement, this);
    emit FileLoaded();
}

void ListClient::setFileValues() {
    const auto& file = m_reader.File();
    if (m_fileName && file)
        m_fileName->SetValue(file->name, this);
    if (m_fileLoaded && file)
        m_fileLoaded->SetValue(file->isLoaded, this);
}

/// A file name that is written here asks the server to load that file; what is written before the list is
/// here, or by a dialog that was cancelled, does not.
void ListClient::Update(Observable* subject, TChangeCode code) {
    if (m_fileLoaded.ForgetIfRemoved(subject, code) || m_fileName.ForgetIfRemoved(subject, code))
        return;
    if (code != TChangeCode::ValueChanged || !m_fileName || subject != m_fileName.get() ||
        !m_mirror.IsShown())
        return;
    const QString name = m_fileName->GetValue();
    QString reason = WhyNoEditing();
    const bool isRequest = !name.isEmpty() && !(m_reader.File() && m_reader.File()->name == name);
    if (isRequest && reason.isEmpty()) {
        Request request;
        request.kind = Request::Kind::Load;
        request.text = name;
        m_loading = send(std::move(request)).request;
        return;
    }
    if (isRequest)
        refuseLoading(reason);
    else
        setFileValues();
}
