#pragma once

#include <QHash>
#include <QString>

/// One row of the store's copy buffer: texts keyed by the store-wide identifiers of column names
/// (`FreqStore::GetCopyStructId`).
class FrequencyListCopyStruct {
public:
    void SetValue(unsigned columnId, const QString& text) { m_texts.insert(columnId, text); }
    /// False, with `text` untouched, when the row has no text for that column.
    [[nodiscard]] bool GetValue(unsigned columnId, QString& text) const {
        const auto found = m_texts.constFind(columnId);
        if (found == m_texts.constEnd())
            return false;
        text = *found;
        return true;
    }

private:
    QHash<unsigned, QString> m_texts;
};
