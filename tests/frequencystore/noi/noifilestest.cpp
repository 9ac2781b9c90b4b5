#include "tests/frequencystore/noi/noifixture.h"
#include "tests/support/dialogs.h"
#include "tests/support/fulldisk.h"
#include "tests/support/recorder.h"

#include <QSignalSpy>

namespace {

class NoiFilesTest : public NoiFixture {};

TEST_F(NoiFilesTest, LinesAreReadWithWhatTheyLackFromTheLineBefore) {
    NOIFrequencyHandler& handler = Start();
    Traces traces;
    const QString path =
        Write(Q("list.noi"), "7055000\tone\t3000\trest\n\nx\n8000000\n12\ttwo\n"
                             "9000000\t\t\t\n  14e6 \t4\t1e3\t\t\t\nabc\tbad\t5\r\n77\t\tzz\n");
    EXPECT_TRUE(handler.ParseNOIFile(path));
    EXPECT_EQ(Entries(), (QStringList{"7055000|3000|one", "8000000|3000|one", "12|3000|two", "9000000|0|",
                                      "14000000|1000|4", "0|0|0", "77|0|"}));
    ASSERT_EQ(traces.problems.size(), 5) << traces.problems.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(traces.problems[1], path + Q(":8: \"abc\" is no frequency; 0 is taken"));
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("first.noi"), "12\n")));
    EXPECT_EQ(Entries(), QStringList{"12|0|"});
    EXPECT_TRUE(handler.ParseNOIFile(Write(Q("empty.noi"), "")));
    EXPECT_EQ(Bands(), QString());
    EXPECT_TRUE(handler.ParseNOIFile(QStringLiteral(SAMPLES_DIR "/interest.noi")));
    EXPECT_EQ(Entries().size(), 30);
    EXPECT_EQ(Entries()[3], Q("3756000|3000|«Капля» / The Pip, by night"));
}

TEST_F(NoiFilesTest, EveryFormatGivesBackWhatWasSaved) {
    NOIFrequencyHandler& handler = Start();
    const auto fill = [&] {
        m_list->DeleteChildren();
        handler.InsertNewValue(7055000, 3000, Q("calling"));
        handler.InsertNewValue(145500000.25, 0, Q("Ärger \"x\", y; <z> & 'q' 😀 %1 %2"));
        handler.InsertNewValue(0.000001, 1e9, Q(" blanks "));
        handler.InsertNewValue(4294967296.5, 12.5, QString());
    };
    for (const char* kind : {"noi", "xml", "csv"}) {
        fill();
        const QStringList expected = Entries();
        const QString path = Path(Q("list.") + Q(kind));
        ASSERT_TRUE(handler.SaveFile(path)) << kind;
        m_list->DeleteChildren();
        ASSERT_TRUE(handler.ReadFile(path)) << kind;
        EXPECT_EQ(Entries(), expected) << kind;
    }
    EXPECT_TRUE(Read(Q("list.xml")).contains("Usage=\"NOI\""));
    EXPECT_EQ(Read(Q("list.xml")).count("Type=\"d\""), 4);
    EXPECT_TRUE(
        Read(Q("list.csv")).startsWith("Frequency,Bandwidth,Comment,Type\r\n7055000,3000,calling,d\r\n"));

    m_list->DeleteChildren();
    handler.InsertNewValue(7055000, 3000, Q("a\tb\nc\x01"));
    handler.InsertNewValue(0.5, 0, QString());
    handler.InsertNewValue(3, 0, Q("bare"));
    m_list->Children()[2]->DeleteValue(Q("bandwidth"));
    ASSERT_TRUE(handler.SaveFile(Path(Q("bytes.noi"))));
    EXPECT_EQ(Read(Q("bytes.noi")),
              Utf16(Q("7055000.000000\ta b c\uFFFD\t3000.000000\t\n\n0.500000\t\t0.000000\t\n\n\n\n")));
    EXPECT_TRUE(handler.ReadFile(Path(Q("bytes.noi"))));
    EXPECT_EQ(Entries().size(), 2);
}

