#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"

#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "host/base/fixedplace.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqstorexml/liststreams.h"
#include "host/gui/guicentral.h"

namespace {

using Detection = ExtendedDetectionConventional;

/// Both variants go by this name: settings of columns are remembered under it.
constexpr char ViewName[] = "SearchMCExtListViewHF";

} // namespace

FrequencyStoreListView* MakeExtendedDetectionViewHF(QWidget* parent, unsigned listId,
                                                    const DetectionPaths& paths,
                                                    const DetectionTexts& texts) {
    return SearchMC::MakeView<SearchMCExtendedVectorListViewHF>(parent, ViewName, listId, paths, texts);
}

FrequencyStoreListView* MakeExtendedDetectionViewVUHF(QWidget* parent, unsigned listId,
                                                      const DetectionPaths& paths,
                                                      const DetectionTexts& texts) {
    return SearchMC::MakeView<SearchMCExtendedVectorListViewVUHF>(parent, ViewName, listId, paths, texts);
}

FrequencyStoreListView* CreateSearchMCExtendedVectorListViewHF(QWidget* parent, unsigned listId) {
    return MakeExtendedDetectionViewHF(parent, listId, DetConvListHandler::Instance()->GetPaths(), {});
}

FrequencyStoreListView* CreateSearchMCExtendedVectorListViewVUHF(QWidget* parent, unsigned listId) {
    return MakeExtendedDetectionViewVUHF(parent, listId, DetConvListHandler::Instance()->GetPaths(), {});
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
}

void SearchMCExtendedVectorListView::ConnectBar(FreqStoreListViewButtonBar& bar) {
    using Bar = FreqStoreListViewButtonBar;
    OfferSending(bar);
    connect(bar.GetAction(Bar::Copy), &QAction::triggered, this, &SearchMCExtendedVectorListView::slotCopy);
    connect(bar.GetAction(Bar::Save), &QAction::triggered, this,
            &SearchMCExtendedVectorListView::slotSaveFileAs);
    connect(bar.GetAction(Bar::Export), &QAction::triggered, this,
            &SearchMCExtendedVectorListView::slotExportFileAs);
}

void SearchMCExtendedVectorListView::Update(Observable* subject, TChangeCode code) {
    if (m_positionFormat && subject == static_cast<Observable*>(m_positionFormat.get()))
        TakeAnew(); // the texts of positions, and their order, are others now
    else
        VectorListViewBase::Update(subject, code);
}

void SearchMCExtendedVectorListView::writeFile(bool csv) {
    using namespace FixedPlace;
    SearchMC::WriteAskedFile(
        this, tr("classification results"), csv,
        csv ? SearchMC::WritePlaces{ExportingDetections, ExportingDetectionsReason}
            : SearchMC::WritePlaces{SavingDetections, SavingDetectionsReason},
        [&](const QString& file) {
            SearchMC::WriteResults(file, csv, AllRecords(),
                                   [this](FreqStoreXml::DetectionResultList& list, const Detection& record) {
                                       appendDetectionResult(list, record);
                                   });
        });
}
