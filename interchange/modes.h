#pragma once

#include <QString>

#include <string_view>

namespace Interchange {

/// Whose words for modes.
enum class ModeWords { Chirp, Gqrx, SdrPlus, SdrSharp, Kiwi, Fldigi };

/// What a mode of a foreign file is in our lists.
struct Mode {
    QString name;         ///< demodulation
    double bandwidth = 0; ///< usual, Hz; 0 for none
    bool isExact = true;  ///< else the word says more than the demodulation and the bandwidth do
    bool isKnown = true;  ///< else the name is the file's own word
};

/// The mode of a word, whatever its case; an unknown word stays as it is, without a bandwidth.
Mode ModeOf(ModeWords words, std::string_view word);

/// The word for a demodulation and a bandwidth in Hz, 0 where it is not known; empty when there is none. Read
/// back it is the same demodulation.
std::string_view WordOf(ModeWords words, const QString& demodulation, double bandwidth);

} // namespace Interchange