TEST_F(NoiFilesTest, AnXmlOrCsvFileThatCannotBeReadLeavesAListThatWaitsForTheNext) {
    struct {
        const char* name;
        QByteArray bytes;
        const char* problem;
    } const rows[] = {
        {"cut.xml", QByteArray(TwoXml).left(200), ": the file ends within"},
        {"root.xml", "<Foo/>", "Foo"},
        {"number.xml",
         "<FrequencyStoreList>\n<FrequencyStoreEntry><FFM_Settings><Frequency>x</Frequency>"
         "</FFM_Settings></FrequencyStoreEntry></FrequencyStoreList>",
         ":2:"},
        {"cell.csv", "Frequency,Bandwidth\n7055000,3000\n8000000,abc\n", ":3: Bandwidth \"abc\""},
    };
    NOIFrequencyHandler& handler = Start();
    for (const auto& row : rows) {
        handler.InsertNewValue(1, 2, Q("before"));
        const QString path = Write(Q(row.name), row.bytes);
        QSignalSpy loaded(&handler, &NOIFrequencyHandler::signalNewFileLoaded);
        Traces traces;
        EXPECT_FALSE(handler.ParseNOIXmlFile(path)) << row.name;
        EXPECT_EQ(Entries().size(), 0) << row.name;
        EXPECT_TRUE(handler.IsWaitingForFile()) << row.name;
        EXPECT_EQ(loaded.size(), 0);
        ASSERT_EQ(traces.problems.size(), 1) << row.name;
        EXPECT_TRUE(traces.problems[0].contains(path) && traces.problems[0].contains(Q(row.problem)))
            << traces.problems[0].toStdString();
        ASSERT_EQ(traces.texts.size(), 2);
        EXPECT_EQ(traces.texts[0], Q("EXCEPTION WHILE PARSING FREQUENCIES:"));
        EXPECT_EQ(traces.texts[1], traces.problems[0]);
        EXPECT_EQ(Read(Q(row.name)), row.bytes);
        EXPECT_TRUE(handler.ParseNOIXmlFile(Write(Q("good.xml"), TwoXml)));
        EXPECT_EQ(Entries(), (QStringList{"7055000|3000|one", "0.5|0|"}));
        EXPECT_EQ(Bands(), Q("7053500,7056500;1,1;"));
        EXPECT_FALSE(handler.IsWaitingForFile());
        // Opened rather than imported, an XML file might be a profile table, which leaves no list waiting.
        traces.problems.clear();
        if (path.endsWith(Q(".xml"))) {
            EXPECT_FALSE(handler.ReadFile(path)) << row.name;
            EXPECT_FALSE(handler.IsWaitingForFile()) << row.name;
            EXPECT_EQ(Bands(), QString());
            EXPECT_EQ(traces.problems.size(), 1) << traces.problems.join(QLatin1Char('\n')).toStdString();
        }
    }
    EXPECT_TRUE(handler.ReadFile(Write(Q("profiles.xml"), Profiles)));
    EXPECT_EQ(Entries(), QStringList{"156800000|25000|Ship"});
    Traces traces;
    EXPECT_FALSE(handler.ReadFile(Write(Q("notes.txt"), "1\t2")));
    EXPECT_EQ(traces.problems.size(), 1);
    EXPECT_EQ(Entries().size(), 1);
    for (const char* name : {"missing.noi", "folder.noi"}) {
        QDir().mkdir(Q("folder.noi"));
        EXPECT_FALSE(handler.ParseNOIFile(Path(Q(name))));
        EXPECT_TRUE(traces.texts.contains(Q("File cannot be opened: ") + Path(Q(name))));
    }
    EXPECT_FALSE(handler.ParseNOIFile(Write(Q("picture.noi"), QByteArray("\x89PNG\0\0\x01", 7))));
    EXPECT_EQ(Entries().size(), 1) << "a line file that cannot be read changes nothing";
}

