#pragma once

#include <QString>

#include <string_view>

namespace FreqStoreXml {

/// How CSV files are written in this process. Spreadsheets run a cell that begins with =, +, -, @, TAB or CR
/// as a formula; the safe form puts an apostrophe before such texts, and before those that begin with an
/// apostrophe. A file of that form has a last, empty column of a telling name, by which readers know to take
/// the apostrophes away.
class CsvOptions {
public:
    /// Heading of the column that marks a file as written for spreadsheets.
    static constexpr std::string_view SafeMark = "ApostropheBeforeFormula";
    static constexpr char Guard = '\'';

    static void SetSpreadsheetSafe(bool safe);
    static bool IsSpreadsheetSafe();

    /// Whether a text gets an apostrophe.
    static bool NeedsGuard(QStringView text);
};

} // namespace FreqStoreXml
