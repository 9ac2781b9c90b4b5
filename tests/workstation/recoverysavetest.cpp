// What is kept of a list, when it is saved and when its process is killed.

#include "controls/frequencystore/files/filerecords.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/report/filestamps.h"
#include "host/report/fileversions.h"
#include "host/report/writeguard.h"
#include "tests/workstation/recoveryfixture.h"
#include "workstation/job.h"

#include <QProcess>
#include <QRandomGenerator>

namespace {

/// Stands in front of the other guard, and looks into a recovery file before and behind a save.
class LooksAround : private REPORTGENERATOR::WriteGuard {
public:
    explicit LooksAround(const QString& recovery)
        : m_recovery(recovery), m_before(REPORTGENERATOR::SetWriteGuard(this)) {}
    ~LooksAround() override { REPORTGENERATOR::SetWriteGuard(m_before); }
    /// "key" for each section that is offered, before the file is replaced and behind it.
    QString Seen() const { return m_seen.join(" > "); }

private:
    Answer FileIsChanged(const QString& path) override { return m_before->FileIsChanged(path); }
    void Replacing(const QString& path, const QString& aside) override {
        m_before->Replacing(path, aside);
        look();
    }
    void Unchanged(const QString& path) override {
        look();
        m_before->Unchanged(path);
        look();
    }
    void Replaced(const QString& path, qint64 entries) override {
        look();
        m_before->Replaced(path, entries);
    }
    void look() {
        QStringList keys;
        const RecoveryReader reader(m_recovery);
        for (const RecoverySection& section : reader.GetSections())
            if (section.isWhole && !section.isPast)
                keys << section.head.key;
        m_seen << keys.join(' ');
    }

    QString m_recovery;
    QStringList m_seen;
    WriteGuard* m_before;
};

TEST_F(Recoveries, OfEachListEndInTheVeryStepThatPutsItsFileInPlace) {
    start({"--job", sample("job-hf.pij")});
    station->LoadFiles();
    TargetListHandler& targets = *TargetListHandler::Instance();
    Node* channels = Tree::Instance()->GetNode("/Lists/MemoryChannels");
    const struct {
        const char* kept;
        std::function<bool()> save;
        const char* seen;
    } rows[] = {
        {"a copy of targets", [&] { return targets.SaveFile(Path("copy.xml")); },
         "targets noi job > targets noi job"},
        {"targets", [&] { return targets.SaveAsOwn(Path("targets.xml")); }, "targets noi job > noi job"},
        {"targets over the same bytes",
         [&] {
             targets.GetItemsRoot()->DeleteNode(targets.GetItemsRoot()->LastChild()); // the new one
             return targets.SaveAsOwn(Path("targets.xml"));
         },
         "targets noi job > noi job"},
        {"targets under another name", [&] { return targets.SaveAsOwn(Path("others.xml")); },
         "targets noi job > noi job"},
        {"noi",
         [&] {
             noi().SetCurrentFileName(Path("bands.xml"));
             return !noi().FileSave(true).isEmpty();
         },
         "targets noi job > targets job"},
        {"job", [&] { return station->GetJob().SaveAs(Path("a.pij")); }, "targets noi job > targets noi"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kept);
        ASSERT_TRUE(targets.AddNew());
        noi().InsertNewValue(7e6, 3000, "mine");
        channels->DeleteNode(channels->Children().front());
        MemorySystemHandler::Instance()->SuspendMediatorCtrl(false, true);
        MemorySystemHandler::Instance()->UpdateJobFileEntries();
        ASSERT_TRUE(recovery().WriteNow());
        const LooksAround looks(recovery().GetFileName());
        EXPECT_TRUE(row.save());
        EXPECT_EQ(looks.Seen(), row.seen);
    }
}

TEST_F(Recoveries, ThatWereRestoredEndWithTheNextSave) {
    leave(3);
    startAttended();
    answer("restore");
    EXPECT_FALSE(station->OfferRecovery());
    noi().SetCurrentFileName(Path("bands.xml"));
    ASSERT_FALSE(noi().FileSave(true).isEmpty());
    EXPECT_TRUE(RecoveryReader(folder().filePath("dead.recovery")).GetSections().front().isPast);
}

/// The program was killed when the file stood, and before it knew that.
TEST_F(Recoveries, GiveAListTheFileThatItWasSavedInAtLast) {
    leave(3);
    const QString path = folder().filePath("dead.recovery");
    const QString saved = writeBands("saved.xml", 2);
    const qint64 time = FileStamps::State::Of(saved)->modified;
    ASSERT_TRUE(RecoveryForm::AddPast(path, {"noi", saved, time - 1})); // a save that failed
    EXPECT_FALSE(RecoveryReader(path).GetSections().front().isPast);
    ASSERT_TRUE(RecoveryForm::AddPast(path, {"noi", saved, time}));
    const QByteArray bytes = Read("data/recovery/dead.recovery");
    Write("data/recovery/cut", bytes.chopped(2));
    EXPECT_FALSE(RecoveryReader(folder().filePath("cut")).GetSections().front().isPast);
    startAttended();
    EXPECT_TRUE(station->OfferRecovery()) << "nothing to ask about";
    EXPECT_EQ(entriesOf(Noi), 2);
    EXPECT_EQ(messages(), "saved.xml: 2 entries");
    EXPECT_EQ(files(), QStringList());
}

/// What such a process says (see recoverychild.cpp).
struct Said {
    QByteArray what;
    int actions; ///< before it
    QByteArray comments;

