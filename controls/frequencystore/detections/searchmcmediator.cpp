#include "controls/frequencystore/detections/searchmcmediator.h"

#include "controls/frequencystore/common/columntips.h"
#include "controls/frequencystore/common/csvallowed.h"
#include "controls/frequencystore/detections/detconvlisthandler.h"
#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "host/freqlist/buttonbar.h"
#include "host/gui/resortpopupmenu.h"

#include <QCoreApplication>
#include <QHeaderView>

namespace SearchMC {
namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr char Context[] = "SearchMC";

constexpr DetectionColumn PlainColumns[] = {
    {QT_TRANSLATE_NOOP("SearchMC", "Frequency"), 0, "Frequency", _compNumericWithSuffix, 15},
    {QT_TRANSLATE_NOOP("SearchMC", "ID"), 1, "Name", _compStandardString, 8},
    {QT_TRANSLATE_NOOP("SearchMC", "Bandwidth"), 2, "Bandwidth", _compNumericWithSuffix, 12},
    {QT_TRANSLATE_NOOP("SearchMC", "Level"), 3, "Level", _compStandardNumeric, 7},
    {QT_TRANSLATE_NOOP("SearchMC", "From"), 4, "From", _compStandardNumeric, 20},
    {QT_TRANSLATE_NOOP("SearchMC", "Until"), 5, "Until", _compStandardNumeric, 20},
};

/// Columns of extended detections that are shown or hidden together, by the identifier of the first.
struct Group {
    int firstId;
    const char* title;
};
constexpr Group Groups[] = {
    {0, QT_TRANSLATE_NOOP("SearchMC", "Frequency")},  {4, QT_TRANSLATE_NOOP("SearchMC", "Time")},
    {6, QT_TRANSLATE_NOOP("SearchMC", "Classifier")}, {17, QT_TRANSLATE_NOOP("SearchMC", "Direction")},
    {19, QT_TRANSLATE_NOOP("SearchMC", "Location")},
};

void groupColumns(SortListView& list, std::span<const DetectionColumn> columns) {
    for (int index = 0; const DetectionColumn& column : columns) {
        const auto behind = std::find_if(std::begin(Groups), std::end(Groups),
                                         [&](const Group& group) { return group.firstId > column.id; });
        list.SetColumnGroup(index++, QCoreApplication::translate(Context, std::prev(behind)->title));
    }
}

} // namespace

std::span<const DetectionColumn> Columns() {
    return PlainColumns;
}

QString ColumnTitle(const DetectionColumn& column) {
    return QCoreApplication::translate(Context, column.title);
}

void ArrangeList(VectorListViewBase& view, std::span<const DetectionColumn> columns) {
    SortListView& list = *view.GetListView();
    list.setAllColumnsShowFocus(true);
    list.setSelectionMode(QAbstractItemView::ExtendedSelection);
    list.setShowSortIndicator(true);
    std::vector<int> widths;
    for (const DetectionColumn& column : columns) {
        ColumnTips::Set(*list.headerItem(), static_cast<int>(widths.size()), column.title);
        widths.push_back(column.width);
    }
    list.header()->setStretchLastSection(false); // its texts stand on the right, next to the others
    list.FitColumns(widths);
    list.SetColumnWidthPersistantName(view.objectName());
    if (columns.size() > std::size(PlainColumns)) // a few need no groups
        groupColumns(list, columns);
}

QString EmptyText() {
    return QCoreApplication::translate("SearchMC",
                                       "No detections yet. They come while a search runs; files of power "
                                       "sweeps can be opened, too.");
}

bool InitBar(VectorListViewBase& view, Bar& bar, bool& connected) {
    bar.SetCaption(QCoreApplication::translate("SearchMC", "Frequency Store - Detection Conventional"));
    for (const Bar::Action action : {Bar::Copy, Bar::Save})
        bar.GetAction(action)->setVisible(true);
    OfferCsv({bar.GetAction(Bar::Export)}, CsvIsAllowed());
    if (std::exchange(connected, true))
        return false;
    bar.AttachView(&view);
    auto* menu = new ResortPopupMenu(&view, "ViewMenu");
    bar.AddActionsTo(*menu);
    view.GetListView()->SetHeaderMenu(menu);
    bar.OfferPause();
    return true;
}

template <>
const RecordSort::Key<DetectionConventional>* KeyOf<DetectionConventional>(int columnId) {
    const auto& keys = PlainKeys<DetectionConventional>;
    return columnId >= 0 && columnId < static_cast<int>(std::size(keys)) ? &keys[columnId] : nullptr;
}

CopyIds FetchCopyIds() {
    const auto id = [](const char* name) {
        return FreqStore::Instance().GetCopyStructId(QString::fromLatin1(name));
    };
    return {id("Frequency"), id("Comment"), id("Bandwidth"), id("Type"), id("Demodulation")};
}

QString CommentOf(const DetectionConventional& record) {
    using Adapter = DetectionConventionalAdapter;
    return QCoreApplication::translate("SearchMC", "Detection %1, level %2, %3")
        .arg(Adapter::GetName(record), Adapter::GetLevelString(record), Adapter::GetStartTimeString(record));
}

FreqStoreXml::FrequencyStoreEntry EntryOf(const DetectionConventional& record) {
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.SetType(QString(QLatin1Char(DetectionConventionalAdapter::Type)));
    entry.SetComment(CommentOf(record));
    entry.GetFFM_Settings().GetFrequency().SetValue(record.GetFrequency());
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(record.GetBandwidth());
    return entry;
}

void FillCopyRow(FrequencyListCopyStruct& row, const DetectionConventional& record, const CopyIds& ids) {
    using Adapter = DetectionConventionalAdapter;
    row.SetValue(ids.frequency, Adapter::GetFrequencyString(record));
    row.SetValue(ids.comment, CommentOf(record));
    row.SetValue(ids.bandwidth, Adapter::GetBandwidthString(record));
    row.SetValue(ids.type, QString(QLatin1Char(Adapter::Type)));
}

} // namespace SearchMC

FrequencyStoreListView* CreateDetectionConventionalListView(QWidget* parent, unsigned listId) {
    auto* view = new DetectionConventionalListView(parent, listId);
    view->Set_ValuePath(DetConvListHandler::Instance()->getEmissionListPath());
    return view;
}

DetectionConventionalListView::DetectionConventionalListView(QWidget* parent, unsigned listId)
    : SearchMCMediatorView(parent, listId, "DetConvListView", SearchMC::Columns()) {
    connect(this, &VectorListViewBase::clicked, this, &DetectionConventionalListView::slotItemClicked);
}

void DetectionConventionalListView::ConnectBar(FreqStoreListViewButtonBar& bar) {
    connect(bar.GetAction(FreqStoreListViewButtonBar::Copy), &QAction::triggered, this,
            &DetectionConventionalListView::slotCopy);
}
