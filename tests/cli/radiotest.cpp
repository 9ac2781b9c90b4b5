#include "tests/cli/runcli.h"
#include "tests/support/badserver.h"

namespace {

TEST(RadioCommands, ModelsAreFoundByTheirWords) {
    const CliResult net = Cli("receivers net RIGCTL");
    EXPECT_TRUE(net.Is(ExitDone, "2  network   Hamlib NET rigctl")) << net.out;
    EXPECT_EQ(std::count(net.out.begin(), net.out.end(), '\n'), 1);
    const CliResult json = Cli("receivers --format json kenwood ts-2000");
    const QJsonObject model =
        QJsonDocument::fromJson(QByteArray::fromStdString(json.out)).array()[0].toObject();
    EXPECT_EQ(model["model"].toInt(), 2014);
    EXPECT_EQ(model["port"].toString(), "serial");
    EXPECT_EQ(model["speed"].toInt(), 57600);
    EXPECT_NE(Cli("receivers gqrx").err.find("model 2"), std::string::npos) << "it is none of them";
    EXPECT_TRUE(Cli("receivers --format xml").Is(ExitUsage, "table or json"));
}

struct Tuning {
    const char* words;
    int exitCode;
    const char* told;
};

TEST(RadioCommands, TuneSetsWhatTheReceiverTakesAndPrintsIt) {
    const Tuning tunings[] = {
        {"tune 7.055MHz LSB 2.4kHz", ExitDone, "7055.000 kHz LSB 2.400 kHz"},
        {"tune --receiver hamlib:1 144800000 fm 15000", ExitDone, "144.800000 MHz FM 15.000 kHz"},
        {"level --receiver hamlib:1", ExitDone, "dBµV"},
        {"tune --receiver hamlib:1 99GHz", ExitFile, "outside"},
        {"tune --receiver hamlib:1 7055kHz XYZ", ExitFile, "\"XYZ\""},
        {"tune --receiver hamlib:2@127.0.0.1:1 7055kHz", ExitFile, "no answer"},
        {"level --receiver hamlib:2@127.0.0.1:1", ExitFile, "no answer"},
        {"level --receiver hamlib:2014@/nowhere/tty", ExitFile, "is not there"},
        {"level --receiver hamlib:99999", ExitUsage, "no model 99999"},
        {"tune --receiver hamlib:2 7055kHz", ExitUsage, "host:port"},
        {"tune --receiver attic 7055kHz", ExitUsage, "\"attic\""},
        {"tune seven", ExitUsage, "seven"},
        {"tune 1 2 3 4", ExitUsage, "more than"},
    };
    for (const Tuning& tuning : tunings) {
        const CliResult result = Cli(tuning.words);
        EXPECT_TRUE(result.Is(tuning.exitCode, tuning.told)) << tuning.words;
        EXPECT_EQ(result.err.find("tries again"), std::string::npos) << result.err;
    }
}

TEST(RadioCommands, ARadioThatTellsNoLevelIsTuned) {
    BadServer server;
    server.others = {{"l STRENGTH", "RPRT -11\n"}};
    server.onLine = [&](const QByteArray& line) {
        if (line.startsWith("F "))
            server.others["f"] = line.mid(2) + '\n';
    };
    const CliResult result =
        Cli("tune", {"--receiver", "hamlib:2@" + server.Port(), "9410kHz", "USB", "2400"});
    EXPECT_EQ(result.exitCode, ExitDone) << result.err;
    EXPECT_EQ(result.out, "9410.000 kHz USB 2.400 kHz\n");
    EXPECT_EQ(server.Tuned(), std::vector<double>{9410e3});
}

} // namespace
