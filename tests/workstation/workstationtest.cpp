#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/gui/sortlistview.h"
#include "receiver/receiver.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/filekinds.h"
#include "workstation/frequencybar.h"
#include "workstation/job.h"
#include "workstation/messagespanel.h"
#include "workstation/samples.h"
#include "workstation/simulatedsearch.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QScreen>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace {

TEST_F(Workstations, SamplesAreFoundBesideTheInstalledProgramAndAboveABuiltOne) {
    const QDir folder(m_folder.path());
    ASSERT_TRUE(folder.mkpath("work/build/dev"));
    ASSERT_TRUE(folder.mkpath("work/build/samples")) << "a folder of that name without lists";
    ASSERT_TRUE(folder.mkpath("work/samples"));
    ASSERT_TRUE(folder.mkpath("usr/bin"));
    ASSERT_TRUE(folder.mkpath("usr/share/frequencystore/samples"));
    EXPECT_EQ(FindSamples(Path("usr/bin")), QString());
    for (const char* place : {"work/samples/targets.xml", "usr/share/frequencystore/samples/targets.xml"})
        Write(place, "<FrequencyStoreList/>");
    EXPECT_EQ(FindSamples(Path("work/build/dev")), Path("work/samples"));
    EXPECT_EQ(FindSamples(Path("work/build")), Path("work/samples"));
    EXPECT_EQ(FindSamples(Path("usr/bin")), Path("usr/share/frequencystore/samples"));
}

TEST_F(Workstations, KindsOfFilesAreToldByNameOrByTheRootElement) {
    const QString noi =
        Write("bands.xml", "<?xml version=\"1.0\"?>\n<FrequencyStoreList Version=\"1\" Usage=\"NOI\"/>");
    const QString broken = Write("broken.xml", "<FrequencyStoreList Usage=");
    const std::pair<QString, FileKind> rows[] = {
        {sample("job-hf.pij"), FileKind::Job},      {sample("interest.noi"), FileKind::Noi},
        {sample("targets.xml"), FileKind::Targets}, {sample("profiles.xml"), FileKind::Targets},
        {sample("targets.csv"), FileKind::Targets}, {sample("airband.sfl"), FileKind::Targets},
        {sample("sweep.csv"), FileKind::Sweep},     {noi, FileKind::Noi},
        {sample("results.xml"), FileKind::Results}, {broken, FileKind::Targets},
        {"/no/such/file.xml", FileKind::Targets},   {"/no/such.pij/targets.ltl", FileKind::Targets}};
    for (const auto& [path, kind] : rows)
        EXPECT_EQ(FileKindOf(path), kind) << path.toStdString();
}

TEST_F(Workstations, EachFileGoesToWhomItBelongs) {
    start({"--job", sample("job-hf.pij"), sample("targets.ltl")});
    EXPECT_TRUE(station->LoadFiles());
    EXPECT_EQ(station->GetJob().GetFileName(), sample("job-hf.pij"));
    EXPECT_EQ(entriesOf("/Lists/LocalTargetList"), 527);
    start({"--receiver", "vuhf", sample("job-vuhf.pij")});
    EXPECT_TRUE(station->LoadFiles());
    EXPECT_EQ(station->GetJob().GetFileName(), sample("job-vuhf.pij"));
}

