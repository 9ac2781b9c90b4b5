#pragma once

#include "host/freqstorexml/listcontent.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

class FreqStoreListViewButtonBar;
class QWidget;
class SortListView;

namespace FreqStoreXml {
class FrequencyStoreEntry;
}

/// A list view as the store's windows see it.
class FrequencyStoreListView {
public:
    virtual ~FrequencyStoreListView() = default;

    /// Identifier of the list in the store.
    void SetID(unsigned listId) { m_listId = listId; }
    unsigned GetID() const { return m_listId; }

    /// Sets whether a window uses the view. A view that is not used need not follow its list.
    virtual void SetConnected(bool connected) { m_connected = connected; }
    bool IsConnected() const { return m_connected; }

    /// Stops the rows while the list goes on. New entries and changes appear when the rows go on. Rows of
    /// deleted entries disappear at once.
    virtual void SetPaused(bool paused) { m_paused = paused; }
    bool IsPaused() const { return m_paused; }
    /// Number of new entries that a paused view does not show yet.
    virtual int WaitingCount() const { return 0; }

    /// Selects the row of that frequency (Hz), the nearest one when there is no such row.
    virtual void SelectFrequency(double hertz) = 0;
    /// Tunes the receiver to the current row with all its settings; false when there is no such row.
    virtual bool TuneToCurrent() { return false; }
    /// Whether copies of its entries can be added to the list at present.
    virtual bool CanDuplicate() const { return false; }
    /// The selected rows as text for a spreadsheet; empty without any.
    virtual QString SelectedText() { return QString(); }
    /// Adds a copy of each selected entry, with all its values, behind the others and selects the copies.
    virtual void Duplicate() {}
    /// Selects the entry at a place of a list of records, counted from 0 as they came; false when the view
    /// has no such list, or the filter hides the entry.
    virtual bool SelectRecord(quint32 /*place*/) { return false; }
    /// Frequencies (Hz) of the selected entries, for the frequency bar; empty for views whose list tells the
    /// bar by itself.
    virtual std::vector<double> SelectedFrequencies() { return {}; }
    /// Which entries the filter shows so far, by the serials of their nodes or the places of their records;
    /// nothing when there is no filter.
    virtual std::optional<std::vector<bool>> ShownEntries() { return std::nullopt; }
    /// All that the list gives as records, whatever the filter hides.
    virtual FreqStoreXml::ListContent Content() { return {}; }
    virtual QWidget* GetWidget() = 0;
    virtual SortListView* GetListView() = 0;
    /// Gives the view the button bar of its window, which the window owns; null means none.
    virtual void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) = 0;
    /// Why the list does not offer an action of the bar (a `FreqStoreListViewButtonBar::Action`) at present,
    /// as a sentence for the operator; empty when it does. A view whose answer changes calls the bar's
    /// `EnableActions`.
    virtual QString WhyOff(int /*action*/) const { return QString(); }
    /// What an empty list says about where its entries come from, in a sentence or two; empty for a general
    /// text.
    virtual QString EmptyText() const { return QString(); }

private:
    unsigned m_listId = 0;
    bool m_connected = true;
    bool m_paused = false;
};
