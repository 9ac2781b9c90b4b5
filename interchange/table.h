#pragma once

#include "interchange/format.h"
#include "interchange/tablecell.h"

#include <QByteArray>
#include <QStringList>

#include <optional>
#include <vector>

namespace Interchange {

// A table of no known format: what its columns hold is proposed from its headings and its first rows, and
// told by the operator. Nothing is read by a unit that nobody named.

/// What a column holds.
enum class TableField { None, Frequency, Bandwidth, Mode, Name, Notes };

/// Word of a field on command lines ("frequency"); "comment" is that of the name.
QString TableFieldWord(TableField field);

struct TableColumn {
    static constexpr double InEachCell = -1; ///< "121.5 MHz"

    TableField field = TableField::None;
    double hertzPerUnit = 0; ///< of a frequency or bandwidth; 0 while nobody told
    bool operator==(const TableColumn&) const = default;
};

/// How a table is read.
struct TableChoice {
    char separator = ',';
    bool hasHeadings = true;
    bool isHeadingMarked = false; ///< "#" stands in front of the headings, as of a comment
    bool hasUnitRow = false;      ///< below the headings
    int titleRows = 0;            ///< above them
    DecimalMark decimals = DecimalMark::Point;
    QByteArray encoding; ///< by name ("windows-1251"); empty for the one that the content tells
    std::vector<TableColumn> columns;

    /// Why it cannot be read so, as a sentence for the operator; empty when it can.
    QString WhyOpen(const QStringList& headings) const;
    /// As options of a command line: "frequency=Freq:MHz,name=Call"; columns are numbers from 1 where
    /// they have no heading, or one that cannot stand there.
    QString ToText(const QStringList& headings) const;
    bool operator==(const TableChoice&) const = default;
};

/// What is known of a table before it is looked at; the rest is found.
struct TableHints {
    char separator = 0;
    std::optional<bool> hasHeadings;
    std::optional<DecimalMark> decimals;
    QByteArray encoding;
};

/// What a first look at a table finds.
struct TableLook {
    QStringList headings;          ///< of all columns; "1", "2", ... for a table without
    std::vector<QStringList> rows; ///< the first ones
    QString encoding;              ///< that the content tells: "UTF-8", "Windows-1252", ...
    /// What is sure. A unit that no heading names is not.
    TableChoice choice;
    /// The same with the units that the numbers suggest.
    TableChoice proposal;

    /// Hz of the unit that the heading of a column or all of its cells (`InEachCell`) name; 0 for none.
    double SureUnit(qsizetype column) const;
    /// What the numbers of a column suggest, which holds that field; 0 for a column without any.
    double LikelyUnit(qsizetype column, TableField field) const;
    /// Whether it may be a table of frequencies at all: no markup, and several columns or one of numbers.
    bool MayHoldFrequencies() const;
    /// Whether it may be our own CSV: all its headings are ours, and its frequencies can be in Hz.
    bool IsOwn() const;

private:
    bool mayBeGrouped(qsizetype column, double unit) const;
};

/// Looks at the beginning of a table, and tells nothing; throws RGException for what is no text or has no
/// rows.
TableLook LookAtTable(QIODevice& device, const QString& name, const TableHints& hints = {});
TableLook LookAtTable(const QString& path, const TableHints& hints = {});

/// What an option of a command line says of a column.
struct TableOption {
    TableField field = TableField::None;
    QString heading;         ///< or its number, from 1
    double hertzPerUnit = 0; ///< 0 when it names no unit
};

/// Takes the options of a command line, "frequency=Freq:MHz,name=Call"; throws RGException with the reason
/// for what can be none of any table.
std::vector<TableOption> ParseTableOptions(const QString& text);
/// Changes a choice by such options; columns that they do not name hold nothing. Throws as well for columns
/// that the table does not have.
void TakeTableOptions(const QString& text, const TableLook& look, TableChoice& choice);

/// Reads a table; throws RGException as `Read` does.
Account ReadTable(QIODevice& device, const QString& name, const TableChoice& choice,
                  const ReadOptions& options, const TakeEntry& take);
Account ReadTable(const QString& path, const TableChoice& choice, const ReadOptions& options,
                  const TakeEntry& take);

} // namespace Interchange
