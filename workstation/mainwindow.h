#pragma once

#include <QMainWindow>

#include <functional>
#include <map>

class FailureNote;
class FrequencyBar;
class FrequencyStoreListView;
class FreqStoreListViewButtonBar;
class MessagesPanel;
class NoiBands;
class QMenu;
class QDockWidget;
class QTabWidget;
class Receiver;

/// The workstation's window: the frequency bar above, a tab per registered list below, panels beside and the
/// messages at the bottom. It knows no list by name: whatever registers with the store becomes a tab and a
/// line of the bar. Lists and bar tune the receiver, which is not owned and outlives the window.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(Receiver& receiver, QWidget* parent = nullptr);
    ~MainWindow() override;

    FrequencyBar* GetBar() const { return m_bar; }
    QTabWidget* GetTabs() const { return m_tabs; }
    MessagesPanel* GetMessages() const { return m_messages; }
    /// The bands of interest.
    const NoiBands& GetBands() const { return *m_bands; }
    QMenu* GetFileMenu() const { return m_fileMenu; }
    /// Adds a panel that can be moved and closed, and its entry in the View menu; the window owns it.
    QDockWidget* AddPanel(QWidget* panel, const QString& title, Qt::DockWidgetArea area);
    /// Adds a menu before the Help menu.
    QMenu* AddMenu(const QString& title);
    /// Who is asked whether the window may close; a false answer keeps it open.
    void SetCloseCheck(std::function<bool()> mayClose) { m_mayClose = std::move(mayClose); }
    /// Takes size and panels as they were when the window was closed last, and keeps them when it closes.
    void RememberArrangement();
    /// Keeps size and panels for the next time, if the window does.
    void KeepArrangement() const;
    /// Shows a text in the status line for a while.
    void Tell(const QString& text);
    /// Shows a text at the end of the status line for good.
    void AddNote(const QString& text, const QString& toolTip);
    /// What could not be saved; shown in the status line until it is resolved or dismissed.
    FailureNote* GetFailureNote() const { return m_failure; }
    /// The file that a list shows, which the window's title and the tab's tip name; empty when there is none.
    void SetFileOf(int listId, const QString& path);
    /// The view of a registered list; null when it has none.
    FrequencyStoreListView* ViewOf(int listId) const;
    /// The button bar of a registered list; null when there is no such list.
    FreqStoreListViewButtonBar* BarOf(int listId) const;
    /// Brings up a list of records and selects the one at a place; nothing without such a list.
    void ShowRecord(int listId, quint32 place);
    /// Title of the tab at an index, as it may stand in a file name.
    QString TabFileName(int index) const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Tab {
        QWidget* page;
        FreqStoreListViewButtonBar* bar;
        FrequencyStoreListView* view;
        QString file; ///< what the list shows
    };

    void addList(int listId);
    void removeList(int listId);
    void showTitle();
    void showEntry(double hertz, int listId);
    void connectReceiver(Receiver& receiver);
    void makeMenus();
    void addPositionFormats();

    NoiBands* m_bands;
    FrequencyBar* m_bar;
    QTabWidget* m_tabs;
    MessagesPanel* m_messages;
    FailureNote* m_failure;
    QMenu* m_fileMenu;
    QMenu* m_viewMenu;
    QMenu* m_helpMenu = nullptr;
    std::function<bool()> m_mayClose;
    bool m_remembersArrangement = false;
    std::map<int, Tab> m_lists;
};
