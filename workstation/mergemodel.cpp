#include "workstation/mergemodel.h"

#include "host/base/frequencytext.h"
#include "host/gui/colorset.h"

#include <algorithm>
#include <cmath>

namespace {

using State = ListMerge::State;
using Part = ListMerge::Part;

struct ColumnInfo {
    const char* title;
    Part part; ///< `Others` for a column that shows something else
};
/// By column.
constexpr ColumnInfo Columns[] = {
    {QT_TRANSLATE_NOOP("MergeModel", "State"), Part::Others},
    {QT_TRANSLATE_NOOP("MergeModel", "Frequency"), Part::Frequency},
    {QT_TRANSLATE_NOOP("MergeModel", "Demod."), Part::Demodulation},
    {QT_TRANSLATE_NOOP("MergeModel", "Bandwidth"), Part::Bandwidth},
    {QT_TRANSLATE_NOOP("MergeModel", "Comment"), Part::Comment},
    {QT_TRANSLATE_NOOP("MergeModel", "Besides"), Part::Others},
    {QT_TRANSLATE_NOOP("MergeModel", "What is done"), Part::Others},
};
static_assert(std::size(Columns) == MergeModel::ColumnCount);

struct StateInfo {
    const char* name;
    const char* ofRow; ///< %1 is the row of the list that the entry belongs to
    IColorBase::ECOLOR color;
};
/// By state.
constexpr StateInfo States[] = {
    {QT_TRANSLATE_NOOP("MergeModel", "New"), QT_TRANSLATE_NOOP("MergeModel", "New"), IColorBase::GOOD_TEXT},
    {QT_TRANSLATE_NOOP("MergeModel", "Different"), QT_TRANSLATE_NOOP("MergeModel", "Differs from %1"),
     IColorBase::WARNING_TEXT},
    {QT_TRANSLATE_NOOP("MergeModel", "Equal"), QT_TRANSLATE_NOOP("MergeModel", "Equal to %1"),
     IColorBase::MUTED_TEXT},
    {QT_TRANSLATE_NOOP("MergeModel", "Refused"), QT_TRANSLATE_NOOP("MergeModel", "Refused"),
     IColorBase::ERROR_TEXT},
};
static_assert(std::size(States) == ListMerge::StateCount);

/// By choice.
constexpr const char* Choices[] = {
    QT_TRANSLATE_NOOP("MergeModel", "Keep mine"), QT_TRANSLATE_NOOP("MergeModel", "Take theirs"),
    QT_TRANSLATE_NOOP("MergeModel", "Keep both"), QT_TRANSLATE_NOOP("MergeModel", "Join comments")};

Qt::Alignment alignmentOf(int column) {
    const bool isNumber = column == MergeModel::ColumnFrequency || column == MergeModel::ColumnBandwidth;
    return (isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

/// What comes is to be seen in a cell, too, however long what is there.
QString beginningOf(QString text) {
    constexpr qsizetype Longest = 16;
    if (text.size() <= Longest)
        return text;
    text.truncate(Longest - 1);
    if (text.back().isHighSurrogate())
        text.chop(1);
    return text.trimmed() + QChar(0x2026);
}

const StateInfo& infoOf(State state) {
    return States[static_cast<size_t>(state)];
}

} // namespace

MergeModel::MergeModel(ListMerge& merge, QObject* parent) : QAbstractTableModel(parent), m_merge(merge) {}

QString MergeModel::NameOf(State state) {
    return tr(infoOf(state).name);
}

QString MergeModel::NameOf(Choice choice) {
    return tr(Choices[static_cast<size_t>(choice)]);
}

void MergeModel::Match(double tolerance) {
    m_merge.Match(tolerance);
    Show(m_state);
}

void MergeModel::Show(std::optional<State> state) {
    beginResetModel();
    m_state = state;
    m_shown.clear();
    const std::vector<ListMerge::Row>& rows = m_merge.Rows();
    for (quint32 row = 0; row < rows.size(); ++row) {
        if (!state || rows[row].state == *state)
            m_shown.push_back(row);
    }
    endResetModel();
}

void MergeModel::Choose(const std::vector<int>& rows, Choice choice) {
    for (const int row : rows)
        m_merge.Choose(MergeRow(row), choice);
    if (!rows.empty())
        emit dataChanged(index(*std::ranges::min_element(rows), ColumnChoice),
                         index(*std::ranges::max_element(rows), ColumnChoice));
}

int MergeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int MergeModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString MergeModel::stateText(const ListMerge::Row& row) const {
    const QString text = tr(infoOf(row.state).ofRow);
    return row.mine == EntryMerge::None ? text : text.arg(row.mine + 1);
}

QString MergeModel::choiceText(State state, Choice choice) {
    if (state == State::New || state == State::Refused)
        return choice == Choice::Mine ? tr("Left out") : tr("Added");
    return NameOf(choice);
}

std::vector<std::pair<ListMerge::Choice, QString>> MergeModel::ChoicesOf(int row) const {
    std::vector<std::pair<Choice, QString>> choices;
    const size_t place = MergeRow(row);
    for (const Choice choice : m_merge.ChoicesOf(place))
        choices.emplace_back(choice, choiceText(m_merge.Rows()[place].state, choice));
    return choices;
}

Qt::ItemFlags MergeModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isChosen = index.isValid() && index.column() == ColumnChoice &&
                          m_merge.Rows()[MergeRow(index.row())].state != State::Refused;
    return isChosen ? flags | Qt::ItemIsEditable : flags;
}

/// What is there stands before what comes, where they differ.
QString MergeModel::textOf(size_t row, int column) const {
    const ListMerge::Row& entry = m_merge.Rows()[row];
    switch (column) {
    case ColumnState:
        return stateText(entry);
    case ColumnOthers:
        return entry.state == State::Refused ? m_merge.ReasonOf(row) : m_merge.OtherDifferences(row);
    case ColumnChoice:
        return choiceText(entry.state, entry.choice);
    default:
        const ListMerge::Cell cell = m_merge.CellOf(row, Columns[column].part);
        if (cell.differs && cell.offset != 0)
            return QStringLiteral("%1 (%2%3)")
                .arg(cell.theirs, QLatin1String(cell.offset > 0 ? "+" : "-"),
                     Quor::ShortFrequencyText(std::abs(cell.offset)));
        if (cell.differs)
            return QStringLiteral("%1 → %2").arg(beginningOf(cell.mine), cell.theirs);
        return cell.theirs.isEmpty() ? cell.mine : cell.theirs;
    }
}

QString MergeModel::tipOf(size_t row, int column) const {
    const Part part = Columns[column].part;
    const ListMerge::Cell cell = m_merge.CellOf(row, part);
    if (part == Part::Others || !cell.differs)
        return textOf(row, column); // which may be cut in its cell
    return tr("Mine: %1\nTheirs: %2").arg(cell.mine, cell.theirs);
}

QVariant MergeModel::colorOf(size_t row, int column) const {
    const State state = m_merge.Rows()[row].state;
    const Part part = Columns[column].part;
    const bool isMarked = column == ColumnState || column == ColumnOthers ||
                          (part != Part::Others && m_merge.CellOf(row, part).differs);
    if (!isMarked && state != State::Equal)
        return QVariant();
    return ColorSet::Instance().GetColorDefinition(infoOf(state).color).GetColor();
}

QVariant MergeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return QVariant();
    const size_t row = MergeRow(index.row());
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return textOf(row, column);
    case Qt::ToolTipRole:
        return tipOf(row, column);
    case Qt::ForegroundRole:
        return colorOf(row, column);
    case Qt::TextAlignmentRole:
        return QVariant(alignmentOf(column));
    default:
        return QVariant();
    }
}

QVariant MergeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return role == Qt::DisplayRole ? QVariant(static_cast<int>(MergeRow(section)) + 1) : QVariant();
    if (role == Qt::TextAlignmentRole)
        return QVariant(alignmentOf(section));
    if (role == Qt::ToolTipRole && section == ColumnState)
        return tr("What becomes of the entry, and which row of the list it belongs to");
    return role == Qt::DisplayRole ? QVariant(tr(Columns[section].title)) : QVariant();
}
