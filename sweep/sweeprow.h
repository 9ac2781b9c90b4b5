#pragma once

#include <QString>

#include <cstddef>
#include <string_view>

/// Columns of a sweep row before its levels.
struct SweepRow {
    std::string_view stamp; ///< date and time as they stand in the row
    std::string_view date;
    std::string_view time;
    double low = 0;          ///< Hz
    double high = 0;         ///< Hz
    double step = 0;         ///< bin width in Hz
    std::size_t bins = 0;    ///< that fit between low and high
    std::string_view levels; ///< the rest of the row

    /// Most bins that a row or a sweep may have, so that a bad file does not fill the memory.
    static constexpr std::size_t MostBins = 4'000'000;

    /// Takes a line apart; false, with the reason, when it is no row.
    bool Parse(std::string_view line, QString& reason);
};

/// Whether there is nothing in a text but blanks and TABs.
bool IsBlank(std::string_view text);

/// Takes the first value off `text`, which is a list of levels in dB separated by commas; -inf is one. False
/// when the value is none: `level` is then NaN, and `wrong` what stands there.
bool TakeLevel(std::string_view& text, float& level, std::string_view& wrong);

/// A piece of a file as it may stand in a problem: in quotes, and cut off when long.
QString Quoted(std::string_view text);
