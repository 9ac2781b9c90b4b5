#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filerecords.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/undohistory.h"
#include "host/report/filestamps.h"
#include "host/startup/cfgcenter.h"
#include "tests/support/fulldisk.h"
#include "tests/support/ordinaryuser.h"
#include "tests/support/traces.h"
#include "tests/workstation/recoveryfixture.h"
#include "workstation/ending.h"
#include "workstation/fileopener.h"
#include "workstation/job.h"
#include "workstation/listwalk.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>
#include <QUndoStack>

#include <csignal>
#include <sys/stat.h>

namespace {

class RecoveryFiles : public testing::Test, protected TestFolder {
protected:
    void write(const QString& name) {
        RecoveryWriter writer(Path(name));
        writer.Begin();
        writer.BeginSection({"noi", ".xml", 1000, "/a file", 5});
        const QByteArray list = listOf(3);
        writer.Append(list.left(200));
        writer.Append(list.mid(200));
        writer.EndSection(3);
        writer.BeginSection({"job", ".pij", 2000, QString(), 0});
        writer.Append("<JOB/>");
        writer.EndSection(0);
        writer.Commit();
    }
    QByteArray content(const RecoveryReader& reader, const RecoverySection& section) {
        reader.Extract(section, Path("content.xml"));
        return Read("content.xml");
    }
};

TEST_F(RecoveryFiles, ThatAreCutAnywhereGiveWhatIsWhole) {
    write("whole");
    const QByteArray bytes = Read("whole");
    const auto isLeft = [&](qsizetype cut) {
        Write("cut", bytes.left(cut));
        const RecoveryReader reader(Path("cut"));
        qint64 entries = 0;
        for (const RecoverySection& section : reader.GetSections()) {
            if (section.head.key == "job") {
                EXPECT_TRUE(!section.isWhole || content(reader, section) == "<JOB/>") << cut;
                continue;
            }
            entries = section.entries;
            const QByteArray list = content(reader, section);
            EXPECT_TRUE(!section.isWhole || list == listOf(3)) << cut;
            EXPECT_EQ(section.head.file, "/a file");
            EXPECT_EQ(FileRecords(Path("content.xml")).Count(), entries) << cut;
            EXPECT_EQ(FileRecords(Path("content.xml")).IsWhole(), entries > 0) << cut << list.toStdString();
        }
        return entries;
    };
    qint64 before = 0;
    for (qsizetype cut = 0; cut < bytes.size(); ++cut) {
        const qint64 entries = isLeft(cut);
        EXPECT_GE(entries, before) << cut;
        before = entries;
    }
    EXPECT_EQ(before, 3);
    EXPECT_TRUE(RecoveryReader(Path("whole")).GetSections().back().isWhole);
}

TEST_F(RecoveryFiles, ThatAreDamagedAnywhereSayIt) {
    write("whole");
    const QByteArray bytes = Read("whole");
    for (qsizetype place = 0; place < bytes.size(); ++place) {
        QByteArray damaged = bytes;
        damaged[place] = static_cast<char>(damaged[place] ^ 1);
        Write("damaged", damaged);
        const RecoveryReader reader(Path("damaged"));
        const auto& sections = reader.GetSections();
        const auto whole = std::ranges::count_if(sections, &RecoverySection::isWhole);
        EXPECT_LT(whole, 2) << place;
    }
}

TEST_F(RecoveryFiles, KeepTheOldOneWhenTheNewOneFails) {
    write("file");
    const QByteArray bytes = Read("file");
    RecoveryWriter writer(Path("file"));
    QStringList failures;
    QObject::connect(&writer, &RecoveryWriter::Failed, [&](const QString& text) { failures << text; });
    const auto writeLarge = [&] {
        writer.Begin();
        writer.BeginSection({"noi", ".xml", 1, QString(), 0});
        writer.Append(QByteArray(100'000, 'x'));
        writer.EndSection(1);
        writer.Commit();
    };
    {
        const FullDisk disk(50'000);
        writeLarge();
    }
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].contains("cannot be written: ")) << failures[0].toStdString();
    EXPECT_EQ(Read("file"), bytes);
    EXPECT_EQ(FileNames(), QStringList("file"));
    writeLarge();
    EXPECT_EQ(failures.size(), 1);
    EXPECT_GT(Read("file").size(), 100'000);
}

TEST_F(Recoveries, HoldWhatIsInNoFileAndEndWithIt) {
    start({});
    recovery().WriteNow();
    EXPECT_EQ(files(), QStringList());
    noi().InsertNewValue(7e6, 3000, "mine");
    recovery().WriteNow();
    ASSERT_EQ(files().size(), 1);
    const QString path = folder().filePath(files().first());
    struct stat file {};
    ASSERT_EQ(::stat(qPrintable(path), &file), 0);
    EXPECT_EQ(file.st_mode & 0777u, 0600u);
    {
        const RecoveryReader reader(path);
        ASSERT_EQ(reader.GetSections().size(), 1u);
        EXPECT_TRUE(reader.GetSections().front().isWhole);
        EXPECT_EQ(reader.GetSections().front().entries, 1);
    }
    ASSERT_TRUE(TargetListHandler::Instance()->AddNew());
    recovery().WriteNow(); // takes the first list over from the file before
    const RecoveryReader reader(path);
    ASSERT_EQ(reader.GetSections().size(), 2u);
    EXPECT_TRUE(reader.GetSections()[0].isWhole && reader.GetSections()[1].isWhole);
    noi().FileSave(true);
    recovery().WriteNow();
    ASSERT_EQ(RecoveryReader(path).GetSections().size(), 1u);
    EXPECT_EQ(RecoveryReader(path).GetSections().front().head.key, "targets");
    QSignalSpy written(&recovery(), &Recovery::Written);
    recovery().SetInterval(1);
    ASSERT_TRUE(TargetListHandler::Instance()->AddNew()); // the program goes on
    ASSERT_TRUE(written.wait(Patience));
    EXPECT_EQ(RecoveryReader(path).GetSections().front().entries, 2);
    station.reset();
    EXPECT_EQ(folder().entryList(QDir::Files), QStringList()) << "closed by the operator";
}

/// The list itself follows a new entry of the tree a moment later.
TEST_F(Recoveries, HoldWhatComesBetweenTheBeginningOfARoundAndTheList) {
    start({});
    ASSERT_TRUE(TargetListHandler::Instance()->AddNew());
    const auto add = [] {
        Node* const entries = TargetListHandler::Instance()->GetItemsRoot();
        entries->AddItemUnique(
            Node::NewEntry(entries, Names::Intern(QStringLiteral("Entry")), WkfTarget::Shape()));
    };
    QObject::connect(&recovery(), &Recovery::Begun, &recovery(), add, Qt::SingleShotConnection);
    QSignalSpy written(&recovery(), &Recovery::Written);
    recovery().SetInterval(1);
    ASSERT_TRUE(written.wait(Patience));
    EXPECT_EQ(RecoveryReader(recovery().GetFileName()).GetSections().front().entries, 2);
}

TEST_F(Recoveries, AreOfferedAndGoneWhenTheyAreInTheNextOne) {
    leave(3);
    startAttended();
    answer("restore");
    EXPECT_FALSE(station->OfferRecovery());
    EXPECT_EQ(entriesOf(Noi), 3);
    EXPECT_EQ(status(), "NOI Frequencies: 3 entries restored");
    EXPECT_TRUE(files().contains("dead.recovery")) << "nothing else holds it yet";
    recovery().WriteNow();
    EXPECT_FALSE(files().contains("dead.recovery"));
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(RecoveryReader(folder().filePath(files().first())).GetSections().front().entries, 3);
}

TEST_F(Recoveries, StayUntilTheOperatorHasDecided) {
    leave(3);
    startAttended();
    WhenOpen<RecoveryDialog>([](RecoveryDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(station->OfferRecovery());
    EXPECT_EQ(entriesOf(Noi), 0);
    EXPECT_EQ(files(), QStringList("dead.recovery"));
    WhenOpen<RecoveryDialog>([](RecoveryDialog& dialog) {
        WhenOpen<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Discard)->click(); });
        dialog.findChild<QPushButton*>("discard")->click();
    });
    station->OfferRecovery();
    EXPECT_EQ(files(), QStringList());
    EXPECT_TRUE(station->OfferRecovery()) << "nothing is left to ask";
}

TEST_F(Recoveries, AreToldWhereNobodyCanBeAskedAndNeverTakenFromTheLiving) {
    leave(3);
    start({});
    EXPECT_TRUE(station->OfferRecovery());
    EXPECT_TRUE(messages().contains("holds unsaved work: NOI Frequencies: 3 entries, written 1970-01-01"))
        << messages().toStdString();
    const QString path = folder().filePath("dead.recovery.lock");
    QProcess other; // another process has the lock
    other.start("sh", {"-c", "exec 9>\"$0\"; flock 9; echo; read line", path});
    ASSERT_TRUE(other.waitForStarted() && other.waitForReadyRead());
    Write(path,
          QByteArray::number(other.processId()) + "\nsh\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    station->SetAttended(true);
    EXPECT_TRUE(station->OfferRecovery());
    other.kill();
    other.waitForFinished();
    WhenOpen<RecoveryDialog>([](RecoveryDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(station->OfferRecovery()) << "its process has ended";
}

TEST_F(Recoveries, ThatSayNothingArePutAside) {
    QDir().mkpath(folder().path());
    Write("data/recovery/empty.recovery", "");
    Write("data/recovery/foreign.recovery", "\x7f"
                                            "ELF and more");
    startAttended();
    EXPECT_TRUE(station->OfferRecovery());
    EXPECT_EQ(files(), QStringList());
    EXPECT_TRUE(messages().contains("foreign.recovery.bad: holds nothing that could be restored"));
}

TEST_F(Recoveries, AreWrittenAgainWhenTheirFolderVanishesAndToldWhenItCannotBeMade) {
    start({});
    noi().InsertNewValue(7e6, 3000, "mine");
    recovery().WriteNow();
    QDir(Path("data")).removeRecursively();
    noi().InsertNewValue(7.1e6, 3000, "more");
    recovery().WriteNow();
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(folder().entryList({"*.lock"}, QDir::Files).size(), 1);
    QDir(Path("data")).removeRecursively();
    Write("data", "a file in place of the folder");
    noi().InsertNewValue(7.2e6, 3000, "most");
    for (int i = 0; i < 3; ++i)
        recovery().WriteNow();
    EXPECT_EQ(messages().count("cannot be written: "), 1) << messages().toStdString();
    QFile::remove(Path("data"));
    recovery().WriteNow();
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(RecoveryReader(folder().filePath(files().first())).GetSections().front().entries, 3);
}

TEST_F(Recoveries, OfADataFolderThatTakesNothingAreToldAndNothingElseIsLost) {
    const OrdinaryUser user(m_folder.path());
    ASSERT_TRUE(user.IsOne() && QDir().mkpath(Path("data")));
    const QString mine = Write("mine.ltl", "7055000\t3000\tmine\tAM\tg\tred\t3\n");
    const QFile::Permissions readOnly = QFile::ReadOwner | QFile::ExeOwner;
    ASSERT_TRUE(QFile::setPermissions(Path("data"), readOnly));
    start({mine});
    ASSERT_TRUE(station->LoadFiles());
    ASSERT_TRUE(TargetListHandler::Instance()->AddNew());
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(recovery().WriteNow());
    EXPECT_EQ(messages().count("data/recovery: cannot be written: "), 1) << messages().toStdString();
    // What the operator saves elsewhere is saved, though no version of it is kept.
    ASSERT_TRUE(TargetListHandler::Instance()->SaveFile(mine));
    EXPECT_EQ(FileRecords(mine).Count(), 2);
    EXPECT_EQ(messages().count("data/versions: cannot be written: "), 1);
    noi().InsertNewValue(7e6, 3000, "interest");
    station->GetEnding().Keep();
    EXPECT_TRUE(messages().contains("NoiFrequencies")) << messages().toStdString();
    ASSERT_TRUE(QFile::setPermissions(Path("data"), readOnly | QFile::WriteOwner));
    EXPECT_TRUE(recovery().WriteNow());
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(RecoveryReader(folder().filePath(files().first())).GetSections().size(), 2u);
}

TEST_F(Recoveries, OfAJobBringItsChannelsBack) {
    start({"--job", sample("job-hf.pij")});
    station->LoadFiles();
    const int before = entriesOf("/Lists/MemoryChannels");
    ASSERT_GT(before, 1);
    Node* list = Tree::Instance()->GetNode("/Lists/MemoryChannels");
    list->DeleteNode(list->Children().front());
    MemorySystemHandler::Instance()->SuspendMediatorCtrl(false, true);
    MemorySystemHandler::Instance()->UpdateJobFileEntries();
    recovery().WriteNow();
    ASSERT_EQ(files().size(), 1);
    QFile::rename(folder().filePath(files().first()), Path("kept"));
    startAttended();
    QFile::rename(Path("kept"), folder().filePath("dead.recovery"));
    answer("restore");
    station->OfferRecovery();
    EXPECT_EQ(entriesOf("/Lists/MemoryChannels"), before - 1);
    EXPECT_EQ(station->GetJob().GetFileName(), sample("job-hf.pij"));
    EXPECT_EQ(station->GetJob().GetFileState(), Job::FileState::Older);
}

/// Entries come and go while a list is walked; those that stay are there once, in order.
TEST_F(Recoveries, AreWholeThoughTheListChangesWhileItIsWalked) {
    constexpr int Count = 20000;
    start({});
    TargetListHandler& targets = *TargetListHandler::Instance();
    Write("many.xml", listOf(Count));
    ASSERT_TRUE(targets.ReadFile(Path("many.xml")));
    Node* list = targets.GetItemsRoot();
    ListWalk walk(EntriesOf(*targets.GetParser()->GetMediatorCtrl()));
    QByteArray bytes;
    int turns = 0;
    for (; !walk.GoOn(1); ++turns) {
        bytes += walk.TakeBytes();
        list->DeleteNode(list->Children().front());
        if (turns < 3)
            targets.AddNew();
    }
    bytes += walk.TakeBytes();
    ASSERT_GT(turns, 3);
    Write("walked.xml", bytes);
    Write("rest.xml", "");
    ASSERT_TRUE(targets.SaveFile(Path("rest.xml")));
    const FileDifference difference = FileRecords(Path("rest.xml")).Since(FileRecords(Path("walked.xml")));
    EXPECT_EQ(difference, (FileDifference{0, turns, 0})) << "only those that were deleted behind the walk";
    EXPECT_EQ(walk.EntryCount(), Count + 3);
}

TEST_F(Recoveries, ThatTheirFileHasOutlivedAreShownAndNotMeant) {
    const QString file = writeBands("saved.xml", 2);
    const qint64 written = FileStamps::State::Of(file)->modified;
    for (const qint64 known : {written, written - 1}) {
        QDir().mkpath(folder().path());
        RecoveryWriter writer(folder().filePath("dead.recovery"));
        writer.Begin();
        writer.BeginSection({"noi", ".xml", 1'000'000, file, known}); // the clock has gone forward since
        writer.Append(listOf(1));
        writer.EndSection(1);
        writer.Commit();
        startAttended();
        size_t checked = 0;
        WhenOpen<RecoveryDialog>([&](RecoveryDialog& dialog) {
            checked = dialog.GetChecked().size();
            dialog.reject();
        });
        EXPECT_FALSE(station->OfferRecovery());
        EXPECT_EQ(checked, known == written ? 1u : 0u);
    }
}

TEST_F(Recoveries, ThatCannotBeReadLeaveTheListAsItIs) {
    leave("noi", QString(), "<FrequencyStoreList Version=\"1\"><FrequencyStoreEntry><Comment></Commend>");
    startAttended();
    ASSERT_TRUE(station->GetOpener().Open(Write("mine.noi", Read(sample("interest.noi")))));
    const int entries = entriesOf(Noi);
    const int steps = UndoHistory::Instance().Stack().count();
    answer("restore");
    EXPECT_FALSE(station->OfferRecovery());
    EXPECT_EQ(entriesOf(Noi), entries);
    EXPECT_FALSE(noi().IsWaitingForFile());
    EXPECT_EQ(UndoHistory::Instance().Stack().count(), steps);
    EXPECT_EQ(files(), QStringList("dead.recovery")) << "it is offered again";
}

TEST_F(Recoveries, AreNotSavedInTheFileOfAnotherList) {
    const QByteArray job = Read(sample("job-hf.pij")).replace("Revision=\"7\"", "Revision=\"8\"");
    const struct {
        const char* key;
        QByteArray content;
        const char* tab;
        const char* present;
    } rows[] = {{"targets", listOf(2), "Local TargetList", "targets.ltl"},
                {"job", job, "Memory Channels", "job-hf.pij"}};
    for (const auto& [key, content, tab, present] : rows) {
        SCOPED_TRACE(key);
        for (const QString& file : {QString(), Path("gone")}) {
            leave(key, file, content);
            start({"--job", sample("job-hf.pij"), sample("targets.ltl")});
            station->LoadFiles();
            station->SetAttended(true);
            const std::vector<int> ids = FreqStore::Instance().GetListIds();
            const auto id = std::ranges::find_if(
                ids, [&](int one) { return FreqStore::Instance().GetDefinition(one)->GetName() == tab; });
            const ListFile& list = *station->GetSafekeeping().Find(*id);
            ASSERT_EQ(QFileInfo(list.file()).fileName(), present);
            answer("restore");
            EXPECT_FALSE(station->OfferRecovery());
            EXPECT_EQ(list.file(), QString());
            EXPECT_TRUE(list.isUnsaved());
            UndoHistory::Instance().Stack().undo();
            EXPECT_EQ(QFileInfo(list.file()).fileName(), present);
            EXPECT_FALSE(list.isUnsaved());
            recovery().WriteNow();
        }
    }
}

TEST_F(Recoveries, ThatWereDecidedAboutAreNotOfferedAgainWithTheRestOfTheirFile) {
    QDir().mkpath(folder().path());
    RecoveryWriter writer(folder().filePath("dead.recovery"));
    writer.Begin();
    for (const char* key : {"noi", "targets", "results"}) {
        writer.BeginSection({key, ".xml", 1'000'000, QString(), 0});
        writer.Append(listOf(2));
        writer.EndSection(2);
    }
    writer.Commit();
    const auto decide = [&](const char* button, const char* list) {
        int offered = 0;
        WhenOpen<RecoveryDialog>([&](RecoveryDialog& dialog) {
            auto* table = dialog.findChild<QTreeWidget*>();
            offered = table->topLevelItemCount();
            for (int row = 0; row < offered; ++row)
                if (table->topLevelItem(row)->text(0) != QLatin1String(list))
                    table->topLevelItem(row)->setCheckState(0, Qt::Unchecked);
            if (qstrcmp(button, "discard") == 0)
                WhenOpen<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Discard)->click(); });
            dialog.findChild<QPushButton*>(QLatin1String(button))->click();
        });
        EXPECT_FALSE(station->OfferRecovery());
        recovery().WriteNow();
        return offered;
    };
    startAttended();
    EXPECT_EQ(decide("discard", "NOI Frequencies"), 3);
    const QByteArray bytes = Read("data/recovery/dead.recovery");
    WhenOpen<RecoveryDialog>([](RecoveryDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(station->OfferRecovery());
    EXPECT_EQ(Read("data/recovery/dead.recovery"), bytes) << "it does not grow by being offered";
    EXPECT_EQ(decide("restore", "Data Results"), 2);
    EXPECT_EQ(decide("restore", "Local TargetList"), 1);
    EXPECT_FALSE(files().contains("dead.recovery"));
}

class SharedDirectories : public Recoveries {};

TEST_F(SharedDirectories, KeepListAndSettingsOfTheFirstWindow) {
    const QString file = writeBands("NoiFrequencies.xml", 2);
    QDir().mkpath(Path("config"));
    const QString settings = Write("config/Application.ini", "NOIFrequencies=" + file.toUtf8() + "\n");
    QProcess first;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    first.setProcessEnvironment(environment);
    first.start(FREQSTORE_PROGRAM, {"--data", Path("data"), "--config", Path("config"), "missing.ltl"});
    QByteArray said;
    first.setReadChannel(QProcess::StandardError);
    while (!said.contains("missing.ltl") && first.waitForReadyRead(60000))
        said += first.readAllStandardError();
    const QByteArray before = Read("config/Application.ini");
    startAttended();
    EXPECT_TRUE(messages().contains("is also used by freqstore")) << messages().toStdString();
    EXPECT_EQ(entriesOf(Noi), 2);
    station->GetEnding().Keep();
    const QString own = Path("data/NoiFrequencies-window-%1.noi").arg(QCoreApplication::applicationPid());
    EXPECT_FALSE(QFile::exists(own)) << "nothing has changed";
    noi().InsertNewValue(7e6, 3000, "mine");
    station->GetEnding().Keep();
    EXPECT_EQ(FileRecords(own).Count(), 3);
    ICfg& config = CfgCenter::GetAppCfg(ICfg::StartUp);
    config.SetString("Theme", "dark");
    EXPECT_EQ(config.GetString("Theme", QString()), "dark");
    station.reset();
    EXPECT_EQ(FileRecords(file).Count(), 2);
    EXPECT_EQ(Read(settings), before);
    first.kill();
    first.waitForFinished();
}

} // namespace
