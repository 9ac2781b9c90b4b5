#include "host/startup/cfgcenter.h"

#include "tests/support/traces.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class Configuration : public testing::Test {
protected:
    Configuration() { CfgCenter::SetDirectory(m_directory.path()); }
    ~Configuration() override { CfgCenter::SetDirectory(QString()); }

    QString path(const char* name) const { return m_directory.filePath(QString::fromLatin1(name)); }
    void write(const char* name, const QByteArray& content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray read(const char* name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static std::unique_ptr<ICfg> frequencyStore(const QString& part = QString()) {
        return std::unique_ptr<ICfg>(CfgCenter::CreateCfg("FrequencyStore", ICfg::PlugIn, part));
    }

    QTemporaryDir m_directory;
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
    EXPECT_TRUE(read("FrequencyStore.ini").contains("AllowExportToCsv=true"));
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
    write("Application.ini", "NOIFrequencies=/lists/a, b.xml\n"
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
        write("FrequencyStore.ini", QByteArray("AllowExportToCsv=") + on + '\n');
        EXPECT_TRUE(frequencyStore()->GetBool("AllowExportToCsv", false)) << on;
    }
    for (const char* off : {"false", "0", "no", "Off"}) {
        write("FrequencyStore.ini", QByteArray("AllowExportToCsv=") + off + '\n');
        EXPECT_FALSE(frequencyStore()->GetBool("AllowExportToCsv", true)) << off;
    }
    write("FrequencyStore.ini", "AllowExportToCsv=perhaps\nRows=many\n");
    EXPECT_TRUE(frequencyStore()->GetBool("AllowExportToCsv", true));
    EXPECT_FALSE(frequencyStore()->GetBool("AllowExportToCsv", false));
    EXPECT_EQ(frequencyStore()->GetInt("Rows", 7), 7);
}

TEST_F(Configuration, ABrokenFileGivesDefaultsAndATrace) {
    Traces traces;
    write("FrequencyStore.ini", "AllowExportToCsv=true\n\x01\xff nothing that is a setting\n]][[\n");
    EXPECT_FALSE(frequencyStore()->GetBool("AllowExportToCsv", false));
    ASSERT_EQ(traces.texts.size(), 1);
    EXPECT_TRUE(traces.texts[0].startsWith(path("FrequencyStore.ini"))) << qPrintable(traces.texts[0]);
}

TEST_F(Configuration, WhatCannotBeWrittenIsTraced) {
    Traces traces;
    write("file", "");
    CfgCenter::SetDirectory(path("file")); // no directory: nothing can lie in it
    frequencyStore()->SetBool("AllowExportToCsv", true);
    EXPECT_FALSE(traces.texts.isEmpty());
}

TEST_F(Configuration, FollowsItsDirectory) {
    ICfg& application = CfgCenter::GetAppCfg(ICfg::StartUp);
    application.SetString("Key", "here");
    QTemporaryDir other;
    CfgCenter::SetDirectory(other.path());
    EXPECT_EQ(application.GetString("Key", "none"), QString("none"));
    CfgCenter::SetDirectory(m_directory.path());
    EXPECT_EQ(application.GetString("Key", "none"), QString("here"));
    EXPECT_EQ(&application, &CfgCenter::GetAppCfg(ICfg::Shutdown));

    CfgCenter::SetDirectory(QString());
    EXPECT_EQ(CfgCenter::GetDirectory(), QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
}

} // namespace
