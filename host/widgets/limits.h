#pragma once

#include "host/valuetree/value.h"

/// The limits of a number as fields show them. A limit at the end of the range of doubles does not count, nor
/// do two equal limits.
namespace Limits {

/// How a field shows a number.
using NumberText = QString (*)(double);

/// "9.000 kHz to 30.000000 MHz", "from 0.000 kHz", "up to 5"; empty without limits or without a number.
QString Text(const IValueNumeric* number, NumberText show);
/// What is wrong with `entry` as that number's content; empty when nothing is.
QString Problem(const IValueNumeric* number, double entry, NumberText show);

} // namespace Limits
