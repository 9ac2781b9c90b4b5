#include "receiver/receiversettings.h"

#include <QtGlobal>

namespace {

using enum ReceiverSetting::Type;

constexpr SettingChoice HfDemodulations[] = {
    {"NONE", 0, 0}, {"AM", 1, 1}, {"FM", 2, 2}, {"USB", 3, 3}, {"LSB", 4, 4}, {"CW", 5, 5}, {"ISB", 6, 6},
};
constexpr SettingChoice VuhfDemodulations[] = {
    {"NONE", 0, 0}, {"AM", 1, 1}, {"FM", 2, 2}, {"USB", 3, 3}, {"LSB", 4, 4}, {"CW", 5, 5}, {"PULSE", 7, 7},
};
constexpr SettingChoice OutputIFPaths[] = {{"48.0 kHz", 48.0, 0}, {"455.0 kHz", 455.0, 1}};
constexpr SettingChoice Antennas[] = {
    {"Automatic", 0, 0}, {"Discone", 1, 1}, {"Log-periodic", 2, 2}, {"Horn", 3, 3}};

constexpr ReceiverSetting LevelThreshold{
    Keys::Threshold, QT_TRANSLATE_NOOP("Receiver", "Threshold"), "dBµV", Integer, -40, 110, 20};
constexpr ReceiverSetting Offset{
    KeyOffset, QT_TRANSLATE_NOOP("Receiver", "RIT"), "Hz", Integer, -9999, 9999, 0, {}, true};
constexpr ReceiverSetting SquelchKnob{
    KeySquelchLevel, QT_TRANSLATE_NOOP("Receiver", "Squelch knob"), "%", Integer, 0, 100, 0, {}, true};

// What each receiver has, with limits of its own; the last number is the one that it begins with.

constexpr ReceiverSetting frequency(double min, double max, double first) {
    return {Keys::KeyFrequency, QT_TRANSLATE_NOOP("Receiver", "Frequency"), "", Frequency, min, max, first};
}
constexpr ReceiverSetting bandwidth(double min, double max, double first) {
    return {Keys::KeyBandwidth, QT_TRANSLATE_NOOP("Receiver", "Bandwidth"), "", Bandwidth, min, max, first};
}
constexpr ReceiverSetting demodulation(double first, std::span<const SettingChoice> choices) {
    return {Keys::KeyDemodulation,
            QT_TRANSLATE_NOOP("Receiver", "Demodulation"),
            "",
            Choice,
            0,
            0,
            first,
            choices};
}

/// What lies before the tuner, which on short wave only radios have.
constexpr ReceiverSetting manualAttenuation(bool isOfRadios) {
    return {.key = Keys::UseAttenuation,
            .title = QT_TRANSLATE_NOOP("Receiver", "Manual attenuation"),
            .unit = "",
            .type = Flag,
            .isOfRadios = isOfRadios};
}
constexpr ReceiverSetting attenuation(bool isOfRadios) {
    return {Keys::Attenuation, QT_TRANSLATE_NOOP("Receiver", "Attenuation"), "dB", Integer, 0, 40, 0, {},
            isOfRadios};
}
constexpr ReceiverSetting antenna(bool isOfRadios) {
    return {KeyAntenna, QT_TRANSLATE_NOOP("Receiver", "Antenna"), "", Choice, 0, 0, 1, Antennas, isOfRadios};
}
constexpr ReceiverSetting antennaNumber(bool isOfRadios) {
    return {Keys::AntennaID, nullptr, "", Integer, 0, 99, 1, {}, isOfRadios};
}

constexpr ReceiverSetting HfSettings[] = {
    frequency(9e3, 30e6, 6060e3),
    bandwidth(100, 40e3, 6000),
    demodulation(1, HfDemodulations),
    LevelThreshold,
    {Keys::BFOFrequency, QT_TRANSLATE_NOOP("Receiver", "BFO"), "Hz", Integer, -10000, 10000, 0},
    {Keys::OutputIFPath, QT_TRANSLATE_NOOP("Receiver", "Output IF path"), "", Choice, 0, 0, 0, OutputIFPaths},
    {Keys::Shift, QT_TRANSLATE_NOOP("Receiver", "Shift"), "Hz", Integer, 26, 39974, 20000},
    manualAttenuation(true),
    attenuation(true),
    antenna(true),
    antennaNumber(true),
    Offset,
    SquelchKnob,
};

constexpr ReceiverSetting VuhfSettings[] = {
    frequency(20e6, 3e9, 98.5e6),
    bandwidth(100, 20e6, 150e3),
    demodulation(2, VuhfDemodulations),
    LevelThreshold,
    {Keys::UseSquelch, QT_TRANSLATE_NOOP("Receiver", "Squelch"), "", Flag},
    {Keys::AFC, QT_TRANSLATE_NOOP("Receiver", "AFC"), "", Flag},
    manualAttenuation(false),
    attenuation(false),
    antenna(false),
    antennaNumber(false),
    Offset,
    SquelchKnob,
};

} // namespace

std::span<const ReceiverSetting> ReceiverSettings(ReceiverKind kind) {
    return kind == ReceiverKind::HF ? std::span<const ReceiverSetting>(HfSettings)
                                    : std::span<const ReceiverSetting>(VuhfSettings);
}

ReceiverAbility AbilityOf(const ReceiverSetting& setting) {
    ReceiverAbility ability{setting.key, setting.min, setting.max};
    for (const SettingChoice& choice : setting.choices)
        ability.choices.push_back({QString::fromUtf8(choice.name), choice.number, choice.key});
    return ability;
}

QString ReceiverName(ReceiverKind kind) {
    return kind == ReceiverKind::HF ? QStringLiteral("HF") : QStringLiteral("VHF/UHF");
}
