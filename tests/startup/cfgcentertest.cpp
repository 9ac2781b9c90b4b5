#include "host/startup/cfgcenter.h"

#include "tests/support/fulldisk.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"

#include <QStandardPaths>
#include <QTemporaryDir>

#include <random>
#include <sys/stat.h>

namespace {

class Configuration : public testing::Test, protected TestFolder {
protected:
    Configuration() { CfgCenter::SetDirectory(m_folder.path()); }
    ~Configuration() override { CfgCenter::SetDirectory(QString()); }

    static std::unique_ptr<ICfg> frequencyStore(const QString& part = QString()) {
        return std::unique_ptr<ICfg>(CfgCenter::CreateCfg("FrequencyStore", ICfg::PlugIn, part));
    }
};

TEST_F(Configuration, GivesDefaultsWhereNothingIsSet) {
    EXPECT_EQ(CfgCenter::GetAdminCfg(ICfg::Administration).GetString("VeltaDataDir", "D:\\VeltaData"),
              QString("D:\\VeltaData"));
    EXPECT_FALSE(frequencyStore()->GetBool("AllowExportToCsv", false));
    EXPECT_TRUE(frequencyStore()->GetBool("AllowExportToCsv", true));
    EXPECT_EQ(frequencyStore()->GetInt("Rows", -3), -3);
    EXPECT_EQ(CfgCenter::GetAppCfg(ICfg::StartUp).GetFilePath("LocalTargetList", "Targets.xml"),
              QString("Targets.xml"));
}

TEST_F(Configuration, WhatTheEndWritesTheNextStartReads) {
    const QStringList texts = {
        "/data/lists/NoiFrequencies.xml", "D:\\VeltaData\\", QString::fromUtf8("Wąż, Žaba; Ωμέγα"),
        "a=b [c] %20 \"quoted\"",         " blanks around ", ""};
    for (const QString& text : texts) {
        CfgCenter::GetAppCfg(ICfg::Shutdown).SetString("NOIFrequencies", text);
        EXPECT_EQ(CfgCenter::GetAppCfg(ICfg::StartUp).GetString("NOIFrequencies", "none"), text);
    }
    frequencyStore()->SetBool("AllowExportToCsv", true);
    EXPECT_TRUE(frequencyStore()->GetBool("AllowExportToCsv", false));
    EXPECT_TRUE(Read("FrequencyStore.ini").contains("AllowExportToCsv=true"));
}

TEST_F(Configuration, SectionsAreApart) {
    CfgCenter::GetAppCfg(ICfg::Shutdown).SetString("Key", "application");
    EXPECT_EQ(CfgCenter::GetAdminCfg(ICfg::Administration).GetString("Key", "none"), QString("none"));
    EXPECT_EQ(frequencyStore()->GetString("Key", "none"), QString("none"));
}

TEST_F(Configuration, AGroupFallsBackOnTheGeneralSettings) {
    frequencyStore()->SetBool("AllowExportToCsv", true);
    EXPECT_TRUE(frequencyStore("ViewMenu")->GetBool("AllowExportToCsv", false));
    frequencyStore("ViewMenu")->SetBool("AllowExportToCsv", false);
    EXPECT_FALSE(frequencyStore("ViewMenu")->GetBool("AllowExportToCsv", true));
    EXPECT_TRUE(frequencyStore()->GetBool("AllowExportToCsv", false));
}

TEST_F(Configuration, ReadsWhatAPersonWrote) {
    Write("Application.ini", "NOIFrequencies=/lists/a, b.xml\n"
                             "Rows = 12\n"
                             "[LocalTargetList]\n"
                             "Targets.xml=/srv/lists/targets.xml\n");
    const ICfg& cfg = CfgCenter::GetAppCfg(ICfg::StartUp);
    EXPECT_EQ(cfg.GetString("NOIFrequencies", ""), QString("/lists/a, b.xml"));
    EXPECT_EQ(cfg.GetInt("Rows", 0), 12);
    EXPECT_EQ(cfg.GetFilePath("LocalTargetList", "Targets.xml"), QString("/srv/lists/targets.xml"));
}

TEST_F(Configuration, SwitchesAreReadInTheirUsualSpellings) {
    for (const char* on : {"true", "1", "Yes", "ON"}) {
        Write("FrequencyStore.ini", QByteArray("AllowExportToCsv=") + on + '\n');
        EXPECT_TRUE(frequencyStore()->GetBool("AllowExportToCsv", false)) << on;
    }
    for (const char* off : {"false", "0", "no", "Off"}) {
        Write("FrequencyStore.ini", QByteArray("AllowExportToCsv=") + off + '\n');
        EXPECT_FALSE(frequencyStore()->GetBool("AllowExportToCsv", true)) << off;
    }
    Write("FrequencyStore.ini", "AllowExportToCsv=perhaps\nRows=many\n");
    EXPECT_TRUE(frequencyStore()->GetBool("AllowExportToCsv", true));
    EXPECT_FALSE(frequencyStore()->GetBool("AllowExportToCsv", false));
    EXPECT_EQ(frequencyStore()->GetInt("Rows", 7), 7);
}

TEST_F(Configuration, ABrokenFileGivesDefaultsAndATrace) {
    Traces traces;
    Write("FrequencyStore.ini", "AllowExportToCsv=true\n\x01\xff nothing that is a setting\n]][[\n");
    EXPECT_FALSE(frequencyStore()->GetBool("AllowExportToCsv", false));
    ASSERT_EQ(traces.texts.size(), 1);
    EXPECT_TRUE(traces.texts[0].startsWith(Path("FrequencyStore.ini"))) << qPrintable(traces.texts[0]);
}

TEST_F(Configuration, ADamagedFileIsKeptAsideAndToldOnce) {
    const QByteArray damaged[] = {"Rows=7\n]][[ no setting\n",
                                  QByteArray("Rows=7\n") + QByteArray(2 << 20, 'x'),
                                  "Rows=@Variant(\\0\\0\\0\\x9\\xff\\xff\\xff\\xff)\n"};
    Write("FrequencyStore.ini.bad", "one that was kept before");
    for (const QByteArray& bytes : damaged) {
        Traces traces;
        Write("FrequencyStore.ini", bytes);
        EXPECT_EQ(frequencyStore()->GetInt("Rows", 3), 3);
        EXPECT_EQ(frequencyStore()->GetInt("Rows", 3), 3);
        EXPECT_EQ(traces.problems.size(), 1);
        EXPECT_TRUE(traces.problems.value(0).startsWith(Path("FrequencyStore.ini")));
        EXPECT_EQ(Read("FrequencyStore.ini.bad"), bytes);
        EXPECT_FALSE(QFile::exists(Path("FrequencyStore.ini")));
    }
    Write("FrequencyStore.ini", damaged[0]);
    Traces traces;
    frequencyStore()->SetString("Rows", "9");
    EXPECT_EQ(frequencyStore()->GetInt("Rows", 3), 9) << "a setting is written although the file was damaged";
    EXPECT_EQ(Read("FrequencyStore.ini.bad"), damaged[0]);
    EXPECT_EQ(traces.problems.size(), 1);

    // Where it cannot be kept, it stays.
    QFile::remove(Path("FrequencyStore.ini.bad"));
    ASSERT_TRUE(QDir(m_folder.path()).mkpath("FrequencyStore.ini.bad/full"));
    Write("FrequencyStore.ini", damaged[0]);
    frequencyStore()->SetString("Rows", "9");
    EXPECT_EQ(frequencyStore()->GetInt("Rows", 3), 3);
    EXPECT_EQ(Read("FrequencyStore.ini"), damaged[0]);
}

TEST_F(Configuration, WhatIsNoOrdinaryFileIsToldAndNeverOpened) {
    Traces traces;
    ASSERT_EQ(mkfifo(qPrintable(Path("Application.ini")), 0600), 0);
    ASSERT_TRUE(QDir(m_folder.path()).mkpath("Administration.ini"));
    ICfg& application = CfgCenter::GetAppCfg(ICfg::StartUp);
    ICfg& administration = CfgCenter::GetAdminCfg(ICfg::Administration);
    for (ICfg* cfg : {&application, &administration}) {
        const auto before = traces.problems.size();
        EXPECT_EQ(cfg->GetString("Key", "none"), QString("none"));
        EXPECT_EQ(cfg->GetString("Key", "none"), QString("none"));
        EXPECT_EQ(traces.problems.size(), before + 1);
        EXPECT_TRUE(traces.problems.last().contains("no ordinary file"));
        cfg->SetString("Key", "text");
        EXPECT_EQ(traces.problems.size(), before + 2);
        EXPECT_TRUE(traces.problems.last().contains("cannot be written"));
    }
    // Beside a lock that is nobody's and cannot be read, settings are read and written.
    ASSERT_EQ(mkfifo(qPrintable(Path("FrequencyStore.ini.lock")), 0600), 0);
    frequencyStore()->SetString("Key", "text");
    EXPECT_EQ(frequencyStore()->GetString("Key", "none"), QString("text"));
}

TEST_F(Configuration, ReadsWhatItCanWhateverByteChanges) {
    constexpr unsigned Seed = 21;
    const QByteArray sound =
        "AllowExportToCsv=true\nRows=12\n\n[LocalTargetList]\nTargets.xml=\"/srv/a, b.xml\"\n";
    std::mt19937 random(Seed);
    for (qsizetype i = 0; i < 2 * sound.size(); ++i) {
        Traces traces;
        QByteArray bytes = sound;
        bytes[i / 2] = static_cast<char>(random());
        SCOPED_TRACE("seed " + std::to_string(Seed) + ", change " + std::to_string(i));
        Write("FrequencyStore.ini", bytes);
        frequencyStore()->GetBool("AllowExportToCsv", false);
        frequencyStore()->GetInt("Rows", 3);
        const QString file = frequencyStore()->GetFilePath("LocalTargetList", "Targets.xml");
        EXPECT_LE(file.size(), bytes.size());
        const bool kept = !QFile::exists(Path("FrequencyStore.ini"));
        EXPECT_EQ(traces.problems.size(), kept ? 1 : 0);
        if (i % 8 != 0)
            continue; // a write waits for the disk
        frequencyStore()->SetString("Rows", "5");
        EXPECT_EQ(frequencyStore()->GetInt("Rows", 3), 5);
    }
}

TEST_F(Configuration, AFailedWriteIsToldAndTheOldFileStands) {
    frequencyStore()->SetString("Key", "before");
    const QByteArray before = Read("FrequencyStore.ini");
    Traces traces;
    {
        const FullDisk full(8);
        frequencyStore()->SetString("Key", QString(100, 'x'));
    }
    EXPECT_EQ(traces.problems.size(), 1);
    EXPECT_EQ(Read("FrequencyStore.ini"), before);
    EXPECT_EQ(frequencyStore()->GetString("Key", "none"), QString("before"));
}

TEST_F(Configuration, WhatCannotBeWrittenIsTraced) {
    Traces traces;
    Write("file", "");
    CfgCenter::SetDirectory(Path("file")); // no directory: nothing can lie in it
    frequencyStore()->SetBool("AllowExportToCsv", true);
    EXPECT_FALSE(traces.texts.isEmpty());
}

TEST_F(Configuration, FollowsItsDirectory) {
    ICfg& application = CfgCenter::GetAppCfg(ICfg::StartUp);
    application.SetString("Key", "here");
    QTemporaryDir other;
    CfgCenter::SetDirectory(other.path());
    EXPECT_EQ(application.GetString("Key", "none"), QString("none"));
    CfgCenter::SetDirectory(m_folder.path());
    EXPECT_EQ(application.GetString("Key", "none"), QString("here"));
    EXPECT_EQ(&application, &CfgCenter::GetAppCfg(ICfg::Shutdown));

    CfgCenter::SetDirectory(QString());
    EXPECT_EQ(CfgCenter::GetDirectory(), QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
}

} // namespace
