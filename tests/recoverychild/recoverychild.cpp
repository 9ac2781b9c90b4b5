// Works on the target list by itself, as chance has it, and says on standard output what it has done:
//   has STATE    at the start, after what an earlier process left was restored
//   did STATE    after each action
//   kept STATE   when a state is in the recovery file, and all before it need no longer be
//   saved STATE  when it is in the list's file
// A state is a number that counts the actions before it, a blank, and the comments of all entries, joined by
// commas. It goes on until it is killed.

#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/valuetree/tree.h"
#include "tests/support/dialogs.h"
#include "workstation/application.h"
#include "workstation/mainwindow.h"
#include "workstation/recoverydialog.h"
#include "workstation/safekeeping.h"

#include <QPushButton>
#include <QRandomGenerator>

#include <cstdio>

namespace {

constexpr int IntervalMilliseconds = 20;

int actions = 0;

QString state() {
    QStringList comments;
    for (const Node* entry : TargetListHandler::Instance()->GetItemsRoot()->Children())
        comments << entry->FindOwn<Value<QString>>(Keys::KeyComment)->GetValue();
    return QString::number(actions) + QLatin1Char(' ') + comments.join(QLatin1Char(','));
}

void say(const char* what, const QString& text) {
    std::printf("%s %s\n", what, qPrintable(text));
    std::fflush(stdout);
}

/// One action of the operator, who saves where there is a file.
void act(QRandomGenerator& chance, const QString& file) {
    TargetListHandler& list = *TargetListHandler::Instance();
    const std::vector<Node*> entries = list.GetItemsRoot()->Children();
    const quint32 what = chance.bounded(12);
    if (what == 0) {
        if (!file.isEmpty() && list.SaveAsOwn(file))
            say("saved", state());
    } else if (what < 3 && !entries.empty()) {
        list.GetItemsRoot()->DeleteNode(entries[chance.bounded(static_cast<quint32>(entries.size()))]);
    } else if (what < 6 && !entries.empty()) {
        WkfListEntry(entries.front(), false, nullptr).SetComment(QString::number(chance.generate()));
    } else if (list.AddNew()) {
        WkfListEntry(list.GetItemsRoot()->LastChild(), false, nullptr)
            .SetComment(QString::number(chance.generate()));
    }
    ++actions;
    say("did", state());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4)
        return 1;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    QRandomGenerator chance(QByteArray(argv[2]).toUInt());
    const QByteArray mode(argv[3]); // "look" ends here, "keep" saves nothing that was not kept before
    const QApplication application(argc, argv);
    QString error;
    Workstation station(
        Options::Parse({"freqstore", "--data", folder + "/data", "--config", folder + "/config"}, error));
    station.GetWindow().show();
    station.SetAttended(true);
    station.LoadFiles();
    QTimer::singleShot(0, qApp, [] {
        if (auto* dialog = qobject_cast<RecoveryDialog*>(QApplication::activeModalWidget())) {
            if (dialog->GetChecked().empty()) // what was saved is newer
                dialog->reject();
            else
                dialog->accept();
        }
    });
    station.OfferRecovery();
    say("has", state());
    if (mode == "look")
        return 0;
    Recovery& recovery = station.GetSafekeeping().GetRecovery();
    recovery.SetInterval(IntervalMilliseconds);
    QString begun;
    QObject::connect(&recovery, &Recovery::Begun, &recovery, [&] { begun = state(); });
    bool maySave = mode != "keep";
    QObject::connect(&recovery, &Recovery::Written, &recovery, [&] {
        say("kept", begun);
        maySave = true;
    });
    QTimer work;
    QObject::connect(&work, &QTimer::timeout, &work,
                     [&] { act(chance, maySave ? folder + "/targets.ltl" : QString()); });
    work.start(1);
    return QApplication::exec();
}
