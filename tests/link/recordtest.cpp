// Lists of detections, shared record by record.

#include "host/report/rgexception.h"
#include "host/valuetree/detection.h"
#include "link/recordclient.h"
#include "link/recordserver.h"
#include "tests/link/linkfixture.h"
#include "tests/support/eventsmeanwhile.h"

#include <random>

namespace {

DetectionConventional plain(unsigned id) {
    DetectionConventional record;
    record.SetID(id);
    record.SetFrequency(7e6 + id * 12.5);
    record.SetLevel(static_cast<short>(id % 200 - 100));
    record.SetStartTime(1.7e15 + id);
    record.SetActive(id % 3 == 0);
    return record;
}

template <typename Record>
Record makeRecord(unsigned id) {
    Record record;
    static_cast<DetectionConventional&>(record) = plain(id);
    if constexpr (std::is_same_v<Record, ExtendedDetectionConventional>) {
        ClassifierResult& result = record.Result();
        result.baudrate = id / 3.0;
        result.confidence = static_cast<short>(id % 101);
        result.demodulator = "FSK ±\n" + std::to_string(id);
        result.azimuth = std::to_string(id % 360);
        result.dfLongitude = "11.5,12.5";
    }
    return record;
}

template <typename Record>
class Records : public testing::Test {
protected:
    using List = ValueList<Record>;

    void Fill(unsigned count) {
        typename List::Container records;
        for (unsigned id = 1; id <= count; ++id)
            records.push_back(makeRecord<Record>(id));
        served.Append(std::move(records));
    }
    ~Records() override { broker.SetFilter({}); }
    void Share() {
        server = std::make_unique<RecordServer>(serverSeat, served, Q("detections"));
        client = std::make_unique<RecordClient>(reader, shown);
    }
    /// The client's list is as long and the same.
    bool AreEqual() {
        return Until([&] {
            return reader.GetState() == ListReader::State::Whole && shown.Elements() == served.Elements();
        });
    }

