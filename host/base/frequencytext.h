#pragma once

#include <QString>
#include <QStringView>

/// Frequencies and bandwidths as operators write and read them.
namespace Quor {

/// A frequency in Hz, down to 1 Hz: below 30 MHz in kHz with three decimals, from there on in MHz with six.
QString FrequencyText(double hertz);

/// The same in a unit chosen (1e3 or 1e6 Hz).
QString FrequencyTextIn(double unit, double hertz);

/// A frequency in Hz as short as seven digits allow: "500 kHz", "7.05 MHz", "3 GHz".
QString ShortFrequencyText(double hertz);

/// A bandwidth in Hz, in kHz with three decimals.
QString BandwidthText(double hertz);

/// "kHz" of 1e3; empty for what is no unit.
QLatin1String UnitName(double hertz);

/// Takes the unit (Hz, kHz, MHz, GHz or k, M, G; upper or lower case) off the end of a text and gives its Hz;
/// `otherwise`, with the text untouched, when it ends with none.
double TakeUnit(QStringView& text, double otherwise);

/// Reads a number as files and cells have it, with an optional unit (see `TakeUnit`; blank or none before it)
/// and gives it in Hz; a number without a unit counts `unitFactor` Hz. False when the text is no such number.
bool ParseFrequency(QStringView text, double& hertz, double unitFactor = 1.0);

} // namespace Quor
