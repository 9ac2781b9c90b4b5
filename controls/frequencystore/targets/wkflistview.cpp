#include "controls/frequencystore/targets/wkflistview.h"

#include "controls/frequencystore/common/csvallowed.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/targetlistviewfactory.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/gui/resortpopupmenu.h"

#include <QPointer>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr EntryColumn Columns[] = {
    {QT_TRANSLATE_NOOP("WkfListView", "Frequency"), _compNumericWithSuffix, SourceFrequency, 14, "Frequency"},
    {QT_TRANSLATE_NOOP("WkfListView", "Name"), _compStandardString, SourceText, 30, "Comment", true,
     EntryColumn::Left},
    {QT_TRANSLATE_NOOP("WkfListView", "Bandwidth"), _compNumericWithSuffix, SourceBandwidth, 10, "Bandwidth"},
    {QT_TRANSLATE_NOOP("WkfListView", "Demodulation"), _compStandardString, SourceDemodulation, 8,
     "Demodulation"},
    {QT_TRANSLATE_NOOP("WkfListView", "Priority"), _compStandardNumeric, ColumnPriority, 4},
    {QT_TRANSLATE_NOOP("WkfListView", "Threatclass"), _compStandardString, ColumnThreatClass, 13},
    {QT_TRANSLATE_NOOP("WkfListView", "Signal Class"), _compStandardString, ColumnSignalClass, 12},
    {QT_TRANSLATE_NOOP("WkfListView", "Transmission System"), _compStandardString, ColumnTransmissionSystem,
     17},
};

} // namespace

FrequencyStoreListView* CreateWkfListView(QWidget* parent, unsigned listId) {
    return new WkfListView(parent, listId);
}

WkfListView::WkfListView(QWidget* parent, unsigned listId)
    : EntryListView(parent, listId, "LocalTargetListView"),
      m_copyType(FreqStore::Instance().GetCopyStructId(QStringLiteral("Type"))) {
    AddColumns(Columns);
    connect(this, &SortListView::clicked, this, &WkfListView::slotItemClicked);
}

QString WkfListView::EmptyText() const {
    return tr(
        "No targets yet. Open a list or drop its file on the window, or paste entries of another list.");
}

QString WkfListView::WhyOff(int action) const {
    const bool edits = action == Bar::New || action == Bar::Edit || action == Bar::Paste ||
                       action == Bar::Delete || action == Bar::Read || action == Bar::Import;
    return edits && Controller() ? TargetListHandler::Instance()->WhyNoEditing() : QString();
}

void WkfListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    if (!bar)
        return;
    FrequencyNodeListView::InitFreqStoreWidget(bar);
    bar->SetCaption(tr("Frequency Store - Local Target List"));
    bar->OfferWithoutButton({Bar::New, Bar::Edit, Bar::Delete});
    const bool withCsv = CsvIsAllowed();
    ShowActions(*bar, {Bar::Copy, Bar::Paste, Bar::Read, Bar::Save});
    OfferCsv({bar->GetAction(Bar::Import), bar->GetAction(Bar::Export)}, withCsv);
    if (AttachToBar(*bar))
        connectBar(*bar, withCsv);
}

void WkfListView::connectBar(FreqStoreListViewButtonBar& bar, bool withCsv) {
    ConnectActions<WkfListView>(bar, {{Bar::Read, &WkfListView::slotReadTargetList},
                                      {Bar::Save, &WkfListView::slotSave2File},
                                      {Bar::Import, &WkfListView::slotImportTargetList},
                                      {Bar::Export, &WkfListView::slotExport2File},
                                      {Bar::Copy, &WkfListView::slotCopy},
                                      {Bar::Paste, &WkfListView::slotPaste},
                                      {Bar::New, &WkfListView::slotNew},
                                      {Bar::Edit, &WkfListView::slotEdit},
                                      {Bar::Delete, &WkfListView::DeleteSelectedEntries}});

    auto* menu = new ResortPopupMenu(this, "ViewMenu");
    menu->addAction(bar.GetAction(Bar::Copy));
    menu->addSeparator();
    menu->addAction(bar.GetAction(Bar::Read));
    menu->addAction(bar.GetAction(Bar::Save));
    if (withCsv) {
        menu->addSeparator();
        menu->addAction(bar.GetAction(Bar::Import));
        menu->addAction(bar.GetAction(Bar::Export));
    }
    SetHeaderMenu(menu);
}

void WkfListView::SetFilename2Caption(const QString& fileName) {
    if (GetButtonBar())
        GetButtonBar()->SetCaption(tr("Frequency Store - Local Target List - %1").arg(fileName));
}

void WkfListView::slotReadTargetList() {
    const QPointer<WkfListView> alive(this); // the view may end while a dialog is open
    const QString name = TargetListHandler::Instance()->ReadTargetList();
    if (alive)
        SetFilename2Caption(name);
}

void WkfListView::slotSave2File() {
    const QPointer<WkfListView> alive(this);
    const QString name = TargetListHandler::Instance()->Save2File(false);
    if (alive)
        SetFilename2Caption(name);
}

void WkfListView::slotImportTargetList() {
    TargetListHandler::Instance()->ImportTargetList();
}

void WkfListView::slotExport2File() {
    TargetListHandler::Instance()->Export2File();
}

void WkfListView::slotCopy() {
    if (currentItem())
        CopyEntries("wkflistview");
}

void WkfListView::slotPaste() {
    PasteClipboard("wkflistview");
}

void WkfListView::slotNew() {
    if (TargetListHandler::Instance()->AddNew() && List() && List()->size() > 0)
        MakeCurrent(List()->size() - 1);
}

void WkfListView::slotEdit() {
    if (const auto targets = SelectedInOrder(); !targets.empty())
        RunEditor(targets, MediatorType::TargetList, tr("Target"), QStringLiteral("Target Editor"));
}

void WkfListView::FillCopyRow(FrequencyNodeMediator& mediator, FrequencyListCopyStruct& row) const {
    EntryListView::FillCopyRow(mediator, row);
    row.SetValue(m_copyType, mediator.GetTypeString(0));
}

void WkfListView::slotItemClicked(SortListViewItem* item) {
    FrequencyNodeListView::slotItemClicked(item);
}
