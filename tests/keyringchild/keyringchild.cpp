// Does one thing with the password of a broker's user in the desktop's keyring:
//   keyring_child find|keep|forget URL [PASSWORD]
// and says on standard output "alive" while it waits, and at the end "password PASSWORD", "done" or
// "not: REASON".

#include "workstation/sharepassword.h"

#include <QCoreApplication>
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

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
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
