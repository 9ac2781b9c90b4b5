#include "workstation/scanactions.h"

#include "receiver/receiver.h"
#include "scan/scan.h"
#include "workstation/actiontips.h"
#include "workstation/icons.h"

#include <QMenu>
#include <QMetaEnum>

namespace {

struct Info {
    const char* text;
    const char* tip;
    const char* icon;
    QKeySequence key;
    bool isCheckable;
};

/// In the order of ScanActions::Command.
const Info& infoOf(size_t command) {
    static const Info infos[] = {
        {QT_TRANSLATE_NOOP("ScanActions", "&Scan"),
         QT_TRANSLATE_NOOP("ScanActions", "Start or stop scanning what the panel of the scan says"),
         "start-scan", Qt::Key_F6, true},
        {QT_TRANSLATE_NOOP("ScanActions", "&Hold"),
         QT_TRANSLATE_NOOP("ScanActions", "Stay at this channel until it is pressed again"), "pause",
         Qt::Key_F7, true},
        {QT_TRANSLATE_NOOP("ScanActions", "S&kip"),
         QT_TRANSLATE_NOOP("ScanActions", "Go on to the next channel now"), "next", Qt::Key_F8, false},
        {QT_TRANSLATE_NOOP("ScanActions", "&Lock out"),
         QT_TRANSLATE_NOOP("ScanActions", "Go on, and leave this frequency out from now on"), "lock-out",
         Qt::SHIFT | Qt::Key_F8, false},
        {QT_TRANSLATE_NOOP("ScanActions", "Make &priority channel"),
         QT_TRANSLATE_NOOP("ScanActions",
                           "Look at the frequency that the receiver is tuned to again and again"),
         "",
         {},
         false},
        {QT_TRANSLATE_NOOP("ScanActions", "&Forget locked out"),
         QT_TRANSLATE_NOOP("ScanActions", "Scan again what was locked out"),
         "",
         {},
         false},
    };
    static_assert(std::size(infos) == ScanActions::CommandCount);
    return infos[command];
}

} // namespace

ScanActions::ScanActions(QMenu& menu, Scan& scan, Receiver& receiver)
    : QObject(&menu), m_scan(scan), m_receiver(receiver) {
    for (size_t i = 0; i < CommandCount; ++i) {
        const Info& info = infoOf(i);
        const auto command = static_cast<Command>(i);
        QAction* action = menu.addAction(Icons::Get(QLatin1String(info.icon)), tr(info.text));
        action->setObjectName(QStringLiteral("Scan") +
                              QLatin1String(QMetaEnum::fromType<Command>().key(static_cast<int>(i))));
        action->setCheckable(info.isCheckable);
        action->setShortcut(info.key);
        connect(action, &QAction::triggered, this, [this, command] { act(command); });
        m_actions[i] = action;
        if (command == LockOut)
            menu.addSeparator();
    }
    connect(&scan, &Scan::RunningChanged, this, &ScanActions::Refresh);
    connect(&scan, &Scan::Changed, this,
            [this] { m_actions[Hold]->setChecked(m_scan.GetScanner().IsHeld()); });
    connect(&menu, &QMenu::aboutToShow, this, &ScanActions::Refresh);
    Refresh();
}

QString ScanActions::whyOff(Command command) const {
    const auto& lockedOut = m_scan.GetValues().Get<ValueList<double>>(ScanKeys::LockedOut);
    if (command == ForgetLockedOut)
        return lockedOut.Size() > 0 ? QString() : tr("Nothing is locked out.");
    if (command == Start || command == SetPriority)
        return QString();
    return m_scan.IsRunning() ? QString() : tr("No scan runs.");
}

void ScanActions::Refresh() {
    for (size_t i = 0; i < CommandCount; ++i) {
        const QString reason = whyOff(static_cast<Command>(i));
        const QString tip = tr(infoOf(i).tip);
        m_actions[i]->setEnabled(reason.isEmpty());
        SetTips(*m_actions[i], reason.isEmpty() ? tip : tip + QLatin1Char('\n') + reason);
    }
    m_actions[Start]->setChecked(m_scan.IsRunning());
    m_actions[Hold]->setChecked(m_scan.GetScanner().IsHeld());
}

/// By the scan's values, as whoever commands it.
void ScanActions::act(Command command) {
    const ScanValues& values = m_scan.GetValues();
    const auto set = [&](Names::Id key, bool on) { values.Get<Value<bool>>(key).SetValue(on); };
    switch (command) {
    case Start:
        set(ScanKeys::Running, !m_scan.IsRunning());
        break;
    case Hold:
        set(ScanKeys::Hold, !m_scan.GetScanner().IsHeld());
        break;
    case Skip:
        set(ScanKeys::Skip, true);
        break;
    case LockOut:
        set(ScanKeys::LockOut, true);
        break;
    case SetPriority:
        values.Get<ValueNumeric<double>>(ScanKeys::Priority).SetValue(m_receiver.GetFrequency());
        break;
    case ForgetLockedOut:
        values.Get<ValueList<double>>(ScanKeys::LockedOut).Clear();
        break;
    case CommandCount:
        break;
    }
    Refresh();
}
