#pragma once

#include <QString>

/// What the operator is asked when memory channels are read, and at their end.
namespace MemoryDialogs {

/// The path of a file, empty when cancelled.
QString FileToOpen();
/// Tells that channels were changed and not saved into the job. No buttons are asked for, so the box offers
/// its acknowledgement only, which is no yes. False without a GUI.
bool IsToSaveChangedChannels();

} // namespace MemoryDialogs
