#pragma once

#include "controls/frequencystore/merge/listmerge.h"

#include <QDialog>

#include <optional>

class FrequencyField;
class MergeModel;
class QButtonGroup;
class QDialogButtonBox;
class QHBoxLayout;
class QLabel;
class QTableView;

/// Shows what entries that come would do to a list, and lets the operator choose for each of them. Nothing is
/// changed: whoever asks applies the merge when the dialog is accepted.
class MergeDialog : public QDialog {
    Q_OBJECT

public:
    /// The merge is not owned and outlives the dialog; `tolerance`, in Hz, is that of the beginning. `what`
    /// names the file and the list.
    MergeDialog(ListMerge& merge, const QString& what, double tolerance, QWidget* parent);

private:
    void addTolerance(const QString& what, double tolerance);
    void addStates();
    void addTable();
    void addChoices();
    void match(double tolerance);
    void show(std::optional<ListMerge::State> state);
    void choose(ListMerge::Choice choice);
    std::vector<int> chosenRows() const;
    void showCounts();
    void showPlan();

    ListMerge& m_merge;
    MergeModel* m_model;
    FrequencyField* m_tolerance = nullptr;
    QButtonGroup* m_states; ///< by state, and `AllStates`
    QTableView* m_table;
    QLabel* m_choiceOf = nullptr; ///< says for which rows the choices are
    QDialogButtonBox* m_buttons;
};
