#include "interchange/formatlist.h"
#include "interchange/rows.h"

#include <QCoreApplication>

namespace Interchange {

namespace {

// Tables of a receiver's program: the channels of its frequency scanner, and the annotations of its spectrum.
// All numbers are in Hz, a level in dB.

constexpr std::size_t Fields = 7;
constexpr FreqStoreXml::CsvDialect Table{',', true, true};

bool knowsScanner(const QString& head) {
    return BeginsWithHeadings(head, QLatin1Char(','), {"Freq (Hz)", "Enable", "Notes"});
}

void readScanner(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, Table);
    if (!rows.Next())
        return;
    while (rows.Next()) {
        if (!rows.HasCells(Fields, Fields))
            continue;
        if (const std::string_view enabled = rows.Cell(1); enabled != "1" && enabled != "true")
            reading.Extra("Enable", enabled);
        reading.Extra("Channel", rows.Cell(3));
        reading.Extra("TH", rows.Cell(5));
        reading.Extra("Sq", rows.Cell(6));
        reading.Take({.line = rows.Line(),
                      .frequency = rows.Cell(0),
                      .bandwidth = rows.Cell(4),
                      .name = rows.Cell(2)});
    }
}

class ScannerEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += "Freq (Hz),Enable,Notes,Channel,Ch BW (Hz),TH (dB),Sq (dB)\n";
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const CommentParts parts = SplitComment(entry.GetComment());
        const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
        const auto kept = [&](const char* key, const char* usual) {
            const QString text = parts.Extra(QLatin1String(key));
            AppendCell(out, text.isNull() ? QString::fromLatin1(usual) : text, ',');
            out += ',';
        };
        if (!settings.AnalogDemodToName(settings.GetAnalogDemod()).isEmpty())
            lost.Count(QT_TRANSLATE_NOOP("Account", "modes"));
        AppendWholeHertz(out, settings.GetFrequency().GetValue(), lost);
        out += ',';
        kept("Enable", "1");
        AppendCell(out, JoinComment({parts.name, parts.notes, {}}), ',');
        out += ',';
        kept("Channel", "");
        if (const double bandwidth = settings.GetIFBandwidth().GetValue(); bandwidth > 0)
            AppendWholeHertz(out, bandwidth, lost);
        out += ',';
        kept("TH", "");
        kept("Sq", "");
        out.back() = '\n';
        ++lost.entries;
    }
};

bool knowsAnnotations(const QString& head) {
    return BeginsWithHeadings(head, QLatin1Char(','), {"Start", "Width", "Text", "Show"});
}

void readAnnotations(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, Table);
    if (!rows.Next())
        return;
    while (rows.Next()) {
        if (!rows.HasCells(Fields, Fields))
            continue;
        const std::optional<double> start = HertzOf(rows.Cell(0), 1);
        const std::optional<double> width = HertzOf(rows.Cell(1), 1);
        if (!start || !width || *width < 0) {
            reading.Refuse(rows.Line(), QCoreApplication::translate("Readers", "has no start and width"));
            continue;
        }
        std::string middle;
        AppendFixed(middle, *start + *width / 2, 3);
        if (rows.Count() >= 7)
            reading.GetAccount().Count(QT_TRANSLATE_NOOP("Account", "colours"));
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
