#include "host/gui/listsettings.h"
#include "host/valuetree/operatoraction.h"
#include "tests/link/realbroker.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/sharefixture.h"
#include "workstation/fileopener.h"
#include "workstation/foreignimport.h"
#include "workstation/importlists.h"
#include "workstation/safekeeping.h"
#include "workstation/sharesitepanel.h"

#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace {

constexpr char Targets[] = "Local TargetList";

TEST_F(Shares, AClientHasTheSitesTargetsInPlaceOfItsOwnAndInNoFile) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    show(Targets);
    const QString own = window().FileOf(idOf(Targets));
    ASSERT_FALSE(own.isEmpty());
    OtherSeat server(broker, "target");
    server.Serve(3);
    share(Role::Client);
    EXPECT_FALSE(comments().isEmpty()) << "its own stay until the site's are here";
    EXPECT_FALSE(action(A::Paste)->isEnabled());
    EXPECT_TRUE(action(A::Paste)->toolTip().contains("those of a site"));
    ASSERT_TRUE(isReady());
    EXPECT_EQ(comments(), server.Comments());
    EXPECT_EQ(window().FileOf(idOf(Targets)), QString());
    EXPECT_FALSE(tabText().endsWith('*')) << "what the site has is not this seat's to save";
    EXPECT_TRUE(shareStatus().startsWith("north: client, 2 seat")) << shareStatus().toStdString();
    EXPECT_FALSE(UndoHistory::Instance().Stack().canUndo());

    OtherSeat::Comment(*server.At(0)).SetValue(Q("theirs"));
    {
        const OperatorAction edit(Q("Edit"));
        OtherSeat::Comment(*targets().Children()[1]).SetValue(Q("mine"));
    }
    ASSERT_TRUE(Until([&] {
        return server.Comments() == QStringList{"theirs", "mine", "entry 2"} &&
               comments() == server.Comments();
    }));
    UndoHistory::Instance().Stack().undo();
    ASSERT_TRUE(Until([&] {
        return server.Comments() == QStringList{"theirs", "entry 1", "entry 2"};
    })) << "an undone step is asked for; what others did is no step";
    EXPECT_FALSE(UndoHistory::Instance().Stack().canUndo());
    EXPECT_FALSE(tabText().endsWith('*'));
    EXPECT_FALSE(station->GetOpener().Open(sample("targets.ltl"))) << "the server alone reads files";
    EXPECT_EQ(comments(), server.Comments());

    sharing().Disconnect();
    EXPECT_EQ(comments(), server.Comments()) << "nothing that was shown is lost";
    EXPECT_TRUE(window().GetTabs()->tabText(0).endsWith('*')) << "it is in no file";
    EXPECT_TRUE(action(A::Open)->isEnabled());
    EXPECT_TRUE(station->GetOpener().Open(sample("targets.ltl")));
}

