#pragma once

#include "host/valuetree/names.h"

/// Keys of the values that every list entry may have, and the identifiers of columns and settings that belong
/// to them. A column shows the value whose identifier it carries.
namespace FreqList {

/// One key of a vocabulary: a constant that knows its interned form, for look-ups that happen a million
/// times.
class Key {
public:
    constexpr explicit Key(const char* text) : m_text(text) {}
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    operator Names::Id() const {
        if (m_id == Names::Unknown)
            m_id = Names::Intern(Text());
        return m_id;
    }
    QString Text() const { return QString::fromLatin1(m_text); }

private:
    const char* m_text;
    mutable Names::Id m_id = Names::Unknown;
};

inline constinit const Key KeyFrequency("frequency");       ///< numeric double, Hz
inline constinit const Key KeyBandwidth("bandwidth");       ///< numeric double, Hz
inline constinit const Key KeyComment("comment");           ///< text
inline constinit const Key KeyDemodulation("demodulation"); ///< text or selection
inline constinit const Key KeyType("type");                 ///< one-letter type code

// Settings of a receiver that only some entries have.
inline constinit const Key KeyThreshold("threshold");           ///< numeric int, dBµV
inline constinit const Key KeyUseSquelch("usesquelch");         ///< flag
inline constinit const Key KeyUseAttenuation("useattenuation"); ///< flag: attenuation by hand
inline constinit const Key KeyAttenuation("attenuation");       ///< numeric int, dB
inline constinit const Key KeyAfc("afc");                       ///< flag

enum ColumnId : unsigned {
    ColumnFrequency = 0,
    ColumnBandwidth = 1,
    ColumnDemodulation = 2,
    ColumnType = 3,
    ColumnComment = 4,
};

} // namespace FreqList
