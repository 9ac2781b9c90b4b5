#include "link/wire.h"

#include <QtEndian>

#include <bit>
#include <cmath>

namespace Wire {
namespace {

/// Whole numbers up to here are doubles without loss.
constexpr double MostWhole = 0x1p53;

enum NumberForm : quint8 { WholeNumber = 0, AnyNumber = 1 };

} // namespace

void Writer::Count(quint64 number) {
    for (; number >= 0x80; number >>= 7)
        Byte(static_cast<quint8>(number | 0x80));
    Byte(static_cast<quint8>(number));
}

void Writer::Whole(qint64 number) {
    Count((static_cast<quint64>(number) << 1) ^ static_cast<quint64>(number >> 63));
}

void Writer::Number(double number) {
    if (!std::isfinite(number))
        number = 0;
    const bool isMinusZero = number == 0 && std::signbit(number);
    if (std::abs(number) < MostWhole && std::trunc(number) == number && !isMinusZero) {
        Byte(WholeNumber);
        return Whole(static_cast<qint64>(number));
    }
    Byte(AnyNumber);
    Fixed(std::bit_cast<quint64>(number));
}

void Writer::Fixed(quint64 bits) {
    char bytes[sizeof bits];
    qToLittleEndian(bits, bytes);
    m_bytes.append(bytes, sizeof bytes);
}

void Writer::Text(QStringView text) {
    Block(text.toUtf8());
}

void Writer::Block(QByteArrayView bytes) {
    Count(static_cast<quint64>(bytes.size()));
    Rest(bytes);
}

void Reader::Fail() {
    m_good = false;
    m_rest = {};
}

QByteArrayView Reader::take(quint64 count) {
    if (count > static_cast<quint64>(m_rest.size())) {
        Fail();
        return {};
    }
    const QByteArrayView taken = m_rest.first(static_cast<qsizetype>(count));
    m_rest = m_rest.sliced(static_cast<qsizetype>(count));
    return taken;
}

quint8 Reader::Byte() {
    const QByteArrayView byte = take(1);
    return byte.isEmpty() ? quint8(0) : static_cast<quint8>(byte[0]);
}

quint64 Reader::Count() {
    quint64 number = 0;
    for (int shift = 0; shift < 64; shift += 7) {
        const quint8 byte = Byte();
        number |= static_cast<quint64>(byte & 0x7f) << shift;
        if (byte < 0x80)
            return number;
    }
    Fail();
    return 0;
}

quint64 Reader::CountUpTo(quint64 most) {
    const quint64 number = Count();
    if (number <= most)
        return number;
    Fail();
    return 0;
}

qint64 Reader::Whole() {
    const quint64 number = Count();
    return static_cast<qint64>(number >> 1) ^ -static_cast<qint64>(number & 1);
}

double Reader::Number() {
    const quint8 form = Byte();
    if (form == WholeNumber)
        return static_cast<double>(Whole());
    const auto number = std::bit_cast<double>(Fixed());
    if (form == AnyNumber && std::isfinite(number))
        return number;
    Fail();
    return 0;
}

quint64 Reader::Fixed() {
    const QByteArrayView bytes = take(sizeof(quint64));
    return bytes.isEmpty() ? 0 : qFromLittleEndian<quint64>(bytes.data());
}

QString Reader::Text() {
    return QString::fromUtf8(Block());
}

QByteArrayView Reader::Block() {
    return take(Count());
}

quint64 Hash(QByteArrayView bytes) {
    constexpr quint64 Odd = 0x9E3779B97F4A7C15ull;
    quint64 hash = static_cast<quint64>(bytes.size()) * Odd;
    const auto mix = [&](quint64 word) {
        hash = (hash ^ word) * 0xD6E8FEB86659FD93ull;
        hash ^= hash >> 32;
    };
    const char* at = bytes.data();
    qsizetype left = bytes.size();
    for (; left >= 8; left -= 8, at += 8)
        mix(qFromLittleEndian<quint64>(at));
    quint64 last = 0;
    for (qsizetype i = 0; i < left; ++i)
        last |= static_cast<quint64>(static_cast<quint8>(at[i])) << (8 * i);
    mix(last);
    mix(Odd);
    return hash;
}

} // namespace Wire
