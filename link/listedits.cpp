// What a client asks the server for, and what becomes of it.

#include "link/listclient.h"

using Messages::Answer;
using Messages::Request;

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
    if (m_changing.count(id) > 0)
        return;
    const ListCopy::Row* const row = m_reader.Copy().Find(id);
    if (!row) {
        m_changing[id] = {};
        return refuseChange(id, tr("the entry has been removed"));
    }
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

/// Whether nothing of it has been changed here since.
bool ListClient::isAsAsked(const Node& entry, const Request& request) const {
    Request now;
    putContents(entry, request.layoutNumber, now);
    return now.layout == request.layout && now.contents == request.contents;
}

void ListClient::publish(const Request& request) {
    m_reader.GetSeat().Bus().Publish(m_requestTopic, request.Encode());
    if (!m_retry.isActive())
        m_retry.start();
}

ListClient::Asked ListClient::send(Request request, const QByteArray& before) {
    request.number = m_reader.GetSeat().NewNumber();
    publish(request);
    return {std::move(request), before, m_reader.Copy().Newest()->generation, false, 0};
}

/// A server that started anew counts revisions anew: what is as it was when it was changed here still is.
void ListClient::sendAgain(Asked& asked, const Messages::Row& row) {
    const bool isAnew = asked.generation != m_reader.Copy().Newest()->generation;
    if (isAnew && row.revision != asked.request.base && row.contents == asked.before) {
        asked.request.base = row.revision;
        asked.request.number = m_reader.GetSeat().NewNumber();
    }
    publish(asked.request);
}

void ListClient::takeAnswer(const QByteArray& payload) {
    Flush(); // entries may be made anew
    const auto answer = Answer::Decode(payload);
    if (!answer)
        return m_reader.GetSeat().TellOnce(m_reader.Topic() + "/answer", tr("is no answer"));
    m_unanswered = 0;
    const bool isAccepted = answer->verdict == Answer::Verdict::Accepted;
    if (answer->number == m_helloNumber) {
        m_helloNumber = 0;
        m_mayEdit = isAccepted;
        emit RightsChanged();
        askAgain();
    } else if (m_loading && answer->number == m_loading->number) {
        if (!isAccepted)
            return refuseLoading(answer->reason);
        m_loading.reset();
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
        const EntryId id = removed->first;
        if (!isAccepted)
            return refuseRemoved(id, answer.reason);
        const ListCopy::Row* const row = m_reader.Copy().Find(id);
        if (row && row->Content().revision != removed->second.request.base)
            takeBack(id); // it has been taken back since
    }
}

/// Each value's name and content.
std::vector<std::pair<QString, QString>> ListClient::textsOf(const Node& entry) {
    const EntryLayout layout = EntryLayout::Of(entry);
    Wire::Writer writer;
    layout.Put(writer, entry);
    return layout.Texts(writer.View());
}

/// Both states are told, and the server's is put back.
void ListClient::refuseChange(EntryId id, const QString& reason) {
    m_changing.erase(id);
    Node* const entry = m_mirror.EntryOf(id);
    const ListCopy::Row* const row = m_reader.Copy().Find(id);
    Refusal refusal{reason, {}, {}};
    const auto wanted = entry ? textsOf(*entry) : std::vector<std::pair<QString, QString>>();
    if (row) {
        const Messages::Row present = row->Content();
        const auto theirs = m_reader.Copy().Layouts().At(present.layout)->Texts(present.contents);
        for (size_t i = 0; i < std::min(wanted.size(), theirs.size()); ++i) {
            if (wanted[i].second != theirs[i].second)
                refusal.fields.push_back({wanted[i].first, wanted[i].second, theirs[i].second});
        }
        const EntryChanges::Deaf deaf(m_changes);
        m_mirror.Set(id, present); // makes one anew that has been removed here since
        refusal.entry = m_mirror.EntryOf(id);
    } else {
        for (const auto& [name, text] : wanted)
            refusal.fields.push_back({name, text, {}});
    }
    emit Refused(refusal);
}

void ListClient::refuseAdded(quint32 serial, const QString& reason) {
    m_adding.erase(serial);
    Refusal refusal{reason, {}, {}};
    if (Node* const entry = m_list.node->ChildBySerial(serial)) {
        for (const auto& [name, text] : textsOf(*entry))
            refusal.fields.push_back({name, text, {}});
        const EntryChanges::Deaf deaf(m_changes);
        m_list.node->DeleteNode(entry);
    }
    emit Refused(refusal);
}

void ListClient::refuseRemoved(EntryId id, const QString& reason) {
    emit Refused({reason, takeBack(id), {}});
}

/// An entry is not to be removed any more: it comes back if the server has it.
Node* ListClient::takeBack(EntryId id) {
    m_removing.erase(id);
    const EntryChanges::Deaf deaf(m_changes);
    Node* const entry = m_mirror.EntryOf(id);
    const ListCopy::Row* const row = m_reader.Copy().Find(id);
    return row && !entry ? m_mirror.Attach(id, row->Content()) : entry;
}

void ListClient::refuseLoading(const QString& reason) {
    m_loading.reset();
    setFileValues();
    emit Refused({reason, {}, {}});
}

void ListClient::refuseAll(const QString& reason) {
    while (!m_changing.empty())
        refuseChange(m_changing.begin()->first, reason);
    while (!m_adding.empty())
        refuseAdded(m_adding.begin()->first, reason);
    while (!m_removing.empty())
        refuseRemoved(m_removing.begin()->first, reason);
    if (m_loading)
        refuseLoading(reason);
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
    if (m_loading)
        publish(*m_loading);
}

void ListClient::stateChanged() {
    const bool isWhole = m_reader.GetState() == ListReader::State::Whole;
    if (!isWhole) {
        m_mayEdit = false;
        m_helloNumber = 0;
        m_unanswered = 0;
    } else if (!m_mayEdit && !m_isReadOnly && m_helloNumber == 0) {
        sayHello();
    }
    emit RightsChanged();
}

void ListClient::sayHello() {
    if (m_helloNumber == 0)
        m_helloNumber = m_reader.GetSeat().NewNumber();
    Request hello;
    hello.number = m_helloNumber;
    publish(hello);
}

/// Servers that are just coming hear no requests, and answers may be lost. Brokers mostly do not tell whoever
/// may not ask: he gets no answer.
void ListClient::retry() {
    if (m_reader.GetState() != ListReader::State::Whole || m_isReadOnly)
        return;
    Flush();
    if (m_mayEdit && Pending() == 0)
        return m_retry.stop();
    if (++m_unanswered == MostUnanswered) {
        m_mayEdit = false;
        refuseAll(WhyNoEditing());
        emit RightsChanged();
    }
    if (m_mayEdit)
        askAgain();
    else
        sayHello();
}

/// Some brokers hang up on whoever publishes where he may not: it is not tried again.
void ListClient::takeRefusedTopic(const QByteArray& topic) {
    if (topic != m_requestTopic)
        return;
    Flush();
    m_isReadOnly = true;
    m_mayEdit = false;
    refuseAll(WhyNoEditing());
    emit RightsChanged();
}
