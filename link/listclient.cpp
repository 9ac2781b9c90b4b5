#include "link/listclient.h"

#include "host/valuetree/tree.h"
#include "link/topics.h"

using Messages::Answer;
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
    m_answers = reader.GetSeat().Bus().Subscribe(reader.Topic() + "/answer/" + reader.GetSeat().Path(),
                                                 [this](const auto&, const auto& p) { takeAnswer(p); });
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
    return m_mayEdit ? QString() : tr("waits for the server's leave to edit");
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
    {
        const EntryChanges::Deaf deaf(m_changes);
        if (changed.all) {
            const auto isOurs = [this](EntryId id) { return m_changing.count(id) > 0; };
            dropAddedThatAreHere();
            m_mirror.ShowAll(isOurs);
        }
        for (const EntryId id : changed.ids)
            takeRow(id);
    }
    if (changed.all)
        askAgain();
    takeFile();
}

/// The answer to a request may have been lost with the server: then its entry is among the rows.
void ListClient::dropAddedThatAreHere() {
    for (const auto& [serial, asked] : std::map(m_adding)) {
        const auto isIt = [this, &contents = asked.request.contents](const auto& row) {
            return !m_mirror.Has(row.first) && row.second.Content().contents == contents;
        };
        const auto& rows = m_reader.Copy().GetRows();
        if (std::none_of(rows.begin(), rows.end(), isIt))
            continue;
        m_adding.erase(serial);
        m_list.node->DeleteNode(m_list.node->ChildBySerial(serial));
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
    m_adding.erase(serial);
    const Messages::Row row = m_reader.Copy().Find(id)->Content();
    Node* const entry = m_list.node->ChildBySerial(serial);
    if (!entry) { // removed here before the server knew of it
        m_mirror.Attach(id, row);
        m_list.node->DeleteNode(m_mirror.EntryOf(id));
        return noteRemoved(id);
    }
    if (m_mirror.Has(id) || !m_mirror.Bind(id, row, *entry)) {
        m_list.node->DeleteNode(entry);
        if (!m_mirror.Has(id))
            m_mirror.Attach(id, row);
        return;
    }
    if (!m_mirror.IsAs(*entry, row.layout, row.contents))
        noteChanged(id, *entry);
}

void ListClient::Flush() {
    m_timer.stop();
    const std::vector<quint32> serials = m_changes.Take();
    if (!m_mirror.IsShown())
        return;
    for (const quint32 serial : serials)
        noteLocal(serial);
}

void ListClient::noteLocal(quint32 serial) {
    const EntryId id = m_mirror.IdOf(serial);
    Node* const entry = m_list.node->ChildBySerial(serial);
    if (id != 0 && !entry)
        noteRemoved(id);
    else if (id != 0)
        noteChanged(id, *entry);
    else if (entry && m_adding.count(serial) == 0)
        noteAdded(*entry);
}

/// One change of an entry is under way at a time.
void ListClient::noteChanged(EntryId id, Node& entry) {
    const ListCopy::Row* const row = m_reader.Copy().Find(id);
    if (!row || m_changing.count(id) > 0)
        return;
    const Messages::Row content = row->Content();
    if (m_mirror.IsAs(entry, content.layout, content.contents))
        return;
    if (const QString reason = WhyNoEditing(); !reason.isEmpty()) {
        m_changing[id] = {};
        return refuseChange(id, reason);
    }
    Request request;
    request.kind = Request::Kind::Set;
    request.id = id;
    request.base = m_mirror.RevisionOf(id);
    putContents(entry, m_mirror.LayoutOf(id), request);
    m_changing[id] = send(std::move(request), content.contents.toByteArray());
}

void ListClient::noteAdded(Node& entry) {
    const quint32 serial = entry.GetSerial();
    if (const QString reason = WhyNoEditing(); !reason.isEmpty())
        return refuseAdded(serial, reason);
    Request request;
    request.kind = Request::Kind::Add;
    request.id = m_mirror.GoneId(serial);
    putContents(entry, 0, request);
    m_adding[serial] = send(std::move(request));
}

void ListClient::noteRemoved(EntryId id) {
    if (m_changing.count(id) > 0)
        return; // when that is settled
    const Messages::Revision base = m_mirror.RevisionOf(id);
    const ListCopy::Row* const row = m_reader.Copy().Find(id);
    m_mirror.Forget(id);
    if (!row)
        return;
    if (const QString reason = WhyNoEditing(); !reason.isEmpty())
        return refuseRemoved(id, reason);
    Request request;
    request.kind = Request::Kind::Remove;
    request.id = id;
    request.base = base;
    m_removing[id] = send(std::move(request), row->Content().contents.toByteArray());
}

/// The entry's contents, by its number where the server knows such a layout.
void ListClient::putContents(const Node& entry, quint32 alike, Request& request) const {
    const EntryLayout* const known = m_reader.Copy().Layouts().At(alike);
    Wire::Writer writer;
    if (known && known->Describes(entry)) {
        known->Put(writer, entry);
        request.layoutNumber = alike;
    } else {
        const EntryLayout own = EntryLayout::Of(entry);
        own.Put(writer, entry);
        request.layout = own.Encode();
    }
    request.contents = writer.Take();
}

void ListClient::publish(const Request& request) {
    m_reader.GetSeat().Bus().Publish(m_requestTopic, request.Encode());
    if (!m_retry.isActive())
        m_retry.start();
}

ListClient::Asked ListClient::send(Request request, const QByteArray& before) {
    request.number = ++m_lastNumber;
    publish(request);
    return {std::move(request), before, false, 0};
}

/// A server that started anew counts revisions anew: what is as it was when it was changed here still is.
void ListClient::sendAgain(Asked& asked, const Messages::Row& row) {
    if (row.revision != asked.request.base && row.contents == asked.before) {
        asked.request.base = row.revision;
        asked.request.number = ++m_lastNumber;
    }
    publish(asked.request);
}

void ListClient::takeAnswer(const QByteArray& payload) {
    const auto answer = Answer::Decode(payload);
    if (!answer)
        return m_reader.GetSeat().TellOnce(m_reader.Topic() + "/answer", tr("is no answer"));
    const bool isAccepted = answer->verdict == Answer::Verdict::Accepted;
    if (answer->number == m_helloNumber) {
        m_helloNumber = 0;
        m_mayEdit = isAccepted;
        emit RightsChanged();
        askAgain();
    } else if (answer->number == m_loadNumber) {
        m_loadNumber = 0;
        if (!isAccepted)
            emit Refused({answer->reason, {}, {}});
        setFileValues();
    } else {
        takeVerdict(*answer);
    }
}

void ListClient::takeVerdict(const Answer& answer) {
    const auto isIt = [&](const auto& asked) { return asked.second.request.number == answer.number; };
    const bool isAccepted = answer.verdict == Answer::Verdict::Accepted;
    const EntryChanges::Deaf deaf(m_changes);
    if (const auto change = std::find_if(m_changing.begin(), m_changing.end(), isIt);
        change != m_changing.end()) {
        const EntryId id = change->first;
        if (!isAccepted)
            return refuseChange(id, answer.reason);
        change->second.isAccepted = true;
        const ListCopy::Row* const row = m_reader.Copy().Find(id);
        const bool isHere = row && (row->Content().revision != change->second.request.base ||
                                    row->Content().contents == change->second.request.contents);
        if (isHere)
            settleChange(id);
        return;
    }
    if (const auto added = std::find_if(m_adding.begin(), m_adding.end(), isIt); added != m_adding.end()) {
        if (!isAccepted)
            return refuseAdded(added->first, answer.reason);
        added->second.id = answer.id;
        added->second.isAccepted = true;
        if (m_reader.Copy().Find(answer.id))
            settleAdded(added->first, answer.id);
        return;
    }
    if (const auto removed = std::find_if(m_removing.begin(), m_removing.end(), isIt);
        removed != m_removing.end()) {
        if (!isAccepted)
            refuseRemoved(removed->first, answer.reason);
    }
}

/// Both states are told, and the server's is put back.
void ListClient::refuseChange(EntryId id, const QString& reason) {
    m_changing.erase(id);
    Node* const entry = m_mirror.EntryOf(id);
    const ListCopy::Row* const row = m_reader.Copy().Find(id);
    Refusal refusal{reason, entry, {}};
    if (entry && row) {
        const Messages::Row present = row->Content();
        const EntryLayout own = EntryLayout::Of(*entry);
        Wire::Writer writer;
        own.Put(writer, *entry);
        const auto wanted = own.Texts(writer.View());
        const auto theirs = m_reader.Copy().Layouts().At(present.layout)->Texts(present.contents);
        for (size_t i = 0; i < std::min(wanted.size(), theirs.size()); ++i) {
            if (wanted[i].second != theirs[i].second)
                refusal.fields.push_back({wanted[i].first, wanted[i].second, theirs[i].second});
        }
        const EntryChanges::Deaf deaf(m_changes);
        m_mirror.Set(id, present);
    }
    emit Refused(refusal);
}

void ListClient::refuseAdded(quint32 serial, const QString& reason) {
    m_adding.erase(serial);
    Refusal refusal{reason, {}, {}};
    if (Node* const entry = m_list.node->ChildBySerial(serial)) {
        const EntryLayout layout = EntryLayout::Of(*entry);
        Wire::Writer writer;
        layout.Put(writer, *entry);
        for (const auto& [name, text] : layout.Texts(writer.View()))
            refusal.fields.push_back({name, text, {}});
        const EntryChanges::Deaf deaf(m_changes);
        m_list.node->DeleteNode(entry);
    }
    emit Refused(refusal);
}

void ListClient::refuseRemoved(EntryId id, const QString& reason) {
    m_removing.erase(id);
    const EntryChanges::Deaf deaf(m_changes);
    Node* entry = m_mirror.EntryOf(id);
    if (const ListCopy::Row* const row = m_reader.Copy().Find(id); row && !entry)
        entry = m_mirror.Attach(id, row->Content());
    emit Refused({reason, entry, {}});
}

void ListClient::refuseAll(const QString& reason) {
    while (!m_changing.empty())
        refuseChange(m_changing.begin()->first, reason);
    while (!m_adding.empty())
        refuseAdded(m_adding.begin()->first, reason);
    while (!m_removing.empty())
        refuseRemoved(m_removing.begin()->first, reason);
}

/// Requests and answers may have been lost with a connection: what is not in the rows is asked for once more,
/// on the same revision, so that nothing is done twice.
void ListClient::askAgain() {
    if (!WhyNoEditing().isEmpty())
        return;
    for (const auto& [id, asked] : std::map(m_changing)) {
        const ListCopy::Row* const row = m_reader.Copy().Find(id);
        if (!row) {
            refuseChange(id, tr("the entry has been removed"));
        } else if (row->Content().contents == asked.request.contents) {
            settleChange(id);
        } else if (row->Content().revision != asked.request.base && row->Content().contents != asked.before) {
            refuseChange(id, tr("the entry has been changed meanwhile"));
        } else {
            sendAgain(m_changing[id], row->Content());
        }
    }
    for (const auto& [id, asked] : std::map(m_removing)) {
        if (const ListCopy::Row* const row = m_reader.Copy().Find(id))
            sendAgain(m_removing[id], row->Content());
        else
            m_removing.erase(id);
    }
    for (const auto& [serial, asked] : m_adding)
        publish(asked.request);
}

void ListClient::stateChanged() {
    const bool isWhole = m_reader.GetState() == ListReader::State::Whole;
    if (!isWhole) {
        m_mayEdit = false;
        m_helloNumber = 0;
    } else if (!m_mayEdit && !m_isReadOnly && m_helloNumber == 0) {
        sayHello();
    }
    emit RightsChanged();
}

void ListClient::sayHello() {
    m_helloNumber = send({}).request.number;
}

/// Servers that are just coming hear no requests, and answers may be lost.
void ListClient::retry() {
    if (m_reader.GetState() != ListReader::State::Whole || m_isReadOnly)
        return;
    if (!m_mayEdit)
        sayHello();
    else if (Pending() > 0)
        askAgain();
    else
        m_retry.stop();
}

/// Some brokers hang up on whoever publishes where he may not: it is not tried again.
void ListClient::takeRefusedTopic(const QByteArray& topic) {
    if (topic != m_requestTopic)
        return;
    m_isReadOnly = true;
    m_mayEdit = false;
    refuseAll(WhyNoEditing());
    emit RightsChanged();
}

/// A newly loaded list is announced when it is here.
void ListClient::takeFile() {
    const auto& file = m_reader.File();
    if (!file || !m_mirror.IsShown() || m_reader.Copy().Revision() < file->revision)
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
        m_loadNumber = send(std::move(request)).request.number;
        return;
    }
    setFileValues();
    if (isRequest)
        emit Refused({reason, {}, {}});
}
