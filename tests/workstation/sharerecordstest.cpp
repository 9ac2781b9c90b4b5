// Detections that seats share, in the window.

#include "host/freqlist/pixstatevector.h"
#include "host/freqlist/vectorlistviewbase.h"
#include "link/recordclient.h"
#include "link/recordserver.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/sharefixture.h"
#include "workstation/safekeeping.h"
#include "workstation/simulatedsearch.h"
#include "workstation/timepicture.h"

#include <QDockWidget>
#include <QLabel>
#include <QMenu>

namespace {

constexpr qint64 Noon = 1'700'000'000'000'000; // µs
constexpr qint64 Minute = 60'000'000;

/// Another seat of the site with a list of records.
template <typename Record>
class OtherRecords {
public:
    OtherRecords(LocalBroker& broker, const char* kind, const char* user)
        : m_kind(Q(kind)), m_bus(broker, Q(user)), m_seat(m_bus, Q("north"), Q(user)) {}

    void Serve() { m_server = std::make_unique<RecordServer>(m_seat, list, m_kind); }
    void Follow() {
        m_reader = std::make_unique<ListReader>(m_seat, m_kind);
        m_client = std::make_unique<RecordClient>(*m_reader, list);
    }
    ListClaim::State State() const { return m_server->GetState(); }

