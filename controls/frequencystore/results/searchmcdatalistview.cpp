#include "controls/frequencystore/results/searchmcdatalistview.h"

#include "controls/frequencystore/common/csvallowed.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/results/resultlistviewfactory.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"

#include <QPointer>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr char TraceSource[] = "searchmcdatalistview";

constexpr EntryColumn Columns[] = {
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Lock State"), _compStandardString, SourceLocked, 18},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Frequency"), _compNumericWithSuffix, SourceFrequency, 22},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Bandwidth"), _compNumericWithSuffix, SourceBandwidth, 20},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Signal Time"), _compStandardString, SourceLockTime, 28},
    {QT_TRANSLATE_NOOP("SearchMCDataListView", "Confidence"), _compNumericWithSuffix, SourceConfidence, 18},
};

} // namespace

FrequencyStoreListView* CreateSearchMCDataListView(QWidget* parent, unsigned listId) {
    return new SearchMCDataListView(parent, listId);
}

SearchMCDataListView::SearchMCDataListView(QWidget* parent, unsigned listId)
    : EntryListView(parent, listId, "SearchMCDataListView") {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    AddColumns(Columns);
}

QString SearchMCDataListView::EmptyText() const {
    return tr("No results yet. They come while the classifier runs; files of results can be opened, too.");
}

void SearchMCDataListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    if (!bar)
        return;
    FrequencyNodeListView::InitFreqStoreWidget(bar);
    ShowActions(*bar, {Bar::Copy, Bar::Paste, Bar::Save});
    OfferCsv({bar->GetAction(Bar::Export)}, CsvIsAllowed());
    bar->OfferPause();
    if (AttachToBar(*bar)) {
        ConnectActions<SearchMCDataListView>(*bar, {{Bar::Save, &SearchMCDataListView::slotSaveToFile},
                                                    {Bar::Export, &SearchMCDataListView::slotExportToFile},
                                                    {Bar::Copy, &SearchMCDataListView::slotCopy},
                                                    {Bar::Paste, &SearchMCDataListView::slotPaste}});
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
