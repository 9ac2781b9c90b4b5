#include "controls/frequencystore/targets/targetlisthandler.h"
#include "tests/frequencystore/targets/targetfixture.h"
#include "tests/support/dialogs.h"
#include "tests/support/waiting.h"

#include <QSignalSpy>
#include <QTest>

namespace {

/// Another instance of the application: sees the two published values and sets them.
struct OtherInstance : IObserver {
    void Update(Observable* subject, TChangeCode code) override {
        if (code == TChangeCode::Announcement)
            ++announcements;
        else if (code == TChangeCode::ValueChanged && subject == name)
            seenName = name->GetValue();
    }
    Value<bool>* loaded = nullptr;
    Value<QString>* name = nullptr;
    int announcements = 0;
    QString seenName;
};

class TargetHandlerTest : public TargetFixture {
protected:
    void SetUp() override { m_list = Tree::Instance()->MakeNode(Q("/Lists/LocalTargetList")); }
    void TearDown() override {
        TargetListHandler::DeleteInstance();
        TargetFixture::TearDown();
    }
    TargetListHandler& Start(bool client, bool loadDefault = false) {
        TargetListHandler* handler = TargetListHandler::Instance();
        handler->SetClientServer(client);
        handler->Init(m_list, loadDefault);
        m_other.loaded =
            dynamic_cast<Value<bool>*>(Tree::Instance()->GetValue(Q("/Lists/LocalTargetList_FileLoaded")));
        m_other.name =
            dynamic_cast<Value<QString>*>(Tree::Instance()->GetValue(Q("/Lists/LocalTargetList_FileName")));
        EXPECT_TRUE(m_other.loaded && m_other.name);
        m_other.loaded->AddObserver(&m_other);
        m_other.name->AddObserver(&m_other);
        return *handler;
    }
    QString TwoTargets(const char* name) {
        return Write(Q(name), "7055000\t3000\tone\n8000000\t2000\ttwo\n");
    }
    QString ProfileTable() {
        QFile::copy(QStringLiteral(SAMPLES_DIR "/profiles.xml"), Path(Q("profiles.xml")));
        return Path(Q("profiles.xml"));
    }

