#pragma once

#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "host/valuetree/tree.h"
#include "tests/support/testfolder.h"
#include "tests/support/waiting.h"
#include "workstation/application.h"
#include "workstation/mainwindow.h"
#include "workstation/messagespanel.h"

#include <QStatusBar>

#include <gtest/gtest.h>

inline QString sample(const char* name) {
    return QStringLiteral(SAMPLES_DIR "/") + QString::fromLatin1(name);
}

/// A workstation with directories of its own. On a platform without a display nobody is asked.
class Workstations : public testing::Test, protected TestFolder {
protected:
    Options options(const QStringList& arguments) {
        QString error;
        const Options parsed = Options::Parse(
            QStringList{"freqstore", "--data", Path("data"), "--config", Path("config")} + arguments, error);
        EXPECT_EQ(error, QString());
        return parsed;
    }
    void start(const QStringList& arguments) {
        station.reset();
        station = std::make_unique<Workstation>(options(arguments));
        station->GetWindow().show();
    }
    QString status() const { return station->GetWindow().statusBar()->currentMessage(); }
    QString title() const { return station->GetWindow().windowTitle(); }
    /// The texts of the messages panel.
    QString messages() const {
        QStringList texts;
        for (int row = 0; row < station->GetWindow().GetMessages()->count(); ++row)
            texts << station->GetWindow().GetMessages()->item(row)->toolTip();
        return texts.join('\n');
    }
    int entriesOf(const char* node) const {
        const Node* list = Tree::Instance()->GetNode(QString::fromLatin1(node));
        return list ? static_cast<int>(list->ChildCount()) : -1;
    }
    /// A file of frequencies of interest in the data directory.
    QString writeBands(const QString& name, int count) {
        QByteArray text = "<FrequencyStoreList Version=\"1\" Usage=\"NOI\">";
        for (int i = 0; i < count; ++i)
            text += "<FrequencyStoreEntry><FFM_Settings><Frequency>7055000</Frequency></FFM_Settings>"
                    "</FrequencyStoreEntry>";
        QDir(m_folder.path()).mkpath("data");
        return Write("data/" + name, text + "</FrequencyStoreList>");
    }
    void TearDown() override {
        station.reset();
        QDir::setCurrent(QDir::rootPath());
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    std::unique_ptr<Workstation> station;
};
