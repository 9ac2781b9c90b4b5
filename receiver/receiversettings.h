#pragma once

#include "controls/frequencystore/common/keys.h"

#include <QString>

#include <span>
#include <vector>

/// Which receiver the workstation drives; each has settings that the other lacks.
enum class ReceiverKind { HF, VUHF };

/// The antenna by its name; entries know it by its number.
inline constinit const FreqList::Key KeyAntenna("antenna");
/// Where the radio's own squelch stands, in percent of its knob; it is no level.
inline constinit const FreqList::Key KeySquelchLevel("squelchLevel");
/// How far the radio receives beside the frequency that it shows (RIT), in Hz.
inline constinit const FreqList::Key KeyOffset("offset");

/// One item of a setting that is chosen from a list.
struct SettingChoice {
    const char* name;
    double number;
    long key;
};

/// One setting of a receiver: the value that holds it, its limits and its default. The keys are those under
/// which list entries keep the same settings.
struct ReceiverSetting {
    enum class Type { Frequency, Bandwidth, Integer, Choice, Flag };

    const FreqList::Key& key;
    const char* title; ///< for Receiver::tr; null for a setting that another one shows
    const char* unit;  ///< of an integer
    Type type;
    double min = 0; ///< limits of a number; Hz for frequencies and bandwidths
    double max = 0;
    double initial = 0; ///< number, key of the chosen item, or 1 for a flag that is set
    std::span<const SettingChoice> choices = {};
    bool isOfRadios = false; ///< shown only where a radio has it
};

/// What a radio can do with one of its settings, in place of what the kind of receiver says.
struct ReceiverAbility {
    struct Choice {
        QString name;
        double number;
        long key;
    };

    Names::Id key = Names::Unknown;
    double min = 0; ///< of a number, as is `step`
    double max = 0;
    double step = 1;
    std::vector<double> only = {}; ///< the numbers that it takes, rising; empty for all from min to max
    std::vector<Choice> choices = {};
    QString whyNot = {}; ///< why it cannot be set although the radio has it; empty when it can
};

/// What a receiver of the kind can do with a setting.
ReceiverAbility AbilityOf(const ReceiverSetting& setting);

/// The settings of a receiver kind and those that only radios have, in the order in which its panel shows
/// them.
std::span<const ReceiverSetting> ReceiverSettings(ReceiverKind kind);

/// "HF" or "VHF/UHF".
QString ReceiverName(ReceiverKind kind);
