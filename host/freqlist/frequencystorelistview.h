#pragma once

#include <QString>

#include <vector>

class FreqStoreListViewButtonBar;
class QWidget;
class SortListView;

/// A list view as the store's windows see it.
class FrequencyStoreListView {
public:
    virtual ~FrequencyStoreListView() = default;

    /// Identifier of the list in the store.
    void SetID(unsigned listId) { m_listId = listId; }
    unsigned GetID() const { return m_listId; }

    /// Whether the view is in use by a window; a view that is not need not follow its list.
    virtual void SetConnected(bool connected) { m_connected = connected; }
    bool IsConnected() const { return m_connected; }

    /// Lets the rows stand still while the list goes on: what comes and changes meanwhile is shown when they
    /// go on. Rows whose entries end go all the same.
    virtual void SetPaused(bool paused) { m_paused = paused; }
    bool IsPaused() const { return m_paused; }
    /// Entries that have come and wait for the rows to go on.
    virtual int WaitingCount() const { return 0; }

    /// Selects the row of that frequency (Hz), the nearest one when there is no such row.
    virtual void SelectFrequency(double hertz) = 0;
    /// Selects the entry at a place of a list of records, counted from 0 as they came; false when the view
    /// has no such list, or the filter hides the entry.
    virtual bool SelectRecord(quint32 /*place*/) { return false; }
    /// Frequencies (Hz) of the selected entries, for the frequency bar; empty for views whose list tells the
    /// bar by itself.
    virtual std::vector<double> SelectedFrequencies() { return {}; }
    virtual QWidget* GetWidget() = 0;
    virtual SortListView* GetListView() = 0;
    /// The window hands the view its button bar, which the window owns; null takes none.
    virtual void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) = 0;
    /// Why the list does not offer an action of the bar (a `FreqStoreListViewButtonBar::Action`) at present,
    /// as a sentence for the operator; empty when it does. A view whose answer changes calls the bar's
    /// `EnableActions`.
    virtual QString WhyOff(int /*action*/) const { return QString(); }

private:
    unsigned m_listId = 0;
    bool m_connected = true;
    bool m_paused = false;
};
