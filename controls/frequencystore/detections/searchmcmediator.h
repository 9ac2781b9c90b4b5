#pragma once

#include "host/freqlist/copystruct.h"
#include "host/freqlist/valuelistmediator.h"
#include "host/freqstorexml/frequencystoreentry.h"
#include "host/gui/recordsort.h"
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

/// What such a list says when it is empty.
QString EmptyText();
/// Gives the bar above a list of detections its caption and shows the actions that such a list has: export
/// only where the configuration allows it. True on the first call, which attaches the view and gives it its
/// header menu; the caller then connects the actions.
bool InitBar(VectorListViewBase& view, FreqStoreListViewButtonBar& bar, bool& connected);

/// What a record sorts by in the column of an identifier; null when there is no such column.
template <typename Record>
const RecordSort::Key<Record>* KeyOf(int columnId);
template <>
const RecordSort::Key<DetectionConventional>* KeyOf<DetectionConventional>(int columnId);
template <>
const RecordSort::Key<ExtendedDetectionConventional>* KeyOf<ExtendedDetectionConventional>(int columnId);
/// Those of every detection, by column identifier.
template <typename Record>
inline constexpr RecordSort::Key<Record> PlainKeys[] = {
    [](const Record& r) { return r.GetFrequency(); },
    [](const Record& r) { return static_cast<double>(r.GetID()); },
    [](const Record& r) { return r.GetBandwidth(); },
    [](const Record& r) { return static_cast<double>(r.GetLevel()); },
    [](const Record& r) { return r.GetStartTime(); },
    [](const Record& r) { return r.GetStopTime(); },
};

/// The identifiers of the copied texts of a record, in the store's vocabulary; fetched once per view.
struct CopyIds {
    unsigned frequency = 0;
    unsigned comment = 0;
    unsigned bandwidth = 0;
    unsigned type = 0;
    unsigned demodulation = 0; ///< extended records have one
};
CopyIds FetchCopyIds();
/// ID, level and begin of a detection in words, for the comment of an entry made from it.
QString CommentOf(const DetectionConventional& record);
/// An entry of another list that is made from a detection: frequency, bandwidth and comment. Of an extended
/// one they are what the classifier found, where it found something.
FreqStoreXml::FrequencyStoreEntry EntryOf(const DetectionConventional& record);
FreqStoreXml::FrequencyStoreEntry EntryOf(const ExtendedDetectionConventional& record);
/// Puts a detection into a row of the copy buffer, an extended one with what the classifier found.
void FillCopyRow(FrequencyListCopyStruct& row, const DetectionConventional& record, const CopyIds& ids);
void FillCopyRow(FrequencyListCopyStruct& row, const ExtendedDetectionConventional& record,
                 const CopyIds& ids);

} // namespace SearchMC

/// What all views of detections share: columns, bar and copying. `Base` is the view of the framework over
/// records of the type `T`.
template <typename T, typename Base>
class SearchMCView : public Base {
public:
    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override {
        if (!bar)
            return;
        Base::InitFreqStoreWidget(bar);
        if (SearchMC::InitBar(*this, *bar, m_connected))
            ConnectBar(*bar);
    }
    /// Fills the store's form of a copied record.
    virtual void addValuesToFrequencyListCopyStruct(const T& record, FrequencyListCopyStruct& row) {
        SearchMC::FillCopyRow(row, record, m_copyIds);
    }

protected:
    using Base::Base;

    /// Connects the actions of the view's first bar.
    virtual void ConnectBar(FreqStoreListViewButtonBar& bar) = 0;
    /// `columns` must stay.
    void AddColumns(std::span<const DetectionColumn> columns) {
        m_columns = columns;
        // One less than there are columns; setting the last function makes up for it.
        this->GetListView()->SetCompareFunctionLength(static_cast<int>(columns.size()) - 1);
        for (const DetectionColumn& column : columns)
            this->AddColumn(SearchMC::ColumnTitle(column), QString::fromLatin1(column.field), column.compare);
        SearchMC::ArrangeList(*this, columns);
    }
    std::span<const DetectionColumn> Columns() const { return m_columns; }
    void FetchCopyIds() { m_copyIds = SearchMC::FetchCopyIds(); }
    /// Adds a record to the store's copy buffer.
    void AddCopyRow(const T& record) {
        FrequencyListCopyStruct row;
        addValuesToFrequencyListCopyStruct(record, row);
        FreqStore::Instance().AddFrequencyListCopyStruct(row);
    }

private:
    std::span<const DetectionColumn> m_columns;
    SearchMC::CopyIds m_copyIds;
    bool m_connected = false;
};

/// List view of detections over mediators, as the host's other windows use it. It copies; saving and
/// exporting are the business of the views over the records, so its buttons for these do nothing.
template <typename T, typename Adapter>
class SearchMCMediatorView : public SearchMCView<T, ValueListMediatorListView<T, Adapter>> {
public:
    using RecordMediator = ValueListMediator<T, Adapter>;

protected:
    SearchMCMediatorView(QWidget* parent, unsigned listId, const char* name,
                         std::span<const DetectionColumn> columns)
        : SearchMCView<T, ValueListMediatorListView<T, Adapter>>(parent, listId, name) {
        this->AddColumns(columns);
        this->FetchCopyIds();
    }

    void CopySelected() {
        FreqStore::Instance().ClearFrequencyListCopyStruct();
        for (RecordMediator& mediator : this->SelectedMediators())
            copy2FreqStore(&mediator);
    }
    void copy2FreqStore(RecordMediator* mediator) { this->AddCopyRow(mediator->GetRecord()); }
};

class DetectionConventionalListView
    : public SearchMCMediatorView<DetectionConventional, DetectionConventionalAdapter> {
    Q_OBJECT

public:
    DetectionConventionalListView(QWidget* parent, unsigned listId);

public slots:
    /// Nothing by itself: a click selects.
    void slotItemClicked(SortListViewItem*) {}
    /// Puts the selected detections into the store's copy buffer.
    void slotCopy() { CopySelected(); }

protected:
    void ConnectBar(FreqStoreListViewButtonBar& bar) override;
};
