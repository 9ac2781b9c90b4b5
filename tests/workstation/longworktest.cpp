// Long work in the window: what is cancelled, at whatever step, leaves everything as it was.

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/sendto.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/merge/fileentries.h"
#include "controls/frequencystore/merge/listmerge.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/undohistory.h"
#include "tests/support/dialogs.h"
#include "tests/support/text.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/ending.h"
#include "workstation/fileopener.h"
#include "workstation/listimport.h"
#include "workstation/progressbox.h"
#include "workstation/simulatedsearch.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QUndoStack>

#include <csignal>

namespace {

class LongWorkInTheWindow : public Windows, protected LongWork::Display {
protected:
    void SetUp() override {
        open({Write("mine.ltl", lines(30)), sample("interest.noi"), sample("results.xml")});
        ASSERT_TRUE(station->LoadFiles());
        QTest::qWait(1);
        LongWork::SetEager(true);
        station->GetSearch().Simulate(60000000, 1700000000000000);
        show("Search MC with Classifier");
        ASSERT_TRUE(Until([&] { return !tabText().endsWith(" 0"); }));
        detections = show("Detections");
        ASSERT_TRUE(Until([&] { return !tabText().endsWith(" 0"); }));
        list = dynamic_cast<FrequencyNodeListView*>(show("Local TargetList"));
        ASSERT_TRUE(list);
        list->SelectPlace(2);
        key(Qt::Key_Down, Qt::ShiftModifier);
    }
    void TearDown() override {
        LongWork::SetEager(false);
        LongWork::SetDisplay(nullptr);
        Windows::TearDown();
    }
    static QByteArray lines(int count) {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += QByteArray::number(9000000 - 1000 * (i % 7) + i) + "\t9000\tstation " +
                    QByteArray::number(i % 11) + "\tAM\tg\tred\t3\n";
        return text;
    }

    /// All that the operator sees of the lists, and what can be undone.
    QString state() {
        QString all;
        for (const char* name : {"/Lists/LocalTargetList", "/Lists/NOIFrequencies", "/Lists/MemoryChannels",
                                 "/Lists/SearchMCDataResults"}) {
            const Node* node = Tree::Instance()->GetNode(QString::fromLatin1(name));
            for (const Node* entry : node ? node->Children() : std::vector<Node*>())
                all += entry->GetPathName() + QString::fromStdString(entry->GetAsStdString()) + '\n';
        }
        for (int row = 0; row < list->ShownCount(); ++row)
            all += QString::number(row) + list->topLevelItem(row)->CellText(1) +
                   (list->topLevelItem(row)->isSelected() ? "*\n" : "\n");
        for (int row = 0; row < detections->ShownCount() && detections->topLevelItem(row); ++row)
            all += detections->topLevelItem(row)->CellText(0) + '\n';
        for (const QString& name : FileNames())
            all += name + Read(name).toBase64() + '\n';
        const QUndoStack& stack = UndoHistory::Instance().Stack();
        all += QStringLiteral("%1 of %2, sorted %3 and %4, %5\n")
                   .arg(stack.index())
                   .arg(stack.count())
                   .arg(list->SortColumn())
                   .arg(detections->SortColumn())
                   .arg(title());
        for (int tab = 0; tab < window().GetTabs()->count(); ++tab)
            all += window().GetTabs()->tabText(tab) + '|' + window().GetTabs()->tabToolTip(tab) + '\n';
        return all;
    }

    void Turn(const LongWork::Progress&) override {
        if (++turns == cancelAt)
            LongWork::Cancel();
    }
    void Hide() override {}

    FrequencyNodeListView* list = nullptr;
    SortListView* detections = nullptr;
    int turns = 0;
    int cancelAt = 0;
};

void openFile(Workstation& station, const QString& path) {
    station.GetOpener().Open(path);
}

class CancelledWork : public LongWorkInTheWindow, public testing::WithParamInterface<const char*> {
protected:
    using Act = std::function<void()>;

