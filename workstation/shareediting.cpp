#include "workstation/shareediting.h"

#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "workstation/detailspanel.h"
#include "workstation/icons.h"
#include "workstation/mainwindow.h"
#include "workstation/sharing.h"

#include <QApplication>
#include <QPointer>
#include <QToolButton>

#include <algorithm>

namespace {

const Node* nodeOf(const SortListViewItem* row) {
    const auto* const entry = dynamic_cast<const FrequencyNodeMediatorViewItem*>(row);
    return entry && entry->GetMediator() ? entry->GetMediator()->GetNode() : nullptr;
}

} // namespace

ShareEditing::ShareEditing(Sharing& sharing, MainWindow& window) : m_sharing(sharing), m_window(window) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* now) { follow(now); });
    connect(&sharing, &Sharing::Changed, this, [this] {
        noteLists();
        mark();
    });
}

/// While another program has the focus, what is edited here stays so.
void ShareEditing::follow(const QWidget* focus) {
    if (focus && m_sharing.IsOn())
        m_sharing.SetEditing(editedIn(*focus));
}

/// A field in a row, in a dialog of the list, or in the details is that of the list's current entry; null
/// for all else.
const Node* ShareEditing::editedIn(const QWidget& focus) const {
    if (qobject_cast<const QToolButton*>(&focus))
        return nullptr;
    for (const QWidget* widget = &focus; widget; widget = widget->parentWidget()) {
        if (const auto* list = qobject_cast<const FrequencyNodeListView*>(widget))
            return widget == &focus ? nullptr : nodeOf(list->currentItem());
        if (!qobject_cast<const DetailsPanel*>(widget))
            continue;
        FrequencyStoreListView* const shown = m_window.ViewOf(m_window.ShownList());
        return shown ? nodeOf(shown->GetListView()->currentItem()) : nullptr;
    }
    return nullptr;
}

void ShareEditing::noteLists() {
    const std::vector<int> shared = m_sharing.SharedLists();
    for (const int id : shared) {
        FrequencyStoreListView* const view = m_window.ViewOf(id);
        if (!view || !m_noted.insert(id).second)
            continue;
        view->GetListView()->SetRowNote(
            {tr("Being edited by"), [self = QPointer(this)](const SortListViewItem& row) {
                 const Node* const entry = nodeOf(&row);
                 return self && entry ? self->editorsOf(*entry) : QString();
             }});
    }
    std::erase_if(m_noted, [&](int id) { return std::ranges::find(shared, id) == shared.end(); });
}

QString ShareEditing::editorsOf(const Node& entry) const {
    for (const Sharing::Edited& edited : m_sharing.EditedByOthers()) {
        if (edited.entry == &entry)
            return edited.names.join(QStringLiteral(", "));
    }
    return QString();
}

void ShareEditing::mark() {
    const std::vector<Sharing::Edited> edited = m_sharing.EditedByOthers();
    for (const auto& [listId, entry] : std::exchange(m_marked, {})) {
        if (entry && std::ranges::find(edited, entry.get(), &Sharing::Edited::entry) == edited.end())
            setIcon(listId, *entry.get(), false);
    }
    for (const Sharing::Edited& one : edited) {
        setIcon(one.listId, *one.entry, true);
        m_marked.emplace_back(one.listId, one.entry);
    }
}

/// A pencil before the first cell of the entry's row.
void ShareEditing::setIcon(int listId, const Node& entry, bool isMarked) const {
    auto* const list = dynamic_cast<FrequencyNodeMediatorCtrl*>(
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(listId)));
    FrequencyStoreListView* const view = m_window.ViewOf(listId);
    FrequencyNodeMediator* const mediator = list ? list->Find(&entry) : nullptr;
    auto* const rows = view ? qobject_cast<FrequencyNodeListView*>(view->GetListView()) : nullptr;
    FrequencyNodeMediatorViewItem* const row = mediator && rows ? mediator->GetItem4View(rows) : nullptr;
    if (row)
        row->setIcon(0, isMarked ? Icons::Get(QStringLiteral("edit")) : QIcon());
}
