#include "workstation/sharesitepanel.h"

#include "workstation/sharing.h"

#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int Margin = 4;
constexpr int CountColumn = 1; ///< of the lists

} // namespace

ShareSitePanel::ShareSitePanel(const Sharing& sharing) : m_sharing(sharing) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_state = new QLabel(this);
    m_state->setObjectName(QStringLiteral("State"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    m_state->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->addWidget(m_state);
    m_seats = addTable("Seats", tr("Seats of the site"), {tr("Seat"), tr("User"), tr("Edits")});
    m_lists =
        addTable("Lists", tr("Lists of the site"), {tr("List"), tr("Entries"), tr("State"), tr("Server")});
    m_lists->headerItem()->setTextAlignment(CountColumn, Qt::AlignRight | Qt::AlignVCenter);
    Refresh();
}

QTreeWidget* ShareSitePanel::addTable(const char* name, const QString& title, const QStringList& columns) {
    auto* table = new QTreeWidget(this);
    table->setObjectName(QLatin1String(name));
    table->setAccessibleName(title);
    table->setHeaderLabels(columns);
    table->setRootIsDecorated(false);
    table->setUniformRowHeights(true);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    layout()->addWidget(table);
    return table;
}

/// Where nothing has changed the table stays as it is scrolled.
void ShareSitePanel::show(QTreeWidget& table, Rows rows, Rows& shown) {
    if (rows == shown)
        return;
    table.clear();
    for (const QStringList& texts : rows) {
        auto* row = new QTreeWidgetItem(&table, texts);
        for (int column = 0; column < texts.size(); ++column)
            row->setToolTip(column, texts[column]);
    }
    shown = std::move(rows);
}

void ShareSitePanel::Refresh() {
    m_state->setText(m_sharing.IsOn() ? m_sharing.StateText()
                                      : tr("No list is shared: see Share > Connect..."));
    Rows seats;
    for (const Sharing::Present& present : m_sharing.WhoIsThere())
        seats.push_back({present.isSelf ? tr("%1 (this seat)").arg(present.name) : present.name, present.user,
                         present.edits});
    show(*m_seats, std::move(seats), m_shownSeats);
    Rows lists;
    for (const SiteLists::List& list : m_sharing.WhatIsThere())
        lists.push_back({ShareKind::TitleOf(list.name),
                         list.HasCount() ? QLocale().toString(list.entries) : QString(),
                         SiteLists::StateText(list.state), list.ServerText()});
    show(*m_lists, std::move(lists), m_shownLists);
    for (int row = 0; row < m_lists->topLevelItemCount(); ++row)
        m_lists->topLevelItem(row)->setTextAlignment(CountColumn, Qt::AlignRight | Qt::AlignVCenter);
}