    OtherInstance m_other;
};

TEST_F(TargetHandlerTest, AServerReadsThePublishedFileAndAnnouncesIt) {
    TargetListHandler& server = Start(false);
    QSignalSpy announced(&server, &TargetListHandler::signalNewFileLoaded);
    const QString path = TwoTargets("shared.ltl");
    m_other.name->SetValue(path, &m_other);
    EXPECT_EQ(m_list->ChildCount(), 2u);
    EXPECT_EQ(server.GetCurrentFileName(), path);
    EXPECT_FALSE(m_other.loaded->GetValue()) << "views may follow first";
    EXPECT_TRUE(announced.wait(Patience));
    EXPECT_TRUE(m_other.loaded->GetValue());
    EXPECT_EQ(m_other.announcements, 1);
    EXPECT_EQ(announced.size(), 1) << "its own announcement does not come back to it";

    // Two reads before the announcement are one announcement.
    m_other.name->SetValue(ProfileTable(), &m_other);
    EXPECT_GT(m_list->ChildCount(), 2u);
    m_other.name->SetValue(path, &m_other);
    EXPECT_EQ(m_list->ChildCount(), 2u);
    EXPECT_TRUE(announced.wait(Patience));
    EXPECT_EQ(announced.size(), 2);
    EXPECT_EQ(m_other.announcements, 2);
}

TEST_F(TargetHandlerTest, AClientAnnouncesANewListAndReadsNoFile) {
    const QString path = TwoTargets("shared.ltl");
    TargetListHandler& client = Start(true);
    QSignalSpy announced(&client, &TargetListHandler::signalNewFileLoaded);
    m_other.name->SetValue(path, &m_other);
    EXPECT_EQ(client.GetCurrentFileName(), path);
    // The server fills the shared list, then says so.
    AnswerDialog(path);
    EXPECT_EQ(client.ReadTargetList(), path);
    EXPECT_EQ(m_list->ChildCount(), 0u);
    EXPECT_FALSE(m_other.loaded->GetValue());
    EXPECT_EQ(announced.size(), 0);
    m_other.loaded->SetValue(true, &m_other);
    EXPECT_EQ(announced.size(), 0);
    m_other.loaded->NotifyObservers(TChangeCode::Announcement, &m_other);
    EXPECT_EQ(announced.size(), 1);
    EXPECT_FALSE(client.ReadFile(path));
    EXPECT_EQ(m_list->ChildCount(), 0u);
}

TEST_F(TargetHandlerTest, TheDefaultListIsReadByAServerThatHasNone) {
    const QString path = Q("Targets.xml");
    struct {
        const char* content;
        bool client, loaded;
        size_t targets;
    } const rows[] = {
        {"<FrequencyStoreList><FrequencyStoreEntry/><FrequencyStoreEntry/></FrequencyStoreList>", false,
         false, 2},
        {"<FrequencyStoreList><FrequencyStoreEntry/></FrequencyStoreList>", true, false, 0},
        {"<FrequencyStoreList><FrequencyStoreEntry/></FrequencyStoreList>", false, true, 0},
        {"<FrequencyStoreList><Freq", false, false, 0},
    };
    for (const auto& row : rows) {
        Write(path, row.content);
        TargetListHandler::DeleteInstance();
        m_list->DeleteChildren();
        GetOrCreateValue<Value<bool>>(Q("/Lists/LocalTargetList_FileLoaded"))->SetValue(row.loaded);
        TargetListHandler& handler = Start(row.client, true);
        EXPECT_EQ(m_list->ChildCount(), row.targets) << row.content;
        EXPECT_EQ(m_other.name->GetValue(), path);
        // Whatever the file was, the list works on.
        handler.GetParser()->FillInData(1, 2, Q("c"), Q("USB"), 1, Q("x"), QString(), QString(), QString(),
                                        QString());
        handler.GetParser()->GetMediatorCtrl()->ForceUpdateNow();
        EXPECT_EQ(handler.GetParser()->GetMediatorCtrl()->size(), row.targets + 1);
    }
}

TEST_F(TargetHandlerTest, AProfileTableIsNeverOverwritten) {
    TargetListHandler& handler = Start(false);
    const QString table = ProfileTable();
    const QByteArray before = Read(Q("profiles.xml"));
    AnswerDialog(table);
    EXPECT_EQ(handler.ReadTargetList(), table);
    EXPECT_EQ(m_other.seenName, table);
    const size_t count = m_list->ChildCount();
    ASSERT_GT(count, 0u);
    EXPECT_EQ(handler.Save2File(true), Q("Targets.xml"));
    EXPECT_EQ(Read(Q("profiles.xml")), before);
    EXPECT_TRUE(handler.ReadFile(Path(Q("Targets.xml"))));
    EXPECT_EQ(m_list->ChildCount(), count);
    EXPECT_EQ(handler.Save2File(true), Q("Targets.xml")) << "and is the current file from now on";
}

TEST_F(TargetHandlerTest, DialogsChooseAndCancel) {
    TargetListHandler& handler = Start(false);
    const QString path = TwoTargets("list.ltl");
    AnswerDialog(path);
    EXPECT_EQ(handler.ReadTargetList(), path);
    struct {
        QString (*run)(TargetListHandler&);
        const char* answer;
        const char* written;
    } const rows[] = {
        {[](TargetListHandler& h) { return h.Save2File(false); }, "plain", "plain.xml"},
        {[](TargetListHandler& h) { return h.Save2File(false); }, "named.xml", "named.xml"},
        {[](TargetListHandler& h) { return h.Export2File(); }, "table", "table.csv"},
        {[](TargetListHandler& h) { return h.Export2File(); }, "table.csv", "table.csv"},
        {[](TargetListHandler& h) { return h.Save2File(false); }, "", ""},
        {[](TargetListHandler& h) { return h.Export2File(); }, "", ""},
        {[](TargetListHandler& h) { return h.Save2File(false); }, "no/folder/x", ""},
    };
    for (const auto& row : rows) {
        AnswerDialog(*row.answer ? Path(Q(row.answer)) : QString());
        const QString written = row.run(handler);
        EXPECT_EQ(written, *row.written ? Path(Q(row.written)) : QString()) << row.answer;
        EXPECT_TRUE(written.isEmpty() || Read(Q(row.written)).size() > 50) << row.answer;
    }
    EXPECT_EQ(m_list->ChildCount(), 2u);
    AnswerDialog(Path(Q("table.csv")));
    EXPECT_EQ(handler.ImportTargetList(), Path(Q("table.csv")));
    EXPECT_EQ(m_list->ChildCount(), 2u);
    EXPECT_EQ(m_other.seenName, Path(Q("table.csv")));
    AnswerDialog(QString());
    EXPECT_TRUE(handler.ImportTargetList().isEmpty());
    EXPECT_EQ(handler.GetCurrentFileName(), Path(Q("table.csv"))) << "a cancelled import changes nothing";
    AnswerDialog(QString());
    EXPECT_TRUE(handler.ReadTargetList().isEmpty());
    EXPECT_TRUE(m_other.seenName.isEmpty()) << "a cancelled read leaves no current file";
    EXPECT_EQ(m_list->ChildCount(), 2u);
    EXPECT_TRUE(handler.Save2File(true).isEmpty());
}

TEST_F(TargetHandlerTest, HandlerValuesAndListEndInAnyOrder) {
    std::array order{0, 1, 2};
    do {
        m_list = Tree::Instance()->MakeNode(Q("/Lists/LocalTargetList"));
        TargetListHandler& handler = Start(false);
        handler.AddToFreqStore();
        ASSERT_TRUE(handler.ReadFile(TwoTargets("list.ltl")));
        const std::function<void()> steps[] = {
            [] {
                Tree::Instance()->GetNode(Q("/Lists"))->DeleteValue(Q("LocalTargetList_FileLoaded"));
                Tree::Instance()->GetNode(Q("/Lists"))->DeleteValue(Q("LocalTargetList_FileName"));
            },
            [this] { Tree::Instance()->GetNode(Q("/Lists"))->DeleteNode(m_list); },
            TargetListHandler::DeleteInstance};
        QSignalSpy announced(&handler, &TargetListHandler::signalNewFileLoaded);
        const QPointer<TargetListHandler> alive(&handler);
        for (int i = 0; i < 3; ++i) {
            if (i == order.back() && alive) // the announcement comes at first, or when something has ended
                announced.wait();
            steps[order[static_cast<size_t>(i)]]();
        }
        EXPECT_EQ(Tree::Instance()->GetNode(Q("/Lists/LocalTargetList")), nullptr);
        Tree::Instance()->GetRoot()->DeleteChildren();
    } while (std::next_permutation(order.begin(), order.end()));
}

} // namespace