TEST_F(NoiFilesTest, AFileOfCarriageReturnsIsKeptWhole) {
    Write(Q("list.noi"), "7055000\ta\t10\r8000000\tb\t10\r9000000\tc\t10\r");
    Start(Q("list.noi"));
    EXPECT_EQ(Entries().size(), 3);
    End();
    Start(Remembered());
    EXPECT_EQ(Remembered(), Q("list.noi"));
    EXPECT_EQ(Entries(), (QStringList{"7055000|10|a", "8000000|10|b", "9000000|10|c"}));
}

TEST_F(NoiFilesTest, WhatAFileMakesOfTheBandsIsTold) {
    const QString withoutFrequency =
        Q("entries without a frequency above 0 have the values of a new entry: %1, the first is number %2");
    const QString belowZero = Q("bands that begin below 0 Hz: %1, the first is number %2");
    const QString lines = Write(Q("a.noi"), "7055000\ta\t10\n0\tb\t10\n10\tc\t100\n20\td\t100\n");
    const QString csv = Write(Q("a.csv"), "Frequency,Bandwidth\n10,100\n,5\n");
    const QString xml = Write(Q("a.xml"), QByteArray(TwoXml).replace("0.5", "0"));
    const std::pair<QString, QStringList> rows[] = {
        {lines, {withoutFrequency.arg(1).arg(2), belowZero.arg(2).arg(3)}},
        {csv, {withoutFrequency.arg(1).arg(2), belowZero.arg(1).arg(1)}},
        {xml, {withoutFrequency.arg(1).arg(2)}},
    };
    NOIFrequencyHandler& handler = Start();
    for (const auto& [path, reasons] : rows) {
        QStringList told;
        for (const QString& reason : reasons)
            told << path + Q(": ") + reason;
        Traces traces;
        EXPECT_TRUE(handler.ReadFile(path));
        EXPECT_EQ(traces.problems, told);
        handler.InsertNewValue(1, 1000, QString());
        handler.UpdateNOIList();
        EXPECT_EQ(traces.problems, told) << "only of a file, and once";
    }
    EXPECT_EQ(Bands(), Q("7053500,7056500;0,0;-499,501;"));
    const QStringList before = Entries();
    Traces traces;
    EXPECT_FALSE(handler.ReadFile(Write(Q("foreign.csv"), "Name,Frequency,Duplex\nA,121.500000,\n")));
    EXPECT_EQ(traces.problems.size(), 1);
    EXPECT_EQ(Entries(), before) << "a table of another program costs nothing";
    EXPECT_FALSE(handler.IsWaitingForFile());
}

TEST_F(NoiFilesTest, DialogsSaveAndExport) {
    NOIFrequencyHandler& handler = Start();
    handler.SetReadDirectory(Q("/nowhere"));
    Traces traces;
    AnswerDialog(Path(Q("empty")));
    EXPECT_EQ(handler.FileSave(false), QString());
    EXPECT_EQ(handler.GetCurrentFileName(), Q("NoiFrequencies.xml"));
    EXPECT_FALSE(QFile::exists(Q("empty.xml")));
    EXPECT_EQ(traces.problems.size(), 1) << "an empty list is not written, which is told";
    handler.InsertNewValue(7055000, 3000, Q("c"));
    struct {
        QString (*run)(NOIFrequencyHandler&);
        const char* answer;
        const char* written;
        const char* current;
    } const rows[] = {
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "plain", "plain.xml", "plain.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "a.noi", "a.noi.xml", "a.noi.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "named.xml", "named.xml", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "table", "table.csv", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "table.txt", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "no/folder/x", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileExport(); }, "no/folder/x.csv", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileImport(); }, "table.csv", "table.csv", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileImport(); }, "", "", "named.xml"},
        {[](NOIFrequencyHandler& h) { return h.FileSave(false); }, "", "", ""},
        {[](NOIFrequencyHandler& h) { return h.FileSave(true); }, nullptr, "", ""},
    };
    for (const auto& row : rows) {
        if (row.answer)
            AnswerDialog(*row.answer ? Path(Q(row.answer)) : QString());
        EXPECT_EQ(row.run(handler), *row.written ? Path(Q(row.written)) : QString()) << row.answer;
        EXPECT_TRUE(!*row.written || Read(Q(row.written)).size() > 30) << row.answer;
        EXPECT_EQ(handler.GetCurrentFileName(), *row.current ? Path(Q(row.current)) : QString());
        EXPECT_EQ(Entries(), QStringList{"7055000|3000|c"}) << row.answer;
    }
    EXPECT_TRUE(traces.texts.contains(Q("EXCEPTION WHILE SAVING NOI FREQUENCIES:")));
    EXPECT_TRUE(traces.texts.contains(Q("EXCEPTION WHILE EXPORTING NOI FREQUENCIES:")));
}

