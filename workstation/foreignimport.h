#pragma once

#include "workstation/foreigndialog.h"

class QWidget;

/// Brings files and pasted texts of other programs into the lists of the window.
namespace ForeignImport {

enum class Way { Open, Add };

/// The plan for a list, or for the targets when it takes none: files that are opened take the place of what
/// another file has, all else is added to what is there.
ForeignPlan Propose(unsigned listId, Way way);

/// Whether a pasted text is more than the lines that a list takes by itself, which stand under the titles of
/// its columns and have a unit with each frequency: a file of another program, or a table of whatever kind.
bool IsForeign(const QString& text, const QStringList& titles);

/// Shows a file or text before a list takes it, and does what is chosen, as one step of undo. False when
/// nothing was done, told when that was not the operator's choice. Dialogs belong to `window`.
bool Ask(QWidget& window, const ForeignSource& source, const ForeignPlan& plan);
/// The same without anybody to answer: what is not certain is refused. The plan replaces.
bool Take(QWidget& window, const ForeignSource& source, const ForeignPlan& plan);

} // namespace ForeignImport
