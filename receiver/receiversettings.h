#pragma once

#include "controls/frequencystore/common/keys.h"

#include <QString>

#include <span>

/// Which receiver the workstation drives; each has settings that the other lacks.
enum class ReceiverKind { HF, VUHF };

/// The antenna by its name; entries know it by its number.
inline constinit const FreqList::Key KeyAntenna("antenna");

/// One item of a setting that is chosen from a list.
struct ReceiverChoice {
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
    std::span<const ReceiverChoice> choices = {};
};

/// The settings of a receiver kind, in the order in which its panel shows them.
std::span<const ReceiverSetting> ReceiverSettings(ReceiverKind kind);

/// "HF" or "VHF/UHF".
QString ReceiverName(ReceiverKind kind);
