#pragma once

#include "host/freqstorexml/csvlayout.h"

#include <QString>

namespace FreqStoreXml {

class CsvScanner;

/// The first row of a CSV file: which of its columns are those of a list, and whether its frequencies can be
/// hertz. Tables of other programs have a column of that name, too, and count in MHz.
class CsvHeading {
public:
    /// Reads the row. Throws RGException when it names a column twice, has no frequencies, or is that of
    /// another program's table.
    CsvHeading(CsvScanner& scanner, const CsvLayout& layout);

    /// The layout's columns in the file's order, null where the layout does not know the heading.
    const std::vector<const CsvColumn*>& Columns() const { return m_columns; }
    /// Index of the column with the frequencies.
    std::size_t FrequencyColumn() const { return m_frequency; }
    /// Whether texts have an apostrophe before what would be a formula.
    bool IsGuarded() const { return m_isGuarded; }

    /// Notes the frequency of the current row.
    void Note(double frequency, const CsvScanner& scanner);
    /// Throws RGException when the frequencies of the file cannot be in hertz: it has columns that no list of
    /// ours has, all its numbers are small, and some have decimals. Call it at the end of the file.
    void CheckFrequencies(const QString& fileName) const;

private:
    void takeColumn(std::string_view name, const CsvScanner& scanner, const CsvLayout& layout);
    void refuseForeign(const CsvScanner& scanner) const;

    std::vector<const CsvColumn*> m_columns;
    std::size_t m_frequency = 0;
    bool m_hasFrequency = false;
    bool m_isGuarded = false;
    QString m_unknown;          ///< the first name that no list of ours has; empty when there is none
    QString m_foreign;          ///< the first name that another program's tables have
    const char* m_program = ""; ///< that program
    bool m_anyLarge = false;
    qint64 m_brokenLine = 0; ///< of the first frequency with decimals, when it matters
};

} // namespace FreqStoreXml
