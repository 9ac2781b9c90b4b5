#include "workstation/sharing.h"

#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/report/rgexception.h"
#include "host/valuetree/operatoraction.h"
#include "host/valuetree/tree.h"
#include "link/mqttbus.h"
#include "link/topics.h"
#include "workstation/sharesitelist.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QSysInfo>

#include <algorithm>

namespace {

FrequencyNodeMediatorCtrl* controllerOf(int listId) {
    return dynamic_cast<FrequencyNodeMediatorCtrl*>(
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(listId)));
}

QPixmap iconOf(int listId) {
    const IFrequencyListDefinition* const definition = FreqStore::Instance().GetDefinition(listId);
    return definition ? definition->GetPixmap() : QPixmap();
}

/// Sets values by their names and texts.
void setFields(Node& entry, const std::vector<ListClient::Refusal::Field>& fields) {
    for (const ListClient::Refusal::Field& field : fields) {
        if (ValueBase* const value = entry.FindOwnValue(Names::Intern(field.name)))
            value->SetStringValue(field.wanted, nullptr);
    }
}

} // namespace

Sharing::Sharing(std::vector<Own> own)
    : m_own(std::move(own)),
      m_folder(QDir::currentPath()),
      m_makeBus([](const BrokerAddress& address) { return std::make_unique<MqttBus>(address); }) {}

Sharing::~Sharing() {
    blockSignals(true);
    Disconnect();
}

QStringList Sharing::KindsToServe() const {
    QStringList kinds;
    for (size_t i = 1; i < m_own.size(); ++i)
        kinds << m_own[i].kind->Name();
    return kinds;
}

void Sharing::Connect(const ShareProfile& profile, const QString& password) {
    BrokerAddress address = profile.Address();
    address.password = password;
    Disconnect();
    m_profile = profile;
    m_site = address.site;
    try {
        m_bus = m_makeBus(address);
        m_seat = std::make_unique<Seat>(*m_bus, m_site,
                                        address.user.isEmpty() ? QSysInfo::machineHostName() : address.user);
        emit Began();
        if (IsClient())
            follow(m_own.front());
        for (const Own& own : m_own) {
            const bool isServed = own.kind == m_own.front().kind || profile.kinds.contains(own.kind->Name());
            if (!IsClient() && isServed)
                serve(own);
        }
    } catch (...) {
        Disconnect();
        throw;
    }
    m_lists = std::make_unique<SiteLists>(*m_seat);
    connect(m_lists.get(), &SiteLists::Claimed, this, &Sharing::takeClaim);
    connect(m_lists.get(), &SiteLists::Changed, this, &Sharing::Changed);
    connect(m_bus.get(), &MessageBus::StateChanged, this, &Sharing::noteState);
    connect(m_seat.get(), &Seat::PresenceChanged, this, &Sharing::noteState);
    for (const auto& part : m_parts)
        emit RightsChanged(part->listId);
    noteState();
}

void Sharing::Disconnect() {
    if (!IsOn())
        return;
    const bool wasMirrored = IsMirrored();
    m_lists.reset();
    m_others.clear();
    for (const auto& part : m_parts)
        endServer(*part);
    m_parts.clear();
    m_records.clear();
    m_seat.reset();
    m_bus.reset();
    m_oldSince = {};
    m_wasShared = m_wasMirrored = false;
    emit Ended(wasMirrored);
    for (const Own& own : m_own)
        emit RightsChanged(own.listId);
    emit Changed();
}

void Sharing::serve(const Own& own) {
    if (own.records)
        return serveRecords(own);
    m_parts.push_back(std::make_unique<Part>(Part{own.kind, own.listId, own.node}));
    startServer(*m_parts.back(), own);
}

/// A search or an import goes on writing them; nobody else does, so nothing need be kept.
void Sharing::serveRecords(const Own& own) {
    m_records.emplace_back(own.kind, std::make_unique<RecordServer>(*m_seat, *own.records, own.kind->Name()));
    connect(m_records.back().second.get(), &RecordServer::StateChanged, this, &Sharing::noteState);
}

/// Beside the list's file, or in the data directory without one.
QString Sharing::journalOf(const Own& own) const {
    const QString file = own.file();
    return (file.isEmpty() ? QDir(m_folder).filePath(own.kind->Name()) : file) + QStringLiteral(".share");
}

void Sharing::startServer(Part& part, const Own& own) {
    part.journal = journalOf(own);
    part.isLoose = own.file().isEmpty();
    auto journal = std::make_unique<ListJournal>(part.journal);
    part.server = std::make_unique<ListServer>(*m_seat, part.kind->ListOf(*part.node),
                                               part.kind->hasFile ? m_folder : QString(), std::move(journal));
    connect(part.server.get(), &ListServer::StateChanged, this, &Sharing::noteState);
    connect(part.server.get(), &ListServer::Edited, this, [id = part.listId] {
        if (FrequencyNodeMediatorCtrl* const list = controllerOf(id))
            list->EntriesWereEdited();
    });
}

