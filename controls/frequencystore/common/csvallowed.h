#pragma once

#include <QString>

#include <initializer_list>

class QAction;

/// Whether lists show their CSV export and import: the setting "AllowExportToCsv" of "FrequencyStore", which
/// a `part` of the settings may have of its own.
bool CsvIsAllowed(const QString& part = QString());

/// Takes note that the list has these CSV actions, and shows them where the setting allows it.
void OfferCsv(std::initializer_list<QAction*> actions, bool allowed);
/// Whether the list has the CSV action, shown by the list itself or not: a program may offer it elsewhere.
bool HasCsv(const QAction& action);
