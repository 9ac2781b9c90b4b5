#pragma once

#include <QString>

/// What the operator is asked when frequencies of interest are read or written. Each gives the path of a
/// file, empty when cancelled. The program goes on while a dialog is open, and may end the list meanwhile.
namespace NoiDialogs {

QString FileToOpen(const QString& directory);
QString FileToImport(const QString& directory);
/// A name without ".xml" gets it.
QString FileToSave(const QString& directory);
/// A name without an ending gets ".csv".
QString FileToExport(const QString& directory);

} // namespace NoiDialogs
