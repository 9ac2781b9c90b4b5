#pragma once

#include "controls/frequencystore/merge/listmerge.h"

#include <QAbstractTableModel>

#include <optional>

/// The rows of a `ListMerge`, those of one state or all, as a table. Texts are made when they are painted.
/// The merge is not owned and outlives the model.
class MergeModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using State = ListMerge::State;
    using Choice = ListMerge::Choice;

    enum Column {
        ColumnState,
        ColumnFrequency,
        ColumnDemodulation,
        ColumnBandwidth,
        ColumnComment,
        ColumnOthers,
        ColumnChoice,
        ColumnCount
    };

    MergeModel(ListMerge& merge, QObject* parent);

    /// Matches anew; rows of the state that was shown are shown.
    void Match(double tolerance);
    /// Shows the rows of one state, or all.
    void Show(std::optional<State> state);
    /// Chooses for rows of the table; those that do not have the choice stay as they are.
    void Choose(const std::vector<int>& rows, Choice choice);
    /// The row of the merge that a row of the table shows.
    size_t MergeRow(int row) const { return m_shown[static_cast<size_t>(row)]; }

    /// What can be chosen for a row of the table, with what is done then; empty for one that is refused.
    std::vector<std::pair<Choice, QString>> ChoicesOf(int row) const;
    Choice ChoiceOf(int row) const { return m_merge.Rows()[MergeRow(row)].choice; }

    static QString NameOf(State state);
    static QString NameOf(Choice choice);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Choices are edited.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QString textOf(size_t row, int column) const;
    QString tipOf(size_t row, int column) const;
    QVariant colorOf(size_t row, int column) const;
    QString stateText(const ListMerge::Row& row) const;
    static QString choiceText(State state, Choice choice);

    ListMerge& m_merge;
    std::optional<State> m_state;
    std::vector<quint32> m_shown;
};