TEST_F(NoiFilesTest, AFailedSaveLeavesTheOldFileAndIsTold) {
    for (const char* kind : {"noi", "xml", "csv"}) {
        const QString name = Q("list.") + Q(kind);
        NOIFrequencyHandler& handler = Start(qstrcmp(kind, "csv") == 0 ? QString() : name);
        QByteArray lines;
        for (int i = 1; i <= 3000; ++i)
            lines += QByteArray::number(i) + "\tc\t1\n";
        ASSERT_TRUE(handler.ParseNOIFile(Write(Q("many.noi"), lines)));
        Write(name, qstrcmp(kind, "xml") == 0 ? QByteArray(TwoXml) : QByteArray("7\told\t1\n"));
        const QByteArray old = Read(name);
        Traces traces;
        {
            const FullDisk disk(10000);
            EXPECT_FALSE(handler.SaveFile(Path(name))) << kind;
            EXPECT_EQ(traces.problems.size(), 1) << kind;
            EXPECT_TRUE(traces.problems.value(0).contains(Path(name)));
            End();
        }
        EXPECT_EQ(Read(name), old) << kind;
        EXPECT_TRUE(qstrcmp(kind, "csv") == 0 || Remembered() == name) << "the old file is still the list's";
    }
}

TEST_F(NoiFilesTest, AFileThatChangesWhileItIsReadIsToldAndKept) {
    QByteArray lines;
    for (int i = 1; i <= 3; ++i)
        lines += QByteArray::number(i) + "\tc\t1\n";
    const QString path = Write(Q("list.noi"), lines);
    NOIFrequencyHandler& handler = Start();
    Recorder recorder; // hears of the first entry before the next is read
    recorder.onUpdate = [&](Observable*, TChangeCode) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::Append) && file.write("4\td\t1\n") > 0);
        recorder.onUpdate = {};
    };
    m_list->AddObserver(&recorder);
    const Traces traces;
    EXPECT_TRUE(handler.ParseNOIFile(path));
    m_list->DeleteObserver(&recorder);
    EXPECT_EQ(traces.problems, QStringList{path + Q(": changed while it was read")});
    EXPECT_TRUE(handler.SaveFile(path));
    EXPECT_TRUE(Read(path).contains("4\td")) << "kept";
}

