#include "interchange/format.h"
#include "tests/cli/runcli.h"
#include "tests/support/clock.h"

#include <QDomDocument>

namespace {

class ForeignTest : public testing::Test, protected TestFolder {
protected:
    static QByteArray Chirp() {
        return "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,Mode,"
               "TStep,Skip,"
               "Power,Comment,URCALL,RPT1CALL,RPT2CALL,DVCODE\n"
               "0,Tower,121.500000,,0.000000,,88.5,88.5,023,NN,AM,5.00,,50W,,,,,\n"
               "1,Repeater,145.600000,-,0.600000,,88.5,88.5,023,NN,FM,12.50,,,,,,,\n";
    }
};

TEST_F(ForeignTest, FilesAreKnownByTheirContentWhateverTheirNameIs) {
    for (const char* name : {"radio.csv", "radio.txt", "radio", "radio.ltl"}) {
        const QString path = Write(Q(name), Chirp());
        const CliResult checked = Cli("check", {path});
        EXPECT_TRUE(checked.Is(ExitDone, path + Q(": CHIRP CSV, 2 entries, no problems"))) << name;
        EXPECT_EQ(checked.err,
                  (path + Q(": CHIRP CSV: 2 entries; without a place or changed: Duplex (1), Offset (1), "
                            "Power (1), TStep (1), bandwidths from the mode (2)\n"))
                      .toStdString());
    }
}

TEST_F(ForeignTest, EntriesReachEachListOfEntries) {
    const QString path = Write(Q("radio.csv"), Chirp());
    for (const char* list : {"target", "memory-hf", "memory-vuhf", "noi"}) {
        const QJsonArray shown = ShownBy("show", {"--list", Q(list), "--keep-extras", path});
        ASSERT_EQ(shown.size(), 2) << list;
        EXPECT_EQ(shown[0].toObject()[Q("frequency")].toDouble(), 121'500'000.0) << list;
        EXPECT_EQ(shown[0].toObject()[Q("comment")].toString(), Q("Tower {Power=50W}")) << list;
    }
    EXPECT_TRUE(Cli("show --list results", {path}).Is(ExitFile, Q("which this list does not take")));
}

TEST_F(ForeignTest, RefusedLinesAreToldAndTheRestIsRead) {
    const QString path = Write(Q("radio.csv"), Chirp() + "2,Bad,\"121,5\"\n");
    EXPECT_TRUE(Cli("check", {path}).Is(ExitFile, path + Q(":4: \"121,5\" is no frequency")));
    EXPECT_EQ(ShownBy("show", {path}, ExitFile).size(), 2);
}

TEST_F(ForeignTest, ListsAreWrittenForOtherPrograms) {
    const QString in = Write(Q("in.csv"), Chirp());
    for (const Interchange::Format* format : Interchange::Formats()) {
        const QString id = QString::fromLatin1(format->id);
        const QString out = Path(Q("out"));
        const CliResult written = Cli("convert", {in, out, "--to", id});
        if (!format->makeEncoder) {
            EXPECT_TRUE(written.Is(ExitUsage, Q("are only read"))) << format->id;
            continue;
        }
        if (!format->read) {
            EXPECT_TRUE(written.Is(ExitFile, Q("cannot hold: entries without a location (2)"))) << format->id;
            EXPECT_TRUE(Cli("check", {out}).Is(ExitFile, Q("are only written"))) << format->id;
            continue;
        }
        EXPECT_TRUE(written.Is(ExitDone)) << format->id;
        EXPECT_TRUE(Cli("check", {out}).Is(ExitDone, QString::fromLatin1(format->name))) << format->id;
        EXPECT_EQ(ShownBy("show", {out})[1].toObject()[Q("frequency")].toDouble(), 145'600'000.0)
            << format->id;
    }
    EXPECT_TRUE(Cli("convert", {in, Path(Q("out")), "--to", "chirp"})
                    .Is(ExitUsage, Q("no format is called \"chirp\": chirp-csv")));
    const CliResult plain = Cli("convert", {Sample(Q("airband.sfl")), Path(Q("out")), "--to", "gqrx"});
    EXPECT_EQ(plain.err.find("threat classes"), std::string::npos) << plain.err;
    const CliResult lossy = Cli("convert", {Sample(Q("targets.ltl")), Path(Q("out")), "--to", "chirp-csv"});
    EXPECT_TRUE(lossy.Is(ExitDone));
    EXPECT_NE(
        lossy.err.find("CHIRP CSV cannot hold: bandwidths (286), fractions of a Hz (1), modes that are none "
                       "here (2), priorities ("),
        std::string::npos)
        << lossy.err;
}

TEST_F(ForeignTest, RangesOfChannelsAreWrittenFrequencyByFrequency) {
    const QString in =
        Write(Q("in.jsonl"), "{\"frequency\":7e6,\"antennaid\":0,\"range\":true,\"rangecounter\":1,"
                             "\"rangefrequencies\":[8e6,9e6]}\n{\"frequency\":5e6}\n");
    const CliResult written = Cli("convert --to sdrangel", {in, Path(Q("out"))});
    EXPECT_TRUE(written.Is(ExitDone));
    EXPECT_EQ(written.err,
              (Path(Q("out")) + Q(": SDRangel frequency scanner cannot hold: ranges, each of whose "
                                  "frequencies is written (1), settings of the receiver (2)\n"))
                  .toStdString());
    const QByteArray lines = Read(Path(Q("out")));
    for (const char* line : {"\n7000000,", "\n8000000,", "\n9000000,", "\n5000000,"})
        EXPECT_TRUE(lines.contains(line)) << line;
}

TEST_F(ForeignTest, ResultsAndDetectionsLeaveForOtherPrograms) {
    EXPECT_TRUE(
        Cli("convert --list results", {Sample(Q("results.xml")), Path(Q("results.out")), "--to", "gqrx"})
            .Is(ExitDone));
    EXPECT_TRUE(Cli("check", {Path(Q("results.out"))}).Is(ExitDone, Q("Gqrx bookmarks")));
    EXPECT_TRUE(Cli("detect", {Sample(Q("sweep.csv")), Path(Q("found.xml"))}).Is(ExitDone));
    EXPECT_TRUE(Cli("convert --list detections-vuhf",
                    {Path(Q("found.xml")), Path(Q("found.out")), "--to", "sdrangel"})
                    .Is(ExitDone));
    EXPECT_GT(ShownBy("show", {Path(Q("found.out"))}).size(), 0);
}

TEST_F(ForeignTest, DetectionsThatHaveALocationLeaveForMaps) {
    const QString found =
        Write(Q("found.jsonl"),
              "{\"frequency\":121500000,\"starttime\":\"2026-05-01T18:30:00Z\",\"stoptime\":"
              "\"2026-05-01T18:31:00Z\",\"decoder\":\"\",\"modulation\":\"A<3\",\"longitude\":13.4,"
              "\"latitude\":52.5}\n{\"frequency\":7000000,\"starttime\":\"2026-05-01T18:30:00Z\"}\n"
              "{\"frequency\":8000000,\"longitude\":181,\"latitude\":1}\n");
    const QString geo = Path(Q("out.geojson"));
    EXPECT_TRUE(Cli("convert --list detections-vuhf --to geojson", {found, geo})
                    .Is(ExitFile, geo + Q(": GeoJSON cannot hold: entries without a location (2)")));
    const QJsonArray features = QJsonDocument::fromJson(Read(geo)).object()[Q("features")].toArray();
    ASSERT_EQ(features.size(), 1);
    EXPECT_EQ(features[0][Q("geometry")],
              (QJsonObject{{Q("type"), Q("Point")}, {Q("coordinates"), QJsonArray{13.4, 52.5}}}));
    EXPECT_EQ(features[0][Q("properties")][Q("modulation")], Q("A<3"));
    EXPECT_EQ(features[0][Q("properties")][Q("stoptime")], Q("2026-05-01T18:31:00Z"));
    const QString kml = Path(Q("out.kml"));
    EXPECT_TRUE(Cli("convert --list detections-vuhf --to kml", {found, kml}).Is(ExitFile));
    QDomDocument document;
    ASSERT_TRUE(document.setContent(Read(kml)));
    const QDomElement placemark =
        document.documentElement().firstChildElement().firstChildElement(Q("Placemark"));
    QStringList elements; // in the order of the schema
    for (QDomElement child = placemark.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement())
        elements << child.tagName();
    EXPECT_EQ(elements.join(u' '), Q("name TimeSpan ExtendedData Point"));
    EXPECT_EQ(placemark.firstChildElement(Q("TimeSpan")).text(),
              Q("2026-05-01T18:30:00Z2026-05-01T18:31:00Z"));
    EXPECT_EQ(placemark.lastChildElement().text(), Q("13.4,52.5"));
}

TEST_F(ForeignTest, TablesAreReadWhenTheirUnitIsKnown) {
    const QString open = Write(Q("list.tsv"), "Freq\tCall\n118.1\tTower\n");
    EXPECT_TRUE(Cli("show", {open})
                    .Is(ExitFile, open + Q(":1: is a table of another program, and nothing tells the unit of "
                                           "column \"Freq\"; if it is so, say: --columns "
                                           "\"frequency=Freq:MHz,name=Call\"")));
    const QJsonArray shown = ShownBy("show", {open, "--columns", "frequency=Freq:MHz,comment=Call"});
    EXPECT_EQ(shown[0].toObject()[Q("frequency")].toDouble(), 118'100'000.0);
    EXPECT_EQ(shown[0].toObject()[Q("comment")].toString(), Q("Tower"));
    EXPECT_EQ(ShownBy("show", {Write(Q("sure.tsv"), "MHz\tFrequency (kHz)\n1\t5505\n")})[0]
                  .toObject()[Q("frequency")]
                  .toDouble(),
              5'505'000.0);
    const QString sure = Write(Q("sure.csv"), "Freq MHz,Name\n121.5,Guard\n");
    EXPECT_EQ(ShownBy("show", {sure})[0].toObject()[Q("frequency")].toDouble(), 121'500'000.0);
    EXPECT_TRUE(Cli("show", {Write(Q("open.csv"), "Frequency,Station\n121.5,Guard\n")})
                    .Is(ExitFile, Q("--columns \"frequency=Frequency:MHz,name=Station\"")));
    const QString numbers = Write(Q("numbers.txt"), "118.1 MHz\n121.5 MHz\n");
    EXPECT_TRUE(Cli("show", {numbers}).Is(ExitFile, Q("--columns \"frequency=1\"")));
    EXPECT_EQ(ShownBy("show", {numbers, "--columns", "frequency=1"}).size(), 2);
    EXPECT_TRUE(Cli("show", {Write(Q("notes.txt"), "milk, eggs\nbread, tea\n")})
                    .Is(ExitFile, Q("notes.txt: is of no known kind of file; if it is a table, --columns")));
    EXPECT_TRUE(Cli("show", {open, "--columns", "frequency=Freq:parsec"})
                    .Is(ExitUsage, Q("freqstore-cli show: --columns: \"parsec\" is no unit")));
    EXPECT_TRUE(Cli("check", {open, "--columns", "frequency=QRG:MHz"})
                    .Is(ExitFile, open + Q(": --columns: there is no column \"QRG\", but Freq, Call")));
}

TEST_F(ForeignTest, SchedulesAreReadForATime) {
    const QString path =
        Write(Q("sked.csv"), "kHz:75;Time(UTC):93;Days:59;ITU:49;Station:201;Lng:49;Target:62;\n"
                             "5890;0600-0700;;D;Morning;D;Eu;;1;;;\n9410;1800-1900;;G;Evening;E;Af;;1;;;\n");
    const QJsonArray shown = ShownBy("show", {path, "--on-air", "2026-05-01T18:30:00Z"});
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0].toObject()[Q("comment")].toString(), Q("Evening {Time=1800-1900}"));
    const Zone tokyo("Asia/Tokyo"); // where it is another time
    EXPECT_EQ(ShownBy("show", {path, "--on-air", "2026-05-01T18:30:00"}), shown);
    for (const char* command :
         {"show", "check", "convert out.ltl", "diff out.ltl", "merge out.ltl --out c.ltl"})
        EXPECT_TRUE(Cli(command, {path, "--on-air", "tomorrow"})
                        .Is(ExitUsage, Q(": --on-air \"tomorrow\" is neither")));
    EXPECT_TRUE(Cli("show --on-air now", {Path(Q("none.csv"))}).Is(ExitFile, Q("there is no such file")));
    for (const QString& other : {Write(Q("radio.csv"), Chirp()), Sample(Q("targets.ltl"))})
        EXPECT_TRUE(Cli("show --on-air now", {other})
                        .Is(ExitFile, other + Q(": has no times on air, which --on-air asks for")));
}

