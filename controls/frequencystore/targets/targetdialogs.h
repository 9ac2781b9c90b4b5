#pragma once

#include <QString>

/// What the operator is asked when the local target list is read or written. Each gives the path of a file,
/// empty when cancelled.
namespace TargetDialogs {

QString FileToRead(const QString& directory);
QString FileToImport(const QString& directory);
/// A name without ".xml" gets it.
QString FileToSave(const QString& directory);
/// A name without ".csv" gets it.
QString FileToExport(const QString& directory);

} // namespace TargetDialogs
