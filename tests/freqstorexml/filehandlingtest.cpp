#include "host/freqstorexml/filehandling.h"

#include "host/freqstorexml/liststreams.h"
#include "tests/freqstorexml/sampledata.h"
#include "tests/support/fulldisk.h"
#include "tests/support/traces.h"

#include <QBuffer>
#include <QProcess>

#include <sys/stat.h>

using namespace FreqStoreXml;

namespace {

using ListType = FrequencyStoreListHelper::ListType;

/// Takes some bytes and then fails as a full disk does.
class FullDevice : public QIODevice {
public:
    explicit FullDevice(qint64 room) : m_room(room) { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override {
        const qint64 taken = std::min(size, m_room);
        m_room -= taken;
        if (taken == 0)
            setErrorString(QStringLiteral("No space left on device"));
        return taken == 0 ? -1 : taken;
    }

private:
    qint64 m_room;
};

FrequencyStoreList ListOfLength(int count) {
    FrequencyStoreList list;
    list.SetUsage(FrequencyStoreList::Noi);
    for (int i = 0; i < count; ++i) {
        FrequencyStoreEntry entry = i % 2 ? FullEntry() : AwkwardEntry();
        entry.SetID(QString::number(i));
        list.AppendFrequencyStoreEntry(entry);
    }
    return list;
}

class Files : public FileTest {};

TEST_F(Files, ComeBackAsTheyWereWritten) {
    const FrequencyStoreList list = ListOfLength(3000); // more than one buffer
    FileHandling().ExportFrequencyStoreList(false, Path("a.xml"), list, FrequencyStoreListHelper::XmlList);
    EXPECT_EQ(QString::fromUtf8(Read(Path("a.xml"))), list.GetXmlString());
    FrequencyStoreList read = ListOfLength(5);
    FileHandling().ImportFrequencyStoreList(false, Path("a.xml"), read, FrequencyStoreListHelper::Targets);
    EXPECT_EQ(read.GetXmlString(), list.GetXmlString());
    FrequencyStoreList loaded;
    loaded.LoadXml(Path("a.xml"));
    EXPECT_EQ(loaded.GetXmlString(), list.GetXmlString());
}

TEST_F(Files, OfDetectionResultsComeBackAsTheyWereWritten) {
    const DetectionResultList list = FullResultList();
    FileHandling().ExportFrequencyStoreList(false, Path("a.xml"), list);
    DetectionResultList read;
    FileHandling().ImportDetectionResultList(false, Path("a.xml"), read);
    EXPECT_EQ(read.GetXmlString(), list.GetXmlString());

    FileHandling().ExportFrequencyStoreList(true, Path("a.csv"), list);
    FileHandling().ImportDetectionResultList(true, Path("a.csv"), read);
    ASSERT_EQ(read.GetDetectionResult().size(), 2);
    EXPECT_EQ(read.GetDetectionResult()[0].GetXmlString(), FullResult().GetXmlString());
}

TEST_F(Files, HoldBinariesOfEitherKind) {
    const FrequencyStoreList list = ListOfLength(10);
    QFile compressed(Path("c.bin"));
    ASSERT_TRUE(compressed.open(QIODevice::ReadWrite));
    list.SaveBinary(&compressed);
    compressed.seek(0);
    QFile plain(Write("p.bin", list.GetBinary()));
    ASSERT_TRUE(plain.open(QIODevice::ReadOnly));
    for (QFile* file : {&compressed, &plain}) {
        FrequencyStoreList read;
        read.LoadBinary(file);
        EXPECT_EQ(read.GetXmlString(), list.GetXmlString());
    }
    QFile garbage(Write("g.bin", "garbage"));
    ASSERT_TRUE(garbage.open(QIODevice::ReadOnly));
    EXPECT_EQ(ErrorOf([&] { FrequencyStoreList().LoadBinary(&garbage); }),
              Path("g.bin").toStdString() + ": this is no binary of a record");
}

TEST_F(Files, AreOursByTheirRootAndVersion) {
    const std::pair<QByteArray, bool> rows[] = {
        {"<FrequencyStoreList/>", true},
        {"\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- x -->\n<FrequencyStoreList Version='1'><broken", true},
        {"<FrequencyStoreList Version='2'/>", false},
        {"<FrequencyStoreListing/>", false},
        {"<DetectionResultList/>", false},
        {"<PROFILES><FrequencyStoreList/></PROFILES>", false},
        {"<!DOCTYPE FrequencyStoreList><FrequencyStoreList/>", false},
        {"7055\tname", false},
        {"", false},
    };
    for (const auto& [bytes, valid] : rows)
        EXPECT_EQ(FileHandling().IsValidFormat(Write("f.xml", bytes)), valid) << bytes.constData();
    for (const char* path : {"/nonexistent.xml", "/", "/dev/zero", "/dev/null"})
        EXPECT_FALSE(FileHandling().IsValidFormat(QString::fromUtf8(path))) << path;
}

TEST_F(Files, ThatCannotBeReadWholeLeaveTheListAsItWas) {
    const QByteArray whole = ListOfLength(20).GetXmlString().toUtf8();
    const QString path = Write("broken.xml", whole.left(whole.size() * 3 / 4));
    FrequencyStoreList list = ListOfLength(2);
    EXPECT_NE(ErrorOf([&] { FileHandling().ImportXml(path, list); }), "");
    EXPECT_EQ(list.GetXmlString(), ListOfLength(2).GetXmlString());

    int delivered = 0;
    EXPECT_NE(ErrorOf([&] { ReadXml(path, [&](const FrequencyStoreEntry&) { ++delivered; }); }), "");
    EXPECT_EQ(delivered, 14);
}

TEST_F(Files, GiveTheUsageBeforeTheFirstEntry) {
    FileHandling().ExportFrequencyStoreList(false, Path("a.xml"), ListOfLength(2));
    auto usage = FrequencyStoreList::Unspecified;
    int seen = 0;
    const auto callback = [&](const FrequencyStoreEntry& entry) {
        EXPECT_EQ(usage, FrequencyStoreList::Noi);
        EXPECT_EQ(entry.GetID(), QString::number(seen++));
    };
    ReadXml(Path("a.xml"), callback, &usage);
    EXPECT_EQ(seen, 2);
}

TEST_F(Files, AreRefusedWithNameLineAndReason) {
    mkfifo(Path("pipe").toUtf8().constData(), 0600);
    const std::pair<QString, const char*> rows[] = {
        {Path("missing.xml"), ": there is no such file"},
        {Path("pipe"), ": this is no ordinary file"},
        {QStringLiteral("/"), ": this is no ordinary file"},
        {QStringLiteral("/dev/zero"), ": this is no ordinary file"},
        {Write("empty.xml", ""), ":1: there is no XML element in the file"},
        {Write("number.xml", "<FrequencyStoreList>\n<FrequencyStoreEntry>\n<FFM_Settings><Level>nan</Level>"),
         ":3: Level \"nan\" is not a number"},
        {Write("time.xml", "<FrequencyStoreList><FrequencyStoreEntry><Detection>\n<StopTime>noon</StopTime>"),
         ":2: StopTime \"noon\" is not a time like 2024-05-31T12:00:00Z"},
        {Write("int.xml",
               "<FrequencyStoreList><FrequencyStoreEntry><ResultList>\n<Confidence>1.5</Confidence>"),
         ":2: Confidence \"1.5\" is not a whole number"},
        {Write("version.xml", "<FrequencyStoreList Version='one'/>"),
         ":1: the version \"one\" is not a number"},
    };
    for (const auto& [path, reason] : rows) {
        FrequencyStoreList list;
        EXPECT_EQ(ErrorOf([&, &file = path] { FileHandling().ImportXml(file, list); }),
                  path.toStdString() + reason);
        FrequencyStoreListHelper::ListType type = FrequencyStoreListHelper::Targets;
        EXPECT_NE(ErrorOf([&, &file = path] { FileHandling().ImportCSV(file, list, type); }), "")
            << path.toStdString();
    }
}

TEST_F(Files, ThatCannotBeWrittenLeaveTheOldOne) {
    const QString path = Write("old.xml", "old");
    const FrequencyStoreList list = ListOfLength(3000);
    for (const bool csv : {false, true}) {
        const FullDisk limit(300 * 1024);
        EXPECT_EQ(ErrorOf([&] { FileHandling().ExportFrequencyStoreList(csv, path, list); }),
                  path.toStdString() + ": cannot be written: File too large");
    }
    {
        const FullDisk limit(1024);
        EXPECT_NE(ErrorOf([&] { list.SaveXml(path); }), "");
    }
    EXPECT_EQ(Read(path), "old");
    EXPECT_EQ(FileNames(), QStringList{QStringLiteral("old.xml")});
}

TEST_F(Files, AreNotWrittenInPlacesThatAreNoFiles) {
    for (const QString& path : {Path(""), Path("none/a.xml"), QStringLiteral("/dev/full"), QString()})
        EXPECT_NE(ErrorOf([&] { FileHandling().ExportFrequencyStoreList(false, path, ListOfLength(1)); }), "")
            << path.toStdString();
}

TEST_F(Files, StandUntilTheWriterCommits) {
    const QString path = Write("old.xml", "old");
    {
        FrequencyStoreListWriter writer(path, false);
        writer.Begin(FrequencyStoreList::Noi);
        for (int i = 0; i < 3000; ++i)
            writer.Append(FullEntry());
        EXPECT_EQ(Read(path), "old");
    }
    EXPECT_EQ(Read(path), "old");
    FrequencyStoreListWriter writer(path, false);
    writer.Commit();
    EXPECT_EQ(QString::fromUtf8(Read(path)), FrequencyStoreList().GetXmlString());
}

TEST_F(Files, ThatChangeWhileTheyAreReadAreToldAndNotReplaced) {
    for (const bool csv : {false, true})
        for (const bool grows : {false, true}) {
            const QString path = Path("a.xml");
            FileHandling().ExportFrequencyStoreList(csv, path, ListOfLength(5000));
            const Traces traces(0);
            int delivered = 0;
            const EntryCallback change = [&](const FrequencyStoreEntry&) {
                QFile file(path);
                EXPECT_TRUE(delivered++ > 0 ||
                            file.resize(grows ? QFileInfo(path).size() + 1 : QFileInfo(path).size() / 2));
            };
            ErrorOf([&] { csv ? ReadCsv(path, ListType::Targets, change) : ReadXml(path, change); });
            EXPECT_TRUE(traces.problems.contains(path + ": changed while it was read")) << csv << grows;
            const QByteArray theirs = Read(path);
            FileHandling().ExportFrequencyStoreList(csv, path, ListOfLength(1));
            EXPECT_EQ(Read(path), theirs);
            EXPECT_TRUE(QFile::exists(Path("a-2.xml")));
            QFile::remove(path);
            QFile::remove(Path("a-2.xml"));
        }
}

TEST(Writers, ReportADeviceThatFails) {
    for (const qint64 room : {0, 1, 100, 300'000})
        for (const bool csv : {false, true}) {
            FullDevice device(room);
            const auto write = [&] {
                FrequencyStoreListWriter writer(device, csv, FrequencyStoreListHelper::Targets);
                writer.Begin(FrequencyStoreList::TargetList);
                for (int i = 0; i < 5000; ++i)
                    writer.Append(FullEntry());
                writer.Commit();
            };
            EXPECT_EQ(ErrorOf(write), "cannot be written: No space left on device") << room;
        }
}

/// Runs the schema checker of the system on a file.
void ExpectValid(const QString& fileName, const char* schema) {
    QProcess lint;
    lint.start(QStringLiteral("xmllint"),
               {QStringLiteral("--noout"), QStringLiteral("--schema"),
                QStringLiteral(QT_TESTCASE_SOURCEDIR "/../docs/") + QString::fromUtf8(schema), fileName});
    ASSERT_TRUE(lint.waitForFinished()) << "xmllint is needed for this test";
    EXPECT_EQ(lint.exitCode(), 0) << lint.readAllStandardError().constData();
}

TEST_F(Files, FollowTheirSchemas) {
    FrequencyStoreList list = ListOfLength(3);
    list.AppendFrequencyStoreEntry(FrequencyStoreEntry());
    FrequencyStoreEntry extremes;
    extremes.GetFFM_Settings().GetFrequency().SetValue(1.7976931348623157e308);
    extremes.GetFFM_Settings().SetLevel(-5e-324);
    extremes.SetComment(QString(QChar(1)) + QChar(0xFFFE));
    list.AppendFrequencyStoreEntry(extremes);
    for (const int usage : {0, 1, 2, 3, 4}) {
        list.SetUsage(usage);
        FileHandling().ExportFrequencyStoreList(false, Path("list.xml"), list);
        ExpectValid(Path("list.xml"), "frequencystorelist.xsd");
    }
    FileHandling().ExportFrequencyStoreList(false, Path("results.xml"), FullResultList());
    ExpectValid(Path("results.xml"), "detectionresultlist.xsd");
}

} // namespace
