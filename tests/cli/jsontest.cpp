#include "tests/cli/runcli.h"

namespace {

class JsonTest : public testing::Test, protected TestFolder {
protected:
    static QByteArray Shown(const QStringList& arguments) {
        const CliResult shown = Cli(QStringList{"show", "--format", "json"} + arguments);
        EXPECT_TRUE(shown.Is(ExitDone));
        return QByteArray::fromStdString(shown.out);
    }
};

TEST_F(JsonTest, IsWrittenAsShownAndReadBackByItsMembers) {
    const struct {
        const char* kind;
        const char* sample;
        const char* back; ///< a format of the list's own that the file is converted to and from
    } rows[] = {
        {"target", "targets.xml", ".csv"},           {"noi", "interest.noi", ".xml"},
        {"results", "results.xml", ".xml"},          {"memory-hf", "memory-hf.xml", nullptr},
        {"memory-vuhf", "memory-vuhf.xml", nullptr}, {"memory-hf", "job-hf.pij", nullptr},
        {"memory-vuhf", "job-vuhf.pij", nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.sample);
        const QString sample = Sample(row.sample);
        const QString json = Path("out.json");
        EXPECT_TRUE(Cli("convert --list", {Q(row.kind), sample, json}).Is(ExitDone));
        const QByteArray expected = Shown({"--list", Q(row.kind), sample});
        EXPECT_EQ(Read(json), expected);
        EXPECT_EQ(Shown({json}), expected);
        const QString lines = Write("lines.txt", {}); // known by its content
        EXPECT_TRUE(Cli("convert --to jsonl", {json, lines}).Is(ExitDone));
        EXPECT_EQ(Read(lines), Shown(QStringList{"--format", "jsonl", json}));
        EXPECT_EQ(Shown({lines}), expected);
        const auto count = QJsonDocument::fromJson(expected).array().size();
        EXPECT_EQ(Read(lines).count('\n'), count);
        EXPECT_GT(count, 20);
        EXPECT_EQ(Cli("check", {json}).out,
                  (json + Q(": JSON, %1 entries, no problems\n").arg(count)).toStdString());
        if (!row.back)
            continue;
        const QString own = Path("own" + Q(row.back));
        EXPECT_TRUE(Cli("convert", {json, own}).Is(ExitDone));
        EXPECT_EQ(Shown({"--list", Q(row.kind), own}), expected);
    }
}

TEST_F(JsonTest, MembersHaveTypesAndAllOfThemComeBack) {
    const QByteArray job =
        "<JOB><SUBJOB><TDS><MEMORYSCAN>"
        "<MEMORYSCAN_CHANNEL Range=\"4\" Name=\"a\"><MEMORYSCAN_SEQ_FREQUENCY Value=\"1e6\"/>"
        "<MEMORYSCAN_SEQ_AFC Value=\"true\"/></MEMORYSCAN_CHANNEL>"
        "<MEMORYSCAN_CHANNEL Range=\"4\"><MEMORYSCAN_SEQ_FREQUENCY Value=\"2e6\"/>"
        "</MEMORYSCAN_CHANNEL>"
        "<MEMORYSCAN_CHANNEL Range=\"4\"><MEMORYSCAN_SEQ_FREQUENCY Value=\"4e6\"/>"
        "</MEMORYSCAN_CHANNEL></MEMORYSCAN></TDS></SUBJOB></JOB>";
    const CliResult shown = Cli("show --format json", {Write("range.pij", job)});
    const QJsonObject channel = QJsonDocument::fromJson(QByteArray::fromStdString(shown.out))[0].toObject();
    EXPECT_EQ(channel[Q("rangefrequencies")], (QJsonArray{2e6, 4e6}));
    EXPECT_EQ(channel[Q("range")], true);
    EXPECT_EQ(channel[Q("afc")], true);
    EXPECT_EQ(channel[Q("rangecounter")], 4);

    const QByteArray all =
        "[\n{\"frequency\":1000000.5,\"comment\":\"\\u0001 \\\"ä\\\\\\n\",\"bandwidthsel\":300,"
        "\"demodulation\":\"ODD\",\"threshold\":-7,\"afc\":true,\"usesquelch\":true,\"useattenuation\":true,"
        "\"attenuation\":9,\"antennaid\":3,\"type\":\"m\",\"range\":true,\"rangecounter\":4,"
        "\"rangefrequencies\":[2000000,4000000.25]}\n]\n";
    QByteArray read = Shown({Write("all.json", all)});
    EXPECT_EQ(read.replace("\\u000a", "\\n"), all);
    const QByteArray other = "\xef\xbb\xbf [ { \"unknown\" : [{}], \"antennaid\": null,\n\"bfofrequency\":7,"
                             "\"frequency\":1e6 } , {\"frequency\":2}]";
    const QJsonArray entries = QJsonDocument::fromJson(Shown({Write("other.json", other)})).array();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0][Q("bfofrequency")], 7);
    EXPECT_EQ(entries[0][Q("comment")], Q(""));
    EXPECT_EQ(entries[0][Q("shift")], 20000);
}

