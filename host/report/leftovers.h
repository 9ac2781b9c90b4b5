#pragma once

#include <QString>

namespace REPORTGENERATOR {

/// A name in the folder for a file that is being written, which tells who writes it; each call gives another.
QString TemporaryName(const QString& folder);

/// Removes from the folder the files under such names whose processes have gone. Those of another machine
/// stay, since nobody here can tell whether their process lives.
void RemoveLeftovers(const QString& folder);

} // namespace REPORTGENERATOR