    LocalBroker broker;
    LocalBus serverBus{broker, Q("server")}, clientBus{broker, Q("anna")};
    Seat serverSeat{serverBus, Q("north"), Q("server")}, clientSeat{clientBus, Q("north"), Q("anna")};
    List served, shown;
    ListReader reader{clientSeat, Q("detections")};
    std::unique_ptr<RecordServer> server;
    std::unique_ptr<RecordClient> client;
};

using Kinds = testing::Types<DetectionConventional, ExtendedDetectionConventional>;
TYPED_TEST_SUITE(Records, Kinds);

TYPED_TEST(Records, followTheServersListWhateverBecomesOfIt) {
    auto& list = this->served;
    this->Fill(300);
    this->Share();
    ASSERT_TRUE(this->AreEqual());
    std::mt19937 random(11);
    unsigned id = 1000;
    for (int turn = 0; turn < 300; ++turn) {
        const auto at = [&] { return list.Size() == 0 ? 0 : static_cast<long>(random() % list.Size()); };
        const long place = at();
        switch (random() % 8) {
        case 0: // a rewritten list: records go, come between others, change
            for (unsigned n = 0; n < random() % 4 && list.Size() > 0; ++n)
                list.GetList().erase(std::next(list.GetList().begin(), at()));
            if (random() % 2 == 0)
                list.GetList().insert(std::next(list.GetList().begin(), at()), makeRecord<TypeParam>(++id));
            list.HasChanged(TChangeCode::ValueChanged);
            break;
        case 1:
            if (random() % 20 == 0)
                list.Clear();
            break;
        case 2:
        case 3:
            if (list.Size() == 0)
                break;
            list.Edit(static_cast<quint64>(place), list.At(place),
                      [&](TypeParam& record) { record.SetLevel(static_cast<short>(random() % 100)); });
            list.HasChanged(TChangeCode::ValueChanged);
            break;
        default:
            list.PushBack(makeRecord<TypeParam>(++id));
        }
        if (random() % 3 == 0)
            this->server->Flush();
        if (random() % 10 == 0) {
            ASSERT_TRUE(this->AreEqual()) << turn;
        }
    }
    EXPECT_TRUE(this->AreEqual());
}

TYPED_TEST(Records, ofASearchCostNoCopyOfTheList) {
    this->Fill(20000);
    this->Share();
    ASSERT_TRUE(this->AreEqual());
    qsizetype bytes = 0;
    this->broker.SetFilter([&](const QByteArray& topic, const QByteArray& payload) {
        bytes += topic.contains("/seats/") ? 0 : payload.size();
        return true;
    });
    const auto before = this->shown.SeenNow();
    const TypeParam* const first = &this->shown.Elements().front();
    for (unsigned id = 0; id < 100; ++id) {
        this->served.PushBack(makeRecord<TypeParam>(50000 + id));
        this->served.Edit(0, this->served.At(0), [&](TypeParam& r) { r.SetID(70000 + id); });
        this->served.HasChanged(TChangeCode::ValueChanged);
        this->server->Flush();
    }
    ASSERT_TRUE(this->AreEqual());
    std::vector<typename ValueList<TypeParam>::Edited> edited;
    ASSERT_TRUE(this->shown.ChangesSince(before, edited)) << "nothing is rewritten";
    ASSERT_FALSE(edited.empty());
    EXPECT_EQ(edited.front().place, 0u);
    EXPECT_EQ(edited.front().element, first);
    EXPECT_EQ(&this->shown.Elements().front(), first);
    EXPECT_LT(bytes, 100 * 2 * 1000);
}

using PlainRecords = Records<DetectionConventional>;

TEST_F(PlainRecords, staySharedWhenTheBrokerComesBackAndStayShownWhenTheListHasGone) {
    auto list = std::make_unique<List>();
    list->PushBack(makeRecord<DetectionConventional>(1));
    server = std::make_unique<RecordServer>(serverSeat, *list, Q("detections"));
    client = std::make_unique<RecordClient>(reader, shown);
    ASSERT_TRUE(Until([&] { return shown.Size() == 1; }));
    EXPECT_EQ(RecordClient::TypeOf(reader.Copy()), ValueType::DetectionList);
    broker.Stop();
    list->PushBack(makeRecord<DetectionConventional>(2));
    broker.Forget();
    broker.Start();
    ASSERT_TRUE(Until([&] { return shown.Elements() == list->Elements(); }));
    list = nullptr;
    server->Flush();
    EXPECT_EQ(shown.Size(), 2u);
}

TEST_F(PlainRecords, goAndComeInTurnsAndWholeWhateverHappensMeanwhile) {
    Fill(5000);
    std::set<quint64> whole;
    QObject::connect(&reader, &ListReader::RowsChanged,
                     [&](const auto&) { whole.insert(reader.Copy().GetRows().size()); });
    Share();
    ASSERT_TRUE(AreEqual());
    LocalBus otherBus(broker, Q("ben"));
    Seat other(otherBus, Q("north"), Q("ben"));
    std::unique_ptr<ListReader> late;
    unsigned id = 10000;
    const std::pair<const char*, std::function<void()>> meanwhile[] = {
        {"nothing", [] {}},
        {"a record comes", [&] { served.PushBack(makeRecord<DetectionConventional>(++id)); }},
        {"a record goes",
         [&] {
             served.GetList().pop_front();
             served.HasChanged(TChangeCode::ValueChanged);
         }},
        {"a reader asks", [&] { late = std::make_unique<ListReader>(other, Q("detections")); }},
        {"the bus breaks", [&] { broker.IsRunning() ? broker.Stop() : broker.Start(); }},
    };
    for (const auto& [what, happen] : meanwhile) {
        for (const bool goes : {true, false}) {
            SCOPED_TRACE(std::string(what) + (goes ? ", records go" : ", records come"));
            int turns = 0;
            const EventsMeanwhile display([&, happen = happen] {
                if (++turns < 20000 && turns % 7000 == 100) // at longer times than it is read in
                    happen();
                EXPECT_EQ(whole.count(shown.Size()), 1u) << shown.Size();
            });
            List::Container records = served.Elements();
            if (goes)
                records.remove_if([](const auto& record) { return record.GetID() % 2 == 0; });
            while (!goes && records.size() < 5000)
                records.push_front(makeRecord<DetectionConventional>(++id));
            served.GetList().swap(records);
            served.HasChanged(TChangeCode::ValueChanged);
            server->Flush();
            if (!broker.IsRunning())
                broker.Start();
            ASSERT_TRUE(AreEqual());
            EXPECT_GT(turns, 5000);
        }
        ListReader last(other, Q("detections"));
        ASSERT_TRUE(Until([&] { return last.GetState() == ListReader::State::Whole; }));
        EXPECT_EQ(last.Copy().GetRows().size(), served.Size());
        EXPECT_TRUE(!late || late->Copy().GetRows().size() == served.Size());
    }
}

TEST_F(PlainRecords, areNotShownInAListOfAnotherKind) {
    TestServer targets(broker, Q("targets"));
    targets.list.Fill(5);
    targets.Serve();
    ListReader ofTargets(clientSeat, Q("Targets"));
    const RecordClient wrong(ofTargets, shown);
    ASSERT_TRUE(Until([&] { return ofTargets.GetState() == ListReader::State::Whole; }));
    EXPECT_TRUE(wrong.IsOfOtherKind());
    EXPECT_EQ(shown.Size(), 0u);
    Value<QString> text;
    EXPECT_THROW(RecordClient(ofTargets, text), RGException);
    EXPECT_THROW(RecordServer(serverSeat, text, Q("x")), RGException);
}

} // namespace
