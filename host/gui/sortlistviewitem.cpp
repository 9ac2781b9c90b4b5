#include "host/gui/sortlistviewitem.h"

#include "host/gui/sortlistview.h"

SortListViewItem::SortListViewItem(QTreeWidget* list, const QStringList& texts, bool open)
    : QTreeWidgetItem(UserType) {
    if (!texts.isEmpty()) {
        m_texts = std::make_unique<std::vector<QString>>(texts.begin(), texts.end());
        m_filled = true;
    }
    if (auto* sortList = qobject_cast<SortListView*>(list))
        sortList->AddItems({this});
    else if (list)
        list->addTopLevelItem(this);
    if (open)
        setExpanded(true);
}

SortListViewItem::~SortListViewItem() = default;

SortListView* SortListViewItem::list() const {
    return static_cast<SortListView*>(treeWidget());
}

SortListViewItem* SortListViewItem::nextSibling() const {
    QTreeWidgetItem* next = nullptr;
    if (const QTreeWidgetItem* above = parent())
        next = above->child(above->indexOfChild(const_cast<SortListViewItem*>(this)) + 1);
    else if (const QTreeWidget* tree = treeWidget())
        next = tree->topLevelItem(tree->indexOfTopLevelItem(const_cast<SortListViewItem*>(this)) + 1);
    return dynamic_cast<SortListViewItem*>(next);
}

void SortListViewItem::activate() {
    if (QTreeWidget* tree = treeWidget()) {
        tree->setCurrentItem(this);
        tree->scrollToItem(this);
    }
}

void SortListViewItem::sortChildItems(int column, bool ascending) {
    sortChildren(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

bool SortListViewItem::operator<(const QTreeWidgetItem& other) const {
    const SortListView* tree = list();
    const int column = tree && tree->SortColumn() >= 0 ? tree->SortColumn() : 0;
    const CompareFunction compare = tree ? tree->compareFunction(column) : _compStandardString;
    return compare(CellText(column), static_cast<const SortListViewItem&>(other).CellText(column)) < 0;
}

void SortListViewItem::ensureFilled() const {
    if (m_filled)
        return;
    auto* self = const_cast<SortListViewItem*>(this);
    self->m_filled = true;
    SortListView* tree = list();
    if (tree) {
        ++tree->m_filling;
        ++tree->m_fillCount;
    }
    const bool mayMove = m_mayMove;
    self->Fill();
    self->m_mayMove = mayMove; // its texts are asked for, they have not changed
    if (tree)
        --tree->m_filling;
}

QString SortListViewItem::text(int column) const {
    ensureFilled();
    return m_texts && column >= 0 && static_cast<size_t>(column) < m_texts->size()
               ? (*m_texts)[static_cast<size_t>(column)]
               : QString();
}

void SortListViewItem::setText(int column, const QString& text) {
    if (column < 0)
        return;
    if (!m_texts)
        m_texts = std::make_unique<std::vector<QString>>();
    if (static_cast<size_t>(column) >= m_texts->size())
        m_texts->resize(static_cast<size_t>(column) + 1);
    QString& cell = (*m_texts)[static_cast<size_t>(column)];
    if (cell == text)
        return;
    cell = text;
    SortListView* tree = list();
    if (tree && tree->IsFilling())
        return;
    letMove();
    if (tree)
        emitDataChanged();
}

QString SortListViewItem::tipWithNote() const {
    QStringList lines{ToolTip()};
    if (const QString note = list() ? list()->NoteOf(*this) : QString(); !note.isEmpty())
        lines << list()->GetRowNote().title + QStringLiteral(": ") + note;
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

QVariant SortListViewItem::data(int column, int role) const {
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return text(column);
    case Qt::ToolTipRole:
        return tipWithNote();
    case Qt::TextAlignmentRole:
        return list() ? QVariant(static_cast<int>(list()->ColumnAlignment(column))) : QVariant();
    default:
        return QTreeWidgetItem::data(column, role);
    }
}

void SortListViewItem::setData(int column, int role, const QVariant& value) {
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        setText(column, value.toString());
    else
        QTreeWidgetItem::setData(column, role, value);
}

void SortListViewItem::MarkStale() {
    m_filled = false;
    letMove();
}

void SortListViewItem::letMove() {
    if (std::exchange(m_mayMove, true))
        return;
    SortListView* tree = list();
    if (tree && tree->m_changedRows.size() <= SortListView::FewRows)
        tree->m_changedRows.push_back(this);
}

SortListViewItemIterator::SortListViewItemIterator(QTreeWidget* list, unsigned flags)
    : m_walk(list), m_flags(flags) {
    skipUnwanted();
}

SortListViewItemIterator& SortListViewItemIterator::operator++() {
    ++m_walk;
    skipUnwanted();
    return *this;
}

void SortListViewItemIterator::skipUnwanted() {
    while ((m_flags & Selected) != 0 && current() && !current()->isSelected())
        ++m_walk;
}
