#include "controls/frequencystore/detections/searchmcrecords.h"
#include "tests/cli/runcli.h"

namespace {

class DetectionKinds : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        record.SetID(17);
        record.SetFrequency(7055000.5);
        record.SetBandwidth(2700);
        record.SetLevel(-12);
        record.SetStartTime(1.7e15);
        record.SetActive(true);
        record.Result() = {7055100,  2400, 45.45, 850, 0,       0,    87,     "FSK, \"wide\"",
                           "Baudot", "",   "Жür", "",  "123.5", "40", "11.5", "-48.25"};
    }
    QJsonObject shown(const char* kind, const QString& name) const {
        return ShownBy("show --list", {kind, Path(name)})[0].toObject();
    }

    ExtendedDetectionConventional record;
};

TEST_F(DetectionKinds, AreShownWithTheirMembers) {
    SearchMC::WriteFile(Path("plain.xml"), false, {static_cast<const DetectionConventional*>(&record)});
    QJsonObject entry = shown("detections", "plain.xml");
    EXPECT_EQ(entry["frequency"], 7055000.5);
    EXPECT_EQ(entry["bandwidth"], 2700);
    EXPECT_EQ(entry["id"], 17);
    EXPECT_EQ(entry["level"], -12);
    EXPECT_EQ(entry["starttime"], "2023-11-14T22:13:20Z");
    EXPECT_EQ(entry["stoptime"], "");
    EXPECT_EQ(entry.size(), 6);

    SearchMC::WriteFile(Path("ext.csv"), true, {&record}, SearchMC::Variant::VUHF);
    entry = shown("detections-vuhf", "ext.csv");
    EXPECT_EQ(entry["frequency"], 7055100);
    EXPECT_EQ(entry["modulation"], "FSK, \"wide\"");
    EXPECT_EQ(entry["decoder"], QString::fromUtf8("Жür"));
    EXPECT_EQ(entry["confidence"], 87);
    EXPECT_EQ(entry["azimuth"], 123.5);
    EXPECT_EQ(entry["latitude"], -48.25);
    SearchMC::WriteFile(Path("hf.xml"), false, {&record}, SearchMC::Variant::HF);
    EXPECT_EQ(shown("detections-hf", "hf.xml")["azimuth"], 2222);
}

TEST_F(DetectionKinds, ComeBackTheSameThroughEveryFormat) {
    const std::vector<const ExtendedDetectionConventional*> records(3, &record);
    SearchMC::WriteFile(Path("detections.xml"), false, {records.begin(), records.end()});
    SearchMC::WriteFile(Path("detections-hf.xml"), false, records, SearchMC::Variant::HF);
    SearchMC::WriteFile(Path("detections-vuhf.xml"), false, records, SearchMC::Variant::VUHF);
    for (const char* kind : {"detections", "detections-hf", "detections-vuhf"}) {
        SCOPED_TRACE(kind);
        const QString name = QString::fromLatin1(kind) + ".xml";
        const auto convert = [&](const QString& in, const QString& out) {
            EXPECT_TRUE(Cli("convert --list", {kind, Path(in), Path(out)}).Is(ExitDone));
        };
        convert(name, "there.csv");
        convert("there.csv", "there.json");
        convert("there.json", "back.xml");
        EXPECT_EQ(Read("back.xml"), Read(name));
        EXPECT_TRUE(Cli("check --list", {kind, Path(name)}).Is(ExitDone, "3 entries, no problems"));
    }
    const CliResult known = Cli("check", {Path("detections-hf.xml")});
    EXPECT_NE(known.out.find("detection results XML, 3 entries, no problems"), std::string::npos)
        << known.out;
}

TEST_F(DetectionKinds, TellWhatIsWrongAndLeaveTheOutputAlone) {
    SearchMC::WriteFile(Path("plain.xml"), false, {static_cast<const DetectionConventional*>(&record)});
    Write("bad.csv", "ID,Frequency,Level\n1,7000000,30\n2,inf,30\n");
    const struct {
        const char* kind;
        const char* file;
        const char* message;
    } rows[] = {
        {"detections-hf", "plain.xml", "plain.xml:"},
        {"detections", "bad.csv", "bad.csv:3: Frequency \"inf\""},
        {"detections", "none.xml", "none.xml"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(
            Cli("convert --list", {row.kind, Path(row.file), Path("out.xml")}).Is(ExitFile, row.message));
        EXPECT_FALSE(QFile::exists(Path("out.xml")));
        EXPECT_TRUE(Cli("check --list", {row.kind, Path(row.file)}).Is(ExitFile));
    }
}

} // namespace
