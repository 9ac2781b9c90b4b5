#include "interchange/formatlist.h"
#include "interchange/outgoing.h"
#include "interchange/rows.h"

#include <QCoreApplication>

#include <algorithm>
#include <span>

namespace Interchange {

namespace {

// Tables of a receiver's program: the channels of its frequency scanner, and the annotations of its spectrum.
// All numbers are in Hz, a level in dB.

constexpr FreqStoreXml::CsvDialect Table{',', true, true};

bool knowsScanner(const QString& head) {
    return BeginsWithHeadings(head, QLatin1Char(','), {"Freq (Hz)", "Enable", "Notes"});
}

/// Counts the columns of a table that its reader does not take itself; `keys` are what some are kept under.
class OtherColumns {
public:
    using Key =
        std::pair<std::string_view, std::string_view>; ///< heading and key; an empty key passes it over

    OtherColumns(const Heading& heading, std::span<const Key> keys) {
        for (std::size_t i = 0; i < heading.Count(); ++i) {
            const auto known = std::ranges::find(keys, heading.NameAt(i), &Key::first);
            if (known == keys.end())
                m_columns.emplace_back(i, heading.NameAt(i));
            else if (!known->second.empty())
                m_columns.emplace_back(i, known->second);
        }
    }
    void Count(const Rows& rows, Reading& reading) const {
        for (const auto& [column, key] : m_columns)
            reading.Extra(key, rows.Cell(column));
    }

private:
    std::vector<std::pair<std::size_t, std::string>> m_columns;
};

/// Spreadsheets make TRUE of what the program writes as 1; nothing for what is neither.
std::optional<bool> flagOf(std::string_view text) {
    constexpr std::pair<const char*, bool> Flags[] = {
        {"", true}, {"1", true}, {"true", true}, {"0", false}, {"false", false}};
    const auto* const found = std::ranges::find_if(Flags, [text](const auto& flag) {
        return text.size() == qstrlen(flag.first) && qstrnicmp(text.data(), flag.first, text.size()) == 0;
    });
    return found == std::end(Flags) ? std::nullopt : std::optional(found->second);
}

void readScanner(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, Table);
    if (!rows.Next())
        return;
    const Heading heading(rows);
    constexpr OtherColumns::Key Keys[] = {{"Freq (Hz)", ""},  {"Enable", ""},    {"Notes", ""},
                                          {"Ch BW (Hz)", ""}, {"TH (dB)", "TH"}, {"Sq (dB)", "Sq"}};
    const OtherColumns others(heading, Keys);
    const int bandwidth = heading.Find("Ch BW (Hz)"); // which the first such programs did not write
    while (rows.Next()) {
        if (!rows.HasCells(heading.Count(), heading.Count()))
            continue;
        const std::string_view enabled = rows.Cell(1);
        const std::optional<bool> isEnabled = flagOf(enabled);
        if (!isEnabled) { // a row of another table
            reading.Refuse(
                rows.Line(),
                QCoreApplication::translate("Readers", "\"%1\" is neither 0 nor 1").arg(TextOf(enabled)));
            continue;
        }
        if (!*isEnabled)
            reading.Extra("Enable", enabled);
        others.Count(rows, reading);
        reading.Take({.line = rows.Line(),
                      .frequency = rows.Cell(0),
                      .bandwidth = rows.CellIn(bandwidth),
                      .name = rows.Cell(2)});
    }
}

class ScannerEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += "Freq (Hz),Enable,Notes,Channel,Ch BW (Hz),TH (dB),Sq (dB)\n";
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const OutgoingComment comment(entry.GetComment());
        const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
        const auto kept = [&](const char* key, const char* usual) {
            AppendCell(out, comment.Kept(key, usual), ',');
            out += ',';
        };
        if (!DemodulationOf(entry).isEmpty())
            lost.Count(QT_TRANSLATE_NOOP("Account", "modes"));
        AppendWholeHertz(out, settings.GetFrequency().GetValue(), lost);
        out += ',';
        kept("Enable", "1");
        AppendCell(out, comment.Comment(), ',');
        out += ',';
        kept("Channel", "");
        if (const double bandwidth = settings.GetIFBandwidth().GetValue(); bandwidth > 0)
            AppendWholeHertz(out, bandwidth, lost);
        out += ',';
        kept("TH", "");
        kept("Sq", "");
        out.back() = '\n';
        comment.CountRest(lost);
        ++lost.entries;
    }
};

bool knowsAnnotations(const QString& head) {
    return BeginsWithHeadings(head, QLatin1Char(','), {"Start", "Width", "Text"});
}

void readAnnotations(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, Table);
    if (!rows.Next())
        return;
    const Heading heading(rows);
    constexpr OtherColumns::Key Keys[] = {{"Start", ""}, {"Width", ""}, {"Text", ""}, {"Show", ""},
                                          {"Red", ""},   {"Green", ""}, {"Blue", ""}};
    const OtherColumns others(heading, Keys);
    const int show = heading.Find("Show");
    const bool hasColours = heading.Find("Red") >= 0;
    while (rows.Next()) {
        if (!rows.HasCells(heading.Count(), heading.Count()))
            continue;
        const std::optional<double> start = HertzOf(rows.Cell(0), 1);
        const std::optional<double> width = HertzOf(rows.Cell(1), 1);
        // How it is shown is a number; rows of another table may have other words there.
        if (!start || !width || *width < 0 ||
            (show >= 0 && !REPORTGENERATOR::ParseInteger(rows.CellIn(show)))) {
            reading.Refuse(rows.Line(), QCoreApplication::translate("Readers", "is no annotation"));
            continue;
        }
        std::string middle;
        AppendFixed(middle, *start + *width / 2, 3);
        if (hasColours)
            reading.GetAccount().Count(QT_TRANSLATE_NOOP("Account", "colours"));
        if (rows.CellIn(show) == "0") // which hides it
            reading.Extra("Show", "0");
        others.Count(rows, reading);
        reading.Take(
            {.line = rows.Line(), .frequency = middle, .bandwidth = rows.Cell(1), .name = rows.Cell(2)});
    }
}

} // namespace

const Format ScannerCsv{
    "sdrangel",
    QT_TRANSLATE_NOOP("Format", "SDRangel frequency scanner"),
    ".csv",
    "channels, thresholds and squelch have no place in our lists; modes have none in the file",
    knowsScanner,
    readScanner,
    []() -> std::unique_ptr<Encoder> { return std::make_unique<ScannerEncoder>(); }};

const Format AnnotationsCsv{"sdrangel-annotations",
                            QT_TRANSLATE_NOOP("Format", "SDRangel annotations"),
                            ".csv",
                            "colours have no place in our lists; an annotation is its middle and its width",
                            knowsAnnotations,
                            readAnnotations,
                            nullptr};

} // namespace Interchange
