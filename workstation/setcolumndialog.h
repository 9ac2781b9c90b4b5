#pragma once

#include "host/freqlist/frequencynodelistview.h"
#include "host/valuetree/valuebase.h"

#include <QDialog>

#include <memory>

class QComboBox;
class QVBoxLayout;

/// Asks for a column and a value, which all selected rows get. It begins with the column clicked last and the
/// value of the first selected row.
class SetColumnDialog : public QDialog {
    Q_OBJECT

public:
    /// The view is not owned and outlives the dialog; its current row can be edited.
    explicit SetColumnDialog(FrequencyNodeListView& view);

    /// Asks, sets, and lets the bar tell what became of it.
    static void Ask(FrequencyNodeListView& view, FreqStoreListViewButtonBar& bar);
    static void Tell(FreqStoreListViewButtonBar& bar, const FrequencyNodeListView::Filled& filled);

    void accept() override;
    const FrequencyNodeListView::Filled& GetFilled() const { return m_filled; }

private:
    void showColumn();

    FrequencyNodeListView& m_view;
    QComboBox* m_column;
    QVBoxLayout* m_place;               ///< of the field
    std::unique_ptr<ValueBase> m_value; ///< a copy, which the field edits
    QWidget* m_field = nullptr;
    FrequencyNodeListView::Filled m_filled;
};
