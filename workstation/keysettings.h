#pragma once

#include <QAction>
#include <QKeySequence>
#include <QObject>

#include <vector>

class QMenuBar;

/// The keys of a window's commands, which the operator may change: those of all actions in its menus that
/// have an object name. `Application.ini` has the changed ones in its group "Keys", by that name: keys
/// separated by "; ", or "none".
class KeySettings : public QObject {
    Q_OBJECT

public:
    using Keys = QList<QKeySequence>;

    struct Command {
        QAction* action; ///< the window's
        QString menu;    ///< its title
        Keys defaults;
    };

    /// Made when the menus stand; takes over the keys of the settings. What is wrong there, or belongs to
    /// another command as well, is told and left out.
    explicit KeySettings(QMenuBar& menus, QObject* parent = nullptr);

    const std::vector<Command>& Commands() const { return m_commands; }
    /// Gives a command other keys and keeps them.
    void Set(const Command& command, const Keys& keys);
    /// What else has the key, as the operator knows it; empty when nothing has. `keys` has the keys of all
    /// commands, in their order.
    QString OwnerOf(const QKeySequence& key, size_t otherThan, const std::vector<Keys>& keys) const;
    /// The text of a command without its mnemonic and dots.
    static QString TextOf(const QAction& action);

private:
    void collect(const QMenu& menu, const QString& title);
    void takeOver(size_t command);
    std::vector<Keys> present() const;

    QWidget* m_window;
    std::vector<Command> m_commands;
};
