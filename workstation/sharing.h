#pragma once

#include "link/listclient.h"
#include "link/listserver.h"
#include "link/recordserver.h"
#include "link/sitelists.h"
#include "workstation/sharekinds.h"
#include "workstation/shareprofile.h"

#include <QDateTime>

class ShareSiteList;

/// What this program has at a site: one connection, on which it serves lists of its own or mirrors the site's
/// targets in place of its own, and shows the other lists of the site as lists of their own.
class Sharing : public QObject {
    Q_OBJECT

public:
    enum class State {
        Off,
        Connecting,
        Loading, ///< some of the site's list is missing
        Shared,
        Old,     ///< what is shown is not what the site has now
        Refused, ///< another seat serves the list, or the broker does not let this one
    };
    /// A list of the program that can be shared.
    struct Own {
        const ShareKind* kind;
        int listId;                    ///< in the store
        Node* node;                    ///< null for a list of records, as are the next two
        std::function<QString()> file; ///< in which the list stands; empty for none
        std::function<bool()> isSaved; ///< whether that holds what the list has
        ValueBase* records = nullptr;  ///< null for a list of entries
    };
    using BusMaker = std::function<std::unique_ptr<MessageBus>(const BrokerAddress&)>;

    /// The first one are the targets. Nodes and records outlive this.
    explicit Sharing(std::vector<Own> own);
    ~Sharing() override;
    /// Another bus than MQTT.
    void SetBusMaker(BusMaker maker) { m_makeBus = std::move(maker); }
    std::unique_ptr<MessageBus> MakeBus(const BrokerAddress& address) const { return m_makeBus(address); }

    /// Kinds of lists that a server may serve besides its targets.
    QStringList KindsToServe() const;

    /// In place of what was connected before. Throws RGException when certificates or a journal cannot be
    /// read; then nothing is connected.
    void Connect(const ShareProfile& profile, const QString& password);
    void Disconnect();
    bool IsOn() const { return m_seat != nullptr; }
    /// Whether the targets are those of the site, or are about to be.
    bool IsClient() const { return IsOn() && m_profile.role == ShareProfile::Role::Client; }
    /// Whether the targets have become those of the site.
    bool IsMirrored() const;
    const ShareProfile& Profile() const { return m_profile; }
    const QString& Site() const { return m_site; }

    State GetState() const;
    /// In a few words, and with all that is known.
    QString StateText() const;
    QString Details() const;

    /// Someone at the site, as people read him.
    struct Present {
        QString name, user;
        QString edits; ///< the list; empty for none
        bool isSelf;
    };
    std::vector<Present> WhoIsThere() const;
    /// The lists of the site, also those that this program cannot show; by name.
    std::vector<SiteLists::List> WhatIsThere() const;
    /// An entry that others edit, with their names.
    struct Edited {
        int listId;
        Node* entry;
        QStringList names;
    };
    std::vector<Edited> EditedByOthers() const;
    /// Lists of entries that are shared, by their identifiers in the store.
    std::vector<int> SharedLists() const;
    /// Tells the others which entry is being edited here; null for none.
    void SetEditing(const Node* entry);

    /// Why entries of a list cannot be changed; empty when they can, and for lists that are not shared.
    QString WhyNoEditing(int listId) const;
    /// Why a list of records of another seat is not what that has now; empty when it is, and for all others,
    /// of which `WhyNoEditing` tells it.
    QString WhyOld(int listId) const;
    /// Whether a list's node is that of a list of another seat, which is kept there.
    static bool IsOfOthers(const Node& list);
    /// Asks the server of the targets to load a file, by its bare name in the server's own folder.
    void AskForFile(const QString& name);
    /// The list stands in another file now, or has been saved.
    void NoteFile(int listId);
    /// Does again what was not taken, with what the entry is now. False when there is nothing that it could
    /// be done to.
    bool TryAgain(int listId, const ListClient::Refusal& refusal);

signals:
    /// Before the first list is served or mirrored.
    void Began();
    /// Whether the targets were those of the site, as which they stay.
    void Ended(bool mirrored);
    /// The state or its texts, who is there, or who edits what.
    void Changed();
    /// `WhyNoEditing` may answer otherwise, or an empty list is known to be one.
    void RightsChanged(int listId);
    /// The site's list is here for the first time since the connection was asked for.
    void Mirrored();
    void Refused(int listId, const ListClient::Refusal& refusal);

private:
    /// A list as it is shared: one of server and client.
    struct Part {
        const ShareKind* kind;
        int listId;
        Node* node;
        QString journal{};    ///< what a server has accepted and the list's file may lack
        bool isLoose = false; ///< the list is in no file
        std::unique_ptr<ListServer> server{};
        std::unique_ptr<ListReader> reader{};
        std::unique_ptr<ListClient> client{};
    };

    void serve(const Own& own);
    void serveRecords(const Own& own);
    QString journalOf(const Own& own) const;
    void startServer(Part& part, const Own& own);
    static void endServer(Part& part);
    void restartServer(int listId);
    void follow(const Own& own);
    void followClient(ListClient& client, int listId);
    bool isHere(const ShareKind& kind) const;
    void takeClaim(const QString& list, const Messages::Claim& claim);
    void noteState();
    const Part* find(int listId) const;
    const Part* targets() const;
    const ListClient* clientOf(int listId) const;
    Edited entryOf(const QString& list, Messages::EntryId id) const;
    /// The list's name at the site and the entry's id; 0 for an entry that is not shared.
    std::pair<QString, Messages::EntryId> shared(const Node& entry) const;
    State stateOf(const ListReader& reader) const;
    State stateOf(const ListServer& server) const;
    QString entriesText(const ListReader& reader) const;
    QString reason() const;

    std::vector<Own> m_own;
    const QString m_folder; ///< of the lists' own files
    BusMaker m_makeBus;
    ShareProfile m_profile;
    QString m_site;
    std::unique_ptr<MessageBus> m_bus;
    std::unique_ptr<Seat> m_seat;
    std::vector<std::unique_ptr<Part>> m_parts; ///< the targets first
    std::vector<std::pair<const ShareKind*, std::unique_ptr<RecordServer>>> m_records;
    std::unique_ptr<SiteLists> m_lists;
    std::vector<std::unique_ptr<ShareSiteList>> m_others;
    QDateTime m_oldSince; ///< invalid while what is shown is the site's
    bool m_wasShared = false;
    bool m_wasMirrored = false;
};
