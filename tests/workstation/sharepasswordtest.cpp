#include "workstation/sharepassword.h"

#include "host/gui/listsettings.h"
#include "host/report/rgexception.h"
#include "tests/link/linkfixture.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"
#include "workstation/sharedialog.h"
#include "workstation/sharing.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace {

class SharePasswords : public testing::Test, protected TestFolder {
protected:
    // A keyring of whoever runs the tests is none of theirs.
    SharePasswords() { qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"); }
    ~SharePasswords() override {
        qunsetenv("FREQSTORE_SHARE_PASSWORD");
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus);
    }
    QString found() {
        whyNone.clear();
        std::optional<QString> password;
        SharePassword::Find(m_profile, m_context, [&](const QString& p, const QString& why) {
            password = p;
            whyNone = why;
        });
        EXPECT_TRUE(Until([&] { return password.has_value(); }));
        return password.value_or("nothing came");
    }

    const QByteArray m_bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    QObject m_context;
    QString whyNone;
    ShareProfile m_profile{.url = Q("mqtt://anna@localhost/north")};
};

TEST_F(SharePasswords, ComeFromTheEnvironmentOrAFileOfTheOperatorsOwn) {
    qputenv("FREQSTORE_SHARE_PASSWORD", "of the environment");
    EXPECT_EQ(found(), "of the environment");
    m_profile.passwordFile = Write("pw", "of a file\n");
    QFile(Path("pw")).setPermissions(QFile::ReadOwner | QFile::ReadOther);
    EXPECT_THROW(found(), RGException);
    QFile(Path("pw")).setPermissions(QFile::ReadOwner);
    EXPECT_EQ(found(), "of a file");
}

TEST_F(SharePasswords, WithoutAKeyringNoneIsFoundAndNoneIsKeptWhichIsSaid) {
    EXPECT_EQ(found(), "");
    EXPECT_FALSE(whyNone.isEmpty());
    EXPECT_FALSE(whyNone.contains("there is none")) << "nobody knows";
    QString reason;
    SharePassword::Keep(m_profile, Q("secret"), m_context, [&](const QString& why) { reason = why; });
    EXPECT_TRUE(Until([&] { return !reason.isEmpty(); }));
    EXPECT_FALSE(reason.contains("secret"));
    std::optional<QString> whyNotForgotten;
    SharePassword::Forget(m_profile, m_context, [&](const QString& why) { whyNotForgotten = why; });
    EXPECT_TRUE(Until([&] { return whyNotForgotten.has_value(); }));
    EXPECT_NE(whyNotForgotten, QString()) << "it may still be there";
}

TEST_F(SharePasswords, ThatWereNotRemovedWithTheirConnectionAreToldThoughTheDialogIsClosed) {
    ListSettings::SetDirectory(m_folder.path());
    const Traces traces;
    const Sharing sharing({});
    for (const bool isClosed : {false, true}) {
        ShareProfile::Save({{.name = "North", .url = m_profile.url}});
        auto dialog = std::make_unique<ShareDialog>(sharing, ShareProfile(), false);
        dialog->findChild<QComboBox*>("Profile")->setEditText("North");
        dialog->findChild<QPushButton*>("RemoveProfile")->click();
        const auto* answer = dialog->findChild<QLabel*>("Answer");
        if (isClosed)
            dialog.reset();
        EXPECT_TRUE(Until([&] {
            return (isClosed ? traces.problems.join('|') : answer->text()).contains("was not removed");
        }));
        EXPECT_EQ(traces.problems.isEmpty(), !isClosed);
        EXPECT_TRUE(ShareProfile::Load().empty());
    }
    ListSettings::SetDirectory(QString());
}

} // namespace
