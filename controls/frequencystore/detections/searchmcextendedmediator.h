#pragma once

#include "controls/frequencystore/detections/searchmcmediator.h"
#include "controls/frequencystore/detections/searchmcrecords.h"
#include "host/freqlist/recordsort.h"

/// Cell texts of a detection with classifier and direction-finder results.
struct ExtendedDetectionConventionalAdapter {
    static constexpr char Type = DetectionConventionalAdapter::Type;

    using Text = QString (*)(const ExtendedDetectionConventional&);
    /// What makes the text of a field: those of `DetectionConventionalAdapter`, and those that the columns
    /// below name. Null for any other name.
    static Text FindField(const QString& field);
    /// The text of a field by its name; empty when there is no such field.
    static QString FieldText(const ExtendedDetectionConventional& record, const QString& field);
    static QString GetAzimuthString(const ExtendedDetectionConventional& record);
    static QString GetDFQualityString(const ExtendedDetectionConventional& record);
    /// Where the emitter is, in the position format of the GUI; several positions are joined by ",". While
    /// there is no DF result, the reason.
    static QString GetLocationString(const ExtendedDetectionConventional& record);
};

namespace SearchMC {

/// The columns of extended detections.
std::span<const DetectionColumn> ExtendedColumns(Variant variant);

/// What a column of extended detections sorts by.
using ExtendedKey = RecordSort::Key<ExtendedDetectionConventional>;
/// The key of a column identifier; null when there is no such column.
const ExtendedKey* KeyOf(int columnId);

FreqStoreXml::FrequencyStoreEntry EntryOf(const ExtendedDetectionConventional& record);

/// The identifiers of the copied texts of an extended record.
struct ExtendedCopyIds : CopyIds {
    ExtendedCopyIds();

    unsigned demodulation;
};
void FillCopyRow(FrequencyListCopyStruct& row, const ExtendedDetectionConventional& record,
                 const ExtendedCopyIds& ids);

} // namespace SearchMC

/// Whether one extended detection goes before another by a column. Numbers that are none go behind all.
class CompareExtDetConv {
public:
    CompareExtDetConv(int columnId, bool ascending)
        : m_key(SearchMC::KeyOf(columnId)), m_ascending(ascending) {}
    bool operator()(const ExtendedDetectionConventional& a, const ExtendedDetectionConventional& b) const;

private:
    const SearchMC::ExtendedKey* m_key;
    bool m_ascending;
};

/// List view of extended detections over mediators, as the host's other windows use it. It copies.
class ExtendedDetectionConventionalListView
    : public ValueListMediatorListView<ExtendedDetectionConventional, ExtendedDetectionConventionalAdapter> {
    Q_OBJECT

public:
    using RecordMediator =
        ValueListMediator<ExtendedDetectionConventional, ExtendedDetectionConventionalAdapter>;

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;

public slots:
    /// Puts the selected detections into the store's copy buffer.
    void slotCopy();
    /// Nothing by itself: a click selects.
    void slotItemClicked(SortListViewItem* item);

protected:
    ExtendedDetectionConventionalListView(QWidget* parent, unsigned listId, const char* name,
                                          SearchMC::Variant variant);
    void copy2FreqStore(RecordMediator* mediator);

private:
    bool m_connected = false;
    SearchMC::ExtendedCopyIds m_copyIds;
};

class ExtendedDetectionConventionalListViewHF final : public ExtendedDetectionConventionalListView {
    Q_OBJECT

public:
    ExtendedDetectionConventionalListViewHF(QWidget* parent, unsigned listId)
        : ExtendedDetectionConventionalListView(parent, listId, "ExtDetConvListViewHF",
                                                SearchMC::Variant::HF) {}
};

class ExtendedDetectionConventionalListViewVUHF final : public ExtendedDetectionConventionalListView {
    Q_OBJECT

public:
    ExtendedDetectionConventionalListViewVUHF(QWidget* parent, unsigned listId)
        : ExtendedDetectionConventionalListView(parent, listId, "ExtDetConvListViewVUHF",
                                                SearchMC::Variant::VUHF) {}
};
