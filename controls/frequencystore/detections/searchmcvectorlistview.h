#pragma once

#include "controls/frequencystore/detections/searchmcvectorview.h"

/// List view of plain detections over the record list itself: copies it, saves it as frequency-store XML and
/// exports it as CSV, in the order shown.
class SearchMCVectorListView
    : public SearchMCVectorView<DetectionConventional, DetectionConventionalAdapter> {
    Q_OBJECT

public:
    static constexpr char ViewName[] = "SearchMCVectorListView";

    explicit SearchMCVectorListView(QWidget* parent, const char* name = ViewName);

    /// Times and levels, too, and the comment that copies have.
    FreqStoreXml::ListContent Content() override;

    /// For views with a frequency axis of their own; this one has none.
    void Index2PixState(int) {}
    void Values2Axis(PixStateVector*) {}

public slots:
    void slotSelectionChanged(SortListViewItem*) { MarkSelection(); }
    void slotXAxisChanged() { UpdateView(); }
    void aboutToShow(QWidget*) {}
    /// The list of marked emissions, which follows the selection from now on.
    void setEmissionMarkedPath(QString valueTreePath) { SetMarkedList(valueTreePath); }
    void slotCopy() { CopySelected(); }
    void slotSaveToFile() { writeFile(false); }
    void slotExportToFile() { writeFile(true); }

protected:
    void ConnectBar(FreqStoreListViewButtonBar& bar) override;

private:
    void writeFile(bool csv);
};
