#include "workstation/sharedialog.h"

#include "host/gui/listsettings.h"
#include "link/localbus.h"
#include "tests/workstation/sharefixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

class ShareDialogs : public testing::Test, protected TestFolder {
protected:
    ShareDialogs() : sharing({}) {
        ListSettings::SetDirectory(m_folder.path());
        sharing.SetBusMaker([this](const BrokerAddress& address) {
            passwords << address.password;
            return std::make_unique<LocalBus>(broker, address.user);
        });
    }
    ~ShareDialogs() override { ListSettings::SetDirectory(QString()); }
    template <typename W>
    static W* part(const ShareDialog& dialog, const char* name) {
        return dialog.findChild<W*>(QLatin1String(name));
    }
    static QPushButton* connects(const ShareDialog& dialog) {
        return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    }

    LocalBroker broker;
    Sharing sharing;
    QStringList passwords;
};

TEST_F(ShareDialogs, WhatIsMissingIsSaidAndANamedConnectionIsKeptWithoutItsPassword) {
    ShareDialog dialog(sharing, {}, false);
    EXPECT_FALSE(connects(dialog)->isEnabled());
    part<QLineEdit>(dialog, "Broker")->setText("broker.example.org");
    part<QLineEdit>(dialog, "Site")->setText("north");
    part<QLineEdit>(dialog, "User")->setText("anna");
    part<QLineEdit>(dialog, "Password")->setText("top secret");
    EXPECT_TRUE(connects(dialog)->isEnabled());
    part<QCheckBox>(dialog, "Encrypted")->setChecked(false);
    EXPECT_FALSE(connects(dialog)->isEnabled()) << "another machine";
    EXPECT_TRUE(part<QLabel>(dialog, "Answer")->text().contains("mqtts://"));
    part<QCheckBox>(dialog, "Encrypted")->setChecked(true);
    part<QRadioButton>(dialog, "Server")->setChecked(true);
    part<QComboBox>(dialog, "Profile")->setEditText("North");
    connects(dialog)->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.Password(), "top secret");

    ShareDialog next(sharing, {}, false);
    emit part<QComboBox>(next, "Profile")->textActivated("North");
    EXPECT_EQ(next.GetChoice().url, "mqtts://anna@broker.example.org/north");
    EXPECT_EQ(next.GetChoice().role, ShareProfile::Role::Server);
    EXPECT_EQ(next.Password(), QString());
    for (const QFileInfo& file : QDir(m_folder.path()).entryInfoList(QDir::Files))
        EXPECT_FALSE(Read(file.filePath()).contains("secret")) << file.fileName().toStdString();
}

TEST_F(ShareDialogs, ATestShowsWhatTheBrokerAnswers) {
    OtherSeat server(broker, "noi");
    server.Serve(1);
    ASSERT_TRUE(Until([&] { return server.Server().GetState() == ListServer::State::Serving; }));
    ShareDialog dialog(sharing, {.url = Q("mqtt://anna@localhost/north")}, false);
    part<QLineEdit>(dialog, "Password")->setText("pw");
    part<QPushButton>(dialog, "Test")->click();
    const auto answer = [&] { return part<QLabel>(dialog, "Answer")->text(); };
    EXPECT_TRUE(Until([&] {
        return answer().contains("lets anna in") && answer().contains("NOI Frequencies by server (1)");
    })) << answer().toStdString();
    EXPECT_EQ(passwords, QStringList{"pw"});
    EXPECT_FALSE(answer().contains("There: anna")) << "who asks knows that he is there";
    broker.Stop();
    EXPECT_TRUE(answer().contains("Not connected")) << answer().toStdString();
    broker.SetReadRights([](const QString&, const QByteArray&) { return false; });
    broker.Start();
    EXPECT_TRUE(Until([&] { return answer().contains("passes nothing of this site on"); }))
        << answer().toStdString();
}

} // namespace
