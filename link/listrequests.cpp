// What clients ask a server for.

#include "host/base/problems.h"
#include "link/listserver.h"
#include "link/topics.h"

#include <QDir>
#include <QFileInfo>

using Messages::Answer;
using Messages::Request;

namespace {

constexpr size_t FewChanges = 64;
/// Answers that are kept: a client may ask for as much at once, and miss all that it is told.
constexpr size_t MostAnswers = 100000;
constexpr qsizetype LargestRequest = 256 * 1024;
/// Lists have a few: a client that makes ever new ones wants to fill everybody's memory.
constexpr quint32 MostLayouts = 1000;

} // namespace

void ListServer::takeRequest(const QByteArray& topic, const QByteArray& payload) {
    if (!m_claim.IsServing() || payload.isEmpty())
        return;
    const auto request = payload.size() > LargestRequest ? std::nullopt : Request::Decode(payload);
    if (!request)
        return m_seat.TellOnce(topic, tr("is no request"));
    const QByteArray seat = Topics::SeatOf(topic);
    if (seat.isEmpty() || isKnown(seat, request->number))
        return;
    quint32 added = 0;
    Answer answer = perform(*request, added);
    answer.number = request->number;
    m_answers.push_back({seat, answer, added});
    if (!m_timer.isActive())
        m_timer.start();
}

/// The bus, and clients that miss an answer, may send a request twice.
bool ListServer::isKnown(const QByteArray& seat, quint64 number) {
    const auto [known, isNew] = m_answered.try_emplace({seat, number});
    if (isNew)
        m_answeredOrder.push_back(known);
    else if (known->second)
        tell(seat, *known->second);
    return !isNew;
}

void ListServer::tell(const QByteArray& seat, const Answer& answer) {
    m_seat.Bus().Publish(m_publisher.Topic() + "/answer/" + seat, answer.Encode());
}

void ListServer::answer() {
    for (auto& [seat, answer, added] : std::exchange(m_answers, {})) {
        if (const auto row = m_publisher.rows.Find(added))
            answer.id = row->id;
        tell(seat, answer);
        m_answered[{seat, answer.number}] = answer;
    }
    for (; m_answeredOrder.size() > MostAnswers; m_answeredOrder.pop_front())
        m_answered.erase(m_answeredOrder.front());
}

Answer ListServer::perform(const Request& request, quint32& added) {
    QString reason;
    switch (request.kind) {
    case Request::Kind::Hello:
        break;
    case Request::Kind::Load:
        reason = load(request.text);
        break;
    case Request::Kind::Add:
        reason = add(request, added);
        break;
    case Request::Kind::Set:
    case Request::Kind::Remove:
        return change(request);
    }
    return {0, reason.isEmpty() ? Answer::Verdict::Accepted : Answer::Verdict::Refused, reason, 0};
}

/// Changes or removes an entry, if it is as the client knows it.
Answer ListServer::change(const Request& request) {
    if (m_changes.Count() > FewChanges || m_changes.Contains(m_publisher.rows.SerialOf(request.id)))
        Flush(); // the entry's revision is that of what it holds
    const quint32 serial = m_publisher.rows.SerialOf(request.id);
    const auto row = m_publisher.rows.Find(serial);
    Node* const entry = row ? m_list.node->ChildBySerial(serial) : nullptr;
    if (!entry)
        return {0, Answer::Verdict::OutOfDate, tr("the entry has been removed"), 0};
    if (row->Content().revision != request.base)
        return {0, Answer::Verdict::OutOfDate, tr("the entry has been changed meanwhile"), 0};
    m_hasEdits = true;
    if (request.kind == Request::Kind::Remove) {
        m_list.node->DeleteNode(entry);
        return {};
    }
    const QString reason = set(request, *entry);
    return {0, reason.isEmpty() ? Answer::Verdict::Accepted : Answer::Verdict::Refused, reason, 0};
}

/// The layout that a request's contents have: one of the list's, or the request's own, if it has the same
/// fields as one of these. Null for any other.
const EntryLayout* ListServer::layoutOf(const Request& request, std::optional<EntryLayout>& own) const {
    if (request.layout.isEmpty())
        return m_publisher.layouts.At(request.layoutNumber);
    own = EntryLayout::Decode(request.layout, EntryLayout::NewNames::Refused);
    const bool isKnown = own && m_publisher.layouts.Count() < MostLayouts;
    return isKnown && m_publisher.layouts.Similar(*own) ? &*own : nullptr;
}

QString ListServer::set(const Request& request, Node& entry) {
    std::optional<EntryLayout> own;
    const EntryLayout* const layout = layoutOf(request, own);
    if (!layout || !layout->Set(request.contents, entry, nullptr))
        return tr("the contents are none of this list");
    return {};
}

QString ListServer::add(const Request& request, quint32& added) {
    std::optional<EntryLayout> own;
    const EntryLayout* const layout = layoutOf(request, own);
    if (!layout || !layout->AreContents(request.contents))
        return tr("the contents are none of this list");
    if (request.id != 0)
        Flush(); // its removal may wait to be published
    m_hasEdits = true;
    const auto place = request.id == 0 ? std::nullopt : m_publisher.rows.RemovedPlace(request.id);
    Node* const entry = layout->MakeEntry(*m_list.node, m_list.shape, request.contents).release();
    if (place) {
        const Node::Returning back[] = {{entry, place->serial, place->ordinal}};
        m_list.node->Restore(back);
    } else {
        m_list.node->AddItemUnique(entry);
    }
    added = entry->GetSerial();
    return {};
}

QString ListServer::load(const QString& name) {
    if (m_listDirectory.isEmpty() || !m_fileName)
        return tr("this server loads no files for clients");
    const bool isBare = !name.isEmpty() && !name.startsWith(QLatin1Char('.')) &&
                        !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')) &&
                        !name.contains(QChar(u'\0'));
    if (!isBare)
        return tr("a file is asked for by its bare name in the server's list directory");
    const QFileInfo file(QDir(m_listDirectory).absoluteFilePath(name));
    const QString inDirectory = QFileInfo(m_listDirectory).canonicalFilePath() + QLatin1Char('/') + name;
    if (!file.isFile() || file.canonicalFilePath() != inDirectory)
        return tr("the server's list directory has no file \"%1\"").arg(name);
    m_fileName->SetValue(file.absoluteFilePath());
    return {};
}

void ListServer::publishFile() {
    if (!m_fileName || !m_fileLoaded || !m_claim.IsServing())
        return;
    const Messages::FileState state{m_fileLoaded->GetValue(), QFileInfo(m_fileName->GetValue()).fileName(),
                                    m_announced, m_publisher.Revision()};
    m_seat.Bus().Publish(m_publisher.Topic() + "/file", state.Encode(), MessageBus::Keep::Retained);
}

void ListServer::Update(Observable* subject, TChangeCode code) {
    if (m_fileLoaded.ForgetIfRemoved(subject, code) || m_fileName.ForgetIfRemoved(subject, code))
        return;
    if (code == TChangeCode::Announcement) {
        ++m_announced;
        Flush(); // clients announce when they have what is announced
    }
    if (code == TChangeCode::Announcement || code == TChangeCode::ValueChanged)
        publishFile();
}
