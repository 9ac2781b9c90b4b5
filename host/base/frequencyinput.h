#pragma once

#include <QString>
#include <QStringView>

/// Frequencies as operators type them, whatever their locale: "7055", "7.055 MHz", "7,055 MHz", "7055k",
/// "7 055.000 kHz".
namespace Quor {

/// What a typed text says: a frequency, or why it says none.
struct FrequencyInput {
    double hertz = 0;
    QString problem;         ///< why the text is no frequency, a sentence; empty when it is one
    double step = 1;         ///< Hz of one in the last digit typed
    bool mayMisread = false; ///< "7.055" without a unit: somebody else would read thousands

    bool IsFrequency() const { return problem.isEmpty(); }
    /// What was understood: "7 055.000 kHz"; empty when nothing was.
    QString Understood() const;
};

/// Reads a number with an optional unit (Hz, kHz, MHz, GHz or k, M, G; case does not count); one without a
/// unit counts `defaultUnit` Hz. A single point or comma is the decimal mark. Blanks and apostrophes may
/// group digits, and so may the mark that stands before the decimal mark or stands more than once, if groups
/// have three digits. Signs and exponents are refused.
FrequencyInput ReadFrequencyInput(QStringView text, double defaultUnit);

/// A frequency as `FrequencyText` shows it, with a no-break blank between thousands: "7 055.000 kHz".
QString GroupedFrequencyText(double hertz);

/// The same of any text that begins with a number; other texts come back as they are.
QString GroupThousands(const QString& text);

} // namespace Quor
