#pragma once

#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"

#include <QAction>
#include <QWidget>

#include <array>

class FrequencyStoreListView;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QToolBar;
class SortListView;

/// The bar above a list view: caption, the actions that the list offers, a filter field, and the counts of
/// the list. All actions are hidden until the view shows those that it has. The bar belongs to the window.
class FreqStoreListViewButtonBar : public QWidget {
    Q_OBJECT

public:
    enum Action {
        New,
        Edit,
        Copy,
        Paste,
        Delete,
        Read,
        Save,
        Import,
        Export,
        SaveToJob,
        ToDataBase,
        ActionCount
    };

    explicit FreqStoreListViewButtonBar(QWidget* parent = nullptr);
    ~FreqStoreListViewButtonBar() override;

    QAction* GetAction(Action action) const { return m_actions[action]; }
    /// Caption of the list, shown as the window's title while the list is in front.
    void SetCaption(const QString& caption);
    const QString& GetCaption() const { return m_caption; }
    /// Attaches the view whose rows the bar counts, filters and acts on.
    void AttachView(FrequencyStoreListView* view);

    /// Re-reads which actions apply to the present selection.
    void EnableActions();
    /// How the view follows changes: "Immediately" (key 0) or "Paused" (key 1). Owned by the bar.
    ValuePtr<ValueSelection> UpdateModeSelection();
    /// A reason why some actions are off, shown in the bar; empty for none.
    void SetNotice(const QString& notice);

    /// Adds the visible actions to a menu, in the order of the bar.
    void AddActionsTo(QMenu& menu) const;
    /// Runs the action that a key stands for (Ctrl+C, Ctrl+V, Delete, Insert, F2); false when there is none.
    bool TriggerByKey(const QKeyEvent& event);

signals:
    void CaptionChanged(const QString& caption);

private:
    void showCounts();
    void showGaps();

    std::array<QAction*, ActionCount> m_actions{};
    QString m_caption;
    QToolBar* m_toolBar;
    QLabel* m_notice;
    QLabel* m_counts;
    QLineEdit* m_filter;
    SortListView* m_list = nullptr;
    std::unique_ptr<ValueSelection> m_updateMode;
};
