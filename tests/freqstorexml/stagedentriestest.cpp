#include "host/freqstorexml/stagedentries.h"

#include "host/freqstorexml/filehandling.h"
#include "tests/freqstorexml/sampledata.h"

using namespace FreqStoreXml;

namespace {

using Entries = QVector<FrequencyStoreEntry>;

QString XmlOf(const Entries& entries) {
    FrequencyStoreList list;
    list.GetFrequencyStoreEntry() = entries;
    return list.GetXmlString();
}

Entries Drained(StagedEntries& staged) {
    Entries entries;
    staged.Drain([&](const FrequencyStoreEntry& entry) { entries << entry; });
    return entries;
}

/// Each differs from the one before: in all members, in none, in one text, in what is set at all.
Entries Varied(int rounds) {
    FrequencyStoreEntry sparse;
    sparse.GetFFM_Settings().GetFrequency().SetValue(7e6);
    Entries entries;
    for (int i = 0; i < rounds; ++i) {
        FrequencyStoreEntry commented = FullEntry();
        commented.SetComment(QString::number(i) + QString(i % 300, QChar(0xE4)));
        commented.GetFFM_Settings().SetLevel(i);
        entries << FullEntry() << FullEntry() << commented << AwkwardEntry() << sparse
                << FrequencyStoreEntry();
    }
    return entries;
}

class Staged : public FileTest {};

TEST_F(Staged, EntriesComeOutAsTheyWentIn) {
    const Entries entries = Varied(1000); // more than one chunk
    StagedEntries staged;
    for (int pass = 0; pass < 2; ++pass) { // it is empty and as new after the first
        for (const FrequencyStoreEntry& entry : entries)
            staged.Append(entry);
        EXPECT_EQ(staged.Size(), entries.size());
        EXPECT_EQ(XmlOf(Drained(staged)), XmlOf(entries));
        EXPECT_EQ(staged.Size(), 0);
    }
}

TEST_F(Staged, FilesAreTakenWholeOrNotAtAll) {
    const auto type = FrequencyStoreListHelper::Targets;
    FrequencyStoreList list;
    list.GetFrequencyStoreEntry() = Varied(20);
    for (const bool csv : {false, true}) {
        const QString path = Path(csv ? "a.csv" : "a.xml");
        FileHandling().ExportFrequencyStoreList(csv, path, list, type);
        FrequencyStoreList expected;
        FileHandling().ImportFrequencyStoreList(csv, path, expected, type);
        StagedEntries staged;
        staged.Read(path, csv, type);
        EXPECT_EQ(XmlOf(Drained(staged)), XmlOf(expected.GetFrequencyStoreEntry()));
        Write(Path("bad"), Read(path) + "\"");
        EXPECT_THROW(staged.Read(Path("bad"), csv, type), RGException);
        EXPECT_TRUE(Drained(staged).isEmpty());
    }
}

} // namespace
