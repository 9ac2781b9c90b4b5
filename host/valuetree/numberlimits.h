#pragma once

#include <QtGlobal>

#include <array>
#include <bit>
#include <type_traits>

/// Minimum, maximum and step of a number, whatever its type: exact for whole numbers of 64 bits and for
/// doubles. Very many values have few different limits, which therefore stand once each in a table.
class NumberLimits {
public:
    /// Place in the table. 0 are the limits of a new number: all 0.
    using Id = quint32;
    /// The table is full: the limits have to be kept elsewhere.
    static constexpr Id NotKept = 0xffffffffu;

    NumberLimits() = default;
    template <typename T>
    static NumberLimits Of(T min, T max, T step) {
        NumberLimits limits;
        limits.m_bits = {toBits(min), toBits(max), toBits(step)};
        return limits;
    }
    template <typename T>
    T Min() const {
        return fromBits<T>(m_bits[0]);
    }
    template <typename T>
    T Max() const {
        return fromBits<T>(m_bits[1]);
    }
    template <typename T>
    T Step() const {
        return fromBits<T>(m_bits[2]);
    }

    /// Puts limits into the table, which has room for some ten thousand, or finds them there.
    static Id Keep(const NumberLimits& limits);
    static const NumberLimits& At(Id id);

    bool operator==(const NumberLimits&) const = default;
    size_t Hash() const;

private:
    template <typename T>
    static quint64 toBits(T number) {
        if constexpr (std::is_floating_point_v<T>)
            return std::bit_cast<quint64>(static_cast<double>(number));
        else
            return static_cast<quint64>(static_cast<qint64>(number));
    }
    template <typename T>
    static T fromBits(quint64 bits) {
        if constexpr (std::is_floating_point_v<T>)
            return static_cast<T>(std::bit_cast<double>(bits));
        else
            return static_cast<T>(static_cast<qint64>(bits));
    }

    std::array<quint64, 3> m_bits{};
};