TEST_F(NoiFilesTest, TheListIsRememberedFromStartToStart) {
    Start();
    EXPECT_EQ(Remembered(), QString());
    End();
    EXPECT_EQ(Remembered(), QString()) << "an empty list has no file";
    EXPECT_FALSE(QFile::exists(Q("NoiFrequencies.xml")));

    Start().InsertNewValue(7055000, 3000, Q("kept"));
    End();
    EXPECT_EQ(Remembered(), Q("NoiFrequencies.xml"));
    EXPECT_TRUE(Read(Q("NoiFrequencies.xml")).contains("kept"));
    Start(Remembered());
    EXPECT_EQ(Entries(), QStringList{"7055000|3000|kept"});
    EXPECT_EQ(Bands(), Q("7053500,7056500;"));

    // A line file that is opened becomes the current one, an XML file does not.
    NOIFrequencyHandler& handler = *NOIFrequencyHandler::Instance();
    const QString lines = Write(Q("list.noi"), "8000000\tlines\t10\n");
    AnswerDialog(lines);
    EXPECT_EQ(handler.FileOpen(), lines);
    EXPECT_EQ(handler.GetCurrentFileName(), lines);
    AnswerDialog(Write(Q("other.xml"), TwoXml));
    EXPECT_EQ(handler.FileOpen(), Path(Q("other.xml")));
    EXPECT_EQ(handler.GetCurrentFileName(), lines);
    End();
    EXPECT_EQ(Remembered(), lines);
    EXPECT_EQ(Read(Q("list.noi")),
              Utf16(Q("7055000.000000\tone\t3000.000000\t\n\n0.500000\t\t0.000000\t\n\n")));
    Start(Remembered());
    EXPECT_EQ(Entries().size(), 2);
    // The operator removed all entries: an empty line file says so.
    m_list->DeleteChildren();
    End();
    EXPECT_LE(Read(Q("list.noi")).size(), 2);
    EXPECT_EQ(Remembered(), lines);

    // Cancelling forgets the file.
    Start(lines).InsertNewValue(1, 2, Q("x"));
    AnswerDialog(QString());
    Traces traces;
    EXPECT_EQ(NOIFrequencyHandler::Instance()->FileOpen(), QString());
    EXPECT_EQ(traces.texts, QStringList{"File cannot be opened: "});
    EXPECT_TRUE(traces.problems.isEmpty());
    EXPECT_EQ(Entries().size(), 1);
    End();
    EXPECT_EQ(Remembered(), QString());
    EXPECT_LE(Read(Q("list.noi")).size(), 2);

    // Whoever works on given files only leaves no trace of it.
    NOIFrequencyHandler::Instance()->SetRemembersFile(false);
    Start(lines).InsertNewValue(1, 2, Q("x"));
    End();
    EXPECT_EQ(Remembered(), lines);
    EXPECT_LE(Read(Q("list.noi")).size(), 2);
}

