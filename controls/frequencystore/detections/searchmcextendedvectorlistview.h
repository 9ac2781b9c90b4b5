#pragma once

#include "controls/frequencystore/detections/searchmcextendedmediator.h"
#include "controls/frequencystore/detections/searchmcvectorview.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"

#include <sstream>

/// List view of extended detections over the record list itself: sorts it by any column, copies, saves it as
/// XML and exports it as CSV, in the order shown. The variants differ in columns and in what files hold.
class SearchMCExtendedVectorListView
    : public SearchMCVectorView<ExtendedDetectionConventional, ExtendedDetectionConventionalAdapter> {
    Q_OBJECT

public:
    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    /// By the column's key, see `CompareExtDetConv`. The same column in the other direction turns the present
    /// order round; false when there is nothing to do.
    bool Sort(int column, bool ascending) override;
    void Update(Observable* subject, TChangeCode code) override;
    /// For views with a frequency axis of their own; this one has none.
    virtual void Index2PixState(int) {}
    virtual void Values2Axis(PixStateVector*) {}
    virtual void aboutToShow(QWidget*) {}

    /// Fills the store's form of a copied record.
    virtual void addValuesToFrequencyListCopyStruct(const ExtendedDetectionConventional& record,
                                                    FrequencyListCopyStruct& row);
    /// Writes the cells of a record as one line, separated by "," and ended by a line end, without any
    /// quotes.
    virtual void writeCsvLineToStream(std::stringstream&, const ExtendedDetectionConventional&) {}
    /// Appends what a file holds of a record.
    virtual void appendDetectionResult(FreqStoreXml::DetectionResultList&,
                                       const ExtendedDetectionConventional&) {}
    /// The list of marked emissions, which follows the selection from now on.
    void setEmissionMarkedPath(const QString& path) { SetMarkedList(path); }

public slots:
    void slotXAxisChanged();
    void slotSelectionChanged(SortListViewItem* item);
    void slotCopy();
    void slotSaveFileAs();
    void slotExportFileAs();

protected:
    SearchMCExtendedVectorListView(QWidget* parent, const char* name);

    /// Makes the columns and fetches the identifiers of copied texts. The variants' constructors call it.
    virtual void init();
    virtual void initColumnHeaderArray() = 0;
    virtual void initCopyIDs();

    void SetColumnHeaders(std::span<const DetectionColumn> columns) { m_columns = columns; }
    /// What the variants write of a record as a line: the texts of all columns.
    void WriteCells(std::stringstream& stream, const ExtendedDetectionConventional& record) const;

private:
    void writeFile(const QString& file, bool csv);

    std::span<const DetectionColumn> m_columns;
    std::unique_ptr<SearchMC::ExtendedCopyIds> m_copyIds;
    ValueObservingPtr<ValueSelection> m_positionFormat;
    bool m_connected = false;
};

class SearchMCExtendedVectorListViewHF : public SearchMCExtendedVectorListView {
    Q_OBJECT

public:
    SearchMCExtendedVectorListViewHF(QWidget* parent, const char* name);

    void writeCsvLineToStream(std::stringstream& stream,
                              const ExtendedDetectionConventional& record) override;
    void appendDetectionResult(FreqStoreXml::DetectionResultList& list,
                               const ExtendedDetectionConventional& record) override;

protected:
    void initColumnHeaderArray() override;
};

class SearchMCExtendedVectorListViewVUHF : public SearchMCExtendedVectorListView {
    Q_OBJECT

public:
    SearchMCExtendedVectorListViewVUHF(QWidget* parent, const char* name);

    void writeCsvLineToStream(std::stringstream& stream,
                              const ExtendedDetectionConventional& record) override;
    void appendDetectionResult(FreqStoreXml::DetectionResultList& list,
                               const ExtendedDetectionConventional& record) override;

protected:
    void initColumnHeaderArray() override;
};
