#pragma once

#include "host/valuetree/tree.h"
#include "link/listclient.h"
#include "link/listserver.h"
#include "link/localbus.h"
#include "tests/support/text.h"
#include "tests/support/waiting.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>
#include <list>

inline const Shape& TestShape() {
    static const Shape& shape =
        Shape::Make({Shape::Number<double>(Names::Intern(Q("frequency")), 0.0, 3e9, 1.0),
                     Shape::Text(Names::Intern(Q("comment"))), Shape::Flag(Names::Intern(Q("locked"))),
                     Shape::Number<int>(Names::Intern(Q("priority")), 1, 11, 1)});
    return shape;
}

/// A list in the tree, gone with its scope.
class TestList {
public:
    explicit TestList(const QString& name)
        : m_node(Tree::Instance()->MakeNode(QStringLiteral("/LinkTest/") +
                                            QString(name).replace(QLatin1Char('/'), QLatin1Char('_')))) {}
    ~TestList() {
        Node* const parent = m_node->GetParentNode();
        for (const char* value : {"_FileName", "_FileLoaded"})
            parent->DeleteValue(m_node->GetName() + QLatin1String(value));
        parent->DeleteNode(m_node);
    }
    TestList(const TestList&) = delete;
    TestList& operator=(const TestList&) = delete;

    Node& GetNode() const { return *m_node; }
    SharedList Shared(bool hasFile = false) const {
        return {m_node, QStringLiteral("Targets"), QStringLiteral("Target"), &TestShape(), hasFile};
    }
    Node* Add(double frequency, const QString& comment) const {
        Node* const entry = Node::NewEntry(m_node, Names::Intern(QStringLiteral("Target")), TestShape());
        m_node->AddItemUnique(entry);
        entry->FillFromShape();
        Frequency(*entry).SetValue(frequency);
        Comment(*entry).SetValue(comment);
        return entry;
    }
    void Fill(int count) const {
        for (int i = 0; i < count; ++i)
            Add(1e6 + i * 1000, QStringLiteral("entry %1").arg(i));
    }
    /// Removes an entry; where it was.
    Node::Returning Remove(size_t place) const {
        Node* const entry = At(place);
        const Node::Returning was{nullptr, entry->GetSerial(), entry->GetOrdinal()};
        m_node->DeleteNode(entry);
        return was;
    }
    /// Puts an entry where one was, as undo does.
    Node* AddAt(const Node::Returning& place, double frequency, const QString& comment) const {
        Node* const entry = Node::NewEntry(m_node, Names::Intern(QStringLiteral("Target")), TestShape());
        entry->FillFromShape();
        Frequency(*entry).SetValue(frequency);
        Comment(*entry).SetValue(comment);
        const Node::Returning back[] = {{entry, place.serial, place.ordinal}};
        m_node->Restore(back);
        return entry;
    }
    Node* At(size_t place) const { return m_node->Children()[place]; }
    static ValueNumeric<double>& Frequency(Node& entry) { return entry.ShapedValue<ValueNumeric<double>>(0); }
    static Value<QString>& Comment(Node& entry) { return entry.ShapedValue<Value<QString>>(1); }
    /// All entries with all values, in order.
    QStringList Text() const {
        QStringList lines;
        for (const Node* entry : m_node->Children()) {
            QString line = entry->GetName();
            for (const ValueBase* v = entry->FirstValue(); v; v = Node::NextValue(v))
                line += QLatin1Char('|') + v->GetStringValue();
            lines << line;
        }
        return lines;
    }

private:
    Node* m_node;
};

/// The user may read lists and ask for no change.
inline void LetOnlyRead(LocalBroker& broker, const QString& reader) {
    broker.SetRights([reader](const QString& user, const QByteArray& topic) {
        return user != reader || !topic.contains("/request/");
    });
}

/// A seat with a list of its own, which it mirrors.
struct TestClient {
    TestClient(std::unique_ptr<MessageBus> itsBus, const QString& user, bool hasFile = false)
        : list(user),
          bus(std::move(itsBus)),
          seat(*bus, Q("north"), user),
          reader(seat, Q("Targets")),
          client(reader, list.Shared(hasFile)) {
        QObject::connect(&client, &ListClient::Refused, [this](const ListClient::Refusal& r) {
            refused << r.reason;
            ++refusals;
            for (const auto& field : r.fields)
                refused << QStringLiteral("%1: %2, not %3").arg(field.name, field.present, field.wanted);
        });
    }
    TestClient(LocalBroker& broker, const QString& user, bool hasFile = false)
        : TestClient(std::make_unique<LocalBus>(broker, user), user, hasFile) {}
    bool IsReady() const { return client.WhyNoEditing().isEmpty() && client.Pending() == 0; }
    /// Breaks the connection to a local broker.
    void Cut() { static_cast<LocalBus&>(*bus).Cut(); }

    TestList list;
    std::unique_ptr<MessageBus> bus;
    Seat seat;
    ListReader reader;
    ListClient client;
    QStringList refused;
    int refusals = 0;
};

struct TestServer {
    TestServer(std::unique_ptr<MessageBus> itsBus, const QString& user)
        : list(user), bus(std::move(itsBus)), seat(*bus, Q("north"), user) {}
    explicit TestServer(LocalBroker& broker, const QString& user = QStringLiteral("server"))
        : TestServer(std::make_unique<LocalBus>(broker, user), user) {}
    void Serve(const QString& directory = {}, std::unique_ptr<ListJournal> journal = nullptr,
               bool hasFile = false) {
        server = std::make_unique<ListServer>(seat, list.Shared(hasFile), directory, std::move(journal));
    }
    bool IsServing() const { return server->GetState() == ListServer::State::Serving; }
    void Cut() { static_cast<LocalBus&>(*bus).Cut(); }

    TestList list;
    std::unique_ptr<MessageBus> bus;
    Seat seat;
    std::unique_ptr<ListServer> server;
};

/// A server and a broker of this process.
class ShareFixture : public testing::Test {
protected:
    void Serve(int count) {
        server.list.Fill(count);
        server.Serve();
    }
    bool AreEqual(const TestClient& client) {
        return Until([&] { return client.IsReady() && client.list.Text() == server.list.Text(); });
    }
    /// A client that shows what the server has.
    TestClient& Join(const QString& user) {
        TestClient& client = m_clients.emplace_back(broker, user);
        EXPECT_TRUE(AreEqual(client));
        return client;
    }
    /// From now on nothing comes from the broker whose topic has one of these parts.
    void Lose(std::vector<QByteArray> parts) {
        broker.SetFilter([parts = std::move(parts)](const QByteArray& topic, const QByteArray&) {
            return std::none_of(parts.begin(), parts.end(), [&](const auto& p) { return topic.contains(p); });
        });
    }
    /// Until all that was on its way to the seat has come.
    static bool UntilAllIsHere(Seat& seat) {
        bool isHere = false;
        seat.AfterWhatIsUnderWay([&] { isHere = true; });
        return Until([&] { return isHere; });
    }
    ~ShareFixture() override { broker.SetFilter({}); }

    LocalBroker broker;
    TestServer server{broker};

private:
    std::list<TestClient> m_clients;
};