/// What was accepted into a list without a file is the window's to keep from now on; another such list is to
/// know nothing of it.
void Sharing::endServer(Part& part) {
    const bool wasServed = part.server != nullptr;
    part.server.reset();
    if (wasServed && part.isLoose)
        QFile::remove(part.journal);
}

/// What is in a file now is in its journal's keeping, not in that of the file before.
void Sharing::NoteFile(int listId) {
    const Part* const part = find(listId);
    if (!part || !part->server)
        return;
    const Own& own = *std::ranges::find(m_own, listId, &Own::listId);
    const bool isAnother = journalOf(own) != part->journal;
    if (!isAnother && !(own.isSaved() && part->server->HasUnsaved()))
        return;
    try {
        part->server->WasSaved();
    } catch (const RGException& exception) {
        Problems::Report("sharing", Problem::FromText(exception.GetErrorText()));
    }
    // The server may be asking for the file itself.
    if (isAnother)
        QMetaObject::invokeMethod(
            this, [this, listId] { restartServer(listId); }, Qt::QueuedConnection);
}

void Sharing::restartServer(int listId) {
    const Own& own = *std::ranges::find(m_own, listId, &Own::listId);
    const auto part = std::ranges::find_if(m_parts, [&](const auto& p) { return p->listId == listId; });
    if (part == m_parts.end() || !(*part)->server || journalOf(own) == (*part)->journal)
        return;
    endServer(**part);
    try {
        startServer(**part, own);
    } catch (const RGException& exception) {
        Problems::Report("sharing", Problem::FromText(exception.GetErrorText()));
        m_parts.erase(part);
    }
    noteState();
}

void Sharing::AskForFile(const QString& name) {
    GetOrCreateValue<Value<QString>>(m_own.front().node->GetPathName() + QStringLiteral("_FileName"))
        ->SetValue(name);
}

void Sharing::follow(const Own& own) {
    auto part = std::make_unique<Part>(Part{own.kind, own.listId, own.node});
    part->reader = std::make_unique<ListReader>(*m_seat, own.kind->Name());
    part->client = std::make_unique<ListClient>(*part->reader, own.kind->ListOf(*own.node));
    connect(part->reader.get(), &ListReader::StateChanged, this, &Sharing::noteState);
    followClient(*part->client, own.listId);
    // After the client, which shows the rows.
    connect(part->reader.get(), &ListReader::RowsChanged, this, [this] {
        if (!std::exchange(m_wasMirrored, true))
            emit Mirrored();
    });
    m_parts.push_back(std::move(part));
}

void Sharing::followClient(ListClient& client, int listId) {
    connect(&client, &ListClient::RightsChanged, this, [this, listId] { emit RightsChanged(listId); });
    connect(&client, &ListClient::Refused, this,
            [this, listId](const ListClient::Refusal& refusal) { emit Refused(listId, refusal); });
}

/// Whether a list of that kind is shared or shown already.
bool Sharing::isHere(const ShareKind& kind) const {
    return std::ranges::any_of(m_parts, [&](const auto& part) { return part->kind == &kind; }) ||
           std::ranges::any_of(m_records, [&](const auto& served) { return served.first == &kind; }) ||
           std::ranges::any_of(m_others, [&](const auto& other) { return &other->Kind() == &kind; });
}

/// Another seat serves a list.
void Sharing::takeClaim(const QString& list, const Messages::Claim& claim) {
    const ShareKind* const kind = FindShareKind(list);
    if (!kind || !kind->IsOfItsOwn() || isHere(*kind) || claim.nonce == m_seat->Nonce())
        return;
    const auto own = std::ranges::find_if(m_own, [kind](const Own& o) {
        return QLatin1String(o.kind->entryName) == QLatin1String(kind->entryName);
    });
    m_others.push_back(std::make_unique<ShareSiteList>(*m_seat, m_site, *kind,
                                                       own == m_own.end() ? QPixmap() : iconOf(own->listId)));
    const ShareSiteList& shown = *m_others.back();
    connect(&shown.Reader(), &ListReader::StateChanged, this, &Sharing::noteState);
    if (shown.Client())
        followClient(*shown.Client(), shown.ListId());
    else // what it says of itself depends on the state
        connect(&shown.Reader(), &ListReader::StateChanged, this,
                [this, id = shown.ListId()] { emit RightsChanged(id); });
    noteState();
}

