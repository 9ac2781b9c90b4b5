#pragma once

#include <QString>

namespace REPORTGENERATOR {

/// Returns a new name in the folder for a file that is being written. The name tells the process that writes
/// it.
QString TemporaryName(const QString& folder);

/// Removes files with such names from the folder if their process has ended. Files of another machine stay:
/// this one cannot tell whether their process lives.
void RemoveLeftovers(const QString& folder);

} // namespace REPORTGENERATOR
