#include "host/gui/sortlistviewitem.h"

#include "host/gui/sortlistview.h"

SortListViewItem::SortListViewItem(QTreeWidget* list, const QStringList& texts, bool open)
    : QTreeWidgetItem(UserType) {
    if (!texts.isEmpty()) {
        m_texts = std::make_unique<std::vector<QString>>(texts.begin(), texts.end());
        m_filled = true;
    }
    m_isOpen = open;
    if (auto* sortList = qobject_cast<SortListView*>(list))
        sortList->AddItems({this});
    else if (list)
        list->addTopLevelItem(this);
}

SortListViewItem::~SortListViewItem() {
    if (m_list)
        m_list->takeItem(this);
}

SortListView* SortListViewItem::list() const {
    const auto* row = this;
    while (const QTreeWidgetItem* above = row->parent())
        row = static_cast<const SortListViewItem*>(above);
    return row->m_list;
}

SortListViewItem* SortListViewItem::nextSibling() const {
    if (const QTreeWidgetItem* above = parent())
        return dynamic_cast<SortListViewItem*>(
            above->child(above->indexOfChild(const_cast<SortListViewItem*>(this)) + 1));
    const int row = m_list ? m_list->indexOfTopLevelItem(this) : -1;
    return row < 0 ? nullptr : m_list->topLevelItem(row + 1);
}

void SortListViewItem::setOpen(bool open) {
    m_isOpen = open;
    if (treeWidget())
        setExpanded(open);
    else if (m_list && open)
        m_list->m_anyOpened = true; // opens when it is seen
}

bool SortListViewItem::isSelected() const {
    return m_list ? m_list->m_selection.Has(m_record) : QTreeWidgetItem::isSelected();
}

void SortListViewItem::setSelected(bool selected) {
    if (m_list)
        m_list->setSelected(this, selected);
    else
        QTreeWidgetItem::setSelected(selected);
}

void SortListViewItem::activate() {
    if (m_list)
        m_list->setCurrentItem(this);
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
    self->Fill();
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
    if (m_list)
        m_list->RecordChanged(m_record);
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

/// For those who hear the list: the page alone does not say where it stands.
QString SortListViewItem::placeText() const {
    const int row = m_list ? m_list->indexOfTopLevelItem(this) : -1;
    return row < 0 ? QString() : SortListView::tr("Row %1 of %2").arg(row + 1).arg(m_list->ShownCount());
}

QVariant SortListViewItem::data(int column, int role) const {
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return text(column);
    case Qt::ToolTipRole:
        return tipWithNote();
    case Qt::AccessibleDescriptionRole:
        return placeText();
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
    if (m_list)
        m_list->RecordChanged(m_record);
}

SortListViewItemIterator::SortListViewItemIterator(QTreeWidget* list, unsigned flags)
    : m_list(qobject_cast<SortListView*>(list)), m_flags(flags) {
    findRow(0);
}

/// Goes to the first row from that one on that is wanted.
void SortListViewItemIterator::findRow(int row) {
    const int rows = m_list ? m_list->ShownCount() : 0;
    while ((m_flags & Selected) != 0 && row < rows && !m_list->IsRowSelected(row))
        ++row;
    m_row = row;
    m_current = row < rows ? m_list->topLevelItem(row) : nullptr;
}

/// What follows within the row, or null.
SortListViewItem* SortListViewItemIterator::following() const {
    if (m_current->childCount() > 0)
        return static_cast<SortListViewItem*>(m_current->child(0));
    for (SortListViewItem* item = m_current; item->parent();
         item = static_cast<SortListViewItem*>(item->parent())) {
        if (SortListViewItem* next = item->nextSibling())
            return next;
    }
    return nullptr;
}

SortListViewItemIterator& SortListViewItemIterator::operator++() {
    const bool within = (m_flags & Selected) == 0 && m_current;
    SortListViewItem* next = within ? following() : nullptr;
    if (next)
        m_current = next;
    else
        findRow(m_row + 1);
    return *this;
}
