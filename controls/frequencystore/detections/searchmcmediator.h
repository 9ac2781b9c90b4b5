#pragma once

#include "host/freqlist/copystruct.h"
#include "host/freqlist/valuelistmediator.h"
#include "host/freqstorexml/frequencystoreentry.h"
#include "host/valuetree/detection.h"

#include <span>

class FreqStoreListViewButtonBar;

/// One column of the views of detections. The identifier, not the position, tells what the column sorts by.
struct DetectionColumn {
    const char* title; ///< to be translated in the context "SearchMC"
    int id;
    const char* field; ///< of the records' adapter
    CompareFunction compare;
    int width; ///< in digits
};

/// What the views of detections have in common, plain and extended.
namespace SearchMC {

/// The columns of plain detections.
std::span<const DetectionColumn> Columns();
QString ColumnTitle(const DetectionColumn& column);
/// Lets the view's list select many rows and remember its columns, once these stand.
void ArrangeList(VectorListViewBase& view, std::span<const DetectionColumn> columns);

/// Gives the bar above a list of detections its caption and shows the actions that such a list has: export
/// only where the configuration allows it. True on the first call, which attaches the view and gives it its
/// header menu; the caller then connects the actions.
bool InitBar(VectorListViewBase& view, FreqStoreListViewButtonBar& bar, bool& connected);

/// The identifiers of the copied texts of a record, in the store's vocabulary; fetched once per view.
struct CopyIds {
    CopyIds();

    unsigned frequency;
    unsigned comment;
    unsigned bandwidth;
    unsigned type;
};
/// ID, level and begin of a detection in words, for the comment of an entry made from it.
QString CommentOf(const DetectionConventional& record);
/// An entry of another list that is made from a detection: frequency, bandwidth and comment. Of an extended
/// one they are what the classifier found, where it found something.
FreqStoreXml::FrequencyStoreEntry EntryOf(const DetectionConventional& record);
/// Puts what every detection has into a row of the copy buffer.
void FillCopyRow(FrequencyListCopyStruct& row, const DetectionConventional& record, const CopyIds& ids);

} // namespace SearchMC

/// List view of plain detections over mediators, as the host's other windows use it. It copies; saving and
/// exporting are the business of `SearchMCVectorListView`, so its buttons for these do nothing.
class DetectionConventionalListView
    : public ValueListMediatorListView<DetectionConventional, DetectionConventionalAdapter> {
    Q_OBJECT

public:
    using RecordMediator = ValueListMediator<DetectionConventional, DetectionConventionalAdapter>;

    DetectionConventionalListView(QWidget* parent, unsigned listId);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;

public slots:
    /// Nothing by itself: a click selects.
    void slotItemClicked(SortListViewItem* item);
    /// Puts the selected detections into the store's copy buffer.
    void slotCopy();

protected:
    void copy2FreqStore(RecordMediator* mediator);

private:
    bool m_connected = false;
    SearchMC::CopyIds m_copyIds;
};
