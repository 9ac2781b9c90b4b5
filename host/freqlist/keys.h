#pragma once

#include "host/valuetree/names.h"

/// Keys of the values that every list entry may have, and the identifiers of columns and settings that belong
/// to them. A column shows the value whose identifier it carries.
namespace FreqList {

inline constexpr char KeyFrequency[] = "frequency";       ///< numeric double, Hz
inline constexpr char KeyBandwidth[] = "bandwidth";       ///< numeric double, Hz
inline constexpr char KeyComment[] = "comment";           ///< text
inline constexpr char KeyDemodulation[] = "demodulation"; ///< text or selection
inline constexpr char KeyType[] = "type";                 ///< one-letter type code

enum ColumnId : unsigned {
    ColumnFrequency = 0,
    ColumnBandwidth = 1,
    ColumnDemodulation = 2,
    ColumnType = 3,
    ColumnComment = 4,
};

/// The interned form of a key, for look-ups that happen a million times.
inline Names::Id KeyId(const char* key) {
    return Names::Intern(QString::fromLatin1(key));
}

} // namespace FreqList
