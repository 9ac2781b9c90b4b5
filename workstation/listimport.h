#pragma once

#include <QString>
#include <QVector>

class FrequencyNodeListView;
class QWidget;

namespace FreqStoreXml {
class FrequencyStoreEntry;
}

/// Brings entries of files into a list of the window, after the operator has seen what they would do to it.
namespace ListImport {

/// Asks for files and imports them into the registered list with that identifier, one after the other;
/// dialogs belong to `window`.
void AskAndImport(QWidget& window, unsigned listId);
/// Shows what the entries of a file would do to a list, and does what is chosen. False when nothing was done,
/// told when that was not the operator's choice. Files of other programs are shown before.
bool Import(QWidget& window, unsigned listId, const QString& path);
/// The same for entries that have been read from a file of that name; the list takes some.
bool Merge(QWidget& window, unsigned listId, const QString& fileName,
           const QVector<FreqStoreXml::FrequencyStoreEntry>& entries);

/// Selects the entries of a list for which an earlier one stands, within the tolerance of the preferences:
/// who deletes them keeps one of each. Returns what was found, for the operator.
QString SelectDuplicates(FrequencyNodeListView& view);

} // namespace ListImport
