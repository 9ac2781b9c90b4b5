#pragma once

#include "host/valuetree/names.h"

#include <QString>

/// Contents of text values: a value holds the number of a cell in which the text stands. Words that repeat
/// among values of one name share a cell; the characters of other short texts lie side by side in chunks.
/// GUI thread only.
namespace Texts {

using Id = quint32;

/// Takes a text for one value. The null text has id 0 and takes no cell.
Id Keep(const QString& text);
/// The same for a value of an entry: there are very many of that name.
Id KeepForEntry(Names::Id name, QStringView text);
/// Frees the text of a value.
void Release(Id id);
/// Valid until the value with this id is set again.
const QString& At(Id id);

} // namespace Texts
