#include "workstation/sharerecordkind.h"

#include "controls/frequencystore/detections/detconvlisthandler.h"
#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "host/valuetree/tree.h"

namespace {

template <typename Record>
ValueBase* makeList(const QString& path) {
    return GetOrCreateValue<ValueList<Record>>(path);
}

using Plain = DetectionConventional;
using Extended = ExtendedDetectionConventional;

} // namespace

const ShareRecordKind PlainDetections{makeList<Plain>, MakeDetectionLine<Plain>, MakeDetectionView};
const ShareRecordKind DetectionsOfHF{makeList<Extended>, MakeDetectionLine<Extended>,
                                     MakeExtendedDetectionViewHF};
const ShareRecordKind DetectionsOfVUHF{makeList<Extended>, MakeDetectionLine<Extended>,
                                       MakeExtendedDetectionViewVUHF};