    ValueList<Record> list;

private:
    const QString m_kind;
    LocalBus m_bus;
    Seat m_seat;
    std::unique_ptr<RecordServer> m_server;
    std::unique_ptr<ListReader> m_reader;
    std::unique_ptr<RecordClient> m_client;
};

template <typename Record>
ValueList<Record>& listAt(const QString& path) {
    return *value_cast<ValueList<Record>>(Tree::Instance()->GetValue(path));
}

template <typename Record>
Record detection(unsigned id) {
    Record record;
    record.SetID(id);
    record.SetFrequency(7e6 + id * 1000);
    record.SetStartTime(Noon + id * 1e6);
    record.SetStopTime(Noon + id * 2e6);
    return record;
}

class SharedDetections : public Shares {
protected:
    void fill(OtherRecords<DetectionConventional>& other, unsigned count) {
        for (unsigned id = 1; id <= count; ++id)
            other.list.PushBack(detection<DetectionConventional>(id));
        other.Serve();
    }
};

struct OwnRadio {
    const char* receiver;
    const char* classified; ///< the kind of its detections with results
};

void PrintTo(const OwnRadio& radio, std::ostream* out) {
    *out << radio.receiver;
}

class DetectionsOfARadio : public SharedDetections, public testing::WithParamInterface<OwnRadio> {};

TEST_P(DetectionsOfARadio, AreSeenByOthersOneByOneWhileTheSearchWrites) {
    open({"--receiver", GetParam().receiver});
    SimulatedSearch& search = station->GetSearch();
    search.Simulate(Minute, Noon);
    EXPECT_TRUE(sharing().KindsToServe().contains(GetParam().classified)) << "it can be chosen";
    share(Role::Server, {"detections", GetParam().classified});
    OtherRecords<DetectionConventional> plain(broker, "detections", "bert");
    OtherRecords<ExtendedDetectionConventional> classified(broker, GetParam().classified, "carla");
    plain.Follow();
    classified.Follow();
    const auto areEqual = [&] {
        return plain.list.Elements() ==
                   listAt<DetectionConventional>(SimulatedSearch::DetectionsPath).Elements() &&
               classified.list.Elements() ==
                   listAt<ExtendedDetectionConventional>(SimulatedSearch::ClassifiedPath).Elements();
    };
    ASSERT_TRUE(Until(areEqual));
    ASSERT_GT(plain.list.Size(), 0u);
    ASSERT_GT(classified.list.Size(), 0u);
    const auto rewrites = plain.list.SeenNow().rewrites;
    const size_t before = plain.list.Size();
    search.Simulate(Minute, Noon + 2 * Minute);
    ASSERT_TRUE(Until(areEqual));
    EXPECT_GT(plain.list.Size(), before);
    EXPECT_EQ(plain.list.SeenNow().rewrites, rewrites) << "what was there is not sent or shown again";
    search.Clear();
    EXPECT_TRUE(Until(areEqual));
    EXPECT_FALSE(QFile::exists(Path("data/detections.share"))) << "there is nothing to keep";
    sharing().Disconnect();
    search.Simulate(Minute, Noon + 4 * Minute);
    OtherRecords<DetectionConventional> next(broker, "detections", "dora");
    next.Serve();
    EXPECT_TRUE(Until([&] { return next.State() == ListClaim::State::Serving; })) << "it is free again";
}

INSTANTIATE_TEST_SUITE_P(All, DetectionsOfARadio,
                         testing::Values(OwnRadio{"hf", "detections-hf"},
                                         OwnRadio{"vuhf", "detections-vuhf"}));

TEST_F(SharedDetections, ThatAreNotChosenStayHere) {
    open({});
    station->GetSearch().Simulate(Minute, Noon);
    OtherRecords<DetectionConventional> other(broker, "detections", "bert");
    fill(other, 3);
    share(Role::Server);
    constexpr char Theirs[] = "Detections (north)";
    ASSERT_TRUE(Until([&] { return idOf(Theirs) != 0; })) << "those of another seat are shown instead";
    SortListView* const list = show(Theirs);
    EXPECT_TRUE(Until([&] { return list->RowCount() == 3; }));
}

TEST_F(SharedDetections, OfAnotherSeatAreAListOfTheirOwnThatNothingHereKeepsOrChanges) {
    open({});
    station->GetSearch().Simulate(Minute, Noon);
    const auto& local = listAt<DetectionConventional>(SimulatedSearch::DetectionsPath);
    const auto before = local.Elements();
    OtherRecords<DetectionConventional> other(broker, "detections", "bert");
    fill(other, 3);
    share(Role::Client);
    constexpr char Theirs[] = "Detections (north)";
    ASSERT_TRUE(Until([&] { return idOf(Theirs) != 0; }));
    const int id = idOf(Theirs);
    SortListView* const list = show(Theirs);
    ASSERT_TRUE(Until([&] { return list->RowCount() == 3; }));
    EXPECT_EQ(local.Elements(), before) << "the local list is another one";
    const std::unique_ptr<PixStateVector> line(
        FreqStore::Instance().GetDefinition(id)->CreatePixStateVector());
    line->Refresh();
    EXPECT_EQ(line->ItemFrequency(2), 7003000);

    auto* const view = dynamic_cast<VectorListViewBase*>(window().ViewOf(id));
    ASSERT_NE(view, nullptr);
    view->SelectRow(1);
    ASSERT_TRUE(Until([&] { return action(A::Copy)->isEnabled() && action(A::SendTo)->isEnabled(); }));
    const auto& marked = listAt<double>(Q("/Shared/north/detections/Marked")).Elements();
    EXPECT_EQ(marked, std::vector<double>{7002000});
    for (const A::Command command : {A::New, A::Paste, A::Delete, A::Duplicate, A::EditCell})
        EXPECT_FALSE(action(command)->isEnabled()) << command;
    FreqStore::Instance().ClearFrequencyListCopyStruct();
    action(A::Copy)->trigger();
    bool more = false;
    EXPECT_NE(FreqStore::Instance().GetFrequencyListCopyStruct(more), nullptr);
    emit action(A::SendTo)->menu()->aboutToShow();
    for (QAction* taker : action(A::SendTo)->menu()->actions()) {
        if (taker->text().remove('&').contains("NOI"))
            taker->trigger();
    }
    EXPECT_TRUE(Until([&] { return entriesOf("/Lists/NOIFrequencies") == 1; }));
    AnswerDialog(Path("theirs.xml"));
    window().BarOf(id)->GetAction(Bar::Save)->trigger();
    EXPECT_EQ(Read("theirs.xml").count("<FrequencyStoreEntry"), 3);

    other.list.Edit(0, other.list.Elements().front(), [](auto& record) { record.SetFrequency(1e6); });
    other.list.HasChanged(TChangeCode::ValueChanged);
    other.list.PushBack(detection<DetectionConventional>(9));
    ASSERT_TRUE(
        Until([&] { return list->RowCount() == 4 && list->topLevelItem(0)->CellText(0).startsWith("1"); }));
    EXPECT_EQ(view->SelectedCount(), 1) << "what is selected stays so";
    EXPECT_FALSE(tabText().endsWith('*'));
    EXPECT_FALSE(station->GetSafekeeping().Find(id)) << "no recovery, no question at the end";
    EXPECT_EQ(messages(), QString());

    broker.Stop();
    EXPECT_EQ(list->RowCount(), 4) << "the last whole list stays";
    sharing().Disconnect();
    EXPECT_EQ(idOf(Theirs), 0);
    EXPECT_EQ(Tree::Instance()->GetNode(Q("/Shared/north/detections")), nullptr);
    EXPECT_EQ(local.Elements(), before);
}

TEST_F(SharedDetections, WithResultsHaveTheColumnsOfTheirReceiver) {
    open({"--receiver", "hf"});
    OtherRecords<ExtendedDetectionConventional> other(broker, "detections-vuhf", "bert");
    auto record = detection<ExtendedDetectionConventional>(1);
    record.Result().demodulator = "FSK theirs";
    other.list.PushBack(record);
    other.Serve();
    OtherRecords<DetectionConventional> wrong(broker, "detections-hf", "carla");
    fill(wrong, 2);
    share(Role::Client);
    constexpr char Theirs[] = "Search MC with Classifier V/UHF (north)";
    ASSERT_TRUE(Until([&] { return idOf(Theirs) != 0; }));
    SortListView* const list = show(Theirs);
    ASSERT_TRUE(Until([&] { return list->RowCount() == 1; }));
    window().ViewOf(idOf(Theirs))->GetListView()->setCurrentItem(list->topLevelItem(0));
    EXPECT_TRUE(Until([&] { return window().ViewOf(idOf(Theirs))->SelectedText().contains("FSK theirs"); }));
    EXPECT_TRUE(Until([&] {
        return sharing().Details().contains("Classifier HF: its records are of another kind");
    })) << sharing().Details().toStdString();
}

TEST_F(SharedDetections, SayWhatTheyAreAndRememberTheirOwnColumns) {
    open({});
    OtherRecords<DetectionConventional> other(broker, "detections", "bert");
    other.Serve();
    share(Role::Client);
    constexpr char Theirs[] = "Detections (north)";
    ASSERT_TRUE(Until([&] { return idOf(Theirs) != 0; }));
    FrequencyStoreListView* const view = window().ViewOf(idOf(Theirs));
    FrequencyStoreListView* const own = window().ViewOf(idOf("Detections"));
    ASSERT_TRUE(view && own);
    EXPECT_TRUE(Until([&] { return view->EmptyText().contains("has no entries in it"); }));
    broker.Stop();
    EXPECT_TRUE(Until([&] { return view->EmptyText().contains("come when the seat"); }));
    const auto labels = window().BarOf(idOf(Theirs))->findChildren<QLabel*>();
    EXPECT_TRUE(std::ranges::any_of(labels, [](QLabel* label) {
        return label->text().startsWith("The list is one of another seat: not connected");
    })) << "what is shown is marked as old";
    EXPECT_TRUE(own->EmptyText().contains("while a search runs"));
    EXPECT_NE(view->GetWidget()->objectName(), own->GetWidget()->objectName());
    EXPECT_EQ(window().BarOf(idOf(Theirs))->GetCaption(), Theirs);
    EXPECT_NE(window().BarOf(idOf("Detections"))->GetCaption(), Theirs);
}

TEST_F(SharedDetections, AreWhatThePictureAndNewestFirstShowWhileTheyAreLookedAt) {
    open({});
    auto* const picture = window().findChild<TimePicture*>();
    auto* const dock = dynamic_cast<QDockWidget*>(picture->parentWidget());
    ASSERT_TRUE(dock);
    dock->show();
    for (QAction* action : window().findChildren<QAction*>()) {
        if (action->text() == "&Newest first")
            action->trigger();
    }
    OtherRecords<ExtendedDetectionConventional> other(broker, "detections-vuhf", "bert");
    for (unsigned id = 1; id <= 3; ++id)
        other.list.PushBack(detection<ExtendedDetectionConventional>(id));
    other.Serve();
    share(Role::Client);
    constexpr char Theirs[] = "Search MC with Classifier V/UHF (north)";
    ASSERT_TRUE(Until([&] { return idOf(Theirs) != 0; }));
    SortListView* const list = show(Theirs);
    const auto isOnTop = [&](const char* hertz) {
        const QString text = list->topLevelItemCount() > 0 ? list->topLevelItem(0)->text(0) : QString();
        return QString(text).remove('.').remove(' ').startsWith(hertz);
    };
    EXPECT_TRUE(Until([&] { return list->RowCount() == 3 && isOnTop("7003"); }));
    other.list.PushBack(detection<ExtendedDetectionConventional>(9));
    EXPECT_TRUE(Until([&] { return list->RowCount() == 4 && isOnTop("7009"); }));

    const auto seen = [&] {
        const QImage image = picture->grab().toImage().copy(picture->Plot());
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                pixels += image.pixelColor(x, y) != picture->palette().color(QPalette::Base);
        }
        return pixels;
    };
    picture->SetRange(7e6, 7.02e6);
    picture->ShowAllTimes();
    EXPECT_TRUE(Until([&] { return seen() > 0; }));
    EXPECT_EQ(dock->windowTitle(), QStringLiteral("Time picture: ") + Theirs);
    EXPECT_EQ(dock->toggleViewAction()->text(), "&Time picture");
    emit picture->RecordClicked(3);
    const auto selected = [&] { return window().ViewOf(idOf(Theirs))->SelectedText(); };
    EXPECT_TRUE(Until([&] { return selected().remove('.').contains("7009"); })) << selected().toStdString();
    show("Local TargetList");
    EXPECT_EQ(dock->windowTitle(), QStringLiteral("Time picture: ") + Theirs) << "it was looked at last";
    show("Detections");
    EXPECT_EQ(dock->windowTitle(), "Time picture");
    EXPECT_TRUE(Until([&] { return seen() == 0; })) << "there are none here";
    show(Theirs);
    sharing().Disconnect();
    EXPECT_EQ(dock->windowTitle(), "Time picture");
}

} // namespace
