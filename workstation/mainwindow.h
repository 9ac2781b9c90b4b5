#pragma once

#include "workstation/actions.h"

#include <QMainWindow>

#include <functional>
#include <map>
#include <vector>

class DetailsPanel;
class FailureNote;
class FindHits;
class FrequencyBar;
class FrequencyStoreListView;
class FreqStoreListViewButtonBar;
class MessagesPanel;
class NoiBands;
class QMenu;
class QDockWidget;
class QTabWidget;
class QTimer;
class Receiver;
class TuningStrip;
class WindowStatus;

/// The workstation's window: the strip of the receiver and the frequency bar above, a tab per registered list
/// below, panels beside and the messages at the bottom. It knows no list by name: whatever registers with the
/// store becomes a tab and a line of the bar. Lists and bar tune the receiver, which is not owned and
/// outlives the window.
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
    /// The menu that is filled with the files opened last.
    QMenu* GetRecentMenu() const { return m_recentMenu; }
    QMenu* GetReceiverMenu() const { return m_receiverMenu; }
    TuningStrip* GetStrip() const { return m_strip; }
    WindowActions& GetActions() const { return *m_actions; }
    /// Adds a panel that can be moved and closed, and its entry in the View menu, whose mnemonic the title
    /// marks by `&`; the window owns it.
    QDockWidget* AddPanel(QWidget* panel, const QString& title, Qt::DockWidgetArea area);
    /// Adds the command that edits the preferences.
    void SetPreferences(std::function<void()> edit);
    /// Adds a menu before the Help menu.
    QMenu* AddMenu(const QString& title);
    /// Who is asked whether the window may close; a false answer keeps it open.
    void SetCloseCheck(std::function<bool()> mayClose) { m_mayClose = std::move(mayClose); }
    /// Takes size, panels, list and the receiver's frequency as they were when the window was closed last,
    /// and keeps them when it closes.
    void RememberArrangement();
    /// Keeps all that for the next time, if the window does.
    void KeepArrangement() const;
    /// Shows in the status line what was done last.
    void Tell(const QString& text);
    /// Whether each tuning is told: a scan tunes all the time.
    void SetTellsTuning(bool tells) { m_tellsTuning = tells; }
    /// What the status line shows for good.
    WindowStatus& GetStatus() const { return *m_status; }
    /// Brings up the messages, or hides them.
    void ShowMessages(bool show);
    /// Shows a text in the status line for good.
    void AddNote(const QString& text, const QString& toolTip);
    /// What could not be saved; shown in the status line until it is resolved or dismissed.
    FailureNote* GetFailureNote() const;
    /// The file that a list shows, which the window's title and the tab's tip name; empty when there is none.
    void SetFileOf(int listId, const QString& path);
    QString FileOf(int listId) const;
    /// Whether a list holds what is in no file, which its tab and the title mark by a star.
    void SetUnsaved(int listId, bool unsaved);
    /// What saves a list into its own file; a list without such has Save As only.
    void SetSaver(int listId, std::function<void()> save);
    /// The view of a registered list; null when it has none.
    FrequencyStoreListView* ViewOf(int listId) const;
    /// The button bar of a registered list; null when there is no such list.
    FreqStoreListViewButtonBar* BarOf(int listId) const;
    /// The list that is shown; 0 for none.
    int ShownList() const;
    /// Brings up a list; nothing without such a list.
    void ShowList(int listId);
    /// Brings up a list of records and selects the one at a place; nothing without such a list.
    void ShowRecord(int listId, quint32 place);
    /// Registered name of the list whose tab stands at an index; as it may stand in a file name.
    QString TabName(int index) const;
    QString TabFileName(int index) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// A value of an entry of that list was edited beside the list.
    void EntryEdited(int listId);
    /// A file is to be opened, whatever it is.
    void OpenWanted();
    /// Ways to begin are to be shown.
    void WelcomeWanted();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct Tab {
        QString name; ///< as registered
        QWidget* page;
        FreqStoreListViewButtonBar* bar;
        FrequencyStoreListView* view;
        QString file{}; ///< what the list shows
        bool unsaved = false;
        std::function<void()> save{};
    };

    void addList(int listId);
    void removeList(int listId);
    const Tab* currentTab() const;
    void nameWidgets(const Tab& tab);
    void showCurrentList();
    void showTabs();
    void showTitle();
    void showEntry(double hertz, int listId);
    void markTuned(double hertz);
    void connectReceiver(Receiver& receiver);
    void connectStatus();
    void makePanels(Receiver& receiver);
    void makeMenus();
    void makeListMenus();
    void makeViewMenu();
    void makeReceiverMenu();
    void makeHelpMenu();
    void addPositionFormats();
    void showKeys();
    void stepTab(int by);
    void choose(WindowActions::Command command);
    void findHit(int direction);
    void print();
    void savePdf();
    void arrangePanels();
    void sizePanels();

    Receiver& m_receiver;
    NoiBands* m_bands;
    TuningStrip* m_strip;
    FrequencyBar* m_bar;
    QTabWidget* m_tabs;
    MessagesPanel* m_messages;
    WindowStatus* m_status;
    WindowActions* m_actions;
    FindHits* m_hits;
    DetailsPanel* m_details;
    QDockWidget* m_messagesDock = nullptr;
    std::vector<QDockWidget*> m_panels; ///< in their order
    QMenu* m_fileMenu;
    QMenu* m_recentMenu;
    QMenu* m_editMenu = nullptr;
    QMenu* m_viewMenu = nullptr;
    QMenu* m_receiverMenu = nullptr;
    QMenu* m_helpMenu = nullptr;
    QTimer* m_tabsChange; ///< many changes are shown once
    std::function<bool()> m_mayClose;
    bool m_remembersArrangement = false;
    bool m_tellsTuning = true;
    bool m_isNarrow = false; ///< panels at the side are tabs
    std::map<int, Tab> m_lists;
};