TEST_F(NoiFilesTest, WhatCouldNotBeReadIsNeverOverwrittenUnasked) {
    const QByteArray good = Utf16(Q("7055000.000000\tgood\t10.000000\t\n\n"));
    struct {
        const char* remembered;
        QByteArray content;
        const char* bad;                       ///< a file to read meanwhile; null for none
        QString (*read)(NOIFrequencyHandler&); ///< and how
    } const rows[] = {
        {"list.noi", QByteArray("7055000\t\0", 9), nullptr, nullptr},
        {"list.noi", "7055000\ta\t1\n@@@ to be looked up\tb\t1\n", nullptr, nullptr},
        {"list.noi", "7055000\ta\t1\n118450000", nullptr, nullptr},
        {"list.noi", "7055000\ta\t1\n118450000\t\xE4\t1\n", nullptr, nullptr},
        {"list.xml", QByteArray(TwoXml).replace("0.5", "-5"), nullptr, nullptr},
        {"list.xml", QByteArray(TwoXml).left(300), nullptr, nullptr},
        {"NoiFrequencies.xml", QByteArray(TwoXml).left(300), nullptr, nullptr},
        {"list.xml", "<Foo/>", nullptr, nullptr},
        {"list.xml", Profiles, nullptr, nullptr},
        {"list.noi", good, "bad.csv", [](NOIFrequencyHandler& h) { return h.FileImport(); }},
        {"list.noi", good, "bad.xml", [](NOIFrequencyHandler& h) { return h.FileOpen(); }},
        {"list.xml", TwoXml, "bad.xml", [](NOIFrequencyHandler& h) { return h.FileOpen(); }},
        {"list.noi", good, "bad.noi", [](NOIFrequencyHandler& h) { return h.FileOpen(); }},
    };
    const QByteArray badContent("<FrequencyStoreList>\0@", 22);
    for (const bool withEntry : {false, true}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.content.toStdString() + (row.bad ? row.bad : "") + (withEntry ? " +" : ""));
            for (const QString& old : QDir(m_folder.path()).entryList({"*.xml", "*.noi"}, QDir::Files))
                QFile::remove(old);
            Write(Q(row.remembered), row.content);
            Traces traces;
            NOIFrequencyHandler& handler = Start(Q(row.remembered));
            if (row.bad) {
                AnswerDialog(Write(Q(row.bad), badContent));
                row.read(handler);
                EXPECT_EQ(traces.problems.size(), 1) << traces.problems.join(QLatin1Char('\n')).toStdString();
            }
            if (withEntry && !handler.IsWaitingForFile())
                handler.InsertNewValue(99, 0, Q("new"));
            const qsizetype entries = static_cast<qsizetype>(Controller().size());
            End();
            EXPECT_EQ(Read(Q(row.remembered)), row.content);
            EXPECT_TRUE(!row.bad || Read(Q(row.bad)) == badContent);
            if (entries == 0) {
                EXPECT_EQ(Remembered(),
                          row.bad && Q(row.bad).endsWith(Q("noi")) ? Path(Q(row.bad)) : Q(row.remembered));
                continue;
            }
            // What the list did hold is in another file, and there the next time.
            EXPECT_TRUE(Remembered().startsWith(Q("NoiFrequencies"))) << Remembered().toStdString();
            Start(Remembered());
            EXPECT_EQ(Entries().size(), entries);
            End();
        }
    }
    // A file that was not there is none that could be lost.
    Start(Q("gone.noi")).InsertNewValue(99, 0, Q("new"));
    End();
    EXPECT_EQ(Remembered(), Q("gone.noi"));
    EXPECT_TRUE(Read(Q("gone.noi")).size() > 20);
    // Asked to, the list goes to any file, and from then on there.
    Write(Q("list.noi"), QByteArray("\0", 1));
    Start(Q("list.noi")).InsertNewValue(99, 0, Q("new"));
    AnswerDialog(Path(Q("list.noi.xml")));
    EXPECT_EQ(NOIFrequencyHandler::Instance()->FileSave(false), Path(Q("list.noi.xml")));
    EXPECT_TRUE(Read(Q("list.noi.xml")).startsWith("\xFF\xFE")) << "the kind is that of lines";
    EXPECT_EQ(NOIFrequencyHandler::Instance()->GetCurrentFileName(), Path(Q("list.noi.xml")));
    End();
    EXPECT_EQ(Remembered(), Q("NoiFrequencies.xml")) << "what is named XML and is none is left alone, too";
}

TEST_F(NoiFilesTest, TheEndKeepsWhatAnotherWorkstationSavedMeanwhile) {
    const QByteArray ours = Utf16(Q("7055000.000000\tours\t10.000000\t\n\n"));
    const QByteArray theirs = Utf16(Q("8000000.000000\ttheirs\t10.000000\t\n\n"));
    const struct { bool theyChanged, weChanged; } rows[] = {{false, false}, {true, false}, {true, true}};
    for (const auto& [theyChanged, weChanged] : rows) {
        Write(Q("list.noi"), ours);
        NOIFrequencyHandler& handler = Start(Q("list.noi"));
        if (theyChanged)
            Write(Q("list.noi"), theirs);
        if (weChanged)
            handler.InsertNewValue(9e6, 10, Q("new"));
        const Traces traces;
        End();
        EXPECT_EQ(Read(Q("list.noi")), theyChanged ? theirs : ours);
        EXPECT_EQ(Read(Q("list-2.noi")), weChanged
                                             ? ours + Utf16(Q("9000000.000000\tnew\t10.000000\t\n\n")).mid(2)
                                             : QByteArray("<no such file>"));
        EXPECT_EQ(traces.problems.size(), theyChanged ? 1 : 0);
    }
}

} // namespace
