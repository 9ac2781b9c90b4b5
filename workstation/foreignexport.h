#pragma once

#include <QString>

class FrequencyStoreListView;
class QWidget;

namespace Interchange {
struct Format;
}

/// Writes the lists of the window as files of other programs.
namespace ForeignExport {

/// Asks for a file and its format, shows what that cannot hold, and writes all entries of the list.
void AskAndWrite(QWidget& window, FrequencyStoreListView& view, const QString& listName);
/// The same for a file that was chosen. False when it was not written, told when that was not the operator's
/// choice.
bool Write(QWidget& window, FrequencyStoreListView& view, const Interchange::Format& format,
           const QString& path);

} // namespace ForeignExport
