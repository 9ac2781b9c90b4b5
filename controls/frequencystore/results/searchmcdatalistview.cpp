#include "controls/frequencystore/results/searchmcdatalistview.h"

#include "controls/frequencystore/common/csvallowed.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/results/resultlistviewfactory.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "host/freqlist/buttonbar.h"

#include <QHeaderView>
#include <QPointer>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr char TraceSource[] = "searchmcdatalistview";
constexpr int Right = 2;
/// One less than there are columns; setting the last function makes up for it.
constexpr int CompareFunctions = 4;

struct Column {
    const char* title;
    CompareFunction compare;
    unsigned id;
};

constexpr Column Columns[] = {
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Lock State"), _compStandardString, SourceLocked},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Frequency"), _compNumericWithSuffix, SourceFrequency},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Bandwidth"), _compNumericWithSuffix, SourceBandwidth},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Signal Time"), _compStandardString, SourceLockTime},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Confidence"), _compNumericWithSuffix, SourceConfidence},
};

} // namespace

FrequencyStoreListView* CreateSearchMCDataListView(QWidget* parent, unsigned listId) {
    return new SearchMCDataListView(parent, listId);
}

SearchMCDataListView::SearchMCDataListView(QWidget* parent, unsigned listId)
    : FrequencyNodeListView(parent, listId) {
    setObjectName(QStringLiteral("SearchMCDataListView"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAllColumnsShowFocus(true);
    setShowSortIndicator(true);
    setMultiSelection(true);
    setSelectionMode(ExtendedSelection);
    SetCompareFunctionLength(CompareFunctions);
    for (const Column& column : Columns) {
        AddColumn(tr(column.title), column.compare, column.id);
        setColumnAlignment(static_cast<unsigned>(columnCount() - 1), Right);
    }
    header()->setStretchLastSection(false);
    FitColumns({18, 22, 20, 28, 18});
    SetColumnWidthPersistantName(objectName());
}

void SearchMCDataListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    if (!bar)
        return;
    FrequencyNodeListView::InitFreqStoreWidget(bar);
    for (const Bar::Action action : {Bar::Copy, Bar::Paste, Bar::Save})
        bar->GetAction(action)->setVisible(true);
    OfferCsv({bar->GetAction(Bar::Export)}, CsvIsAllowed());
    bar->OfferPause();
    if (!std::exchange(m_connected, true)) {
        bar->AttachView(this);
        connect(bar->GetAction(Bar::Save), &QAction::triggered, this, &SearchMCDataListView::slotSaveToFile);
        connect(bar->GetAction(Bar::Export), &QAction::triggered, this,
                &SearchMCDataListView::slotExportToFile);
        connect(bar->GetAction(Bar::Copy), &QAction::triggered, this, &SearchMCDataListView::slotCopy);
        connect(bar->GetAction(Bar::Paste), &QAction::triggered, this, &SearchMCDataListView::slotPaste);
    }
    bar->SetCaption(tr("Frequency Store - Search MC Data Results "));
}

void SearchMCDataListView::slotSaveToFile() {
    const QPointer<SearchMCDataListView> alive(this); // the view may end while a dialog is open
    const QString name = SearchMCDataHandler::Instance()->SaveToFile(false);
    if (alive && GetButtonBar())
        GetButtonBar()->SetCaption(tr("Frequency Store - Search MC Data Results, File: ") + name);
}

void SearchMCDataListView::slotExportToFile() {
    SearchMCDataHandler::Instance()->ExportToFile(false);
}

void SearchMCDataListView::slotCopy() {
    CopySelection(TraceSource);
}

void SearchMCDataListView::slotPaste() {
    PasteClipboard(TraceSource);
}
