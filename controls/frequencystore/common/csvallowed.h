#pragma once

#include <QString>

/// Whether lists show their CSV export and import: the setting "AllowExportToCsv" of "FrequencyStore", which
/// a `part` of the settings may have of its own.
bool CsvIsAllowed(const QString& part = QString());
