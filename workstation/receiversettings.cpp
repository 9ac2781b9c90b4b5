#include "workstation/receiversettings.h"

namespace {

using enum ReceiverSetting::Type;

constexpr ReceiverChoice HfDemodulations[] = {
    {"NONE", 0, 0}, {"AM", 1, 1}, {"FM", 2, 2}, {"USB", 3, 3}, {"LSB", 4, 4}, {"CW", 5, 5}, {"ISB", 6, 6},
};
constexpr ReceiverChoice VuhfDemodulations[] = {
    {"NONE", 0, 0}, {"AM", 1, 1}, {"FM", 2, 2}, {"USB", 3, 3}, {"LSB", 4, 4}, {"CW", 5, 5}, {"PULSE", 7, 7},
};
constexpr ReceiverChoice OutputIFPaths[] = {{"48.0 kHz", 48.0, 0}, {"455.0 kHz", 455.0, 1}};
constexpr ReceiverChoice Antennas[] = {
    {"Automatic", 0, 0}, {"Discone", 1, 1}, {"Log-periodic", 2, 2}, {"Horn", 3, 3}};

constexpr ReceiverSetting HfSettings[] = {
    {"frequency", "Frequency", "", Frequency, 9e3, 30e6, 6070e3},
    {"bandwidth", "Bandwidth", "", Bandwidth, 100, 40e3, 6000},
    {"demodulation", "Demodulation", "", Choice, 0, 0, 1, HfDemodulations},
    {"threshold", "Threshold", "dBµV", Integer, -40, 110, 20},
    {"bfofrequency", "BFO", "Hz", Integer, -10000, 10000, 0},
    {"outputifpath", "Output IF path", "", Choice, 0, 0, 0, OutputIFPaths},
    {"shift", "Shift", "Hz", Integer, 26, 39974, 20000},
};

constexpr ReceiverSetting VuhfSettings[] = {
    {"frequency", "Frequency", "", Frequency, 20e6, 3e9, 98.5e6},
    {"bandwidth", "Bandwidth", "", Bandwidth, 100, 20e6, 150e3},
    {"demodulation", "Demodulation", "", Choice, 0, 0, 2, VuhfDemodulations},
    {"threshold", "Threshold", "dBµV", Integer, -40, 110, 20},
    {"usesquelch", "Squelch", "", Flag},
    {"afc", "AFC", "", Flag},
    {"useattenuation", "Manual attenuation", "", Flag},
    {"attenuation", "Attenuation", "dB", Integer, 0, 40, 0},
    {"antenna", "Antenna", "", Choice, 0, 0, 1, Antennas},
    {"antennaid", nullptr, "", Integer, 0, 99, 1},
};

} // namespace

std::span<const ReceiverSetting> ReceiverSettings(ReceiverKind kind) {
    return kind == ReceiverKind::HF ? std::span<const ReceiverSetting>(HfSettings)
                                    : std::span<const ReceiverSetting>(VuhfSettings);
}

QString ReceiverName(ReceiverKind kind) {
    return kind == ReceiverKind::HF ? QStringLiteral("HF") : QStringLiteral("VHF/UHF");
}
