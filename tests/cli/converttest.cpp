#include "tests/cli/runcli.h"

#include <QRegularExpression>

#include <unistd.h>

namespace {

class ConvertTest : public testing::Test, protected TestFolder {};

TEST_F(ConvertTest, AFileThatWasNotReadWholeIsNotReplaced) {
    const QByteArray bytes = "7055000\tx3000\tgood\n8000000\t3000\tgood\n";
    const QString path = Write("bad.ltl", bytes);
    QFile::link(path, Path("link.ltl"));
    ASSERT_EQ(link(qPrintable(path), qPrintable(Path("hard.ltl"))), 0);
    QDir(m_folder.path()).mkdir(Q("folder"));
    for (const char* other : {"bad.ltl", "folder/../bad.ltl", "link.ltl", "hard.ltl"}) {
        const QString out = m_folder.path() + QLatin1Char('/') + Q(other);
        EXPECT_TRUE(Cli("convert", {path, out}).Is(ExitFile, out + Q(": is kept: "))) << other;
        EXPECT_EQ(Read(path), bytes) << other;
    }
    EXPECT_TRUE(Cli("convert", {path, Path("else.ltl")}).Is(ExitFile));
    EXPECT_TRUE(QFile::exists(Path("else.ltl"))) << "another file may be written";
    EXPECT_TRUE(Cli("convert --force", {path, path}).Is(ExitFile));
    EXPECT_NE(Read(path), bytes);
    EXPECT_TRUE(Cli("convert", {path, path}).Is(ExitDone)) << "it is sound now";
}

TEST_F(ConvertTest, AJobThatWasNotReadWholeIsNotReplaced) {
    QByteArray bytes = Read(Sample("job-hf.pij"));
    bytes.replace("MEMORYSCAN_SEQ_SHIFT Value=\"", "MEMORYSCAN_SEQ_SHIFT Value=\"x");
    const QString job = Write("job.pij", bytes);
    const QStringList merge = {"job", "merge", job, Sample("memory-hf.sfl"), "--out", job};
    EXPECT_TRUE(Cli(merge).Is(ExitFile, job + Q(": is kept: ")));
    EXPECT_EQ(Read(job), bytes);
    EXPECT_TRUE(Cli(merge + QStringList{"--force"}).Is(ExitFile));
    EXPECT_NE(Read(job), bytes);
}

TEST_F(ConvertTest, NamesThatAListIsNotWrittenUnderAreRefused) {
    QDir(m_folder.path()).mkdir(Q("old.csv.d"));
    const struct {
        const char* list;
        const char* in;
        const char* out;
        const char* message; ///< null when it is written
    } rows[] = {
        {"target", "targets.ltl", "x.noi",
         "is no name that this list is written under: .ltl, .sfl, .csv, .xml, .json"},
        {"target", "targets.ltl", "x.txt", ".ltl, .sfl"},
        {"target", "targets.ltl", "x", ".ltl, .sfl"},
        {"target", "targets.ltl", "x.LTL", ".ltl, .sfl"},
        {"target", "targets.ltl", "x.ltl~", ".ltl, .sfl"},
        {"target", "targets.ltl", "x.ltl.xml", "since \".ltl\" stands in its path"},
        {"target", "targets.ltl", "x.xml.ltl", "since \".xml\" stands in its path"},
        {"target", "targets.ltl", "old.csv.d/x.xml", "since \".csv\" stands in its path"},
        {"target", "targets.ltl", "old.csv.d/x.csv", nullptr},
        {"target", "targets.ltl", "old.csv.d/x.json", nullptr},
        {"target", "targets.ltl", "x.sfl", nullptr},
        {"noi", "interest.noi", "x.ltl", ": .noi, .csv, .xml, .json"},
        {"noi", "interest.noi", "x.xml.noi", "since \".xml\" stands in its path"},
        {"noi", "interest.noi", "x.ltl.noi", nullptr},
        {"memory-hf", "memory-hf.sfl", "x.sfl", ": .xml, .json"},
        {"memory-hf", "memory-hf.sfl", "x.pij", ": .xml, .json"},
        {"memory-hf", "memory-hf.sfl", "x.csv.xml", nullptr},
        {"results", "results.xml", "x.ltl", ": .csv, .xml, .json"},
        {"detections", "results.xml", "x.txt", ": .csv, .xml, .json"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.out);
        const QString out = Path(row.out);
        const CliResult result = Cli("convert --list", {Q(row.list), Sample(row.in), out});
        EXPECT_TRUE(result.Is(row.message ? ExitUsage : ExitDone, row.message));
        EXPECT_EQ(QFile::remove(out), !row.message);
    }
}

TEST_F(ConvertTest, CheckNamesTheKindThatIsRead) {
    const QByteArray ltl = "7055000\t3000\ta\tUSB\tp\tx\t1\n";
    const QByteArray sfl = "7055000\ta\t3000\tUSB\n";
    const QByteArray noi = "7055000\ta\t3000\n";
    const QByteArray csv = "Frequency\n7055000\n";
    const QByteArray xml = Read(Sample("targets.xml"));
    const QByteArray profiles = Read(Sample("profiles.xml"));
    // Each content is sound in no format but its own.
    const struct {
        const char* list;
        const char* name;
        QByteArray content;
        const char* kind;
    } rows[] = {
        {"target", "a.xml.ltl", profiles, "profile table"},
        {"target", "a.ltl.xml", profiles, "profile table"},
        {"target", "a.xml", xml, "frequency-store XML"},
        {"target", "a.csv.ltl", ltl, "LTL lines"},
        {"target", "a.ltl.sfl", sfl, "SFL lines"},
        {"target", "a.csv", csv, "CSV"},
        {"noi", "a.noi.csv", csv, "CSV"},
        {"noi", "a.noi.xml", profiles, "profile table"},
        {"noi", "a.ltl.noi", noi, "NOI lines"},
        {"memory-hf", "a.xml.sfl", sfl, "SFL lines"},
        {"memory-hf", "a.sfl.xml", xml, "frequency-store XML"},
        {"memory-hf", "a.xml.pij", Read(Sample("job-hf.pij")), "job"},
        {"results", "a.csv.xml", Read(Sample("results.xml")), "frequency-store XML"},
        {"target", "a.xml.json", "[{\"frequency\":1}]", "JSON"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(Cli("check --list", {row.list, Write(row.name, row.content)})
                        .Is(ExitDone, Q(": %1, ").arg(row.kind)));
    }
}

TEST_F(ConvertTest, ProblemsOfOneKindAreToldOnceAndAllAreCounted) {
    QByteArray bytes;
    for (int line = 1; line <= 1000; ++line)
        bytes += "7055000\tx" + QByteArray::number(line) + "\ta\n";
    const CliResult checked = Cli("check", {Write("many.ltl", bytes)});
    EXPECT_NE(checked.out.find("1000 entries, 1000 problems"), std::string::npos) << checked.out;
    EXPECT_LT(std::count(checked.err.begin(), checked.err.end(), '\n'), 7) << checked.err;
    EXPECT_NE(checked.err.find("many.ltl:4: "), std::string::npos) << checked.err;
    EXPECT_NE(checked.err.find(" more like it, to line "), std::string::npos) << checked.err;
}

TEST(ManPage, HasEveryOptionOfEveryCommand) {
    QFile file(Q(MAN_PAGE));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray page = file.readAll();
    std::vector<QStringList> names = {{"job", "show"}, {"job", "merge"}};
    for (const Command& command : Commands())
        names.push_back({Q(command.name)});
    int options = 0;
    for (const QStringList& name : names) {
        const QString help = QString::fromStdString(Cli(name + QStringList{"--help"}).out);
        static const QRegularExpression option(Q("--([a-z][a-z-]*)"));
        for (auto found = option.globalMatch(help); found.hasNext(); ++options) {
            QByteArray escaped = found.next().captured(1).toLatin1();
            if (escaped == "help-all") // Qt's own, the same as --help
                continue;
            EXPECT_TRUE(page.contains("\\-\\-" + escaped.replace("-", "\\-")))
                << name.join(QLatin1Char(' ')).toStdString() << " --" << escaped.toStdString();
        }
    }
    EXPECT_GT(options, 20);
}

} // namespace
