#pragma once

#include "controls/frequencystore/detections/searchmcextendedmediator.h"
#include "controls/frequencystore/detections/searchmcvectorview.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"

#include <sstream>

/// List view of extended detections over the record list itself: copies it, saves it as XML and exports it as
/// CSV, in the order shown. The variants differ in columns and in what files hold.
class SearchMCExtendedVectorListView
    : public SearchMCVectorView<ExtendedDetectionConventional, ExtendedDetectionConventionalAdapter> {
    Q_OBJECT

public:
    void Update(Observable* subject, TChangeCode code) override;
    /// For views with a frequency axis of their own; this one has none.
    virtual void Index2PixState(int) {}
    virtual void Values2Axis(PixStateVector*) {}
    virtual void aboutToShow(QWidget*) {}

    /// Writes the cells of a record as one line, separated by "," and ended by a line end, without any
    /// quotes.
    virtual void writeCsvLineToStream(std::stringstream&, const ExtendedDetectionConventional&) {}
    /// Appends what a file holds of a record.
    virtual void appendDetectionResult(FreqStoreXml::DetectionResultList&,
                                       const ExtendedDetectionConventional&) {}
    /// The list of marked emissions, which follows the selection from now on.
    void setEmissionMarkedPath(const QString& path) { SetMarkedList(path); }

public slots:
    void slotXAxisChanged() { UpdateView(); }
    void slotSelectionChanged(SortListViewItem*) { MarkSelection(); }
    void slotCopy() { CopySelected(); }
    void slotSaveFileAs() { writeFile(false); }
    void slotExportFileAs() { writeFile(true); }

protected:
    SearchMCExtendedVectorListView(QWidget* parent, const char* name);

    /// Makes the columns and fetches the identifiers of copied texts. The variants' constructors call it.
    virtual void init();
    virtual void initColumnHeaderArray() = 0;
    virtual void initCopyIDs() { FetchCopyIds(); }
    void ConnectBar(FreqStoreListViewButtonBar& bar) override;

private:
    void writeFile(bool csv);

    ValueObservingPtr<ValueSelection> m_positionFormat;
};

/// What the variants have of their own.
template <SearchMC::Variant variant>
class SearchMCExtendedVariantView : public SearchMCExtendedVectorListView {
public:
    SearchMCExtendedVariantView(QWidget* parent, const char* name)
        : SearchMCExtendedVectorListView(parent, name) {
        SearchMCExtendedVariantView::init();
    }

    void writeCsvLineToStream(std::stringstream& stream,
                              const ExtendedDetectionConventional& record) override {
        for (const DetectionColumn& column : Columns())
            stream << ExtendedDetectionConventionalAdapter::FieldText(record, QLatin1String(column.field))
                          .toLocal8Bit()
                          .constData()
                   << (&column == &Columns().back() ? "\n" : ",");
    }
    FreqStoreXml::ListContent Content() override {
        return {.results = [this](const auto& visit) {
            for (const ExtendedDetectionConventional* record : AllRecords())
                visit(SearchMC::ToResult(*record, variant));
        }};
    }
    void appendDetectionResult(FreqStoreXml::DetectionResultList& list,
                               const ExtendedDetectionConventional& record) override {
        list.AppendDetectionResult(SearchMC::ToResult(record, variant));
    }

protected:
    void initColumnHeaderArray() override { AddColumns(SearchMC::ExtendedColumns(variant)); }
};

class SearchMCExtendedVectorListViewHF : public SearchMCExtendedVariantView<SearchMC::Variant::HF> {
    Q_OBJECT

public:
    using SearchMCExtendedVariantView::SearchMCExtendedVariantView;
};

class SearchMCExtendedVectorListViewVUHF : public SearchMCExtendedVariantView<SearchMC::Variant::VUHF> {
    Q_OBJECT

public:
    using SearchMCExtendedVariantView::SearchMCExtendedVariantView;
};
