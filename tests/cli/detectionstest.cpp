#include "controls/frequencystore/detections/searchmcrecords.h"
#include "tests/cli/runcli.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

class DetectionKinds : public testing::Test {
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
    QString path(const QString& name) const { return folder.filePath(name); }
    QByteArray bytes(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no such file>");
    }
    QJsonObject shown(const char* kind, const QString& name) const {
        const CliResult result = Cli({"show", "--list", kind, "--format", "json", path(name)});
        EXPECT_EQ(result.exitCode, ExitDone) << result.err;
        return QJsonDocument::fromJson(QByteArray::fromStdString(result.out)).array()[0].toObject();
    }

    ExtendedDetectionConventional record;
    QTemporaryDir folder;
};

TEST_F(DetectionKinds, AreShownWithTheirMembers) {
    SearchMC::WriteFile(path("plain.xml"), false, {static_cast<const DetectionConventional*>(&record)});
    QJsonObject entry = shown("detections", "plain.xml");
    EXPECT_EQ(entry["frequency"], 7055000.5);
    EXPECT_EQ(entry["bandwidth"], 2700);
    EXPECT_EQ(entry["id"], 17);
    EXPECT_EQ(entry["level"], -12);
    EXPECT_EQ(entry["starttime"], "2023-11-14T22:13:20Z");
    EXPECT_EQ(entry["stoptime"], "");
    EXPECT_EQ(entry.size(), 6);

    SearchMC::WriteFile(path("ext.csv"), true, {&record}, SearchMC::Variant::VUHF);
    entry = shown("detections-vuhf", "ext.csv");
    EXPECT_EQ(entry["frequency"], 7055100);
    EXPECT_EQ(entry["modulation"], "FSK, \"wide\"");
    EXPECT_EQ(entry["decoder"], QString::fromUtf8("Жür"));
    EXPECT_EQ(entry["confidence"], 87);
    EXPECT_EQ(entry["azimuth"], 123.5);
    EXPECT_EQ(entry["latitude"], -48.25);
    SearchMC::WriteFile(path("hf.xml"), false, {&record}, SearchMC::Variant::HF);
    EXPECT_EQ(shown("detections-hf", "hf.xml")["azimuth"], 2222);
}

TEST_F(DetectionKinds, ComeBackTheSameThroughEveryFormat) {
    const std::vector<const ExtendedDetectionConventional*> records(3, &record);
    SearchMC::WriteFile(path("detections.xml"), false, {records.begin(), records.end()});
    SearchMC::WriteFile(path("detections-hf.xml"), false, records, SearchMC::Variant::HF);
    SearchMC::WriteFile(path("detections-vuhf.xml"), false, records, SearchMC::Variant::VUHF);
    for (const char* kind : {"detections", "detections-hf", "detections-vuhf"}) {
        SCOPED_TRACE(kind);
        const QString name = QString::fromLatin1(kind) + ".xml";
        const auto convert = [&](const QString& in, const QString& out) {
            const CliResult result = Cli({"convert", "--list", kind, path(in), path(out)});
            EXPECT_EQ(result.exitCode, ExitDone) << result.err;
        };
        convert(name, "there.csv");
        convert("there.csv", "there.json");
        convert("there.json", "back.xml");
        EXPECT_EQ(bytes("back.xml"), bytes(name));
        const CliResult checked = Cli({"check", "--list", kind, path(name)});
        EXPECT_EQ(checked.exitCode, ExitDone);
        EXPECT_NE(checked.out.find("3 entries, no problems"), std::string::npos) << checked.out;
    }
    const CliResult known = Cli({"check", path("detections-hf.xml")});
    EXPECT_NE(known.out.find("detection results XML, 3 entries, no problems"), std::string::npos)
        << known.out;
}

TEST_F(DetectionKinds, TellWhatIsWrongAndLeaveTheOutputAlone) {
    SearchMC::WriteFile(path("plain.xml"), false, {static_cast<const DetectionConventional*>(&record)});
    QFile file(path("bad.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("ID,Frequency,Level\n1,7000000,30\n2,inf,30\n");
    file.close();
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
        const CliResult result = Cli({"convert", "--list", row.kind, path(row.file), path("out.xml")});
        EXPECT_EQ(result.exitCode, ExitFile);
        EXPECT_NE(result.err.find(row.message), std::string::npos) << result.err;
        EXPECT_FALSE(QFile::exists(path("out.xml")));
        EXPECT_EQ(Cli({"check", "--list", row.kind, path(row.file)}).exitCode, ExitFile);
    }
}

} // namespace
