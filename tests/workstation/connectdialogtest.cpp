#include "workstation/connectdialog.h"

#include "host/gui/listsettings.h"
#include "receiver/hamlibreceiver.h"
#include "tests/support/testfolder.h"
#include "tests/support/waiting.h"
#include "workstation/helpwindow.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class ConnectDialogs : public testing::Test, protected TestFolder {
protected:
    ConnectDialogs() { ListSettings::SetDirectory(m_folder.path()); }
    ~ConnectDialogs() override { ListSettings::SetDirectory(QString()); }
    template <typename W>
    static W* part(const ConnectDialog& dialog, const char* name) {
        return dialog.findChild<W*>(QLatin1String(name));
    }
    static bool mayConnect(const ConnectDialog& dialog) {
        return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
    }
};

TEST_F(ConnectDialogs, AModelIsFoundByItsWordsAndKeptUnderItsName) {
    ConnectDialog dialog(std::nullopt);
    EXPECT_FALSE(dialog.GetChoice()) << "the simulated receiver needs nothing";
    EXPECT_TRUE(mayConnect(dialog));
    part<QLineEdit>(dialog, "Search")->setText("rigctl net");
    EXPECT_EQ(part<QListWidget>(dialog, "Models")->currentItem()->text(), "Hamlib NET rigctl (model 2)");
    part<QComboBox>(dialog, "Port")->setEditText("nowhere");
    EXPECT_FALSE(mayConnect(dialog));
    EXPECT_TRUE(part<QLabel>(dialog, "Answer")->text().contains("host:port"));
    part<QComboBox>(dialog, "Port")->setEditText("attic:4532");
    part<QComboBox>(dialog, "Profile")->setEditText("Attic");
    ASSERT_TRUE(mayConnect(dialog));
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);

    ConnectDialog next(std::nullopt);
    auto* profile = part<QComboBox>(next, "Profile");
    ASSERT_EQ(profile->findText("Attic"), 0);
    emit profile->textActivated("Attic");
    ASSERT_TRUE(next.GetChoice());
    EXPECT_EQ(next.GetChoice()->model, RadioProfile::Client);
    EXPECT_EQ(next.GetChoice()->port, "attic:4532");

    auto* remove = part<QPushButton>(next, "RemoveProfile");
    profile->setEditText("Att");
    EXPECT_FALSE(remove->isEnabled()) << "nothing has that name";
    profile->setEditText("Attic");
    remove->click();
    EXPECT_EQ(next.GetChoice()->name, QString());
    EXPECT_EQ(part<QComboBox>(ConnectDialog(std::nullopt), "Profile")->count(), 0);
}

TEST_F(ConnectDialogs, TheKeyOfALabelLeadsToItsField) {
    ConnectDialog dialog(RadioProfile{});
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, Patience));
    QTest::keyClick(&dialog, Qt::Key_N, Qt::AltModifier);
    QTest::keyClicks(dialog.focusWidget(), "Attic");
    EXPECT_EQ(dialog.GetChoice()->name, "Attic");
}

TEST_F(ConnectDialogs, F1ShowsTheGuideOfReceivers) {
    ConnectDialog dialog(std::nullopt);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, Patience));
    QTest::keyClick(&dialog, Qt::Key_F1);
    const auto* help = dialog.findChild<HelpWindow*>();
    ASSERT_TRUE(help);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->GetTopic(), "receivers");
}

TEST_F(ConnectDialogs, ATestShowsWhatTheRadioAnswers) {
    for (const auto& [profile, answer] :
         {std::pair{RadioProfile{{}, RadioProfile::Dummy}, "145.000000 MHz, FM"},
          {RadioProfile{{}, RadioProfile::Client, "127.0.0.1:1"}, "No answer"}}) {
        const ConnectDialog dialog(profile);
        part<QPushButton>(dialog, "Test")->click();
        EXPECT_TRUE(Until([&, &words = answer] {
            return part<QLabel>(dialog, "Answer")->text().contains(words);
        })) << part<QLabel>(dialog, "Answer")->text().toStdString();
        EXPECT_FALSE(part<QLabel>(dialog, "Answer")->text().contains("again")) << "a test is made once";
        dialog.findChild<QSpinBox*>()->setValue(profile.timeout + 100);
        EXPECT_EQ(part<QLabel>(dialog, "Answer")->text(), "") << "that was another connection";
    }
    EXPECT_TRUE(HamlibReceiver::WaitForAll(std::chrono::milliseconds(Patience)));
}

} // namespace
