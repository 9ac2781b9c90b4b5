#pragma once

#include "host/freqlist/undobytes.h"
#include "host/valuetree/detection.h"

/// Detections as bytes, for what undo keeps of them: `Take` reads what `Put` wrote.
namespace RecordBytes {

void Put(UndoBytes& bytes, const DetectionConventional& record);
void Put(UndoBytes& bytes, const ExtendedDetectionConventional& record);
void Take(UndoBytes::Reader& bytes, DetectionConventional& record);
void Take(UndoBytes::Reader& bytes, ExtendedDetectionConventional& record);

} // namespace RecordBytes
