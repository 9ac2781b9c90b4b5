#include "controls/frequencystore/detections/searchmcvectorlistview.h"

#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "controls/frequencystore/detections/searchmcrecords.h"
#include "host/base/trace.h"
#include "host/freqlist/buttonbar.h"
#include "host/gui/guibase.h"
#include "host/report/rgexception.h"

#include <QFileDialog>

namespace {

constexpr char TraceSource[] = "searchmcvectorlistview";

/// By column.
const RecordSort::Key<DetectionConventional> Keys[] = {
    [](const DetectionConventional& r) { return r.GetFrequency(); },
    [](const DetectionConventional& r) { return static_cast<double>(r.GetID()); },
    [](const DetectionConventional& r) { return r.GetBandwidth(); },
    [](const DetectionConventional& r) { return static_cast<double>(r.GetLevel()); },
    [](const DetectionConventional& r) { return r.GetStartTime(); },
    [](const DetectionConventional& r) { return r.GetStopTime(); },
};

} // namespace

void SearchMC::WriteAskedFile(const FileAction& action,
                              const std::function<void(const QString& file)>& write) {
    QString file =
        QFileDialog::getSaveFileName(nullptr, action.caption, GuiBase::Instance().GetCurrentDirectory(),
                                     action.filter, nullptr, GuiBase::Instance().UseNativeDialogs());
    if (file.isEmpty())
        return;
    if (!file.contains(action.extension))
        file += action.extension;
    try {
        write(file);
    } catch (const RGException& exception) {
        TraceLazily(action.headingPlace, [&] { return action.heading; });
        TraceLazily(action.reasonPlace, [&] { return exception.GetErrorText(); });
    }
}

FrequencyStoreListView* MakeDetectionView(QWidget* parent, unsigned listId, const DetectionPaths& paths) {
    return SearchMC::MakeView<SearchMCVectorListView>(parent, SearchMCVectorListView::ViewName, listId,
                                                      paths);
}

FrequencyStoreListView* CreateSearchMCVectorListView(QWidget* parent, unsigned listId) {
    return MakeDetectionView(parent, listId, DetConvListHandler::Instance()->GetPaths());
}

SearchMCVectorListView::SearchMCVectorListView(QWidget* parent, const char* name)
    : SearchMCVectorView(parent, name) {
    AddColumns(SearchMC::Columns());
    connect(this, &VectorListViewBase::selectionChanged, this, &SearchMCVectorListView::slotSelectionChanged);
}

void SearchMCVectorListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    using Bar = FreqStoreListViewButtonBar;
    if (!bar)
        return;
    VectorListViewBase::InitFreqStoreWidget(bar);
    if (!SearchMC::InitBar(*this, *bar, m_connected))
        return;
    OfferSending(*bar);
    connect(bar->GetAction(Bar::Copy), &QAction::triggered, this, &SearchMCVectorListView::slotCopy);
    connect(bar->GetAction(Bar::Save), &QAction::triggered, this, &SearchMCVectorListView::slotSaveToFile);
    connect(bar->GetAction(Bar::Export), &QAction::triggered, this,
            &SearchMCVectorListView::slotExportToFile);
}

bool SearchMCVectorListView::Sort(int column, bool ascending) {
    return column >= 0 && column < static_cast<int>(std::size(Keys)) &&
           SortByKey(column, ascending, Keys[column]);
}

void SearchMCVectorListView::slotSelectionChanged(SortListViewItem*) {
    MarkSelection();
}

void SearchMCVectorListView::slotXAxisChanged() {
    UpdateView();
}

void SearchMCVectorListView::setEmissionMarkedPath(QString valueTreePath) {
    SetMarkedList(valueTreePath);
}

void SearchMCVectorListView::slotCopy() {
    CopySelected([this](const DetectionConventional& record, FrequencyListCopyStruct& row) {
        SearchMC::FillCopyRow(row, record, m_copyIds);
    });
}

void SearchMCVectorListView::slotSaveToFile() {
    SearchMC::WriteAskedFile({tr("Save Search MC Results As"), tr("Detection Results (*.xml)"),
                              QStringLiteral(".xml"), TraceSource, TraceSource,
                              QStringLiteral("EXCEPTION WHILE SAVING FREQUENCIES:")},
                             [this](const QString& file) { SearchMC::WriteFile(file, false, AllRecords()); });
}

void SearchMCVectorListView::slotExportToFile() {
    SearchMC::WriteAskedFile({tr("Export Search MC Results As"), tr("Detection Results (*.csv)"),
                              QStringLiteral(".csv"), TraceSource, TraceSource,
                              QStringLiteral("EXCEPTION WHILE EXPORTING RESULTS:")},
                             [this](const QString& file) { SearchMC::WriteFile(file, true, AllRecords()); });
}
