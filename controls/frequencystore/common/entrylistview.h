#pragma once

#include "controls/frequencystore/common/keys.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/copystruct.h"
#include "host/freqlist/frequencynodelistview.h"

#include <span>

class FrequencyNodeMediatorCtrl;

/// One column of a list of entries.
struct EntryColumn {
    /// As `SortListView::setColumnAlignment` has them.
    enum Alignment { Left = 1, Right = 2 };

    const char* title; ///< to be translated in the context of the view's class
    CompareFunction compare;
    unsigned id;                    ///< of the setting that it shows
    int width;                      ///< in digits
    const char* copyName = nullptr; ///< of its text in the store's copy buffer; null when it has none there
    bool takesRest = false;         ///< of the list's width, of one column at most
    Alignment alignment = Right;
};

/// The columns of a kind of list, with the class in whose context their titles are translated.
struct EntryColumns {
    std::span<const EntryColumn> columns;
    const char* context;
};

/// What the views of this library's lists of entries share: how their columns are made, copied and selected,
/// and how they meet their button bar.
class EntryListView : public FrequencyNodeListView {
protected:
    EntryListView(QWidget* parent, unsigned listId, const char* name);

    /// Once, in the constructor of the view. `columns` must stay. Widths are remembered under the object name
    /// and `kind`.
    void AddColumns(const EntryColumns& columns, const QString& kind = QString());
    void AddColumns(std::span<const EntryColumn> columns) {
        AddColumns({columns, metaObject()->className()});
    }

    /// Puts the selected entries on the clipboard as XML, the current one first, and into the store's copy
    /// buffer. Without any both stay as they are.
    void CopyEntries(TracePlace place);
    /// Fills the store's form of a copied entry: the cells of the columns that have a copy name.
    virtual void FillCopyRow(FrequencyNodeMediator& mediator, FrequencyListCopyStruct& row) const;
    /// The store's identifier of the copied texts of a column.
    unsigned CopyId(unsigned columnId) const;

    /// Null once the list has ended.
    FrequencyNodeMediatorCtrl* List() const;
    /// Makes the row of the n-th entry the only selected and the current one, unless a filter hides it.
    void MakeCurrent(unsigned long index);

    /// Opens the editor of entries in a dialog, and answers when that is closed; false when the view has
    /// ended meanwhile.
    bool RunEditor(const std::vector<FrequencyNodeMediator*>& mediators, MediatorType type,
                   const QString& title, const QString& name);

    static void ShowActions(FreqStoreListViewButtonBar& bar,
                            std::initializer_list<FreqStoreListViewButtonBar::Action> actions,
                            bool visible = true);
    /// Attaches the view to the bar; true on the first call, the caller then connects the actions.
    bool AttachToBar(FreqStoreListViewButtonBar& bar);
    template <typename View>
    using BarSlot = std::pair<FreqStoreListViewButtonBar::Action, void (View::*)()>;
    template <typename View>
    void ConnectActions(FreqStoreListViewButtonBar& bar, std::initializer_list<BarSlot<View>> barSlots) {
        for (const auto& [action, slot] : barSlots)
            connect(bar.GetAction(action), &QAction::triggered, static_cast<View*>(this), slot);
    }
    void resizeEvent(QResizeEvent* event) override;

private:
    void giveRest();

    int m_rest = -1;     ///< the column that takes what the others leave
    int m_restLeast = 0; ///< pixels that it has in any case
    struct CopiedColumn {
        unsigned column;
        unsigned copyId;
    };

    std::vector<CopiedColumn> m_copied;
    bool m_attached = false;
};