    std::map<std::string, Act> acts() {
        const QString resultLines = Write("lines.csv", "7055000\t3000\ta\tlocked\t5\t9\n");
        const QString other = Write("other.ltl", lines(25));
        auto* const controller =
            dynamic_cast<HalvoNodeMediatorCtrl*>(FreqStore::Instance().GetFrequencies(list->GetID()));
        return {
            {"OpenLines", [=, this] { openFile(*station, other); }},
            {"OpenXml", [=, this] { openFile(*station, sample("targets.xml")); }},
            {"OpenCsv", [=, this] { openFile(*station, sample("targets.csv")); }},
            {"OpenProfiles", [=, this] { openFile(*station, sample("profiles.xml")); }},
            {"OpenNoi", [=, this] { openFile(*station, sample("interest.xml")); }},
            {"OpenJob", [=, this] { openFile(*station, sample("job-vuhf.pij")); }},
            {"OpenResults", [=, this] { openFile(*station, sample("results.xml")); }},
            {"OpenResultLines",
             [=] {
                 const OperatorAction step(Q("Open"));
                 SearchMCDataReader(*SearchMCDataHandler::Instance()->GetMediatorCtrl())
                     .ReadFile(resultLines);
             }},
            {"OpenChannelLines", [=, this] { openFile(*station, sample("airband.sfl")); }},
            {"OpenChannels", [=] { MemorySystemHandler::Instance()->ReadFile(sample("memory-vuhf.xml")); }},
            {"OpenSweep", [=, this] { openFile(*station, sample("sweep.csv")); }},
            {"Save", [=, this] { action(A::Save)->trigger(); }},
            {"SaveResults",
             [=, this] {
                 AnswerDialog(Path("results.xml"));
                 SearchMCDataHandler::Instance()->SaveToFile(false);
             }},
            {"SaveChannels", [=, this] { MemorySystemHandler::Instance()->SaveFile(Path("channels.xml")); }},
            {"SortDetections", [=, this] { detections->sortByColumn(0, Qt::DescendingOrder); }},
            {"SortDetectionsByText", [=, this] { detections->sortByColumn(5, Qt::DescendingOrder); }},
            {"Paste", [=, this] { action(A::Paste)->trigger(); }},
            {"Duplicate", [=, this] { list->Duplicate(); }},
            {"Delete", [=, this] { action(A::Delete)->trigger(); }},
            {"Cut", [=, this] { action(A::Cut)->trigger(); }},
            {"Fill", [=, this] { list->FillColumn(3, QStringLiteral("other")); }},
            {"PasteText", [=, this] { list->PasteText(Q("7055 kHz\n7060 kHz\n7065 kHz")); }},
            {"Undo", [=] { UndoHistory::Instance().Stack().undo(); }},
            {"Sort", [=, this] { list->sortByColumn(1, Qt::AscendingOrder); }},
            {"Duplicates", [=, this] { ListImport::SelectDuplicates(*list); }},
            {"Merge",
             [=] {
                 const auto entries = ReadFileEntries(sample("targets.csv"), MediatorType::TargetList);
                 if (!entries)
                     return;
                 ListMerge merge(*controller, *entries);
                 merge.Match(0);
                 if (!merge.WasCancelled())
                     merge.Apply();
             }},
            {"Send",
             [=] {
                 const OperatorAction step(Q("Send"));
                 if (const auto entries = ReadFileEntries(sample("targets.csv"), MediatorType::TargetList))
                     LongWork::Run(Q("Send"), [&] { SendTo::Send(*entries, *controller, 1); });
             }},
        };
    }
};

TEST_P(CancelledWork, IsDoneWhollyOrNotAtAll) {
    const Act act = acts().at(GetParam());
    ASSERT_TRUE(Until([&] { return action(A::Copy)->isEnabled(); }));
    action(A::Copy)->trigger();
    const std::string kind = GetParam();
    if (kind == "Undo" || kind == "Save") {
        list->Duplicate();
        ASSERT_TRUE(Until([&] { return tabText().contains("32"); }));
    }
    if (kind == "SaveChannels") {
        ASSERT_TRUE(MemorySystemHandler::Instance()->ReadFile(sample("memory-vuhf.xml")));
    }
    RunTimersUpTo(200); // the tabs follow
    LongWork::SetDisplay(this);
    const QString before = state();
    int cancelled = 0;
    bool isDone = false;
    // At the first steps one by one, then further and further apart.
    for (cancelAt = 1; cancelAt < 5000 && !isDone; cancelAt += 1 + cancelAt / 3) {
        SCOPED_TRACE(cancelAt);
        turns = 0;
        window().GetActions().Refresh();
        const int count = LongWork::CancelCount();
        act();
        if (LongWork::CancelCount() == count) {
            isDone = true;
            break;
        }
        ++cancelled;
        if (kind == "Undo")
            (void)Until([&] { return state() == before; }); // stack and counts in the tabs follow
        ASSERT_EQ(state().toStdString(), before.toStdString());
        RunTimersUpTo(200); // what waits for a timer comes now
        ASSERT_EQ(state().toStdString(), before.toStdString());
    }
    EXPECT_GT(cancelled, 0);
    EXPECT_TRUE(isDone);
    EXPECT_TRUE(state() != before);
}

INSTANTIATE_TEST_SUITE_P(Kinds, CancelledWork,
                         testing::Values("OpenLines", "OpenXml", "OpenCsv", "OpenProfiles", "OpenNoi",
                                         "OpenJob", "OpenResults", "OpenResultLines", "OpenChannelLines",
                                         "OpenChannels", "OpenSweep", "Save", "SaveResults", "SaveChannels",
                                         "SortDetections", "SortDetectionsByText", "Paste", "Duplicate",
                                         "Delete", "Cut", "Fill", "PasteText", "Undo", "Sort", "Duplicates",
                                         "Merge", "Send"),
                         [](const auto& kind) { return std::string(kind.param); });

/// The card of long work, worked with while it shows.
class ProgressBoxTest : public Windows, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        open({sample("targets.ltl")});
        ASSERT_TRUE(station->LoadFiles());
    }
    /// Works until the card shows, and then calls `act` from its event loop; goes on until it is cancelled,
    /// or for some steps.
    bool work(const std::function<void(ProgressCard&)>& act) {
        return LongWork::Run(Q("Reading many.ltl"), [&] {
            QPointer<ProgressCard> card;
            while (!card) {
                LongWork::Step(40, 100);
                card = window().findChild<ProgressCard*>();
            }
            QMetaObject::invokeMethod(
                qApp, [&] { act(*card); }, Qt::QueuedConnection);
            LongWork::SetEager(true);
            for (int i = 0; i < 20; ++i)
                LongWork::Step(41 + i, 100);
        });
    }
    void TearDown() override {
        LongWork::SetEager(false);
        Windows::TearDown();
    }
};