TEST_F(Workstations, SweepsStandBesideTheDetectionsOfTheSearch) {
    start({sample("sweep.csv")});
    const auto detections = [] {
        return value_cast<ValueList<DetectionConventional>>(
            Tree::Instance()->GetValue(SimulatedSearch::DetectionsPath));
    };
    EXPECT_TRUE(station->LoadFiles());
    EXPECT_EQ(status(), "sweep.csv: 10 detections in 40 sweeps");
    ASSERT_EQ(detections()->Size(), 10u);
    station->GetSearch().Simulate(60'000'000, 1'700'000'000'000'000);
    const quint64 searched = detections()->Size();
    EXPECT_GT(searched, 10u);
    station->GetSearch().Add(std::list<DetectionConventional>(3));
    unsigned id = 0;
    for (const DetectionConventional& record : detections()->Elements())
        EXPECT_EQ(record.GetID(), ++id);
    EXPECT_EQ(id, searched + 3);
    QStringList entries;
    for (const QAction* action : station->GetWindow().GetFileMenu()->actions())
        entries << action->text();
    EXPECT_TRUE(entries.contains("Open S&weep...")) << entries.join("; ").toStdString();
}

TEST_F(Workstations, AFileThatIsWrongIsAProblem) {
    start({Path("none.pij"), Path("none.ltl")});
    EXPECT_FALSE(station->LoadFiles());
    EXPECT_EQ(station->GetWindow().GetMessages()->ProblemCount(), 2);
}

TEST_F(Workstations, ManyProblemsOfOneKindAreAFewMessages) {
    QByteArray lines = "7055000\n";
    for (int i = 0; i < 50; ++i)
        lines += "word" + QByteArray::number(i) + '\n';
    start({Write("words.ltl", lines)});
    EXPECT_FALSE(station->LoadFiles());
    QCoreApplication::processEvents();
    EXPECT_EQ(station->GetWindow().GetMessages()->ProblemCount(), 50);
    EXPECT_EQ(messages().count("is no frequency"), 4) << messages().toStdString();
    EXPECT_TRUE(messages().contains("46 more like it")) << messages().toStdString();
}

TEST_F(Workstations, TheDemoOpensTheSampleJobOfItsReceiver) {
    start({"--demo"});
    EXPECT_TRUE(station->LoadFiles());
    EXPECT_TRUE(station->GetJob().GetFileName().endsWith("job-hf.pij"));
    EXPECT_EQ(entriesOf("/Lists/LocalTargetList"), 527);
    EXPECT_GT(entriesOf("/Lists/MemoryChannels"), 30);
    EXPECT_EQ(station->GetJob().GetFileState(), Job::FileState::Same);
    station.reset();
    start({"--demo", "--receiver", "vuhf"});
    EXPECT_TRUE(station->LoadFiles());
    EXPECT_TRUE(station->GetJob().GetFileName().endsWith("job-vuhf.pij"));
}

TEST_F(Workstations, EveryListIsATab) {
    start({});
    const QTabWidget* tabs = station->GetWindow().GetTabs();
    QStringList titles;
    for (int index = 0; index < tabs->count(); ++index)
        titles << station->GetWindow().TabName(index);
    for (const char* list : {"Local TargetList", "Memory Channels", "NOI Frequencies", "Detections"})
        EXPECT_TRUE(titles.contains(QLatin1String(list))) << list << " in " << titles.join('|').toStdString();
    for (const int id : FreqStore::Instance().GetListIds())
        EXPECT_NE(station->GetWindow().ViewOf(id), nullptr) << id;
}

struct Present {
    const FreqList::Key& key;
    const char* text;
};

TEST_F(Workstations, ANewChannelTakesTheReceiversPresentSettings) {
    const std::pair<const char*, std::vector<Present>> receivers[] = {{"hf",
                                                                       {{Keys::Threshold, "33"},
                                                                        {Keys::BFOFrequency, "-800"},
                                                                        {Keys::OutputIFPath, "455.0 kHz"},
                                                                        {Keys::Shift, "12000"}}},
                                                                      {"vuhf",
                                                                       {{Keys::Threshold, "34"},
                                                                        {Keys::AFC, "true"},
                                                                        {Keys::UseSquelch, "true"},
                                                                        {Keys::UseAttenuation, "true"},
                                                                        {Keys::Attenuation, "20"},
                                                                        {Keys::AntennaID, "3"}}}};
    for (const auto& [kind, settings] : receivers) {
        start({"--receiver", kind});
        for (const Present& setting : settings)
            station->GetReceiver().GetValue(setting.key)->SetStringValue(setting.text);
        MemorySystemHandler::Instance()->SetNewEntry(145e6, 12500, "new", "FM");
        const Node* channel = MemorySystemHandler::Instance()->GetItemsRoot()->Children().at(0);
        for (const Present& setting : settings)
            EXPECT_EQ(channel->FindOwnValue(setting.key)->GetStringValue(), setting.text)
                << kind << ' ' << setting.key.Text().toStdString();
        TearDown();
    }
}

TEST_F(Workstations, TuningToAChannelSetsTheReceiver) {
    start({"--receiver", "vuhf", "--job", sample("job-vuhf.pij")});
    ASSERT_TRUE(station->LoadFiles());
    IFrequencyStoreItem* item = MemorySystemHandler::Instance()->GetMediatorCtrl()->GetItemwithIndex(0);
    ASSERT_NE(item, nullptr);
    item->SetFrequency(nullptr);
    EXPECT_EQ(station->GetReceiver().GetFrequency(), 118.1e6);
    EXPECT_EQ(station->GetReceiver().GetValue(Keys::KeyBandwidth)->GetStringValue(), "8330");
    EXPECT_EQ(station->GetReceiver().GetValue(Keys::KeyDemodulation)->GetStringValue(), "AM");
    EXPECT_EQ(station->GetReceiver().GetValue(Keys::UseSquelch)->GetStringValue(), "true");
    EXPECT_EQ(status(), "Tuned to 118.100000 MHz");
}

TEST_F(Workstations, AClickOnTheBarTunesTheReceiver) {
    start({});
    emit station->GetWindow().GetBar()->Clicked(7055000.3, 0);
    EXPECT_EQ(station->GetReceiver().GetFrequency(), 7055000);
    EXPECT_EQ(status(), "Tuned to 7055.000 kHz");
    emit station->GetWindow().GetBar()->Clicked(118.1e6, 0);
    EXPECT_EQ(station->GetReceiver().GetFrequency(), 7055000);
    EXPECT_TRUE(status().contains("118.100000 MHz is outside")) << status().toStdString();
}

/// The values of an entry, or of these the ones that every list has: frequency, bandwidth and comment.
std::map<QString, QString> valuesOf(const Node& entry, bool all) {
    std::map<QString, QString> texts;
    for (const ValueBase* value = entry.FirstValue(); value; value = Node::NextValue(value)) {
        const QString name = value->GetName() == "bandwidthsel" ? QString("bandwidth") : value->GetName();
        if (all || name == "frequency" || name == "bandwidth" || name == "comment")
            texts[name] = value->GetStringValue();
    }
    return texts;
}

TEST_F(Workstations, EntriesGoFromEachListIntoEachOther) {
    start({});
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.GetFFM_Settings().GetFrequency().SetValue(7055000.25);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(2700.5);
    entry.GetFFM_Settings().SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod("USB"));
    entry.SetComment("«one» & <another>");
    FreqStoreXml::Profile_Data profile;
    profile.SetPriority("3");
    profile.SetThreatClass("hostile");
    profile.SetSignalClass("class");
    entry.SetProfile_Data(profile);
    struct List {
        FrequencyNodeListView* view;
        FrequencyNodeMediatorCtrl* controller;
    };
    std::vector<List> lists;
    for (const int id : FreqStore::Instance().GetListIds()) {
        auto* view = dynamic_cast<FrequencyNodeListView*>(station->GetWindow().ViewOf(id));
        auto* controller = dynamic_cast<FrequencyNodeMediatorCtrl*>(
            FreqStore::Instance().GetFrequencies(static_cast<unsigned>(id)));
        if (!view)
            continue;
        ASSERT_TRUE(controller);
        controller->AppendEntries({entry});
        lists.push_back({view, controller});
    }
    ASSERT_EQ(lists.size(), 4u) << "targets, memory channels, frequencies of interest, results";
    const auto last = [](const List& list) -> const Node& {
        return *list.controller->At(list.controller->size() - 1)->GetNode();
    };
    using Bar = FreqStoreListViewButtonBar;
    for (const List& from : lists) {
        for (const List& to : lists) {
            SCOPED_TRACE(qPrintable(from.view->objectName() + " into " + to.view->objectName()));
            from.view->setCurrentItem(from.view->firstChild());
            from.view->selectAll();
            from.view->GetButtonBar()->GetAction(Bar::Copy)->trigger();
            const bool isTarget = &from == &to && from.view->objectName() == "LocalTargetListView";
            const auto copied = valuesOf(last(from), isTarget);
            const unsigned long before = to.controller->size();
            const unsigned long rows = from.controller->size();
            to.view->GetButtonBar()->GetAction(Bar::Paste)->trigger();
            EXPECT_EQ(to.controller->size(), before + rows);
            EXPECT_EQ(valuesOf(last(to), isTarget), copied);
        }
    }
}

