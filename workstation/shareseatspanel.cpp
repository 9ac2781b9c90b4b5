#include "workstation/shareseatspanel.h"

#include "workstation/sharing.h"

#include <QHeaderView>

ShareSeatsPanel::ShareSeatsPanel(const Sharing& sharing) : m_sharing(sharing) {
    setAccessibleName(tr("Seats of the site"));
    setHeaderLabels({tr("Seat"), tr("User"), tr("Edits")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionMode(NoSelection);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

void ShareSeatsPanel::Refresh() {
    clear();
    for (const Sharing::Present& present : m_sharing.WhoIsThere()) {
        auto* row =
            new QTreeWidgetItem(this, {present.isSelf ? tr("%1 (this seat)").arg(present.name) : present.name,
                                       present.user, present.edits});
        row->setToolTip(0, row->text(0));
    }
}