TEST_P(ProgressBoxTest, TheOperatorCancels) {
    const std::map<std::string, std::function<void(ProgressCard&)>> ways = {
        {"Button", [](ProgressCard& card) { QTest::mouseClick(card.GetCancelButton(), Qt::LeftButton); }},
        {"Escape", [this](ProgressCard&) { key(Qt::Key_Escape); }},
        {"Close", [this](ProgressCard&) { window().windowHandle()->close(); }},
        {"Signal", [](ProgressCard&) { ::raise(SIGTERM); }},
    };
    bool isVisible = false;
    EXPECT_FALSE(work([&](ProgressCard& card) {
        isVisible = card.isVisible();
        ways.at(GetParam())(card);
    }));
    EXPECT_TRUE(isVisible);
    EXPECT_FALSE(window().findChild<ProgressCard*>());
    const bool closes = std::string(GetParam()) == "Close";
    EXPECT_TRUE(window().isVisible()) << "not before the work has ended";
    EXPECT_TRUE(Until([&] { return window().isVisible() != closes; }));
    const bool ends = std::string(GetParam()) == "Signal";
    EXPECT_TRUE(Until([&] { return station->GetEnding().IsEnding() == ends; }));
}

INSTANTIATE_TEST_SUITE_P(Ways, ProgressBoxTest, testing::Values("Button", "Escape", "Close", "Signal"),
                         [](const auto& way) { return std::string(way.param); });

/// Notes what reaches whom.
class EventsOf : public QObject {
public:
    EventsOf() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        ++counts[{watched, event->type()}];
        return false;
    }
    int Count(const QObject* watched, QEvent::Type type) { return counts[{watched, type}]; }

    std::map<std::pair<const QObject*, QEvent::Type>, int> counts;
};

TEST_F(ProgressBoxTest, TheWindowPaintsAndNothingElseHappens) {
    SortListView* list = show("Local TargetList");
    list->setFocus();
    QTest::qWait(1);
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(0);
    EventsOf events;
    QPointer<ProgressCard> shown;
    QObject later;
    const auto posted = static_cast<QEvent::Type>(QEvent::User + 7);
    EXPECT_TRUE(work([&](ProgressCard& card) {
        shown = &card;
        events.counts.clear();
        key(Qt::Key_Delete);
        QCoreApplication::postEvent(&later, new QEvent(posted));
        window().resize(window().size() + QSize(40, 30));
        list->viewport()->update();
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
        EXPECT_EQ(card.parentWidget()->size(), window().size());
        EXPECT_GT(events.Count(&card, QEvent::Paint), 0);
        EXPECT_EQ(events.Count(list->viewport(), QEvent::Paint), 0);
        EXPECT_EQ(events.Count(&later, posted), 0);
    }));
    EXPECT_EQ(ticks, 0);
    ASSERT_FALSE(shown);
    const int rows = list->ShownCount();
    EXPECT_TRUE(Until([&] { return ticks > 0 && events.Count(&later, posted) == 1; }));
    EXPECT_TRUE(Until([&] { return events.Count(list->viewport(), QEvent::Paint) > 0; }));
    EXPECT_EQ(list->ShownCount(), rows) << "the key is not for later";
    EXPECT_GE(window().centralWidget()->width(), window().width() / 2) << "it is laid out again";
}

} // namespace
