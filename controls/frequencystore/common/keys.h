#pragma once

#include "host/freqlist/keys.h"

/// The vocabulary of all entries: names of the values under an entry's node, identifiers of source links,
/// which are the identifiers of columns, too, and texts with a meaning.
namespace Keys {

using FreqList::KeyBandwidth;
using FreqList::KeyComment;
using FreqList::KeyDemodulation;
using FreqList::KeyFrequency;
using FreqList::KeyType;

using FreqList::Key;

inline constinit const Key BandwidthSel("bandwidthsel");
inline constinit const Key Locked("locked");
inline constinit const Key LockTime("locktime");     ///< µs since 1970-01-01 UTC
inline constinit const Key Confidence("confidence"); ///< percent
inline constinit const Key
    ThreatClass("threadclass"); ///< the threat class; the spelling is part of stored data
inline constinit const Key Priority("priority");
inline constinit const Key ProfileID("profileid");
inline constinit const Key SignalClass("signalclass");
inline constinit const Key TransmissionSystem("transmissionsystem");
inline constinit const Key ProfileName("profilename");

inline constinit const Key OutputIFPath("outputifpath");
inline constinit const Key Shift("shift");               ///< Hz
inline constinit const Key BFOFrequency("bfofrequency"); ///< Hz
inline constexpr const Key& Threshold = FreqList::KeyThreshold;
inline constexpr const Key& AFC = FreqList::KeyAfc;
inline constexpr const Key& UseSquelch = FreqList::KeyUseSquelch;
inline constexpr const Key& UseAttenuation = FreqList::KeyUseAttenuation;
inline constexpr const Key& Attenuation = FreqList::KeyAttenuation;
inline constinit const Key AntennaID("antennaid");
inline constinit const Key Range("range");                       ///< whether a channel stands for several
inline constinit const Key RangeCounter("rangecounter");         ///< number of the range, -1 for none
inline constinit const Key RangeFrequencies("rangefrequencies"); ///< all but the channel's own, Hz

} // namespace Keys

/// Lock states of a classifier; any other text that does not contain the first counts as locked, too.
namespace LockText {

inline QString Unlocked() {
    return QStringLiteral("UNLOCKED");
}
inline QString Locked() {
    return QStringLiteral("LOCKED");
}

} // namespace LockText

/// Identifiers of settings: a source link of a template entry, and the column that shows the setting.
enum SourceId : unsigned {
    SourceFrequency = FreqList::ColumnFrequency,
    SourceBandwidth = FreqList::ColumnBandwidth,
    SourceDemodulation = FreqList::ColumnDemodulation,
    SourceType = FreqList::ColumnType,
    SourceText = FreqList::ColumnComment,
    SourceLocked = 49,
    SourceLockTime = 50,
    SourceConfidence = 51,
    ColumnPriority = 52,
    ColumnThreatClass = 53,
    ColumnSignalClass = 54,
    ColumnTransmissionSystem = 55,
    SourceThreshold = 56,
    SourceBFOFrequency = 57,
    SourceOutputIF = 58,
    SourceShift = 59,
    SourceThresholdToo = 60,
    SourceUseSquelch = 61,
    SourceUseAttenuation = 62,
    SourceAttenuation = 63,
    SourceAntenna = 64,
    SourceAFC = 65,
};

/// Kind of list that a mediator controller or an editor serves.
enum class MediatorType : int {
    MemoryHF = 1001,
    SearchMCData = 1002,
    TargetList = 1003,
    NoiFrequencies = 1004,
    MemoryVUHF = 1005,
};
