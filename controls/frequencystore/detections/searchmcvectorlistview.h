#pragma once

#include "controls/frequencystore/detections/searchmcvectorview.h"

/// List view of plain detections over the record list itself: sorts it by values, copies, saves it as
/// frequency-store XML and exports it as CSV, in the order shown.
class SearchMCVectorListView
    : public SearchMCVectorView<DetectionConventional, DetectionConventionalAdapter> {
    Q_OBJECT

public:
    static constexpr char ViewName[] = "SearchMCVectorListView";

    explicit SearchMCVectorListView(QWidget* parent, const char* name = ViewName);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    /// By the column's value. The same column in the other direction turns the present order round; false
    /// when there is nothing to do.
    bool Sort(int column, bool ascending) override;
    /// For views with a frequency axis of their own; this one has none.
    void Index2PixState(int) {}
    void Values2Axis(PixStateVector*) {}

public slots:
    void slotSelectionChanged(SortListViewItem* item);
    void slotXAxisChanged();
    void aboutToShow(QWidget*) {}
    /// The list of marked emissions, which follows the selection from now on.
    void setEmissionMarkedPath(QString valueTreePath);
    void slotCopy();
    void slotSaveToFile();
    void slotExportToFile();

private:
    bool m_connected = false;
    SearchMC::CopyIds m_copyIds;
};
