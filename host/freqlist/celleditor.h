#pragma once

#include "host/valuetree/valuebase.h"
#include "host/widgets/vclineedit.h"

/// Fields for values in cells: a line for texts and numbers, a box for choices and flags. Each is an
/// `IEntryField`.
namespace CellEditor {

/// A new field that shows the value, which may end before it; the parent owns the field.
QWidget* Make(QWidget* parent, ValueBase& value, unsigned columnId);
/// Lets a field forget what was entered.
void Drop(QWidget& field);
/// How a line for the value of a column is read.
VCLineEdit::LineEditType LineTypeOf(const ValueBase& value, unsigned columnId);

} // namespace CellEditor
