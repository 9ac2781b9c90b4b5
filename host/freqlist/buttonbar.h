#pragma once

#include "host/base/observer.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"

#include <QAction>
#include <QPointer>
#include <QWidget>

#include <array>

class EmptyList;
class FilterField;
class FrequencyStoreListView;
class QKeyEvent;
class QLabel;
class QMenu;
class QToolBar;
class QToolButton;
class NothingFound;
class SortListView;

/// The bar above a list view: caption, the actions that the list offers, a filter field, and the counts of
/// the list. All actions are hidden until the view shows those that it has. The bar belongs to the window.
class FreqStoreListViewButtonBar : public QWidget, private IObserver {
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
        SendTo,
        ActionCount
    };

    explicit FreqStoreListViewButtonBar(QWidget* parent = nullptr);
    ~FreqStoreListViewButtonBar() override;

    QAction* GetAction(Action action) const { return m_actions[action]; }
    /// Offers actions by keys and in menus of the program, without buttons.
    void OfferWithoutButton(std::initializer_list<Action> actions);
    /// Whether the list has the action, with a button or without.
    bool Offers(Action action) const { return m_actions[action]->isVisible() || m_withoutButton[action]; }
    /// Caption of the list: what its last file command named, whether that could be read or not.
    void SetCaption(const QString& caption);
    const QString& GetCaption() const { return m_caption; }
    /// Attaches the view whose rows the bar counts, filters and acts on; null detaches it.
    void AttachView(FrequencyStoreListView* view);
    /// Lets go of that view, if it is the one attached: views that end say so.
    void DetachView(const FrequencyStoreListView* view);
    /// What the action's tool tip says of it, where the list means something of its own.
    void SetTip(Action action, const QString& tip);

    /// Why the program does not offer an action at present, beside what the view says (see its `WhyOff`);
    /// empty when it does.
    void SetWhyOff(Action action, const QString& reason);
    /// What there is to know of the list as a whole, shown as reasons are; empty takes it away.
    void SetNote(const QString& note);

    /// Re-reads which actions apply to the present selection and which the view offers at present. Why an
    /// action is off stands in its tool tip and below the bar.
    void EnableActions();
    /// Says what an action did where the counts stand; they come back when any of them changes.
    void Tell(const QString& text);
    /// How the view follows changes: "Immediately" (key 0) or "Paused" (key 1). Owned by the bar; choosing
    /// another item takes effect at once.
    ValuePtr<ValueSelection> UpdateModeSelection();
    /// Shows the switch between these two; lists that fill by themselves have it.
    void OfferPause();
    /// Adds the visible actions to a menu, in the order of the bar.
    void AddActionsTo(QMenu& menu) const;
    /// Runs the action that a key stands for (Ctrl+C, Ctrl+V, Delete, Insert); false when there is none.
    bool TriggerByKey(const QKeyEvent& event);

    /// The field that filters the attached view.
    FilterField& Filter() const { return *m_filter; }

signals:
    void CaptionChanged(const QString& caption);

private:
    void Update(Observable* subject, TChangeCode code) override;
    void followMode();
    void showCounts();
    void showGaps();
    void showNotice(const QString& notice);
    void showUnderstood();
    QString whyOff(size_t action) const;

    std::array<QAction*, ActionCount> m_actions{};
    std::array<QString, ActionCount> m_tips;
    std::array<bool, ActionCount> m_withoutButton{};
    QAction* m_pause = nullptr;
    std::array<QString, ActionCount> m_whyOff; ///< by the program
    QString m_caption;
    QToolBar* m_toolBar;
    QLabel* m_notice; ///< why actions are off, and the note
    QString m_note;
    QToolButton* m_open; ///< beside it, where only a file helps
    QLabel* m_counts;
    FilterField* m_filter;
    QLabel* m_understood;                     ///< what the filter was understood as
    FrequencyStoreListView* m_view = nullptr; ///< attached as long as its list lives
    SortListView* m_list = nullptr;
    QPointer<NothingFound> m_nothingFound; ///< over the list, whose it is
    QPointer<EmptyList> m_emptyList;       ///< as well
    std::unique_ptr<ValueSelection> m_updateMode;
};
