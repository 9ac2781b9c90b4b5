#pragma once

#include <QString>

/// What the operator is asked when results of a classifier are written. The program goes on while a dialog is
/// open, and may end the list meanwhile.
namespace ResultDialogs {

/// Give the operator's choice, empty when cancelled, and propose the name.
QString FileToSave(const QString& name);
QString FileToExport(const QString& name);
/// After the write to a file has failed.
bool IsToTryAnotherFile(const QString& failedName);

} // namespace ResultDialogs