TEST_F(Shares, AConnectionThatNeverStandsLeavesTheOwnListInItsFile) {
    open({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    show(Targets);
    const QString own = window().FileOf(idOf(Targets));
    const QStringList before = comments();
    ASSERT_FALSE(own.isEmpty());
    broker.Stop();
    share(Role::Client);
    EXPECT_TRUE(shareStatus().contains("connecting"));
    sharing().Disconnect();
    EXPECT_EQ(comments(), before);
    EXPECT_EQ(window().FileOf(idOf(Targets)), own);
    EXPECT_FALSE(tabText().endsWith('*'));
    EXPECT_TRUE(window().findChild<QToolButton*>(Q("Sharing"))->isHidden());
}

TEST_F(Shares, AClientThatWasToConnectReadsNoFileAndAsksForOneByItsName) {
    const QString own = Write("mine.ltl", Read(sample("targets.ltl")));
    start({own});
    ASSERT_TRUE(station->LoadFiles()); // it is remembered
    station.reset();
    Tree::Instance()->GetRoot()->DeleteChildren();
    ListSettings::SetDirectory(Path("config"));
    ShareProfile::SetAtStart({.url = Q("mqtt://localhost/north"), .role = Role::Client});
    open({});
    EXPECT_TRUE(station->LoadFiles()) << messages().toStdString();
    EXPECT_EQ(entriesOf("/Lists/LocalTargetList"), 0);
    OtherSeat server(broker, "target");
    server.Serve(1, m_folder.path());
    sharing().SetBusMaker([this](const auto&) { return std::make_unique<LocalBus>(broker, Q("anna")); });
    station->BeginSharing();
    ASSERT_TRUE(isReady());
    const auto served = [&] {
        return Tree::Instance()->GetValue(server.GetNode().GetPathName() + "_FileName")->GetStringValue();
    };
    AnswerDialog(own);
    window().BarOf(idOf(Targets))->GetAction(Bar::Read)->trigger();
    ASSERT_TRUE(Until([&] { return messages().contains("bare name"); })) << "a path of this machine";
    EXPECT_EQ(served(), QString());
    sharing().AskForFile(Q("mine.ltl"));
    ASSERT_TRUE(Until([&] { return served() == Path("mine.ltl"); }));
    EXPECT_EQ(comments(), server.Comments());
}

TEST_F(Shares, TargetsThatAreNotSavedAreNotReplacedUnasked) {
    open({"--share", "mqtt://localhost/north"});
    sharing().SetBusMaker([this](const auto&) { return std::make_unique<LocalBus>(broker, Q("anna")); });
    show(Targets);
    action(A::New)->trigger();
    ASSERT_TRUE(Until([&] { return tabText().endsWith('*'); }));
    station->BeginSharing();
    EXPECT_FALSE(sharing().IsOn());
    EXPECT_TRUE(messages().contains("not saved")) << messages().toStdString();
    QString asked;
    station->SetAttended(true);
    AnswerQuestion(QMessageBox::Discard, asked);
    station->BeginSharing();
    EXPECT_TRUE(sharing().IsOn());
    station->SetAttended(false);
}

TEST_F(Shares, AServerTakesWhatClientsAskForAndKeepsItBesideItsFile) {
    open({Write("mine.ltl", Read(sample("targets.ltl")))});
    ASSERT_TRUE(station->LoadFiles());
    show(Targets);
    share(Role::Server, {"noi"});
    OtherSeat client(broker, "target", "bert");
    client.Follow();
    OtherSeat bands(broker, "noi", "carla");
    bands.Follow();
    ASSERT_TRUE(Until(
        [&] { return client.Client().WhyNoEditing().isEmpty() && bands.Client().WhyNoEditing().isEmpty(); }));
    EXPECT_EQ(client.Comments(), comments());
    EXPECT_TRUE(shareStatus().startsWith("north: server, 3 seat")) << shareStatus().toStdString();
    EXPECT_FALSE(tabText().endsWith('*'));
    OtherSeat::Comment(*client.At(0)).SetValue(Q("from a client"));
    bands.Add(9e6, Q("a band"));
    const Node& noi = *Tree::Instance()->GetNode(Paths::Noi);
    ASSERT_TRUE(Until([&] { return comments().first() == "from a client" && noi.ChildCount() == 1; }));
    EXPECT_TRUE(Until([&] { return tabText().endsWith('*'); })) << "it is not in the list's file yet";
    EXPECT_TRUE(QFile::exists(Path("mine.ltl.share")));
    EXPECT_TRUE(Until([] {
        return Tree::Instance()->GetValue(Paths::NoiDefinition)->GetStringValue().startsWith("9000000");
    })) << "what is made of the list follows";

    // Another file, asked for by a client: its entries are another journal's.
    const QStringList before = comments();
    Write("data/other.ltl", Read(sample("targets.ltl")).left(400) + '\n');
    Tree::Instance()
        ->GetValue(client.GetNode().GetPathName() + "_FileName")
        ->SetStringValue(Q("other.ltl"), nullptr);
    ASSERT_TRUE(Until([&] {
        return QFile::exists(Path("data/other.ltl.share")) && comments() != before && isReady() &&
               client.Comments() == comments();
    }));
    EXPECT_EQ(window().FileOf(idOf(Targets)), Path("data/other.ltl"));
    UndoHistory::Instance().Stack().undo();
    EXPECT_EQ(comments(), before) << "what was not saved can be had back";
}

TEST_F(Shares, WhatAServerAcceptedOutlivesItsCrash) {
    open({Write("mine.ltl", Read(sample("targets.ltl")))});
    ASSERT_TRUE(station->LoadFiles());
    share(Role::Server);
    OtherSeat client(broker, "target", "bert");
    client.Follow();
    ASSERT_TRUE(Until([&] { return client.Client().WhyNoEditing().isEmpty(); }));
    OtherSeat::Comment(*client.At(0)).SetValue(Q("accepted"));
    ASSERT_TRUE(Until([&] { return client.Client().Pending() == 0 && comments().first() == "accepted"; }));
    // What a crash would leave now.
    Write("crashed.ltl", Read("mine.ltl"));
    Write("crashed.ltl.share", Read("mine.ltl.share"));
    ASSERT_TRUE(station->GetOpener().Open(Path("crashed.ltl")));
    EXPECT_NE(comments().first(), "accepted");
    EXPECT_TRUE(Until([&] { return comments().first() == "accepted"; }));
    ASSERT_TRUE(station->GetOpener().Open(Path("mine.ltl")));
    QTest::qWait(0);
    ASSERT_TRUE(isReady());
    EXPECT_NE(comments().first(), "accepted") << "the list was left unsaved for another one";
}

TEST_F(Shares, OfAListInNoFileNothingStaysForTheNextOne) {
    open({});
    share(Role::Server);
    OtherSeat client(broker, "target", "bert");
    client.Follow();
    ASSERT_TRUE(Until([&] { return client.Client().WhyNoEditing().isEmpty(); }));
    client.Add(7e6, Q("added"));
    ASSERT_TRUE(Until([&] { return comments() == QStringList{"added"}; }));
    EXPECT_TRUE(QFile::exists(Path("data/target.share")));
    sharing().Disconnect();
    EXPECT_FALSE(QFile::exists(Path("data/target.share")));
}

TEST_F(Shares, AnotherServerOfTheSameListIsRefused) {
    OtherSeat first(broker, "target", "bert");
    first.Serve(1);
    ASSERT_TRUE(Until([&] { return first.Server().GetState() == ListServer::State::Serving; }));
    open({});
    share(Role::Server);
    ASSERT_TRUE(Until([&] { return sharing().GetState() == Sharing::State::Refused; }));
    EXPECT_TRUE(shareStatus().contains("bert serves this list already")) << shareStatus().toStdString();
}

TEST_F(Shares, ListsOfOthersAreListsOfTheirOwnThatNothingHereKeeps) {
    open({});
    OtherSeat server(broker, "noi");
    server.Serve(2);
    OtherSeat targets(broker, "target", "bert");
    targets.Serve(1);
    share(Role::Client);
    constexpr char Theirs[] = "NOI Frequencies (north)";
    ASSERT_TRUE(isReady(Theirs));
    SortListView* const list = show(Theirs);
    ASSERT_TRUE(Until([&] { return list->RowCount() == 2; }));
    const int id = idOf(Theirs);
    EXPECT_EQ(entriesOf("/Lists/NOIFrequencies"), 0) << "the local list is another one";
    EXPECT_FALSE(station->GetSafekeeping().Find(id)) << "no recovery, no question at the end";
    EXPECT_FALSE(UndoHistory::Instance().Stack().canUndo()) << "what others do is no step";

    select(list, 0);
    ASSERT_TRUE(Until([&] { return action(A::Copy)->isEnabled(); }));
    action(A::Copy)->trigger();
    action(A::Paste)->trigger();
    ASSERT_TRUE(Until([&] { return server.Comments() == QStringList{"entry 0", "entry 1", "entry 0"}; }));
    EXPECT_FALSE(tabText().endsWith('*'));
    select(list, 1);
    ASSERT_TRUE(Until([&] { return action(A::Delete)->isEnabled(); }));
    action(A::Delete)->trigger();
    ASSERT_TRUE(Until([&] { return server.Comments() == QStringList{"entry 0", "entry 0"}; }));
    action(A::Undo)->trigger();
    ASSERT_TRUE(Until([&] { return server.Comments() == QStringList{"entry 0", "entry 1", "entry 0"}; }));
    action(A::New)->trigger();
    ASSERT_TRUE(Until([&] { return server.Comments().size() == 4 && list->RowCount() == 4; }));
    EXPECT_EQ(messages(), QString());

    sharing().Disconnect();
    EXPECT_EQ(idOf(Theirs), 0);
    EXPECT_EQ(Tree::Instance()->GetNode(Q("/Shared/north/noi")), nullptr);
}

/// A kind of list, the tab that it has at a client, and the receiver that has channels of that kind.
struct Kind {
    const char* kind;
    const char* tab;
    const char* receiver;
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.kind;
}

class SharedKinds : public Shares, public testing::WithParamInterface<Kind> {};

TEST_P(SharedKinds, TakeEntriesOfThisSeatAndOfOthers) {
    open({"--receiver", GetParam().receiver});
    OtherSeat server(broker, GetParam().kind);
    server.Serve(1);
    share(Role::Server); // which has the other lists of the site, too
    ASSERT_TRUE(isReady(GetParam().tab));
    SortListView* const list = show(GetParam().tab);
    action(A::New)->trigger();
    ASSERT_TRUE(Until([&] { return server.Comments().size() == 2 && list->RowCount() == 2; }));
    OtherSeat::Comment(*server.At(1)).SetValue(Q("named there"));
    select(list, 0);
    ASSERT_TRUE(Until([&] { return action(A::Duplicate)->isEnabled(); }));
    action(A::Duplicate)->trigger();
    action(A::Copy)->trigger();
    action(A::Paste)->trigger();
    EXPECT_TRUE(Until([&] { return server.Comments().size() == 4 && list->RowCount() == 4; }));
    EXPECT_EQ(server.Comments().mid(0, 3), (QStringList{"entry 0", "named there", "entry 0"}));
    EXPECT_EQ(messages(), QString());
    EXPECT_EQ(refused(), nullptr) << "nothing is refused";
}

INSTANTIATE_TEST_SUITE_P(All, SharedKinds,
                         testing::Values(Kind{"noi", "NOI Frequencies (north)", "hf"},
                                         Kind{"memory-hf", "Memory Channels HF (north)", "hf"},
                                         Kind{"memory-vuhf", "Memory Channels V/UHF (north)", "hf"},
                                         Kind{"memory-hf", "Memory Channels HF (north)", "vuhf"}));

TEST_F(Shares, WhatIsOldSaysSoAndComesRightByItself) {
    open({});
    auto server = std::make_unique<OtherSeat>(broker, "target");
    server->Serve(3);
    share(Role::Client);
    ASSERT_TRUE(isReady());
    show(Targets);
    broker.Stop();
    EXPECT_EQ(sharing().GetState(), Sharing::State::Old);
    EXPECT_TRUE(shareStatus().contains("old since ")) << shareStatus().toStdString();
    EXPECT_EQ(comments().size(), 3);
    EXPECT_FALSE(action(A::Paste)->isEnabled());
    {
        const OperatorAction edit(Q("Edit"));
        OtherSeat::Comment(*targets().Children()[0]).SetValue(Q("lost?"));
    }
    ASSERT_TRUE(Until([&] { return comments().first() == "entry 0"; })) << "it is put back";
    ASSERT_TRUE(refused() && refused()->isVisible()) << "and told, beside what was wanted";
    auto* again = refused()->findChild<QPushButton*>(Q("TryAgain"));
    EXPECT_FALSE(again->isEnabled());
    broker.Start();
    ASSERT_TRUE(isReady());
    ASSERT_TRUE(again->isEnabled());
    again->click();
    ASSERT_TRUE(Until([&] { return server->Comments().first() == "lost?"; }));

    server->StopServing();
    server.reset();
    ASSERT_TRUE(Until([&] { return shareStatus().contains("the server has gone"); }));
    EXPECT_EQ(comments().size(), 3);
}

TEST_F(Shares, AnOutOfDateEditShowsBothStatesAndMayBeTriedAgain) {
    open({});
    OtherSeat server(broker, "target");
    server.Serve(2);
    share(Role::Client);
    ASSERT_TRUE(isReady());
    // Both change it before either hears of the other.
    OtherSeat::Comment(*targets().Children()[0]).SetValue(Q("mine"));
    OtherSeat::Comment(*server.At(0)).SetValue(Q("theirs"));
    ASSERT_TRUE(Until([&] { return refused() && comments().first() == "theirs"; }));
    auto* fields = refused()->findChild<QTreeWidget*>();
    ASSERT_EQ(fields->topLevelItemCount(), 1);
    const QTreeWidgetItem* field = fields->topLevelItem(0)->child(0);
    EXPECT_EQ(field->text(0) + '|' + field->text(1) + '|' + field->text(2), "Comment|mine|theirs");
    refused()->findChild<QPushButton*>(Q("TryAgain"))->click();
    ASSERT_TRUE(Until([&] { return server.Comments() == QStringList{"mine", "entry 1"}; }));

    // One whose entry has gone cannot be had back by that; one that was to go can.
    targets().DeleteNode(targets().Children()[1]);
    OtherSeat::Comment(*server.At(1)).SetValue(Q("changed"));
    ASSERT_TRUE(Until([&] { return comments() == QStringList{"mine", "changed"}; }));
    ASSERT_TRUE(Until([&] { return refused(); }));
    refused()->findChild<QPushButton*>(Q("TryAgain"))->click();
    ASSERT_TRUE(Until([&] { return server.Comments() == QStringList{"mine"}; }));
}

/// With the documented configuration, from the command line to the list.
TEST_F(Shares, ThroughABrokerThatIsKilledAndComesBackNothingIsLost) {
    RealBroker real({"server", "anna"});
    OtherSeat server(std::make_unique<MqttBus>(real.AddressOf(Q("server"))), "target", Q("server"));
    server.Serve(3);
    const QString password = Write("pw", RealBroker::PasswordOf(Q("anna")).toUtf8());
    QFile(password).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    open({"--share", QStringLiteral("mqtts://anna@127.0.0.1:%1/north").arg(real.Port()), "--ca-file",
          real.CaFile(), "--password-file", password});
    station->BeginSharing();
    ASSERT_TRUE(isReady()) << messages().toStdString();
    show(Targets);
    OtherSeat::Comment(*targets().Children()[0]).SetValue(Q("before"));
    ASSERT_TRUE(Until([&] { return server.Comments().first() == "before"; }));
    real.Kill();
    ASSERT_TRUE(Until([&] { return sharing().GetState() == Sharing::State::Old; }));
    OtherSeat::Comment(*server.At(1)).SetValue(Q("meanwhile"));
    EXPECT_EQ(comments(), (QStringList{"before", "entry 1", "entry 2"})) << "the last whole state stays";
    real.Start();
    ASSERT_TRUE(isReady());
    ASSERT_TRUE(Until([&] { return comments() == QStringList{"before", "meanwhile", "entry 2"}; }));
    OtherSeat::Comment(*targets().Children()[2]).SetValue(Q("after"));
    ASSERT_TRUE(Until([&] { return server.Comments() == QStringList{"before", "meanwhile", "after"}; }));
    EXPECT_FALSE(messages().contains("secret"));
}

TEST_F(Shares, WhoMayOnlyReadSeesWhy) {
    LetOnlyRead(broker, Q("anna"));
    open({});
    OtherSeat server(broker, "target");
    server.Serve(1);
    share(Role::Client);
    show(Targets);
    ASSERT_TRUE(Until([&] {
        return comments().size() == 1 && action(A::Delete)->toolTip().contains("only read the list");
    }));
    EXPECT_FALSE(action(A::Delete)->isEnabled());
    EXPECT_EQ(sharing().GetState(), Sharing::State::Shared);
}

TEST_F(Shares, RowsTellWhoEditsThem) {
    open({});
    OtherSeat server(broker, "target");
    server.Serve(3);
    OtherSeat other(broker, "target", "bert");
    other.Follow();
    share(Role::Client);
    ASSERT_TRUE(isReady());
    SortListView* const list = show(Targets);
    ASSERT_TRUE(Until([&] { return list->RowCount() == 3 && other.Comments().size() == 3; }));
    other.Client().SetEditing(other.At(1));
    ASSERT_TRUE(Until([&] { return !list->topLevelItem(1)->icon(0).isNull(); }));
    EXPECT_TRUE(list->topLevelItem(1)->toolTip(0).contains("bert"));
    EXPECT_TRUE(list->topLevelItem(0)->icon(0).isNull());
    EXPECT_FALSE(list->topLevelItem(0)->toolTip(0).contains("bert"));
    other.Client().SetEditing(nullptr);
    ASSERT_TRUE(Until([&] { return list->topLevelItem(1)->icon(0).isNull(); }));

    select(list, 2);
    ASSERT_TRUE(Until([&] { return action(A::EditCell)->isEnabled(); }))
        << action(A::EditCell)->toolTip().toStdString();
    action(A::EditCell)->trigger();
    ASSERT_TRUE(list->IsEditing());
    ASSERT_TRUE(Until([&] { return !other.Client().EditorsOf(*other.At(2)).isEmpty(); }));
    EXPECT_EQ(other.Client().EditorsOf(*other.At(2)), QStringList{"anna"});
    key(Qt::Key_Escape);
    ASSERT_TRUE(Until([&] { return other.Client().EditorsOf(*other.At(2)).isEmpty(); }));
}

TEST_F(Shares, WhereLongTextsDifferIsSeen) {
    open({});
    const QString alike = Q("a long comment that has more words than there is room for, and ends with ");
    ShareRefusal dialog(sharing(), &window());
    dialog.Add(idOf(Targets), {.reason = Q("late"),
                               .entry = {},
                               .fields = {{Q("comment"), alike + "mine", alike + "theirs"},
                                          {Q("comment"), Q("mine"), QString()}}});
    const QTreeWidgetItem* const entry = dialog.findChild<QTreeWidget*>()->topLevelItem(0);
    EXPECT_EQ(entry->child(0)->text(1), Q("…ends with mine"));
    EXPECT_EQ(entry->child(0)->text(2), Q("…ends with theirs"));
    EXPECT_EQ(entry->child(0)->toolTip(2), alike + "theirs");
    EXPECT_EQ(entry->child(1)->text(1), "mine");
}

TEST_F(Shares, ThePanelShowsWhatTheSiteHas) {
    open({});
    OtherSeat noi(broker, "noi", "carla");
    noi.Serve(2);
    share(Role::Server);
    const auto* const lists = window().findChild<ShareSitePanel*>()->findChild<QTreeWidget*>(Q("Lists"));
    const auto shown = [&] {
        QStringList rows;
        for (int row = 0; row < lists->topLevelItemCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < lists->columnCount(); ++column)
                texts << lists->topLevelItem(row)->text(column);
            rows << texts.join('|');
        }
        return rows;
    };
    EXPECT_TRUE(Until([&] {
        return shown() == QStringList{"NOI Frequencies|2|served|carla", "Targets|0|served|anna"};
    })) << shown().join('\n').toStdString();
    noi.Bus().Cut();
    EXPECT_TRUE(Until([&] { return shown().value(0) == "NOI Frequencies|2|server gone|carla"; }))
        << shown().join('\n').toStdString();
    const auto* const state = lists->parentWidget()->findChild<QLabel*>(Q("State"));
    EXPECT_TRUE(state->text().startsWith("north: server")) << state->text().toStdString();
    sharing().Disconnect();
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_TRUE(state->text().startsWith("No list is shared"));
}

TEST_F(Shares, EntriesOfOtherProgramsComeOnlyWhereTheyMayBeAdded) {
    LetOnlyRead(broker, Q("anna"));
    open({});
    OtherSeat server(broker, "target");
    server.Serve(1);
    const auto whyOff = [](bool replaces) { return ImportLists().front().WhyOff(replaces); };
    EXPECT_EQ(whyOff(true) + whyOff(false), "");
    share(Role::Client);
    EXPECT_TRUE(Until([&] { return whyOff(true).contains("only read the list"); }))
        << whyOff(true).toStdString();
    EXPECT_EQ(whyOff(true), whyOff(false));
    const auto id = static_cast<unsigned>(idOf(Targets));
    sharing().Disconnect();
    broker.SetRights({});
    share(Role::Client);
    ASSERT_TRUE(isReady());
    EXPECT_EQ(whyOff(false), "");
    EXPECT_TRUE(whyOff(true).contains("server alone reads files")) << whyOff(true).toStdString();
    EXPECT_FALSE(ForeignImport::Propose(id, ForeignImport::Way::Open).replaces);
    EXPECT_FALSE(station->GetOpener().Open(sample("interchange/chirp.csv")));
    EXPECT_EQ(server.Comments(), QStringList{"entry 0"});
}

/// Nothing is known of the desktop's keyring.
class WithoutKeyring : public Shares {
protected:
    WithoutKeyring() { qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"); }
    ~WithoutKeyring() override { qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus); }

private:
    const QByteArray m_bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
};

TEST_F(WithoutKeyring, ThatItIsAskedAndWhatItLacksIsTold) {
    open({"--share", "mqtt://anna@localhost/north"});
    int connections = 0;
    sharing().SetBusMaker([&](const BrokerAddress& address) {
        ++connections;
        return std::make_unique<LocalBus>(broker, address.user);
    });
    QAction* const disconnects = window().findChild<QAction*>(Q("disconnect-site"));
    station->BeginSharing();
    EXPECT_EQ(shareStatus(), "north: waits for the keyring");
    disconnects->trigger();
    EXPECT_EQ(shareStatus(), "");
    station->BeginSharing();
    ASSERT_TRUE(Until([&] { return sharing().IsOn(); })) << "it tries without a password";
    EXPECT_FALSE(shareStatus().contains("keyring"));
    EXPECT_TRUE(messages().contains("a password file does without a keyring")) << messages().toStdString();
    EXPECT_EQ(connections, 1) << "what was not wanted any more was not done";

    station->SetAttended(true);
    WhenOpen<QInputDialog>([](QInputDialog& dialog) {
        EXPECT_TRUE(dialog.labelText().contains("mqtt://anna@localhost/north"));
        dialog.setTextValue("typed");
        dialog.accept();
    });
    sharing().Disconnect();
    station->BeginSharing();
    EXPECT_TRUE(Until([&] { return connections == 2; }));
}

} // namespace
