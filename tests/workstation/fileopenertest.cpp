#include "workstation/fileopener.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filelook.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/freqlist/buttonbar.h"
#include "tests/support/dialogs.h"
#include "tests/support/traces.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/actions.h"
#include "workstation/filedrop.h"
#include "workstation/job.h"
#include "workstation/memoryneed.h"

#include <QTabWidget>
#include <QTest>
#include <QToolButton>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr char Targets[] = "/Lists/LocalTargetList";
constexpr char Noi[] = "/Lists/NOIFrequencies";
constexpr char Memory[] = "/Lists/MemoryChannels";

class FileOpeners : public Workstations {
protected:
    Bar* barOf(const char* tab) const {
        QTabWidget* tabs = station->GetWindow().GetTabs();
        for (int index = 0; index < tabs->count(); ++index) {
            if (station->GetWindow().TabName(index) == QLatin1String(tab)) {
                tabs->setCurrentIndex(index);
                return tabs->widget(index)->findChild<Bar*>();
            }
        }
        return nullptr;
    }
    QAction* command(WindowActions::Command which) const {
        return station->GetWindow().GetActions().Get(which);
    }
    /// Chooses a file in the dialog of a list's command.
    void choose(const char* tab, const QString& path) {
        AnswerDialog(path);
        barOf(tab)->GetAction(Bar::Read)->trigger();
    }
};

struct Harm {
    const char* name;
    const char* bytes; ///< null: a sample of that name
    const char* reason;
};

void PrintTo(const Harm& harm, std::ostream* out) {
    *out << harm.name;
}

class HarmfulFiles : public FileOpeners, public testing::WithParamInterface<Harm> {
protected:
    QString path() {
        return GetParam().bytes ? Write(GetParam().name, GetParam().bytes) : sample(GetParam().name);
    }
};

