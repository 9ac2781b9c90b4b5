#include "host/gui/columnarrangement.h"
#include "host/gui/sortlistview.h"

#include <QHeaderView>
#include <QMenu>

void SortListView::SetColumnGroup(int column, const QString& group) {
    m_columnGroups[column] = group;
}

/// An entry that shows or hides these columns; one column at least stays.
QAction* SortListView::addColumnAction(QMenu& menu, const QString& text, const std::vector<int>& columns) {
    const auto hidden =
        std::count_if(columns.begin(), columns.end(), [this](int column) { return isColumnHidden(column); });
    const auto shown = static_cast<std::ptrdiff_t>(columns.size()) - hidden;
    QAction* action = menu.addAction(text);
    action->setCheckable(true);
    action->setChecked(hidden == 0);
    action->setEnabled(hidden > 0 || columnCount() - header()->hiddenSectionCount() > shown);
    connect(action, &QAction::toggled, this, [this, columns](bool show) {
        for (const int column : columns)
            setColumnHidden(column, !show);
    });
    return action;
}

void SortListView::addGroupMenu(QMenu& menu, const QString& group) {
    std::vector<int> columns;
    for (int column = 0; column < columnCount(); ++column) {
        if (m_columnGroups.value(column) == group)
            columns.push_back(column);
    }
    QMenu* choices = menu.addMenu(group);
    addColumnAction(*choices, tr("All of %1").arg(group), columns);
    choices->addSeparator();
    for (const int column : columns)
        addColumnAction(*choices, headerItem()->text(column), {column});
}

void SortListView::AddColumnActionsTo(QMenu& menu) {
    QStringList groups;
    for (int column = 0; column < columnCount(); ++column) {
        const QString group = m_columnGroups.value(column);
        if (group.isEmpty()) {
            addColumnAction(menu, headerItem()->text(column), {column});
        } else if (!groups.contains(group)) {
            groups << group;
            addGroupMenu(menu, group);
        }
    }
    menu.addSeparator();
    connect(menu.addAction(tr("Unsorted")), &QAction::triggered, this,
            [this] { sortByColumn(-1, Qt::AscendingOrder); });
    connect(menu.addAction(tr("Reset columns")), &QAction::triggered, this,
            [this] { ColumnArrangement::Apply(*header(), m_defaultColumns); });
}

void SortListView::slotHeaderContextMenuRequested(const QPoint& position) {
    QMenu menu;
    if (m_headerMenu && !m_headerMenu->isEmpty()) {
        menu.addActions(m_headerMenu->actions());
        menu.addSeparator();
    }
    AddColumnActionsTo(menu);
    menu.exec(header()->mapToGlobal(position));
}