bool Sharing::IsMirrored() const {
    return IsClient() && m_wasMirrored;
}

void Sharing::noteState() {
    const State state = GetState();
    if (state == State::Shared) {
        m_wasShared = true;
        m_oldSince = {};
    } else if (m_wasShared && !m_oldSince.isValid()) {
        m_oldSince = QDateTime::currentDateTime();
    }
    emit Changed();
}

Sharing::State Sharing::stateOf(const ListReader& reader) const {
    using Reader = ListReader::State;
    const Reader state = reader.GetState();
    if (state == Reader::Whole)
        return State::Shared;
    if (reader.Copy().Revision() != 0)
        return State::Old;
    if (state == Reader::Loading)
        return State::Loading;
    return state == Reader::Offline || state == Reader::Waiting ? State::Connecting : State::Refused;
}

Sharing::State Sharing::stateOf(const ListServer& server) const {
    using Server = ListServer::State;
    const Server state = server.GetState();
    if (state == Server::Serving)
        return State::Shared;
    if (state == Server::Refused)
        return State::Refused;
    return m_wasShared ? State::Old : State::Connecting;
}

Sharing::State Sharing::GetState() const {
    if (!IsOn())
        return State::Off;
    const Part* const part = targets();
    if (!part)
        return State::Refused;
    return part->server ? stateOf(*part->server) : stateOf(*part->reader);
}

QString Sharing::entriesText(const ListReader& reader) const {
    const QLocale locale;
    const auto& manifest = reader.Copy().Newest();
    if (!manifest || manifest->chunks == 0)
        return tr("the list comes");
    const quint64 held = manifest->count * reader.Copy().HeldChunks() / manifest->chunks;
    return tr("%1 of %2 entries").arg(locale.toString(held), locale.toString(manifest->count));
}

/// Null when its journal could not be opened.
const Sharing::Part* Sharing::targets() const {
    return find(m_own.front().listId);
}

QString Sharing::reason() const {
    if (!m_bus->IsOnline()) // some reasons are sentences of the operating system
        return m_bus->Reason().endsWith(QLatin1Char('.')) ? m_bus->Reason().chopped(1) : m_bus->Reason();
    const Part* const part = targets();
    if (!part)
        return tr("the list cannot be served");
    if (part->server)
        return part->server->Reason();
    switch (part->reader->GetState()) {
    case ListReader::State::Waiting:
        return tr("waits for a server");
    case ListReader::State::ServerGone:
        return tr("the server has gone");
    case ListReader::State::Loading:
        return tr("the list comes anew");
    default:
        return part->reader->StateText();
    }
}

QString Sharing::StateText() const {
    const auto withReason = [this](const QString& text) {
        return reason().isEmpty() ? text : tr("%1: %2").arg(text, reason());
    };
    QString text;
    switch (GetState()) {
    case State::Off:
        return text;
    case State::Connecting:
        text = withReason(tr("connecting"));
        break;
    case State::Loading:
        text = entriesText(*targets()->reader);
        break;
    case State::Shared: {
        const int seats = static_cast<int>(m_seat->Present().size());
        text = IsClient() ? tr("client, %Ln seat(s)", nullptr, seats)
                          : tr("server, %Ln seat(s)", nullptr, seats);
        break;
    }
    case State::Old:
        text = withReason(tr("old since %1").arg(m_oldSince.toString(QStringLiteral("hh:mm"))));
        break;
    case State::Refused:
        text = withReason(tr("refused"));
        break;
    }
    return tr("%1: %2").arg(m_site, text);
}

QString Sharing::Details() const {
    if (!IsOn())
        return tr("No list is shared.");
    QStringList lines{m_profile.url, StateText()};
    for (const auto& part : m_parts) {
        const QString state = part->server ? part->server->Reason() : part->client->WhyNoEditing();
        if (!state.isEmpty())
            lines << tr("%1: %2").arg(part->kind->Title(), state);
    }
    for (const auto& [kind, server] : m_records) {
        if (!server->Reason().isEmpty())
            lines << tr("%1: %2").arg(kind->Title(), server->Reason());
    }
    for (const auto& other : m_others)
        lines << tr("%1: %2").arg(other->Kind().Title(), other->StateText());
    QStringList seats;
    for (const Present& present : WhoIsThere())
        seats << (present.isSelf ? tr("%1 (this seat)").arg(present.name) : present.name);
    if (!seats.isEmpty())
        lines << tr("There: %1").arg(seats.join(QStringLiteral(", ")));
    return lines.join(QLatin1Char('\n'));
}