TEST_P(HarmfulFiles, ThatAreChosenForTheTargetsLeaveThemAndSayWhy) {
    start({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    choose("Local TargetList", path());
    EXPECT_EQ(entriesOf(Targets), 527);
    EXPECT_TRUE(status().contains(GetParam().reason)) << status().toStdString();
    EXPECT_TRUE(messages().contains("Local TargetList stays as it is")) << messages().toStdString();
    EXPECT_EQ(title(), "Local TargetList - targets.ltl");
}

INSTANTIATE_TEST_SUITE_P(Files, HarmfulFiles,
                         testing::Values(Harm{"job-hf.pij", nullptr, "is a job"},
                                         Harm{"interest.noi", nullptr,
                                              "is a list of frequencies of interest"},
                                         Harm{"sweep.csv", nullptr, "power sweeps"},
                                         Harm{"passwd", "root:x:0:0::/root:/bin/sh\n", "no known kind"},
                                         Harm{"notes.ltl", "remember\nthe milk\n", "not one has a frequency"},
                                         Harm{"empty.ltl", "", "holds no entries"},
                                         Harm{"cut.xml", "<FrequencyStoreList Version=\"1\"><Frequ", ""}));

TEST_F(FileOpeners, AnUnreadableListDoesNotFreezeTheFrequenciesOfInterest) {
    const QString bad =
        Write("bad.xml", "<FrequencyStoreList Version=\"1\" Usage=\"NOI\"><FrequencyStoreEntry>");
    start({sample("interest.noi"), bad});
    EXPECT_FALSE(station->LoadFiles());
    const int before = entriesOf(Noi);
    EXPECT_GT(before, 0);
    choose("NOI Frequencies", bad);
    EXPECT_EQ(entriesOf(Noi), before);
    EXPECT_FALSE(NOIFrequencyHandler::Instance()->IsWaitingForFile());
    EXPECT_EQ(NOIFrequencyHandler::Instance()->GetCurrentFileName(), sample("interest.noi"));
    EXPECT_EQ(title(), "NOI Frequencies - interest.noi");
}

TEST_F(FileOpeners, AJobThatCannotBeOpenedDoesNotFreezeTheMemoryChannels) {
    start({"--job", sample("job-hf.pij")});
    ASSERT_TRUE(station->LoadFiles());
    const int before = entriesOf(Memory);
    choose("Memory Channels", Path("gone.pij"));
    EXPECT_EQ(entriesOf(Memory), before);
    EXPECT_FALSE(MemorySystemHandler::Instance()->GetMediatorCtrl()->IsSuspended());
}

TEST_F(FileOpeners, AListThatWaitsForAFileSaysSoWithAButtonBeside) {
    start({});
    station->GetWindow().resize(1200, 700);
    Write("bad.csv", "Frequency,Bandwidth\n7055000,wide\n");
    const std::pair<const char*, std::function<void()>> lists[] = {
        {"NOI Frequencies", [this] { NOIFrequencyHandler::Instance()->ReadFile(Path("bad.csv")); }},
        {"Memory Channels", [this] { MemorySystemHandler::Instance()->ParseJobFile(Path("gone.pij")); }}};
    for (const auto& [tab, fail] : lists) {
        SCOPED_TRACE(tab);
        Bar* bar = barOf(tab);
        const auto* open = bar->findChild<QToolButton*>("OpenFromNotice");
        EXPECT_FALSE(open->isVisible());
        fail();
        EXPECT_TRUE(Until([&] { return open->isVisible(); }));
        for (const Bar::Action action : {Bar::New, Bar::Paste, Bar::Edit})
            EXPECT_TRUE(bar->GetAction(action)->toolTip().contains("could not be read")) << action;
        EXPECT_FALSE(bar->GetAction(Bar::New)->isEnabled());
        EXPECT_EQ(open->defaultAction(), bar->GetAction(Bar::Read));
    }
}

/// The ways to open a target list. Whichever was taken, Save writes the file that was opened last.
TEST_F(FileOpeners, SaveWritesTheFileThatWasOpenedWhateverTheWay) {
    const struct {
        const char* name;
        std::function<void(const QString& path)> open;
    } ways[] = {
        {"dialog.ltl",
         [this](const QString& path) {
             AnswerDialog(path);
             command(WindowActions::Open)->trigger();
         }},
        {"list.ltl", [this](const QString& path) { choose("Local TargetList", path); }},
        {"dropped.ltl",
         [this](const QString& path) { emit station->GetWindow().findChild<FileDrop*>()->Dropped({path}); }},
        {"another.ltl", [this](const QString& path) { station->GetOpener().Open(path); }},
        {"command.ltl",
         [this](const QString&) { // was opened first, and is chosen among the last ones
             QMenu& menu = *station->GetWindow().GetRecentMenu();
             emit menu.aboutToShow();
             for (QAction* recent : menu.actions()) {
                 if (recent->toolTip().contains("command.ltl") || recent->text().contains("command.ltl"))
                     return recent->trigger();
             }
         }},
    };
    const QByteArray lines = Read(sample("targets.ltl"));
    start({Write("command.ltl", lines)});
    ASSERT_TRUE(station->LoadFiles());
    barOf("Local TargetList");
    int added = 0;
    const auto saveInto = [&](const char* name) {
        const TargetListHandler& list = *TargetListHandler::Instance();
        EXPECT_EQ(list.GetCurrentFileName(), Path(name));
        ASSERT_TRUE(TargetListHandler::Instance()->AddNew()) << name;
        command(WindowActions::Save)->trigger();
        EXPECT_EQ(LookAtFile(Path(name)).rows, 528 + added) << name;
    };
    saveInto("command.ltl");
    for (const auto& way : ways) {
        added = QByteArray(way.name) == "command.ltl" ? 1 : 0;
        if (added == 0)
            Write(way.name, lines);
        way.open(Path(way.name));
        QApplication::processEvents();
        saveInto(way.name);
    }
}

TEST_F(FileOpeners, SomebodyWhoIsThereIsAsked) {
    start({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    station->SetAttended(true);
    const QString notes = Write("notes.ltl", "remember\nthe milk\n");
    const auto open = [&] { station->GetOpener().Open(notes); };
    EXPECT_TRUE(Answered(QMessageBox::Cancel, open).contains("notes.ltl: 2 lines, not one has a frequency"));
    EXPECT_EQ(entriesOf(Targets), 527);
    Answered(QMessageBox::Yes, open);
    EXPECT_EQ(entriesOf(Targets), 2);
    EXPECT_EQ(title(), "Local TargetList - notes.ltl");
}

TEST_F(FileOpeners, AJobThatIsChosenForTheTargetsCanBeOpenedAsTheJob) {
    start({});
    station->SetAttended(true);
    QString asked;
    QTimer::singleShot(0, qApp, [&] { AnswerQuestion(QMessageBox::Yes, asked); });
    choose("Local TargetList", sample("job-hf.pij"));
    EXPECT_TRUE(asked.contains("is a job, which Local TargetList does not read")) << asked.toStdString();
    EXPECT_TRUE(Until([&] { return station->GetJob().GetFileName() == sample("job-hf.pij"); }));
}

TEST_F(FileOpeners, ChannelsAreSentToAJobOnlyWhenOneIsOpen) {
    start({});
    Bar* bar = barOf("Memory Channels");
    EXPECT_FALSE(bar->GetAction(Bar::SaveToJob)->isEnabled());
    EXPECT_TRUE(bar->GetAction(Bar::SaveToJob)->toolTip().contains("No job is open"));
    ASSERT_TRUE(station->GetJob().Open(sample("job-hf.pij")));
    EXPECT_TRUE(bar->GetAction(Bar::SaveToJob)->isEnabled());
    EXPECT_EQ(title(), "Memory Channels - job-hf.pij");
}

TEST_F(FileOpeners, AFileThatNeedsMoreMemoryThanThereIsIsRefusedOrAskedAbout) {
    EXPECT_TRUE(WhyTooLarge(1000, 2'000'000).isEmpty());
    EXPECT_TRUE(WhyTooLarge(3000, 2'000'000).startsWith("3,000 entries need 2.9 MiB"))
        << WhyTooLarge(3000, 2'000'000).toStdString();
    EXPECT_GT(AvailableMemory(), 1'000'000);
    start({});
    station->GetOpener().SetMemoryProbe([] { return 100'000; });
    EXPECT_FALSE(station->GetOpener().Open(sample("targets.ltl")));
    EXPECT_EQ(entriesOf(Targets), 0);
    EXPECT_TRUE(status().contains("527 entries need")) << status().toStdString();
    station->SetAttended(true);
    Answered(QMessageBox::Yes, [&] { EXPECT_TRUE(station->GetOpener().Open(sample("targets.ltl"))); });
    EXPECT_EQ(entriesOf(Targets), 527);
}

TEST(FileOpener, OutlivesAReaderForWhichTheMemoryDoesNotDo) {
    Traces traces;
    FileOpener opener(nullptr, {{FileKind::Sweep, [](const QString&) -> bool { throw std::bad_alloc(); }}});
    EXPECT_FALSE(opener.Open(sample("sweep.csv")));
    ASSERT_EQ(traces.problems.size(), 1);
    EXPECT_TRUE(traces.problems[0].startsWith(sample("sweep.csv") + ": there is not enough memory"));
}

} // namespace
