#pragma once

#include <QString>
#include <QStringView>

/// Frequencies and bandwidths as operators write and read them.
namespace Quor {

/// A frequency in Hz, down to 1 Hz: below 30 MHz in kHz with three decimals, from there on in MHz with six.
QString FrequencyText(double hertz);

/// A frequency in Hz as short as seven digits allow: "500 kHz", "7.05 MHz", "3 GHz".
QString ShortFrequencyText(double hertz);

/// A bandwidth in Hz, in kHz with three decimals.
QString BandwidthText(double hertz);

/// Reads a number with an optional unit (Hz, kHz, MHz, GHz; upper or lower case, blank or none before it) and
/// gives it in Hz; a number without a unit counts `unitFactor` Hz. False when the text is no such number.
bool ParseFrequency(QStringView text, double& hertz, double unitFactor = 1.0);

} // namespace Quor