std::vector<Sharing::Present> Sharing::WhoIsThere() const {
    std::vector<Present> all;
    if (!IsOn())
        return all;
    for (const auto& [path, presence] : m_seat->Present()) {
        const ShareKind* const kind = presence.id == 0 ? nullptr : FindShareKind(presence.list);
        all.push_back({presence.name, Topics::Unescaped(path.left(path.indexOf('/'))),
                       kind ? kind->Title() : QString(), path == m_seat->Path()});
    }
    return all;
}

std::vector<SiteLists::List> Sharing::WhatIsThere() const {
    return m_lists ? m_lists->Get() : std::vector<SiteLists::List>();
}

std::pair<QString, Messages::EntryId> Sharing::shared(const Node& entry) const {
    for (const auto& part : m_parts) {
        if (part->node == entry.GetParentNode())
            return {part->kind->Name(), part->server ? part->server->IdOf(entry) : part->client->IdOf(entry)};
    }
    for (const auto& other : m_others) {
        if (other->Client() && other->Client()->List().node == entry.GetParentNode())
            return {other->Kind().Name(), other->Client()->IdOf(entry)};
    }
    return {};
}

/// Without an entry for a list or an entry that is not here.
Sharing::Edited Sharing::entryOf(const QString& list, Messages::EntryId id) const {
    for (const auto& part : m_parts) {
        if (list != QLatin1String(part->kind->name))
            continue;
        Node* const entry = part->server
                                ? part->node->ChildBySerial(part->server->Publisher().rows.SerialOf(id))
                                : part->client->EntryOf(id);
        return {part->listId, entry, {}};
    }
    for (const auto& other : m_others) {
        if (other->Client() && list == QLatin1String(other->Kind().name))
            return {other->ListId(), other->Client()->EntryOf(id), {}};
    }
    return {};
}

std::vector<Sharing::Edited> Sharing::EditedByOthers() const {
    std::vector<Edited> all;
    if (!IsOn())
        return all;
    for (const auto& [path, presence] : m_seat->Present()) {
        Edited edited =
            presence.id == 0 || path == m_seat->Path() ? Edited{} : entryOf(presence.list, presence.id);
        if (!edited.entry)
            continue;
        auto known = std::ranges::find(all, edited.entry, &Edited::entry);
        if (known == all.end())
            known = all.insert(known, edited);
        known->names << presence.name;
    }
    return all;
}

std::vector<int> Sharing::SharedLists() const {
    std::vector<int> ids;
    for (const auto& part : m_parts)
        ids.push_back(part->listId);
    for (const auto& other : m_others) {
        if (other->Client())
            ids.push_back(other->ListId());
    }
    return ids;
}

void Sharing::SetEditing(const Node* entry) {
    if (!IsOn())
        return;
    const auto [list, id] = entry ? shared(*entry) : std::pair<QString, Messages::EntryId>();
    m_seat->SetEditing(id != 0 ? list : QString(), id);
}

const Sharing::Part* Sharing::find(int listId) const {
    const auto found =
        std::ranges::find_if(m_parts, [&](const auto& part) { return part->listId == listId; });
    return found == m_parts.end() ? nullptr : found->get();
}

const ListClient* Sharing::clientOf(int listId) const {
    if (const Part* const part = find(listId))
        return part->client.get();
    for (const auto& other : m_others) {
        if (other->ListId() == listId)
            return other->Client();
    }
    return nullptr;
}

QString Sharing::WhyNoEditing(int listId) const {
    const ListClient* const client = clientOf(listId);
    return client ? client->WhyNoEditing() : QString();
}

QString Sharing::WhyOld(int listId) const {
    const auto found = std::ranges::find(m_others, listId, [](const auto& other) { return other->ListId(); });
    if (found == m_others.end() || (*found)->Client() ||
        (*found)->Reader().GetState() == ListReader::State::Whole)
        return {};
    return tr("The list is one of another seat: %1.").arg((*found)->StateText());
}

bool Sharing::IsOfOthers(const Node& list) {
    return list.GetPathName().startsWith(ShareSiteList::Root);
}

bool Sharing::TryAgain(int listId, const ListClient::Refusal& refusal) {
    const ListClient* const client = clientOf(listId);
    Node* const entry = refusal.entry.get();
    if (!client || (!entry && refusal.fields.empty()))
        return false;
    const OperatorAction action(tr("Try Again"));
    const SharedList& list = client->List();
    if (entry && refusal.fields.empty()) {
        list.node->DeleteNode(entry);
    } else if (entry) {
        setFields(*entry, refusal.fields);
    } else {
        Node* const added = Node::NewEntry(list.node, Names::Intern(list.entryName), *list.shape);
        list.node->AddItemUnique(added);
        added->FillFromShape();
        setFields(*added, refusal.fields);
    }
    return true;
}
