#pragma once

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/paths.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/undohistory.h"
#include "link/localbus.h"
#include "tests/link/linkfixture.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/sharerefusal.h"
#include "workstation/sharing.h"

#include <QToolButton>
#include <QUndoStack>

/// Another seat of the site, which serves or mirrors one list.
class OtherSeat {
public:
    OtherSeat(std::unique_ptr<MessageBus> bus, const char* kind, const QString& user)
        : m_kind(*FindShareKind(QString::fromLatin1(kind))),
          m_bus(std::move(bus)),
          m_seat(*m_bus, Q("north"), user),
          m_node(Tree::Instance()->MakeNode(QStringLiteral("/OtherSeat/%1/%2").arg(user, m_kind.Name()))),
          m_controller(m_kind.mediators, m_kind.storeType) {
        m_controller.Init(m_node->GetPathName());
    }
    OtherSeat(LocalBroker& broker, const char* kind, const QString& user = QStringLiteral("server"))
        : OtherSeat(std::make_unique<LocalBus>(broker, user), kind, user) {}

    void Serve(int entries = 0, const QString& folder = {}) {
        for (int i = 0; i < entries; ++i)
            Add(7e6 + i * 1000, QStringLiteral("entry %1").arg(i));
        m_controller.ForceUpdateNow();
        m_server = std::make_unique<ListServer>(m_seat, m_kind.ListOf(*m_node), folder);
    }
    void StopServing() { m_server.reset(); }
    void Follow() {
        m_reader = std::make_unique<ListReader>(m_seat, m_kind.Name());
        m_client = std::make_unique<ListClient>(*m_reader, m_kind.ListOf(*m_node));
    }
    Node* Add(double hertz, const QString& comment) {
        Node* const entry =
            Node::NewEntry(m_node, Names::Intern(QString::fromLatin1(m_kind.entryName)), m_kind.shape());
        m_node->AddItemUnique(entry);
        entry->FillFromShape();
        entry->FindOwnValue(Keys::KeyFrequency)->SetStringValue(QString::number(hertz, 'f', 0));
        Comment(*entry).SetValue(comment);
        return entry;
    }
    Node* At(size_t place) const { return m_node->Children()[place]; }
    Node& GetNode() const { return *m_node; }
    LocalBus& Bus() { return static_cast<LocalBus&>(*m_bus); }
    Seat& GetSeat() { return m_seat; }
    ListServer& Server() { return *m_server; }
    ListClient& Client() { return *m_client; }
    static Value<QString>& Comment(Node& entry) { return *entry.FindOwn<Value<QString>>(Keys::KeyComment); }
    QStringList Comments() const { return CommentsOf(*m_node); }
    static QStringList CommentsOf(const Node& list) {
        QStringList all;
        for (Node* entry : list.Children())
            all << Comment(*entry).GetValue();
        return all;
    }

private:
    const ShareKind& m_kind;
    std::unique_ptr<MessageBus> m_bus;
    Seat m_seat;
    Node* m_node;
    HalvoNodeMediatorCtrl m_controller; ///< it writes what follows from other values, as in each program
    std::unique_ptr<ListServer> m_server;
    std::unique_ptr<ListReader> m_reader;
    std::unique_ptr<ListClient> m_client;
};

/// A workstation that shares lists on a bus of this process.
class Shares : public Windows {
protected:
    using Role = ShareProfile::Role;

    void share(Role role, const QStringList& kinds = {}) {
        sharing().SetBusMaker([this](const BrokerAddress& address) {
            return std::make_unique<LocalBus>(broker, address.user);
        });
        sharing().Connect({.url = Q("mqtt://anna@localhost/north"), .role = role, .kinds = kinds}, {});
    }
    Sharing& sharing() { return station->GetSharing(); }
    Node& targets() { return *Tree::Instance()->GetNode(Paths::Targets); }
    QStringList comments() { return OtherSeat::CommentsOf(targets()); }
    /// Until the list is the site's and may be edited.
    bool isReady(const char* list = "Local TargetList") {
        return Until([&] {
            return idOf(list) != 0 && sharing().GetState() == Sharing::State::Shared &&
                   sharing().WhyNoEditing(idOf(list)).isEmpty();
        });
    }
    static int idOf(const char* list) {
        for (const int id : FreqStore::Instance().GetListIds()) {
            if (FreqStore::Instance().GetDefinition(id)->GetName() == QLatin1String(list))
                return id;
        }
        return 0;
    }
    /// What is shown of refused changes; null while none is.
    ShareRefusal* refused() { return window().findChild<ShareRefusal*>(); }
    QString shareStatus() { return window().findChild<QToolButton*>(Q("Sharing"))->text(); }

    LocalBroker broker;
};
