#pragma once

#include "host/valuetree/detection.h"
#include "link/entrylayout.h"

/// How the records of a list value travel: as rows of one layout, which has a field for each of their
/// members. Of DetectionConventional and ExtendedDetectionConventional.
template <typename Record>
struct RecordForm {
    static EntryLayout Layout();
    static bool IsLayoutOf(const EntryLayout& layout);
    static void Put(Wire::Writer& writer, const Record& record);
    /// The record of contents that have this layout.
    static Record Take(QByteArrayView contents);
};

extern template struct RecordForm<DetectionConventional>;
extern template struct RecordForm<ExtendedDetectionConventional>;

/// Calls `what` with a list of records as what it is; false for a value that is none.
template <typename What>
bool WithRecords(ValueBase& value, What what) {
    if (auto* const plain = value_cast<ValueList<DetectionConventional>>(&value))
        what(*plain);
    else if (auto* const extended = value_cast<ValueList<ExtendedDetectionConventional>>(&value))
        what(*extended);
    else
        return false;
    return true;
}
