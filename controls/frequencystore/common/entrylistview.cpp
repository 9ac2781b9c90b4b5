#include "controls/frequencystore/common/entrylistview.h"

#include "controls/frequencystore/common/columntips.h"
#include "controls/frequencystore/common/halvovieweditor.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/widgets/canclosetabdialog.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QPointer>

namespace {
constexpr int LeastRest = 20; ///< characters
}

EntryListView::EntryListView(QWidget* parent, unsigned listId, const char* name)
    : FrequencyNodeListView(parent, listId) {
    setObjectName(QString::fromLatin1(name));
    setAllColumnsShowFocus(true);
    setShowSortIndicator(true);
    setMultiSelection(true);
    setSelectionMode(ExtendedSelection);
}

void EntryListView::AddColumns(const EntryColumns& all, const QString& kind) {
    const std::span<const EntryColumn> columns = all.columns;
    // One less than there are columns; setting the last function makes up for it.
    SetCompareFunctionLength(static_cast<int>(columns.size()) - 1);
    std::vector<int> widths;
    for (const EntryColumn& column : columns) {
        AddColumn(QCoreApplication::translate(all.context, column.title), column.compare, column.id);
        setColumnAlignment(static_cast<unsigned>(columnCount() - 1), column.alignment);
        ColumnTips::Set(*headerItem(), columnCount() - 1, column.title);
        widths.push_back(column.width);
        if (column.copyName)
            m_copied.push_back(
                {column.id, FreqStore::Instance().GetCopyStructId(QString::fromLatin1(column.copyName))});
    }
    header()->setStretchLastSection(false);
    FitColumns(widths);
    for (size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].takesRest)
            continue;
        m_rest = static_cast<int>(i);
        m_restLeast =
            std::min(header()->sectionSize(m_rest), LeastRest * QFontMetrics(font()).averageCharWidth());
        setColumnWidthMode(m_rest, QHeaderView::Stretch);
    }
    SetColumnWidthPersistantName(objectName() + kind);
    connect(header(), &QHeaderView::sectionResized, this, [this](int column) {
        if (column != m_rest)
            giveRest();
    });
    giveRest();
}

/// In a list that is too narrow for all columns it keeps a width of its own, and the list scrolls.
void EntryListView::giveRest() {
    if (m_rest < 0)
        return;
    const int others = header()->length() - header()->sectionSize(m_rest);
    const bool isNarrow = viewport()->width() - others < m_restLeast;
    setColumnWidthMode(m_rest, isNarrow ? QHeaderView::Fixed : QHeaderView::Stretch);
    if (isNarrow && !header()->isSectionHidden(m_rest))
        header()->resizeSection(m_rest, m_restLeast);
}

void EntryListView::resizeEvent(QResizeEvent* event) {
    FrequencyNodeListView::resizeEvent(event);
    giveRest();
}

void EntryListView::CopyEntries(TracePlace place) {
    const std::vector<FrequencyNodeMediator*> mediators = CopiedMediators();
    if (mediators.empty())
        return;
    CopySelection(place);
    FreqStore::Instance().ClearFrequencyListCopyStruct();
    for (FrequencyNodeMediator* mediator : mediators) {
        FrequencyListCopyStruct row;
        FillCopyRow(*mediator, row);
        FreqStore::Instance().AddFrequencyListCopyStruct(row);
    }
}

void EntryListView::FillCopyRow(FrequencyNodeMediator& mediator, FrequencyListCopyStruct& row) const {
    for (const CopiedColumn& copied : m_copied) {
        QString text;
        mediator.CellText(copied.column, text);
        row.SetValue(copied.copyId, text);
    }
}

unsigned EntryListView::CopyId(unsigned columnId) const {
    return std::find_if(m_copied.begin(), m_copied.end(),
                        [columnId](const CopiedColumn& copied) { return copied.column == columnId; })
        ->copyId;
}

FrequencyNodeMediatorCtrl* EntryListView::List() const {
    return dynamic_cast<FrequencyNodeMediatorCtrl*>(Controller());
}

void EntryListView::MakeCurrent(unsigned long index) {
    const FrequencyNodeMediator* mediator = List() ? List()->At(index) : nullptr;
    FrequencyNodeMediatorViewItem* row = mediator ? mediator->GetItem4View(this) : nullptr;
    if (!ShowRow(row)) // even if the filter hides it
        return;
    clearSelection();
    row->activate();
}

bool EntryListView::RunEditor(const std::vector<FrequencyNodeMediator*>& mediators, MediatorType type,
                              const QString& title, const QString& name) {
    // While the dialog is open, files may be read and the window may close.
    const QPointer<EntryListView> alive(this);
    const QPointer<CanCloseTabDialog> dialog =
        new CanCloseTabDialog(this, nullptr, true, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
    dialog->setWindowTitle(title);
    auto* editor = new HalvoViewEditor(dialog, name, type);
    dialog->addTab(editor, QCoreApplication::translate("EntryListView", "Edit"));
    editor->DoWorkOn(mediators);
    connect(dialog, &CanCloseTabDialog::applyButtonPressed, editor, &HalvoViewEditor::slotAcceptChanges);
    dialog->exec();
    if (alive)
        delete dialog;
    return alive;
}

void EntryListView::ShowActions(FreqStoreListViewButtonBar& bar,
                                std::initializer_list<FreqStoreListViewButtonBar::Action> actions,
                                bool visible) {
    for (const FreqStoreListViewButtonBar::Action action : actions)
        bar.GetAction(action)->setVisible(visible);
}

bool EntryListView::AttachToBar(FreqStoreListViewButtonBar& bar) {
    if (std::exchange(m_attached, true))
        return false;
    bar.AttachView(this);
    return true;
}
