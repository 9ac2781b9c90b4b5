#include "workstation/mergedialog.h"

#include "host/widgets/frequencyfield.h"
#include "workstation/choicedelegate.h"
#include "workstation/mergemodel.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QToolButton>

namespace {

constexpr QSize Roomy(1000, 560);
constexpr int AllStates = static_cast<int>(ListMerge::StateCount);

/// Widths of the columns in digits; the comment takes the rest.
constexpr int Widths[] = {16, 24, 8, 11, 24, 18, 16};
static_assert(std::size(Widths) == MergeModel::ColumnCount);

constexpr ListMerge::Choice Choices[] = {ListMerge::Choice::Mine, ListMerge::Choice::Theirs,
                                         ListMerge::Choice::Both, ListMerge::Choice::Join};

} // namespace

MergeDialog::MergeDialog(ListMerge& merge, const QString& what, double tolerance, QWidget* parent)
    : QDialog(parent),
      m_merge(merge),
      m_model(new MergeModel(merge, this)),
      m_states(new QButtonGroup(this)),
      m_table(new QTableView),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
    setWindowTitle(tr("Import into List"));
    resize(Roomy);
    auto* layout = new QVBoxLayout(this);
    addTolerance(what, tolerance);
    addStates();
    addTable();
    layout->addWidget(m_table, 1);
    addChoices();
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    match(tolerance);
    m_table->setFocus();
}

void MergeDialog::addTolerance(const QString& what, double tolerance) {
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(what), 1);
    m_tolerance = new FrequencyField;
    m_tolerance->setObjectName(QStringLiteral("Tolerance"));
    m_tolerance->SetDefaultUnit(1);
    m_tolerance->setPlaceholderText(tr("0 Hz"));
    m_tolerance->SetFrequency(tolerance);
    m_tolerance->setToolTip(tr("How far apart the frequencies of one entry may be"));
    auto* label = new QLabel(tr("&Tolerance:"));
    label->setBuddy(m_tolerance);
    row->addWidget(label);
    row->addWidget(m_tolerance);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
    connect(m_tolerance, &FrequencyField::Entered, this, &MergeDialog::match);
}

void MergeDialog::addStates() {
    auto* row = new QHBoxLayout;
    for (int id = AllStates; id >= 0; --id) {
        auto* button = new QToolButton;
        button->setCheckable(true);
        button->setToolTip(id == AllStates ? tr("Show all entries of the file")
                                           : tr("Show only these entries of the file"));
        m_states->addButton(button, id);
    }
    row->addWidget(m_states->button(AllStates));
    for (int id = 0; id < AllStates; ++id)
        row->addWidget(m_states->button(id));
    row->addStretch();
    m_states->button(AllStates)->setChecked(true);
    connect(m_states, &QButtonGroup::idClicked, this, [this](int id) {
        show(id == AllStates ? std::nullopt : std::optional(static_cast<ListMerge::State>(id)));
    });
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

void MergeDialog::addTable() {
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->setItemDelegateForColumn(MergeModel::ColumnChoice, new ChoiceDelegate(m_table));
    m_table->setEditTriggers(QAbstractItemView::EditKeyPressed);
    connect(m_table, &QTableView::clicked, this, [this](const QModelIndex& index) {
        const bool isAlone = m_table->selectionModel()->selectedRows().size() == 1;
        if (isAlone && index.flags() & Qt::ItemIsEditable)
            m_table->edit(index);
    });
    connect(m_model, &MergeModel::dataChanged, this, &MergeDialog::showPlan);
    m_table->setAccessibleName(tr("Entries of the file"));
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    QHeaderView& header = *m_table->horizontalHeader();
    header.setHighlightSections(false);
    for (int column = 0; column < MergeModel::ColumnCount; ++column)
        header.resizeSection(column, fontMetrics().horizontalAdvance(QLatin1Char('0')) * Widths[column]);
    header.setSectionResizeMode(MergeModel::ColumnComment, QHeaderView::Stretch);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MergeDialog::showPlan);
}

void MergeDialog::addChoices() {
    auto* row = new QHBoxLayout;
    m_choiceOf = new QLabel;
    row->addWidget(m_choiceOf);
    for (size_t i = 0; i < std::size(Choices); ++i) {
        const ListMerge::Choice choice = Choices[i];
        const QString key = QString::number(i + 1);
        auto* button = new QPushButton(QStringLiteral("&%1 %2").arg(key, MergeModel::NameOf(choice)));
        button->setAutoDefault(false);
        button->setToolTip(tr("In the table, the key %1").arg(key));
        connect(button, &QPushButton::clicked, this, [this, choice] { choose(choice); });
        auto* shortcut = new QShortcut(QKeySequence(key), m_table);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, choice] { choose(choice); });
        row->addWidget(button);
    }
    row->addStretch();
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

void MergeDialog::match(double tolerance) {
    m_model->Match(tolerance);
    showCounts();
    showPlan();
}

void MergeDialog::show(std::optional<ListMerge::State> state) {
    m_model->Show(state);
    showPlan();
}

/// The selected rows, or all that are shown.
std::vector<int> MergeDialog::chosenRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : m_table->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    for (int row = 0; !m_table->selectionModel()->hasSelection() && row < m_model->rowCount(); ++row)
        rows.push_back(row);
    return rows;
}

void MergeDialog::choose(ListMerge::Choice choice) {
    m_model->Choose(chosenRows(), choice);
}

void MergeDialog::showCounts() {
    const auto name = [this](int id, const QString& text, qsizetype count) {
        m_states->button(id)->setText(QStringLiteral("%1: %2").arg(text, locale().toString(count)));
    };
    name(AllStates, tr("All"), static_cast<qsizetype>(m_merge.Rows().size()));
    for (int id = 0; id < AllStates; ++id) {
        const auto state = static_cast<ListMerge::State>(id);
        name(id, MergeModel::NameOf(state), m_merge.CountOf(state));
    }
}

void MergeDialog::showPlan() {
    const bool hasSelection = m_table->selectionModel()->hasSelection();
    m_choiceOf->setText(hasSelection ? tr("Selected entries:") : tr("All entries shown:"));
    const ListMerge::Plan plan = m_merge.GetPlan();
    QPushButton& button = *m_buttons->button(QDialogButtonBox::Ok);
    button.setText(tr("Add %1, Change %2, Leave %3")
                       .arg(locale().toString(plan.added), locale().toString(plan.changed),
                            locale().toString(plan.left + plan.refused)));
    button.setEnabled(plan.added + plan.changed > 0);
}