TEST(Samples, OfOtherProgramsAreKnown) {
    const struct {
        const char* file;
        int exitCode;
        const char* told;
    } rows[] = {
        {"chirp.csv", ExitDone, "CHIRP CSV, 527 entries"},
        {"gqrx-bookmarks.csv", ExitDone, "Gqrx bookmarks, 527 entries"},
        {"kiwi.csv", ExitDone, "KiwiSDR labels, CSV, 527 entries"},
        {"kiwi-dx.json", ExitDone, "KiwiSDR labels, JSON, 527 entries"},
        {"sdrangel-scanner.csv", ExitDone, "SDRangel frequency scanner, 527 entries"},
        {"fldigi-frequencies2.txt", ExitDone, "fldigi frequencies, 527 entries"},
        {"sdrpp-frequency_manager_config.json", ExitDone, "SDR++ frequency manager, 527 entries"},
        {"sdrsharp-frequencies.xml", ExitDone, "SDR# frequencies, 527 entries"},
        {"targets.json", ExitDone, "JSON, 527 entries"},
        {"targets.jsonl", ExitDone, "JSON lines, 527 entries"},
        {"detections.jsonl", ExitDone, "JSON lines, 2 entries"},
        {"detections.geojson", ExitFile, "files of GeoJSON are only written"},
        {"detections.kml", ExitFile, "files of KML are only written"},
        {"kiwi-awkward.json", ExitDone, "KiwiSDR labels, JSON, 2 entries"},
        {"sdrsharp-newer.xml", ExitDone, "SDR# frequencies, 1 entry"},
        {"gqrx-bandplan.csv", ExitDone, "Gqrx band plan, 2 entries"},
        {"sdrangel-annotations.csv", ExitDone, "SDRangel annotations, 1 entry"},
        {"eibi-sked.csv", ExitDone, "EiBi schedule, 3 entries"},
        {"chirp-awkward.csv", ExitFile, ":5: \"121,5\" is no frequency"},
        {"sdrpp-old.json", ExitDone, "SDR++ frequency manager, 2 entries"},
        {"scanner-table.tsv", ExitFile, "--columns \"name=Call,frequency=Freq:MHz,notes=Remarks\""},
    };
    for (const auto& row : rows)
        EXPECT_TRUE(Cli("check", {Sample(Q("interchange/") + Q(row.file))}).Is(row.exitCode, Q(row.told)))
            << row.file;
}

TEST(Formats, AreListedAsThePageOfThemSays) {
    const CliResult listed = Cli("formats");
    EXPECT_TRUE(listed.Is(ExitDone));
    QFile page(Q(SAMPLES_DIR "/../docs/interchange.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    for (const Interchange::Format* format : Interchange::Formats()) {
        EXPECT_NE(listed.out.find(format->name), std::string::npos);
        const QString row = QStringLiteral("| `%1` | %2 | %3 | %4 |")
                                .arg(QLatin1String(format->id), QLatin1String(format->name),
                                     QLatin1String(format->Ways()), QLatin1String(format->lost));
        EXPECT_TRUE(text.contains(row)) << row.toStdString();
    }
}

} // namespace
