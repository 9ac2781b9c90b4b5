// Does one thing with the password of a broker's user in the desktop's keyring:
//   keyring_child find|keep|forget URL [PASSWORD]
//   keyring_child remove NAME FOLDER
// The last one removes a connection of the settings in a folder, as the operator does. It says on standard
// output "alive" while it waits, and at the end "password PASSWORD", "done", "not: REASON", or what the
// operator reads.

#include "host/gui/listsettings.h"
#include "workstation/sharedialog.h"
#include "workstation/sharepassword.h"
#include "workstation/sharing.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int AliveMilliseconds = 20;

void say(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

/// At once: nothing is said behind it.
void end(const QString& text) {
    say(text);
    std::exit(0);
}

void endDone(const QString& reason) {
    end(reason.isEmpty() ? QStringLiteral("done") : QStringLiteral("not: ") + reason);
}

int removeConnection(const QString& name, const QString& folder) {
    ListSettings::SetDirectory(folder);
    const Sharing sharing({});
    ShareDialog dialog(sharing, {}, false);
    dialog.findChild<QComboBox*>(QStringLiteral("Profile"))->setEditText(name);
    dialog.findChild<QPushButton*>(QStringLiteral("RemoveProfile"))->click();
    const auto* answer = dialog.findChild<QLabel*>(QStringLiteral("Answer"));
    while (answer->text().startsWith(QLatin1String("The keyring is asked")))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    say(answer->text());
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("remove"))
        return removeConnection(arguments.value(2), arguments.value(3));
    const ShareProfile profile{.url = arguments.value(2)};
    QObject context;
    QTimer alive;
    QObject::connect(&alive, &QTimer::timeout, [] { say(QStringLiteral("alive")); });
    alive.start(AliveMilliseconds);
    if (arguments.value(1) == QLatin1String("find"))
        SharePassword::Find(profile, context, [](const QString& password, const QString& whyNone) {
            end(whyNone.isEmpty() ? QStringLiteral("password ") + password
                                  : QStringLiteral("not: ") + whyNone);
        });
    else if (arguments.value(1) == QLatin1String("keep"))
        SharePassword::Keep(profile, arguments.value(3), context, endDone);
    else
        SharePassword::Forget(profile, context, endDone);
    return QCoreApplication::exec();
}
