#pragma once

#include <QString>

class FrequencyNodeListView;
class QWidget;

/// Brings entries of files into a list of the window, after the operator has seen what they would do to it.
namespace ListImport {

/// Asks for files and imports them into the registered list with that identifier, one after the other;
/// dialogs belong to `window`.
void AskAndImport(QWidget& window, unsigned listId);
/// Shows what the entries of a file would do to a list, and does what is chosen. False when nothing was done,
/// told when that was not the operator's choice.
bool Import(QWidget& window, unsigned listId, const QString& path);

/// Selects the entries of a list for which an earlier one stands, within the tolerance of the preferences:
/// who deletes them keeps one of each. Returns what was found, for the operator.
QString SelectDuplicates(FrequencyNodeListView& view);

} // namespace ListImport
