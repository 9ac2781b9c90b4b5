#pragma once

#include <QAction>
#include <QPointer>

#include <array>
#include <functional>

class FreqStoreListViewButtonBar;
class FrequencyNodeListView;
class FrequencyStoreListView;
class QKeyEvent;
class QMenu;
class SortListView;

/// The commands of a window, each once: menus, context menu and keys share them. Those that act on a list act
/// on the one that the window shows, through the actions of its button bar or its view. A command that does
/// not apply is off, and its tool tip and status tip say why.
class WindowActions : public QObject {
    Q_OBJECT

public:
    enum Command {
        Open,
        OpenIntoList,
        Merge,
        Save,
        SaveAs,
        Import,
        Export,
        ExportForeign,
        Print,
        Pdf,
        Quit,
        Undo,
        Redo,
        Cut,
        Copy,
        Paste,
        Delete,
        CopyText,
        PasteText,
        SelectAll,
        FindDuplicates,
        Find,
        FindNext,
        FindPrevious,
        Tune,
        Previous,
        Next,
        New,
        Edit,
        EditCell,
        FillDown,
        SetColumn,
        Duplicate,
        SendTo,
        CommandCount
    };
    Q_ENUM(Command)

    /// Makes the commands; keys that only a list understands work while `lists` or what is in it has the
    /// focus. The window owns all.
    WindowActions(QWidget* window, QWidget* lists);

    QAction* Get(Command command) const { return m_actions[command]; }
    /// Adds commands to a menu, a gap for each `CommandCount` among them.
    void AddTo(QMenu& menu, std::initializer_list<Command> commands) const;

    /// The list that is shown, with its name and what saves it into its own file (empty when it has none);
    /// nulls for no list. None is owned.
    void SetList(FreqStoreListViewButtonBar* bar, FrequencyStoreListView* view, const QString& name,
                 std::function<void()> save);
    /// Looks again at what applies.
    void Refresh();
    /// Tells why the command of a pressed key is off; false when the key is that of no such command. The keys
    /// of some commands mean them only `inLists`.
    bool TellWhyOff(const QKeyEvent& pressed, bool inLists);
    /// The menu of a list's rows: all that its bar offers, with what the window adds.
    void FillContextMenu(QMenu& menu) const;

signals:
    /// A command of the window's own was chosen: one of Open, FindNext, FindPrevious, Print, Pdf and Quit.
    void Chosen(WindowActions::Command command);
    /// The key of a command was pressed that is off, for that reason.
    void Refused(const QString& reason);

private:
    void act(Command command);
    void cut();
    void step(int key);
    QString whyOff(Command command) const;
    QString whyBarOff(int barAction) const;
    bool offers(int barAction) const;
    QString tipOf(Command command) const;
    SortListView* list() const;
    FrequencyNodeListView* entries() const;
    QString whyCellsOff() const;
    bool pastesForeign();
    void copyText();
    void pasteText();
    void fillDown();

    std::array<QAction*, CommandCount> m_actions{};
    QPointer<FreqStoreListViewButtonBar> m_bar;
    FrequencyStoreListView* m_view = nullptr; ///< as long as the bar is there
    QString m_name;
    std::function<void()> m_save;
    bool m_refreshes = false; ///< a refresh is due
};