TEST_F(Workstations, StartWhateverByteOfTheirSettingsChanges) {
    constexpr unsigned Seed = 22;
    start({});
    station->GetWindow().close();
    station.reset();
    const QDir config(Path("config"));
    const QStringList files = config.entryList({"*.ini"}, QDir::Files);
    ASSERT_TRUE(files.contains("columns.ini") && files.contains("Administration.ini"))
        << files.join(' ').toStdString();
    const QSize screen = QGuiApplication::primaryScreen()->size();
    std::mt19937 random(Seed);
    for (const QString& name : files) {
        const QString path = config.filePath(name);
        const QByteArray sound = Read(path);
        for (int change = 0; change < 8; ++change) {
            QByteArray bytes = sound;
            const auto place = static_cast<qsizetype>(random() % static_cast<unsigned>(sound.size()));
            bytes[place] = static_cast<char>(random());
            SCOPED_TRACE(qPrintable(QStringLiteral("seed %1, %2, byte %3 of %4")
                                        .arg(QString::number(Seed), name, QString::number(place), bytes)));
            Write(path, bytes);
            start({});
            QApplication::processEvents();
            EXPECT_LE(station->GetWindow().width(), 2 * screen.width());
            EXPECT_LE(station->GetWindow().height(), 2 * screen.height());
            for (const auto* list : station->GetWindow().findChildren<SortListView*>())
                EXPECT_LE(list->header()->length(), 100000);
        }
        Write(path, sound);
    }
}