TEST_F(JsonTest, ListsOfAnotherKindTakeWhatTheyHaveAPlaceFor) {
    const QString channels =
        Write("channels.json", "[{\"frequency\":7e6,\"bandwidthsel\":\"2700\",\"afc\":true,"
                               "\"antennaid\":0,\"threshold\":-7}]");
    const CliResult shown = Cli("show --list target --format json", {channels});
    EXPECT_TRUE(shown.Is(ExitDone, Q("\"bandwidth\":2700,")));
    EXPECT_EQ(shown.err,
              (channels + Q(": JSON: 1 entry; without a place or changed: afc (1), threshold (1)\n"))
                  .toStdString());
    const QString detections = Write("found.jsonl", "{\"frequency\":7e6,\"bandwidth\":300,\"level\":-7}\n");
    const QJsonObject channel = ShownBy("show --list memory-vuhf", {detections})[0].toObject();
    EXPECT_EQ(channel[Q("bandwidthsel")], 300);
    EXPECT_EQ(channel[Q("threshold")], -7);
}

TEST_F(JsonTest, FrequenciesThatCanBeNoneAreTold) {
    for (const QByteArray hertz : {"-1", "1e30"}) {
        const QString path = Write("bad.json", "[\n{\"frequency\":" + hertz + "}]");
        EXPECT_TRUE(Cli("check", {path}).Is(ExitFile, path + Q(":2: "))) << hertz.constData();
    }
}

TEST_F(JsonTest, EachProblemIsToldOnce) {
    const QString in = Write("cp1252.json", "[{\"frequency\":7e6,\"comment\":\"\xe4\"}]");
    EXPECT_EQ(Cli("check", {in}).err,
              (in + Q(":1: is not UTF-8 from here on; all is read as Windows-1252\n")).toStdString());
    const QString out = Path("missing/out.json");
    EXPECT_EQ(Cli("convert", {Sample("targets.ltl"), out}).err,
              (out + Q(": cannot be written: No such file or directory\n")).toStdString());
}

TEST_F(JsonTest, ChannelsAreMergedIntoAJob) {
    const QString channels = Path("channels.json");
    ASSERT_TRUE(Cli("convert", {Sample("job-vuhf.pij"), channels}).Is(ExitDone));
    const QString job = Path("job.pij");
    EXPECT_TRUE(Cli("job merge --replace", {Sample("job-vuhf.pij"), channels, "--out", job}).Is(ExitDone));
    EXPECT_EQ(Shown({job}), Read(channels));
}

