#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"

#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "host/base/fixedplace.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqstorexml/liststreams.h"
#include "host/gui/guicentral.h"

namespace {

using Detection = ExtendedDetectionConventional;
using SearchMC::Variant;

/// Both variants go by this name: settings of columns are remembered under it.
constexpr char ViewName[] = "SearchMCExtListViewHF";

} // namespace

FrequencyStoreListView* MakeExtendedDetectionViewHF(QWidget* parent, unsigned listId,
                                                    const DetectionPaths& paths) {
    return SearchMC::MakeView<SearchMCExtendedVectorListViewHF>(parent, ViewName, listId, paths);
}

FrequencyStoreListView* MakeExtendedDetectionViewVUHF(QWidget* parent, unsigned listId,
                                                      const DetectionPaths& paths) {
    return SearchMC::MakeView<SearchMCExtendedVectorListViewVUHF>(parent, ViewName, listId, paths);
}

FrequencyStoreListView* CreateSearchMCExtendedVectorListViewHF(QWidget* parent, unsigned listId) {
    return MakeExtendedDetectionViewHF(parent, listId, DetConvListHandler::Instance()->GetPaths());
}

FrequencyStoreListView* CreateSearchMCExtendedVectorListViewVUHF(QWidget* parent, unsigned listId) {
    return MakeExtendedDetectionViewVUHF(parent, listId, DetConvListHandler::Instance()->GetPaths());
}

SearchMCExtendedVectorListView::SearchMCExtendedVectorListView(QWidget* parent, const char* name)
    : SearchMCVectorView(parent, name), m_positionFormat(this) {
    m_positionFormat.Reset(GuiCentral::Instance().GetPositionFormat());
    connect(this, &VectorListViewBase::selectionChanged, this,
            &SearchMCExtendedVectorListView::slotSelectionChanged);
}

void SearchMCExtendedVectorListView::init() {
    initColumnHeaderArray();
    initCopyIDs();
    AddColumns(m_columns);
}

void SearchMCExtendedVectorListView::initCopyIDs() {
    m_copyIds = std::make_unique<SearchMC::ExtendedCopyIds>();
}

void SearchMCExtendedVectorListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    using Bar = FreqStoreListViewButtonBar;
    if (!bar)
        return;
    VectorListViewBase::InitFreqStoreWidget(bar);
    if (!SearchMC::InitBar(*this, *bar, m_connected))
        return;
    OfferSending(*bar);
    connect(bar->GetAction(Bar::Copy), &QAction::triggered, this, &SearchMCExtendedVectorListView::slotCopy);
    connect(bar->GetAction(Bar::Save), &QAction::triggered, this,
            &SearchMCExtendedVectorListView::slotSaveFileAs);
    connect(bar->GetAction(Bar::Export), &QAction::triggered, this,
            &SearchMCExtendedVectorListView::slotExportFileAs);
}

bool SearchMCExtendedVectorListView::Sort(int column, bool ascending) {
    if (column < 0 || column >= static_cast<int>(m_columns.size()))
        return false;
    const SearchMC::ExtendedKey* key = SearchMC::KeyOf(m_columns[static_cast<size_t>(column)].id);
    return key && SortByKey(column, ascending, *key);
}

void SearchMCExtendedVectorListView::Update(Observable* subject, TChangeCode code) {
    if (m_positionFormat && subject == static_cast<Observable*>(m_positionFormat.get()))
        TakeAnew(); // the texts of positions, and their order, are others now
    else
        VectorListViewBase::Update(subject, code);
}

void SearchMCExtendedVectorListView::slotXAxisChanged() {
    UpdateView();
}

void SearchMCExtendedVectorListView::slotSelectionChanged(SortListViewItem*) {
    MarkSelection();
}

void SearchMCExtendedVectorListView::addValuesToFrequencyListCopyStruct(const Detection& record,
                                                                        FrequencyListCopyStruct& row) {
    SearchMC::FillCopyRow(row, record, *m_copyIds);
}

void SearchMCExtendedVectorListView::slotCopy() {
    CopySelected([this](const Detection& record, FrequencyListCopyStruct& row) {
        addValuesToFrequencyListCopyStruct(record, row);
    });
}

void SearchMCExtendedVectorListView::slotSaveFileAs() {
    SearchMC::WriteAskedFile({tr("Save Search MC Results As"), tr("classification results (*.xml)"),
                              QStringLiteral(".xml"), FixedPlace::SavingDetections,
                              FixedPlace::SavingDetectionsReason,
                              QStringLiteral("EXCEPTION WHILE SAVING FREQUENCIES:")},
                             [this](const QString& file) { writeFile(file, false); });
}

void SearchMCExtendedVectorListView::slotExportFileAs() {
    SearchMC::WriteAskedFile({tr("Export Search MC Results As"), tr("classification results (*.csv)"),
                              QStringLiteral(".csv"), FixedPlace::ExportingDetections,
                              FixedPlace::ExportingDetectionsReason,
                              QStringLiteral("EXCEPTION WHILE EXPORTING RESULTS:")},
                             [this](const QString& file) { writeFile(file, true); });
}

void SearchMCExtendedVectorListView::writeFile(const QString& file, bool csv) {
    SearchMC::WriteResults(file, csv, AllRecords(),
                           [this](FreqStoreXml::DetectionResultList& list, const Detection& record) {
                               appendDetectionResult(list, record);
                           });
}

void SearchMCExtendedVectorListView::WriteCells(std::stringstream& stream, const Detection& record) const {
    for (const DetectionColumn& column : m_columns) {
        const QString cell =
            ExtendedDetectionConventionalAdapter::FieldText(record, QString::fromLatin1(column.field));
        stream << cell.toLocal8Bit().constData() << (&column == &m_columns.back() ? "\n" : ",");
    }
}

SearchMCExtendedVectorListViewHF::SearchMCExtendedVectorListViewHF(QWidget* parent, const char* name)
    : SearchMCExtendedVectorListView(parent, name) {
    SearchMCExtendedVectorListViewHF::init();
}

void SearchMCExtendedVectorListViewHF::initColumnHeaderArray() {
    SetColumnHeaders(SearchMC::ExtendedColumns(Variant::HF));
}

void SearchMCExtendedVectorListViewHF::writeCsvLineToStream(std::stringstream& stream,
                                                            const Detection& record) {
    WriteCells(stream, record);
}

void SearchMCExtendedVectorListViewHF::appendDetectionResult(FreqStoreXml::DetectionResultList& list,
                                                             const Detection& record) {
    list.AppendDetectionResult(SearchMC::ToResult(record, Variant::HF));
}

SearchMCExtendedVectorListViewVUHF::SearchMCExtendedVectorListViewVUHF(QWidget* parent, const char* name)
    : SearchMCExtendedVectorListView(parent, name) {
    SearchMCExtendedVectorListViewVUHF::init();
}

void SearchMCExtendedVectorListViewVUHF::initColumnHeaderArray() {
    SetColumnHeaders(SearchMC::ExtendedColumns(Variant::VUHF));
}

void SearchMCExtendedVectorListViewVUHF::writeCsvLineToStream(std::stringstream& stream,
                                                              const Detection& record) {
    WriteCells(stream, record);
}

void SearchMCExtendedVectorListViewVUHF::appendDetectionResult(FreqStoreXml::DetectionResultList& list,
                                                               const Detection& record) {
    list.AppendDetectionResult(SearchMC::ToResult(record, Variant::VUHF));
}
