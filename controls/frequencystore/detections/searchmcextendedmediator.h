#pragma once

#include "controls/frequencystore/detections/searchmcmediator.h"
#include "controls/frequencystore/detections/searchmcrecords.h"

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

} // namespace SearchMC

/// Whether one extended detection goes before another by a column. Numbers that are none go behind all.
class CompareExtDetConv {
public:
    CompareExtDetConv(int columnId, bool ascending)
        : m_key(SearchMC::KeyOf<ExtendedDetectionConventional>(columnId)), m_ascending(ascending) {}
    bool operator()(const ExtendedDetectionConventional& a, const ExtendedDetectionConventional& b) const;

private:
    const RecordSort::Key<ExtendedDetectionConventional>* m_key;
    bool m_ascending;
};

/// Base of the two views below.
class ExtendedDetectionConventionalListView
    : public SearchMCMediatorView<ExtendedDetectionConventional, ExtendedDetectionConventionalAdapter> {
    Q_OBJECT

public slots:
    /// Puts the selected detections into the store's copy buffer.
    void slotCopy() { CopySelected(); }
    /// Nothing by itself: a click selects.
    void slotItemClicked(SortListViewItem*) {}

protected:
    ExtendedDetectionConventionalListView(QWidget* parent, unsigned listId, const char* name,
                                          SearchMC::Variant variant);
    void ConnectBar(FreqStoreListViewButtonBar& bar) override;
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
