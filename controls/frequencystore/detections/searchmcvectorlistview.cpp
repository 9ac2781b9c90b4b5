#include "controls/frequencystore/detections/searchmcvectorlistview.h"

#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "controls/frequencystore/detections/searchmcrecords.h"
#include "host/base/trace.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/listsaving.h"
#include "host/gui/guibase.h"
#include "host/report/filework.h"
#include "host/report/rgexception.h"

#include <QCoreApplication>
#include <QFileDialog>

namespace {

constexpr char TraceSource[] = "searchmcvectorlistview";

} // namespace

void SearchMC::WriteAskedFile(QWidget* view, const QString& kind, bool csv, const WritePlaces& places,
                              const std::function<void(const QString& file)>& write) {
    const auto tr = [](const char* text) { return QCoreApplication::translate("SearchMC", text); };
    const QString extension = csv ? QStringLiteral(".csv") : QStringLiteral(".xml");
    const QPointer<QWidget> alive(view);
    QString file = QFileDialog::getSaveFileName(
        nullptr, csv ? tr("Export Search MC Results As") : tr("Save Search MC Results As"),
        GuiBase::Instance().GetCurrentDirectory(), QStringLiteral("%1 (*%2)").arg(kind, extension), nullptr,
        GuiBase::Instance().UseNativeDialogs());
    if (!alive || file.isEmpty())
        return;
    if (!file.contains(extension))
        file += extension;
    try {
        REPORTGENERATOR::WriteAsWork(file, [&] {
            write(file);
            return true;
        });
    } catch (const RGException& exception) {
        TraceLazily(places.heading, [csv] {
            return csv ? QStringLiteral("EXCEPTION WHILE EXPORTING RESULTS:")
                       : QStringLiteral("EXCEPTION WHILE SAVING FREQUENCIES:");
        });
        TraceLazily(places.reason, [&] { return exception.GetErrorText(); });
    }
}

FrequencyStoreListView* MakeDetectionView(QWidget* parent, unsigned listId, const DetectionPaths& paths,
                                          const DetectionTexts& texts) {
    return SearchMC::MakeView<SearchMCVectorListView>(parent, SearchMCVectorListView::ViewName, listId, paths,
                                                      texts);
}

FrequencyStoreListView* CreateSearchMCVectorListView(QWidget* parent, unsigned listId) {
    return MakeDetectionView(parent, listId, DetConvListHandler::Instance()->GetPaths(), {});
}

SearchMCVectorListView::SearchMCVectorListView(QWidget* parent, const char* name)
    : SearchMCVectorView(parent, name) {
    AddColumns(SearchMC::Columns());
    FetchCopyIds();
    connect(this, &VectorListViewBase::selectionChanged, this, &SearchMCVectorListView::slotSelectionChanged);
}

FreqStoreXml::ListContent SearchMCVectorListView::Content() {
    return {.entries = [this](const auto& visit) {
        for (const DetectionConventional* record : AllRecords()) {
            FreqStoreXml::FrequencyStoreEntry entry = SearchMC::ToEntry(*record);
            entry.SetComment(SearchMC::EntryOf(*record).GetComment());
            visit(entry);
        }
    }};
}

void SearchMCVectorListView::ConnectBar(FreqStoreListViewButtonBar& bar) {
    using Bar = FreqStoreListViewButtonBar;
    OfferSending(bar);
    connect(bar.GetAction(Bar::Copy), &QAction::triggered, this, &SearchMCVectorListView::slotCopy);
    connect(bar.GetAction(Bar::Save), &QAction::triggered, this, &SearchMCVectorListView::slotSaveToFile);
    connect(bar.GetAction(Bar::Export), &QAction::triggered, this, &SearchMCVectorListView::slotExportToFile);
}

void SearchMCVectorListView::writeFile(bool csv) {
    SearchMC::WriteAskedFile(this, tr("Detection Results"), csv, {TraceSource, TraceSource},
                             [&](const QString& file) {
                                 const auto write = [&] { SearchMC::WriteFile(file, csv, AllRecords()); };
                                 if (csv)
                                     return write();
                                 const auto listId = static_cast<int>(GetID());
                                 ListSaving::Do(listId, write);
                                 FreqStore::Instance().NoteSaved(listId);
                             });
}
