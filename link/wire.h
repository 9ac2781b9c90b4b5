#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// The bytes of messages: whole numbers in as few bytes as they need, lowest first; texts in UTF-8 behind
/// their length. What is written is the only form of a content, so that equal contents have equal bytes.
namespace Wire {

class Writer {
public:
    /// Takes memory for so many bytes at once.
    void Reserve(qsizetype bytes) { m_bytes.reserve(bytes); }
    void Byte(quint8 byte) { m_bytes += static_cast<char>(byte); }
    void Count(quint64 number);
    /// A number with sign; near 0 it is short on both sides.
    void Whole(qint64 number);
    /// Whole numbers take a byte more than those of `Whole`, others nine; what is no number travels as 0.
    void Number(double number);
    void Fixed(quint64 bits);
    void Text(QStringView text);
    /// Bytes behind their count.
    void Block(QByteArrayView bytes);
    /// Bytes without their count: the rest of a message.
    void Rest(QByteArrayView bytes) { m_bytes.append(bytes.data(), bytes.size()); }

    qsizetype Size() const { return m_bytes.size(); }
    /// Empties the writer and keeps its memory.
    void Clear() { m_bytes.resize(0); }
    QByteArrayView View() const { return m_bytes; }
    QByteArray Take() { return std::move(m_bytes); }

private:
    QByteArray m_bytes;
};

/// Reads what a Writer wrote, from whoever: after bytes that are none of it all answers are 0 or empty, and
/// `IsGood` is false. It holds no bytes of its own.
class Reader {
public:
    explicit Reader(QByteArrayView bytes) : m_rest(bytes) {}

    quint8 Byte();
    quint64 Count();
    /// A count that must not exceed `most`.
    quint64 CountUpTo(quint64 most);
    qint64 Whole();
    /// A finite number.
    double Number();
    quint64 Fixed();
    QString Text();
    QByteArrayView Block();
    QByteArrayView Rest() { return std::exchange(m_rest, {}); }

    void Fail();
    bool IsGood() const { return m_good; }
    bool AtEnd() const { return m_rest.isEmpty(); }
    /// All has been read, and all of it was good.
    bool IsDone() const { return m_good && m_rest.isEmpty(); }
    qsizetype Left() const { return m_rest.size(); }

private:
    QByteArrayView take(quint64 count);

    QByteArrayView m_rest;
    bool m_good = true;
};

/// A number that tells contents apart; the same on all machines.
quint64 Hash(QByteArrayView bytes);

/// Contents in any order.
class Checksum {
public:
    void Add(quint64 hash) { m_sum += hash; }
    void Remove(quint64 hash) { m_sum -= hash; }
    quint64 Sum() const { return m_sum; }

private:
    quint64 m_sum = 0;
};

} // namespace Wire
