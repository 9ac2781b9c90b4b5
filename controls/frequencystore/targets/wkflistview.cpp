#include "controls/frequencystore/targets/wkflistview.h"

#include "controls/frequencystore/common/csvallowed.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/targetlistviewfactory.h"
#include "controls/frequencystore/targets/wkfnodemediator.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/gui/resortpopupmenu.h"

#include <QHeaderView>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr int Left = 1;
constexpr int Right = 2;
constexpr int NameColumn = 1;
/// One less than there are columns; setting the last function makes up for it.
constexpr int CompareFunctions = 7;

struct Column {
    const char* title;
    CompareFunction compare;
    unsigned id;
    int alignment;
};

constexpr Column Columns[] = {
    {QT_TRANSLATE_NOOP("WkfListView", "Frequency"), _compNumericWithSuffix, SourceFrequency, Right},
    {QT_TRANSLATE_NOOP("WkfListView", "Name"), _compStandardString, SourceText, Left},
    {QT_TRANSLATE_NOOP("WkfListView", "Bandwidth"), _compNumericWithSuffix, SourceBandwidth, Right},
    {QT_TRANSLATE_NOOP("WkfListView", "Demodulation"), _compStandardString, SourceDemodulation, Right},
    {QT_TRANSLATE_NOOP("WkfListView", "Priority"), _compStandardNumeric, ColumnPriority, Right},
    {QT_TRANSLATE_NOOP("WkfListView", "Threatclass"), _compStandardString, ColumnThreatClass, Right},
    {QT_TRANSLATE_NOOP("WkfListView", "Signal Class"), _compStandardString, ColumnSignalClass, Right},
    {QT_TRANSLATE_NOOP("WkfListView", "Transmission System"), _compStandardString, ColumnTransmissionSystem,
     Right},
};

unsigned copyId(const char* columnName) {
    return FreqStore::Instance().GetCopyStructId(QString::fromLatin1(columnName));
}

} // namespace

FrequencyStoreListView* CreateWkfListView(QWidget* parent, unsigned listId) {
    return new WkfListView(parent, listId);
}

WkfListView::WkfListView(QWidget* parent, unsigned listId)
    : FrequencyNodeListView(parent, listId),
      m_copyFrequency(copyId("Frequency")),
      m_copyComment(copyId("Comment")),
      m_copyBandwidth(copyId("Bandwidth")),
      m_copyDemodulation(copyId("Demodulation")),
      m_copyType(copyId("Type")) {
    setObjectName(QStringLiteral("LocalTargetListView"));
    setAllColumnsShowFocus(true);
    setMultiSelection(true);
    setSelectionMode(ExtendedSelection);
    setShowSortIndicator(true);
    SetCompareFunctionLength(CompareFunctions);
    for (const Column& column : Columns) {
        AddColumn(tr(column.title), column.compare, column.id);
        setColumnAlignment(static_cast<unsigned>(columnCount() - 1), column.alignment);
    }
    header()->setStretchLastSection(false);
    FitColumns({14, 30, 10, 8, 4, 13, 12, 17});
    setColumnWidthMode(NameColumn, QHeaderView::Stretch);
    SetColumnWidthPersistantName(objectName());
    connect(this, &SortListView::clicked, this, &WkfListView::slotItemClicked);
}

void WkfListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    if (!bar)
        return;
    FrequencyNodeListView::InitFreqStoreWidget(bar);
    bar->SetCaption(tr("Frequency Store - Local Target List"));
    for (const Bar::Action action : {Bar::Copy, Bar::Paste, Bar::Read, Bar::Save})
        bar->GetAction(action)->setVisible(true);
    const bool withCsv = CsvIsAllowed();
    OfferCsv({bar->GetAction(Bar::Import), bar->GetAction(Bar::Export)}, withCsv);
    if (!std::exchange(m_connected, true))
        connectBar(*bar, withCsv);
}

void WkfListView::connectBar(FreqStoreListViewButtonBar& bar, bool withCsv) {
    bar.AttachView(this);
    connect(bar.GetAction(Bar::Read), &QAction::triggered, this, &WkfListView::slotReadTargetList);
    connect(bar.GetAction(Bar::Save), &QAction::triggered, this, &WkfListView::slotSave2File);
    connect(bar.GetAction(Bar::Import), &QAction::triggered, this, &WkfListView::slotImportTargetList);
    connect(bar.GetAction(Bar::Export), &QAction::triggered, this, &WkfListView::slotExport2File);
    connect(bar.GetAction(Bar::Copy), &QAction::triggered, this, &WkfListView::slotCopy);
    connect(bar.GetAction(Bar::Paste), &QAction::triggered, this, &WkfListView::slotPaste);

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
    SetFilename2Caption(TargetListHandler::Instance()->ReadTargetList());
}

void WkfListView::slotSave2File() {
    SetFilename2Caption(TargetListHandler::Instance()->Save2File(false));
}

void WkfListView::slotImportTargetList() {
    TargetListHandler::Instance()->ImportTargetList();
}

void WkfListView::slotExport2File() {
    TargetListHandler::Instance()->Export2File();
}

void WkfListView::slotCopy() {
    if (!currentItem())
        return;
    CopySelection("wkflistview");
    FreqStore::Instance().ClearFrequencyListCopyStruct();
    for (FrequencyNodeMediator* mediator : SelectedMediators()) {
        if (auto* target = dynamic_cast<WkfNodeMediator*>(mediator))
            copy2FreqStore(*target);
    }
}

void WkfListView::slotPaste() {
    PasteClipboard("wkflistview");
}

void WkfListView::copy2FreqStore(WkfNodeMediator& mediator) {
    FrequencyListCopyStruct row;
    row.SetValue(m_copyFrequency, mediator.GetFrequencyString(0));
    row.SetValue(m_copyComment, mediator.GetCommentString(0));
    row.SetValue(m_copyBandwidth, mediator.GetBandwidthString(0));
    row.SetValue(m_copyDemodulation, mediator.GetDemodulationString(0));
    row.SetValue(m_copyType, mediator.GetTypeString(0));
    FreqStore::Instance().AddFrequencyListCopyStruct(row);
}

void WkfListView::slotItemClicked(SortListViewItem* item) {
    FrequencyNodeListView::slotItemClicked(item);
}
