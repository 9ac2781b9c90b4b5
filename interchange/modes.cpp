#include "interchange/modes.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Interchange {

namespace {

// Usual bandwidths in Hz. Narrow FM is that of channels of 12.5 kHz, FM that of 25 kHz.
constexpr double Narrow = 12500;
constexpr double Wide = 180000;
constexpr double Voice = 2700;
constexpr double Broadcast = 9000;
constexpr double Morse = 500;

constexpr bool Mapped = false; ///< the word is not written: another one stands for the demodulation

/// A word of a format, and what it is in our lists. The first words of a demodulation are those that are
/// written; which of them, the bandwidth tells.
struct Row {
    ModeWords words;
    const char* word;
    const char* name;
    double bandwidth;
    bool isExact = true;
};

using enum ModeWords;
constexpr Row Rows[] = {
    {Chirp, "FM", "FM", 16000},
    {Chirp, "NFM", "FM", Narrow},
    {Chirp, "WFM", "FM", Wide},
    {Chirp, "AM", "AM", Broadcast},
    {Chirp, "NAM", "AM", 5000},
    {Chirp, "USB", "USB", Voice},
    {Chirp, "LSB", "LSB", Voice},
    {Chirp, "CW", "CW", Morse},
    {Chirp, "NCW", "CW", 250},
    {Chirp, "CWR", "CW", Morse, Mapped},
    {Chirp, "NCWR", "CW", 250, Mapped},
    {Chirp, "Auto", "", 0},
    {Chirp, "RTTY", "RTTY", 500},
    {Chirp, "RTTYR", "RTTYR", 500},
    {Chirp, "FSK", "FSK", 500},
    {Chirp, "FSKR", "FSKR", 500},
    {Chirp, "DIG", "DIG", 3000},
    {Chirp, "PKT", "PKT", 16000},
    {Chirp, "DV", "DV", 6250},
    {Chirp, "P25", "P25", Narrow},
    {Chirp, "DMR", "DMR", Narrow},
    {Chirp, "DN", "DN", Narrow},
    {Chirp, "NXDN", "NXDN", 6250},

    {Gqrx, "AM", "AM", 10000},
    {Gqrx, "AM-Sync", "AM", 10000, Mapped},
    {Gqrx, "LSB", "LSB", Voice},
    {Gqrx, "USB", "USB", Voice},
    {Gqrx, "CW-U", "CW", Morse},
    {Gqrx, "CW-L", "CW", Morse, Mapped},
    {Gqrx, "Narrow FM", "FM", Narrow},
    {Gqrx, "WFM (mono)", "FM", 160000},
    {Gqrx, "WFM (stereo)", "FM", Wide, Mapped},
    {Gqrx, "WFM (oirt)", "FM", 160000, Mapped},
    {Gqrx, "Raw I/Q", "IQ", 0},
    {Gqrx, "Demod Off", "", 0},

    {SdrPlus, "NFM", "FM", Narrow},
    {SdrPlus, "WFM", "FM", 150000},
    {SdrPlus, "AM", "AM", 10000},
    {SdrPlus, "DSB", "DSB", 4600},
    {SdrPlus, "USB", "USB", 2800},
    {SdrPlus, "CW", "CW", 200},
    {SdrPlus, "LSB", "LSB", 2800},
    {SdrPlus, "RAW", "IQ", 0},

    {SdrSharp, "NFM", "FM", 8000},
    {SdrSharp, "WFM", "FM", Wide},
    {SdrSharp, "AM", "AM", 10000},
    {SdrSharp, "DSB", "DSB", 6000},
    {SdrSharp, "USB", "USB", 2400},
    {SdrSharp, "CW", "CW", 300},
    {SdrSharp, "LSB", "LSB", 2400},
    {SdrSharp, "RAW", "IQ", 10000},

    {Kiwi, "AM", "AM", 9800},
    {Kiwi, "AMN", "AM", 5000},
    {Kiwi, "AMW", "AM", 12000, Mapped},
    {Kiwi, "SAM", "AM", 9800, Mapped},
    {Kiwi, "SAU", "USB", 9800, Mapped},
    {Kiwi, "SAL", "LSB", 9800, Mapped},
    {Kiwi, "SAS", "AM", 9800, Mapped},
    {Kiwi, "QAM", "AM", 9800, Mapped},
    {Kiwi, "USB", "USB", 2400},
    {Kiwi, "USN", "USB", 2100, Mapped},
    {Kiwi, "LSB", "LSB", 2400},
    {Kiwi, "LSN", "LSB", 2100, Mapped},
    {Kiwi, "CW", "CW", 400},
    {Kiwi, "CWN", "CW", 60},
    {Kiwi, "NBFM", "FM", 12000},
    {Kiwi, "NNFM", "FM", 6000},
    {Kiwi, "IQ", "IQ", 10000},
    {Kiwi, "DRM", "DRM", 10000},

    {Fldigi, "USB", "USB", Voice},
    {Fldigi, "LSB", "LSB", Voice},
    {Fldigi, "CW", "CW", Morse},
    {Fldigi, "AM", "AM", Broadcast},
    {Fldigi, "FM", "FM", Narrow},
    {Fldigi, "WFM", "FM", Wide},
    {Fldigi, "CWR", "CW", Morse, Mapped},
    {Fldigi, "RTTY", "RTTY", 500},
    {Fldigi, "PKTUSB", "USB", 3000, Mapped},
    {Fldigi, "PKTLSB", "LSB", 3000, Mapped},
    {Fldigi, "USB-D", "USB", 3000, Mapped},
    {Fldigi, "LSB-D", "LSB", 3000, Mapped},
    {Fldigi, "PKT-U", "USB", 3000, Mapped},
    {Fldigi, "PKT-L", "LSB", 3000, Mapped},
    {Fldigi, "DATA-U", "USB", 3000, Mapped},
    {Fldigi, "DATA-L", "LSB", 3000, Mapped},
    {Fldigi, "DIGU", "USB", 3000, Mapped},
    {Fldigi, "DIGL", "LSB", 3000, Mapped},
    {Fldigi, "CW-U", "CW", Morse, Mapped},
    {Fldigi, "CW-L", "CW", Morse, Mapped},
    {Fldigi, "CW-R", "CW", Morse, Mapped},
    {Fldigi, "AM-D", "AM", Broadcast, Mapped},
    {Fldigi, "FM-D", "FM", Narrow, Mapped},
};

bool isSame(std::string_view a, std::string_view b) {
    return a.size() == b.size() && qstrnicmp(a.data(), b.data(), a.size()) == 0;
}

} // namespace

Mode ModeOf(ModeWords words, std::string_view word) {
    const auto* const row = std::find_if(std::begin(Rows), std::end(Rows), [&](const Row& known) {
        return known.words == words && isSame(known.word, word);
    });
    if (row == std::end(Rows))
        return {QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size())), 0, true, word.empty()};
    return {QString::fromLatin1(row->name), row->bandwidth, row->isExact, true};
}

std::string_view WordOf(ModeWords words, const QString& demodulation, double bandwidth) {
    const QByteArray utf8 = demodulation.toUtf8();
    const std::string_view name(utf8.constData(), static_cast<size_t>(utf8.size()));
    const Row* best = nullptr;
    double bestDistance = 0;
    for (const Row& row : Rows) {
        if (row.words != words || !row.isExact || !isSame(row.name, name))
            continue;
        const double distance =
            bandwidth > 0 && row.bandwidth > 0 ? std::abs(std::log(bandwidth / row.bandwidth)) : 0;
        if (!best || distance < bestDistance) {
            best = &row;
            bestDistance = distance;
        }
    }
    return best ? std::string_view(best->word) : std::string_view();
}

} // namespace Interchange
