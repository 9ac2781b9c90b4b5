#pragma once

#include <QMainWindow>

#include <map>

class FrequencyBar;
class FrequencyStoreListView;
class FreqStoreListViewButtonBar;
class MessagesPanel;
class QTabWidget;

/// The workstation's window: the frequency bar above, a tab per registered list below, the messages at the
/// bottom. It knows no list by name: whatever registers with the store becomes a tab and a line of the bar.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    FrequencyBar* GetBar() const { return m_bar; }
    QTabWidget* GetTabs() const { return m_tabs; }
    MessagesPanel* GetMessages() const { return m_messages; }
    /// The view of a registered list; null when it has none.
    FrequencyStoreListView* ViewOf(int listId) const;
    /// Title of the tab at an index, as it may stand in a file name.
    QString TabFileName(int index) const;

private:
    struct Tab {
        QWidget* page;
        FreqStoreListViewButtonBar* bar;
        FrequencyStoreListView* view;
    };

    void addList(int listId);
    void removeList(int listId);
    void showCaption();
    void tune(double hertz);
    void makeMenus();

    FrequencyBar* m_bar;
    QTabWidget* m_tabs;
    MessagesPanel* m_messages;
    std::map<int, Tab> m_lists;
};
