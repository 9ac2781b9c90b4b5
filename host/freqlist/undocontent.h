#pragma once

#include "host/freqlist/undobytes.h"
#include "host/valuetree/valuebase.h"

/// Contents of values as bytes: texts, letters, flags, numbers, choices and lists of numbers. Limits and the
/// items of a choice are no content.
namespace UndoContent {

/// Whether values of that type can be kept.
bool IsKnown(ValueType type);
void Put(UndoBytes& bytes, const ValueBase& value);
/// Gives a value of the type that was put the content; `originator` is not told.
void Take(UndoBytes::Reader& bytes, ValueBase& value, IObserver* originator = nullptr);
/// Puts a content of that type as it stands.
void Copy(UndoBytes::Reader& from, ValueType type, UndoBytes& to);
/// Passes over the content of a value of that type.
void Skip(UndoBytes::Reader& bytes, ValueType type);

} // namespace UndoContent