TEST_F(Workstations, TellsOfADamagedSettingsFileThatItReadsBeforeThereIsAWindow) {
    ASSERT_TRUE(QDir(m_folder.path()).mkpath("config"));
    Write(Path("config/Administration.ini"), "]][[\n");
    start({});
    EXPECT_EQ(station->GetWindow().GetMessages()->ProblemCount(), 1);
    EXPECT_TRUE(QFile::exists(Path("config/Administration.ini.bad")));
}

TEST_F(Workstations, PicturesShowEveryListAndTheWindow) {
    start({"--demo", "--screenshot", Path("pictures")});
    ASSERT_TRUE(station->LoadFiles());
    testing::internal::CaptureStdout();
    EXPECT_TRUE(station->TakeScreenshots());
    const std::string table = testing::internal::GetCapturedStdout();
    QTabWidget* tabs = station->GetWindow().GetTabs();
    for (int index = 0; index < tabs->count(); ++index) {
        EXPECT_NE(table.find(station->GetWindow().TabName(index).toStdString()), std::string::npos);
        const QString name = station->GetWindow().TabFileName(index) + ".png";
        EXPECT_FALSE(QImage(QDir(Path("pictures")).filePath(name)).isNull()) << name.toStdString();
    }
    EXPECT_FALSE(QImage(Path("pictures/window.png")).isNull());
}

} // namespace