TEST_F(JsonTest, WhatIsWrongIsToldWithItsLineAndNothingIsWritten) {
    const struct {
        const char* list;
        QByteArray bytes;
        const char* problem; ///< behind the file's name
    } rows[] = {
        {"target", "", ":1: there is no JSON text"},
        {"target", "5", ":1: is no JSON array of entries"},
        {"target", "[1]", ":1: an entry is no JSON object"},
        {"target", "[\n{\"frequency\":1},\n]", ":3: is no JSON: Invalid value"},
        {"target", "[\n{\"frequency\":1}\n{\"frequency\":2}]", ":3: is no JSON: Missing a comma"},
        {"target", "[{\"frequency\":1}\n", ":2: the JSON text is cut"},
        {"target", "[\n{\"frequency\":1", ":2: the JSON text is cut"},
        {"target", "[{\"frequency\":\"}\\\"", ":1: the JSON text is cut"},
        {"target", "[]\n[]", ":2: something stands behind the JSON text"},
        {"target", "{\"frequency\":1}\n[]", ":2: an entry is no JSON object"},
        {"target", "{\"frequency\":1}\n{\"frequency\":2", ":2: the JSON text is cut"},
        {"target", "[\n{\"frequency\":1},\n{\"frequency\":\n1,,}]", ":4: is no JSON: Missing a name"},
        {"target", "[{\"frequency\":1,\"type\":\"a\",\"type\":\"b\"}]",
         ":1: entry 1: \"type\" is there twice"},
        {"target", QByteArray("[{\"frequency\":1,\n\"x\":") + QByteArray(10000, '['),
         ":2: is nested deeper than 64"},
        {"target", "[{\"frequency\":1,\"comment\":\"" + QByteArray(20 << 20, 'x'),
         ":1: one piece of text is larger than 16 MiB"},
        {"target", "[{\"frequency\":1},\n{\"comment\":\"\"}]", ":2: entry 2: \"frequency\" is missing"},
        {"target", "[{\"frequency\":\"7055000\"}]", ":1: entry 1: \"frequency\" is no number"},
        {"target", "[{\"frequency\":1,\"comment\":5}]", ":1: entry 1: \"comment\" is no text"},
        {"target", "[{\"frequency\":1,\"priority\":1.5}]", ":1: entry 1: \"priority\" is no whole number"},
        {"target", "[{\"frequency\":1,\"priority\":4e9}]", ":1: entry 1: \"priority\" is out of range"},
        {"memory-vuhf", "[{\"frequency\":1,\"afc\":1}]", ":1: entry 1: \"afc\" is neither true nor false"},
        {"memory-vuhf", "[{\"frequency\":1,\"rangefrequencies\":\"2;3\"}]",
         ":1: entry 1: \"rangefrequencies\" is no array of numbers"},
        {"memory-hf", "[{\"frequency\":1,\"outputifpath\":true}]",
         ":1: entry 1: \"outputifpath\" is neither text nor number"},
        {"results", "[{\"frequency\":1,\"locktime\":1e300}]", ":1: entry 1: \"locktime\" is no whole number"},
        {"detections", "[{\"frequency\":1,\"id\":-1}]", ":1: entry 1: \"id\" is out of range"},
        {"detections-vuhf", "[{\"frequency\":1,\"starttime\":\"noon\"}]",
         ":1: entry 1: \"starttime\" is no time"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.bytes.constData());
        const QString path = Write("bad.json", row.bytes);
        const QString out = Write("out.xml", "old");
        const CliResult converted = Cli("convert --list", {Q(row.list), path, out});
        EXPECT_TRUE(converted.Is(ExitFile));
        EXPECT_EQ(converted.err.find((path + Q(row.problem)).toStdString()), 0u) << converted.err;
        EXPECT_EQ(Read(out), "old");
        const CliResult checked = Cli("check --list", {Q(row.list), path});
        EXPECT_NE(checked.out.find(", no entries, 1 problem\n"), std::string::npos) << checked.out;
    }
    EXPECT_TRUE(Cli("show", {Path("missing.json")}).Is(ExitFile));
    EXPECT_EQ(Shown({Write("empty.json", "[ ]")}), "[\n]\n");
}

} // namespace
