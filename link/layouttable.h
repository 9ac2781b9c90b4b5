#pragma once

#include "link/entrylayout.h"

#include <QHash>

/// The layouts of a list's entries, by their numbers; none ever goes. A list mostly has one.
class LayoutTable {
public:
    /// The number of an entry's layout, which is added when it is new.
    quint32 NumberOf(const Node& entry);
    quint32 Add(EntryLayout layout);
    /// Puts a layout that came from elsewhere at its number; false when the bytes are none.
    bool Put(quint32 number, QByteArrayView bytes);

    /// Null where none is known.
    const EntryLayout* At(quint32 number) const;
    /// A layout with the same fields; null when no entry of the list can have these.
    const EntryLayout* Similar(const EntryLayout& layout) const;
    const QByteArray& Bytes(quint32 number) const { return m_rows[number].bytes; }
    quint32 Count() const { return static_cast<quint32>(m_rows.size()); }
    /// Of so many first ones; layouts that are missing do not count.
    quint64 Checksum(quint32 count) const;
    void Clear();

private:
    struct Row {
        std::optional<EntryLayout> layout;
        QByteArray bytes;
    };

    std::vector<Row> m_rows;
    QHash<QByteArray, quint32> m_numbers;
    Wire::Checksum m_sum;
    quint32 m_last = 0;
};
