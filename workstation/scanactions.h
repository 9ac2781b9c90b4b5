#pragma once

#include <QObject>

class QAction;
class QMenu;
class Receiver;
class Scan;

/// The commands of a scan, each once: menu, keys and panel share them. One that does not apply is off, and
/// says why.
class ScanActions : public QObject {
    Q_OBJECT

public:
    enum Command { Start, Hold, Skip, LockOut, SetPriority, ForgetLockedOut, CommandCount };
    Q_ENUM(Command)

    /// Adds them to the menu, which owns this. Scan and receiver outlive it.
    ScanActions(QMenu& menu, Scan& scan, Receiver& receiver);

    QAction* Get(Command command) const { return m_actions[command]; }
    /// Looks again at what applies.
    void Refresh();

private:
    void act(Command command);
    QString whyOff(Command command) const;

    Scan& m_scan;
    Receiver& m_receiver;
    QAction* m_actions[CommandCount] = {};
};
