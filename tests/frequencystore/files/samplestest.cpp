#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/valuetree/node.h"
#include "host/valuetree/tree.h"
#include "tests/support/traces.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QByteArray content(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

QString sample(const char* name) {
    return QStringLiteral(SAMPLES_DIR "/") + QLatin1String(name);
}

/// A target list of its own in the tree.
class Samples : public testing::Test {
protected:
    Samples() : m_node(Tree::Instance()->MakeNode("/Test/Samples")), m_list(m_node) {}
    ~Samples() override { m_node->DeleteChildren(); }

    /// Reads a sample and writes the list under the name; gives what was written.
    QByteArray rewritten(const char* from, const char* to) {
        const Traces traces(0);
        EXPECT_TRUE(m_list.ParseSFLFile(sample(from)));
        EXPECT_EQ(traces.problems, QStringList());
        m_list.SaveFile(m_directory.filePath(QLatin1String(to)));
        return content(m_directory.filePath(QLatin1String(to)));
    }

    QTemporaryDir m_directory;
    Node* m_node;
    TargetListParser m_list;
};

TEST_F(Samples, AreWrittenAsTheyWereRead) {
    for (const char* name : {"targets.ltl", "targets.xml", "targets.csv"}) {
        EXPECT_TRUE(rewritten(name, name) == content(sample(name))) << name;
        EXPECT_GT(m_node->ChildCount(), 300u);
    }
}

TEST_F(Samples, OfResultsAreWrittenAsTheyWereRead) {
    Node* results = Tree::Instance()->MakeNode("/Test/Results");
    SearchMCDataHandler::Instance()->Init(results);
    HalvoNodeMediatorCtrl& list = *SearchMCDataHandler::Instance()->GetMediatorCtrl();
    EXPECT_TRUE(SearchMCDataReader(list).ReadFile(sample("results.xml")));
    EXPECT_GT(results->ChildCount(), 50u);
    EXPECT_TRUE(list.SaveFrequencies(m_directory.filePath("out.xml")));
    EXPECT_TRUE(content(m_directory.filePath("out.xml")) == content(sample("results.xml")));
    SearchMCDataHandler::DeleteInstance();
    results->DeleteChildren();
}

TEST_F(Samples, HoldTheSameTargetsInEveryFormat) {
    const QByteArray expected = content(sample("targets.ltl"));
    for (const char* name : {"targets-utf8.ltl", "targets.xml", "targets.csv"})
        EXPECT_TRUE(rewritten(name, "out.ltl") == expected) << name;
}

TEST_F(Samples, OfTheOtherLineFormatKeepCommentAndBandwidthApart) {
    rewritten("airband.sfl", "out.ltl");
    double frequency = 0;
    double bandwidth = 0;
    int priority = 0;
    QString comment;
    QString threatClass;
    QString demodulation;
    bool found = false;
    m_list.ResetDataCollect();
    while (m_list.GetNextData(frequency, bandwidth, priority, comment, threatClass, demodulation)) {
        EXPECT_GT(bandwidth, 0) << qPrintable(comment);
        found = found || (frequency == 121.5e6 && comment.startsWith("Luftnotfrequenz"));
    }
    EXPECT_TRUE(found);
}

TEST(SampleTables, MakeTheFilesThatLieBesideThem) {
    const QTemporaryDir directory;
    ASSERT_EQ(QProcess::execute("python3", {sample("make_samples.py"), directory.path()}), 0);
    const QStringList names = QDir(directory.path()).entryList(QDir::Files);
    EXPECT_GE(names.size(), 10);
    for (const QString& name : names)
        EXPECT_TRUE(content(directory.filePath(name)) == content(sample(qPrintable(name))))
            << qPrintable(name);
}

} // namespace
