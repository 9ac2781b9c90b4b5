#include "controls/frequencystore/noi/searchmcnoilistview.h"

#include "controls/frequencystore/common/csvallowed.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/noi/noilistviewfactory.h"
#include "host/base/problems.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"

#include <QPointer>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr char TraceSource[] = "searchmcnoilistview";

constexpr EntryColumn Columns[] = {
    {QT_TRANSLATE_NOOP("SearchMCNOIListView", "Frequency"), _compNumericWithSuffix, SourceFrequency, 18,
     "Frequency"},
    {QT_TRANSLATE_NOOP("SearchMCNOIListView", "Bandwidth"), _compNumericWithSuffix, SourceBandwidth, 14,
     "Bandwidth"},
    {QT_TRANSLATE_NOOP("SearchMCNOIListView", "Comment"), _compStandardString, SourceText, 40, "Comment",
     true},
};

} // namespace

FrequencyStoreListView* CreateSearchMCNOIListView(QWidget* parent, unsigned listId) {
    return new SearchMCNOIListView(parent, listId);
}

const EntryColumns& NoiColumns() {
    static constexpr EntryColumns columns{Columns, "SearchMCNOIListView"};
    return columns;
}

SearchMCNOIListView::SearchMCNOIListView(QWidget* parent, unsigned listId)
    : EntryListView(parent, listId, "SearchMCNOIListView") {
    AddColumns(NoiColumns());
    const auto edit = qOverload<SortListViewItem*>(&SearchMCNOIListView::slotEdit);
    connect(this, &SortListView::doubleClicked, this, edit);
    connect(this, &SortListView::returnPressed, this, edit);
}

QString SearchMCNOIListView::EmptyText() const {
    return tr("No frequencies of interest (NOI) yet. Add one, open a list, or send detections here.");
}

void SearchMCNOIListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    if (!bar)
        return;
    FrequencyNodeListView::InitFreqStoreWidget(bar);
    bar->SetCaption(tr("Frequency Store - NOI Frequencies"));
    ShowActions(*bar, {Bar::Read, Bar::Save, Bar::Copy, Bar::Paste, Bar::New, Bar::Edit, Bar::Delete});
    OfferCsv({bar->GetAction(Bar::Export), bar->GetAction(Bar::Import)},
             CsvIsAllowed(QStringLiteral("ViewMenu")));
    if (AttachToBar(*bar))
        connectBar(*bar);
    showWaiting();
}

void SearchMCNOIListView::connectBar(FreqStoreListViewButtonBar& bar) {
    ConnectActions<SearchMCNOIListView>(bar, {{Bar::Read, &SearchMCNOIListView::slotLoadFile},
                                              {Bar::Save, &SearchMCNOIListView::slotSaveToFile},
                                              {Bar::Copy, &SearchMCNOIListView::slotCopy},
                                              {Bar::Paste, &SearchMCNOIListView::slotPaste},
                                              {Bar::New, &SearchMCNOIListView::slotNew},
                                              {Bar::Edit, &SearchMCNOIListView::slotEdit},
                                              // First the entries go, then the band list follows.
                                              {Bar::Delete, &SearchMCNOIListView::DeleteSelectedEntries},
                                              {Bar::Delete, &SearchMCNOIListView::slotDelete},
                                              {Bar::Export, &SearchMCNOIListView::slotExportToFile},
                                              {Bar::Import, &SearchMCNOIListView::slotImportFromFile}});
    connect(NOIFrequencyHandler::Instance(), &NOIFrequencyHandler::signalNewFileLoaded, this,
            &SearchMCNOIListView::showWaiting);
}

bool SearchMCNOIListView::isWaiting() const {
    return Controller() && NOIFrequencyHandler::Instance()->IsWaitingForFile();
}

QString SearchMCNOIListView::WhyOff(int action) const {
    const bool adds = action == Bar::New || action == Bar::Paste || action == Bar::Edit;
    return adds && isWaiting() ? tr("The last file could not be read: open another one.") : QString();
}

/// Lets the bar follow; true when the list takes no entries.
bool SearchMCNOIListView::showWaiting() {
    if (GetButtonBar())
        GetButtonBar()->EnableActions();
    return isWaiting();
}

void SearchMCNOIListView::runFileCommand(QString (NOIFrequencyHandler::*command)()) {
    const QPointer<SearchMCNOIListView> alive(this); // the view may end while a dialog is open
    const QString name = (NOIFrequencyHandler::Instance()->*command)();
    if (!alive)
        return;
    m_fileName = name;
    showWaiting();
}

void SearchMCNOIListView::slotLoadFile() {
    runFileCommand(&NOIFrequencyHandler::FileOpen);
}

void SearchMCNOIListView::slotImportFromFile() {
    runFileCommand(&NOIFrequencyHandler::FileImport);
}

void SearchMCNOIListView::slotExportToFile() {
    runFileCommand(&NOIFrequencyHandler::FileExport);
}

void SearchMCNOIListView::slotSaveToFile() {
    const QPointer<SearchMCNOIListView> alive(this);
    const QString name = NOIFrequencyHandler::Instance()->FileSave(false);
    if (alive)
        m_fileName = name;
}

void SearchMCNOIListView::slotCopy() {
    CopyEntries(TraceSource);
}

void SearchMCNOIListView::FillCopyRow(FrequencyNodeMediator& mediator, FrequencyListCopyStruct& row) const {
    double bandwidth = 0;
    mediator.GetBandwidth(bandwidth, 0);
    EntryListView::FillCopyRow(mediator, row);
    row.SetValue(CopyId(SourceBandwidth), QStringLiteral("%1").arg(bandwidth, 0, 'f', -1));
}

// A list that waits for a file would lose what is added to it to that file.
void SearchMCNOIListView::slotPaste() {
    if (!showWaiting())
        PasteClipboard(TraceSource);
}

void SearchMCNOIListView::slotNew() {
    if (showWaiting())
        return;
    addNew();
    goToNewest();
}

void SearchMCNOIListView::addNew() {
    NOIFrequencyHandler::Instance()->InsertNewValue(-1.0, 0.0, QString());
    if (Controller())
        Controller()->ForceUpdateNow();
}

void SearchMCNOIListView::goToNewest() {
    if (List() && List()->size() > 0)
        MakeCurrent(List()->size() - 1);
}

void SearchMCNOIListView::slotEdit() {
    slotEdit(currentItem());
}

void SearchMCNOIListView::slotEdit(SortListViewItem* item) {
    if (!item) {
        if (showWaiting())
            return;
        addNew();
        if (!currentItem())
            goToNewest();
        item = currentItem();
    }
    auto* row = dynamic_cast<FrequencyNodeMediatorViewItem*>(item);
    if (!row || !row->GetMediator())
        return;
    const WeakRef<FrequencyNodeMediator> mediator(row->GetMediator());
    if (!RunEditor({mediator.get()}, MediatorType::NoiFrequencies, tr("Frequency of interest"),
                   QStringLiteral("NOI Editor")))
        return;
    if (mediator)
        mediator->UpdateMyViewItems(this);
    slotDelete();
}

void SearchMCNOIListView::slotDelete() {
    if (Controller())
        NOIFrequencyHandler::Instance()->UpdateNOIList();
}
