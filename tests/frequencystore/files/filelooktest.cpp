#include "controls/frequencystore/files/filelook.h"

#include "tests/support/testfolder.h"
#include "tests/support/traces.h"

namespace {

class FileLookTest : public testing::Test, protected TestFolder {};

constexpr char Entries[] = "<FrequencyStoreList Version=\"1\"><FrequencyStoreEntry><FFM_Settings>"
                           "<Frequency>7055000</Frequency></FFM_Settings></FrequencyStoreEntry>"
                           "<FrequencyStoreEntry/></FrequencyStoreList>";
constexpr char Profiles[] =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><T><PROFILETBL><PROFILENAME>\xE4</PROFILENAME>"
    "<PROFILEPARAMETERSETTBL><NOMINALFREQUENCY>156800000</NOMINALFREQUENCY></PROFILEPARAMETERSETTBL>"
    "<PROFILEPARAMETERSETTBL/></PROFILETBL></T>";
constexpr char Job[] = "<JOB><SUBJOB><TDS><MEMORYSCAN><MEMORYSCAN_CHANNEL><MEMORYSCAN_SEQ_FREQUENCY "
                       "Value=\"3413000.0\"/></MEMORYSCAN_CHANNEL></MEMORYSCAN></TDS></SUBJOB></JOB>";

struct LookRow {
    const char* name;
    QByteArray bytes;
    const char* kind;
    qint64 rows;
    qint64 frequencies;
    qint64 problemLine;
    const char* refusal; ///< part of it; empty for none
};

const LookRow LookRows[] = {
    {"a.ltl", "7\t8\tc\r9\t1\r\n\n0\t3\n", "LTL lines", 3, 2, 0, ""},
    {"prose.ltl", "Dear operator,\nthis is\nno list.\n", "LTL lines", 3, 0, 1, ""},
    {"latin.sfl", "7\tc\t8\n9\t\xE4\t1\n", "SFL lines", 2, 2, 2, ""},
    {"cut.noi", "7\tc\t8\n9", "NOI lines", 1, 1, 2, ""},
    {"picture.ltl", QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16), "LTL lines", 0, 0, 3, "is no text file"},
    {"a.xml", Entries, "frequency-store XML", 2, 1, 0, ""},
    {"cut.xml", QByteArray(Entries).left(120), "XML", 1, 1, 1, "line 1: the file ends"},
    {"newer.xml", QByteArray(Entries).replace("Version=\"1", "Version=\"2"), "XML", 2, 1, 0,
     "no list that can"},
    {"profiles.xml", Profiles, "profile table", 2, 1, 0, ""},
    {"others.xml", "<html><body/></html>", "XML", 0, 0, 0, "root \"html\""},
    {"results.xml",
     "<DetectionResultList Version=\"1\"><DetectionResult><Frequency>5</Frequency></DetectionResult>"
     "</DetectionResultList>",
     "detection results XML", 1, 1, 0, ""},
    {"declared.xml", "<!DOCTYPE T><T><PROFILETBL/></T>", "XML", -1, -1, 0, ""},
    {"a.pij", Job, "job", 1, 1, 0, ""},
    {"a.csv", "Frequency,Comment\r\n7,a\r\n,b\r\n", "CSV", 2, 1, 0, ""},
    {"cut.csv", "Frequency,Comment\r\n7,a\r\n8", "CSV", 2, 2, 3, ""},
    {"chirp.csv", "Name,Frequency,Duplex\nA,121.500000,\n", "CSV", 0, 0, 1, "CHIRP"},
    {"lines.csv", "7.000000\t\t8.000000\t\tp\tLOCKED\t0\t5\t\n", "result lines", 1, 1, 0, ""},
    {"passwd", "root:x:0:0\n", "", 0, 0, 0, "is of no known kind of file"},
};

TEST_F(FileLookTest, TellsWhatAFileHoldsAndChangesNothing) {
    for (const LookRow& row : LookRows) {
        const Traces traces;
        const FileLook look = LookAtFile(Write(QString::fromLatin1(row.name), row.bytes));
        EXPECT_EQ(look.kind.toStdString(), row.kind) << row.name;
        EXPECT_TRUE(*row.refusal ? look.refusal.contains(QLatin1String(row.refusal)) : look.refusal.isEmpty())
            << row.name << ": " << look.refusal.toStdString();
        EXPECT_FALSE(look.refusal.contains(m_folder.path())) << look.refusal.toStdString();
        if (look.refusal.isEmpty()) {
            EXPECT_EQ(look.rows, row.rows) << row.name;
            EXPECT_EQ(look.frequencies, row.frequencies) << row.name;
        }
        EXPECT_EQ(look.firstProblemLine, row.problemLine) << row.name;
        EXPECT_EQ(traces.texts + traces.problems, QStringList()) << row.name;
    }
    EXPECT_EQ(LookAtFile(Path(QStringLiteral("none.ltl"))).refusal, QStringLiteral("no such file"));
    QDir(m_folder.path()).mkdir(QStringLiteral("folder.xml"));
    EXPECT_EQ(LookAtFile(Path(QStringLiteral("folder.xml"))).refusal, QStringLiteral("is no regular file"));
}

TEST_F(FileLookTest, KnowsTheSamples) {
    for (const QString& name : QDir(QStringLiteral(SAMPLES_DIR)).entryList(QDir::Files)) {
        const FileLook look = LookAtFile(QStringLiteral(SAMPLES_DIR "/") + name);
        const bool isList = !look.kind.isEmpty() && name != QLatin1String("sweep.csv");
        EXPECT_EQ(look.refusal.isEmpty(), isList) << name.toStdString() << look.refusal.toStdString();
        EXPECT_EQ(look.frequencies > 0, isList) << name.toStdString();
        EXPECT_TRUE(!isList || look.rows == look.frequencies) << name.toStdString();
        EXPECT_TRUE(!isList || look.firstProblemLine == 0) << name.toStdString();
    }
}

} // namespace