    explicit Said(const QByteArray& line)
        : what(line.left(line.indexOf(' '))),
          actions(line.split(' ').value(1).toInt()),
          comments(line.mid(line.lastIndexOf(' ') + 1)) {}
};

/// A process that works until it is killed.
class Life : public QProcess {
public:
    Life(const QString& folder, quint32 seed, const char* mode) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        setProcessEnvironment(environment);
        start(RECOVERY_CHILD, {folder, QString::number(seed), mode});
    }
    /// Kills it when it has said so many lines; all that it has said.
    std::vector<Said> LinesUntilKilled(int lines) {
        return linesUntil([&](const QByteArray& said) { return said.count('\n') >= lines; });
    }
    /// Kills it as soon as it has saved a list that was kept before.
    std::vector<Said> LinesUntilSaved() {
        return linesUntil([](const QByteArray& said) {
            const qsizetype kept = said.indexOf("\nkept ");
            return kept >= 0 && said.indexOf("\nsaved ", kept) >= 0;
        });
    }

private:
    std::vector<Said> linesUntil(const std::function<bool(const QByteArray& said)>& isEnough) {
        QByteArray said;
        while (!isEnough(said) && waitForReadyRead(60000))
            said += readAllStandardOutput();
        kill();
        waitForFinished();
        said += readAllStandardOutput();
        std::vector<Said> lines;
        for (const QByteArray& line : said.left(std::max<qsizetype>(said.lastIndexOf('\n'), 0)).split('\n'))
            lines.emplace_back(line);
        return lines;
    }
};

TEST_F(Recoveries, OfAListThatHasNoFileYetEndWithItsFirstSave) {
    QRandomGenerator chance(QRandomGenerator::global()->generate());
    for (int life = 0; life < 5; ++life) {
        const quint32 seed = chance.generate();
        const QString folderOfLife = Path(QString::number(life));
        QDir().mkpath(folderOfLife);
        const std::vector<Said> lines = Life(folderOfLife, seed, "keep").LinesUntilSaved();
        const auto saved = std::ranges::find(lines.rbegin(), lines.rend(), "saved", &Said::what);
        ASSERT_NE(saved, lines.rend()) << "seed " << seed;
        QList<QByteArray> may; // what it saved, or did since
        std::for_each(saved.base() - 1, lines.end(), [&](const Said& line) { may << line.comments; });
        const QByteArray begin = Life(folderOfLife, 0, "look").LinesUntilKilled(1).front().comments;
        EXPECT_TRUE(may.contains(begin))
            << "seed " << seed << " begins with " << begin.toStdString() << "\nof\n"
            << may.join('\n').toStdString();
    }
}

TEST_F(Recoveries, BringBackAllButTheLastMomentsOfAProcessThatIsKilled) {
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator chance(seed);
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::printf("seed %u\n", seed);
    QList<QByteArray> may{""}; // the states that the next life may begin with
    int restored = 0;
    for (int life = 0; life <= 20; ++life) {
        Life process(m_folder.path(), chance.generate(), "work");
        const std::vector<Said> lines = process.LinesUntilKilled(static_cast<int>(chance.bounded(2, 200)));
        ASSERT_EQ(lines.front().what, "has") << life << process.readAllStandardError().toStdString();
        const QByteArray begin = lines.front().comments;
        EXPECT_TRUE(may.contains(begin))
            << "life " << life << " begins with " << begin.toStdString() << "\nof\n"
            << may.join('\n').toStdString();
        restored += begin.isEmpty() ? 0 : 1;
        int past = 0; // what was done before so many actions must be there
        for (const Said& line : lines)
            past = line.what == "did" ? past : std::max(past, line.actions);
        may.clear();
        for (const Said& line : lines)
            if (line.what == "did" ? line.actions >= past : line.actions == past)
                may << line.comments;
        EXPECT_TRUE(!QFile::exists(Path("targets.ltl")) || FileRecords(Path("targets.ltl")).IsWhole())
            << life;
        for (const FileVersions::Version& version :
             FileVersions(Path("data/versions")).Of(Path("targets.ltl")))
            EXPECT_TRUE(FileVersions::IsWhole(version)) << life;
        for (const QString& name : files()) {
            const RecoveryReader reader(folder().filePath(name));
            for (const RecoverySection& section : reader.GetSections())
                EXPECT_TRUE(section.isWhole) << life;
        }
    }
    EXPECT_GT(restored, 10);
}

} // namespace
