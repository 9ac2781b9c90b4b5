#include <QRegularExpression>

#include <algorithm>

#include "interchange/formatlist.h"
#include "interchange/rows.h"

namespace Interchange {

namespace {

// The frequencies of a program for digital modes: whole Hz, the radio's mode, the carrier in the audio band,
// the modem, and what it is used for, with blanks between them.

constexpr char HeadingLine[] = "# rfcarrier rig_mode carrier mode usage";

bool knows(const QString& head) {
    static const QRegularExpression entry(QStringLiteral("^\\d{4,}\\s+[A-Z][\\w-]*\\s+\\d+\\s+\\S+(\\s|$)"));
    return head.startsWith(QLatin1String("# rfcarrier")) || entry.match(FirstContentLine(head)).hasMatch();
}

/// The text up to the next blanks, which are taken off with it.
std::string_view takeWord(std::string_view& line) {
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    const std::string_view word = line.substr(0, end);
    line = Trimmed(line.substr(end));
    return word;
}

void read(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, WholeLines);
    while (rows.Next()) {
        std::string_view line = Trimmed(rows.First());
        if (line.empty() || line.starts_with('#'))
            continue;
        const std::string_view frequency = takeWord(line);
        const std::string_view mode = takeWord(line);
        const std::string_view carrier = takeWord(line);
        const std::string_view modem = takeWord(line);
        if (modem.empty() ||
            !std::all_of(frequency.begin(), frequency.end(), [](char c) { return c >= '0' && c <= '9'; })) {
            reading.Refuse(rows.Line(),
                           QStringLiteral("does not begin with a frequency in whole Hz, a mode, a carrier "
                                          "and a modem"));
            continue;
        }
        if (carrier != "0")
            reading.Extra("Carrier", carrier);
        reading.Extra("Modem", modem);
        reading.Take({.line = rows.Line(),
                      .frequency = frequency,
                      .words = ModeWords::Fldigi,
                      .mode = mode,
                      .name = line});
    }
}

class FldigiEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += HeadingLine;
        out += '\n';
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
        const QString demodulation = settings.AnalogDemodToName(settings.GetAnalogDemod());
        const double bandwidth = settings.GetIFBandwidth().GetValue();
        CommentParts parts = SplitComment(entry.GetComment());
        const QString carrier = parts.Extra(QLatin1String("Carrier"));
        const QString modem = parts.Extra(QLatin1String("Modem"));
        const QString kept = parts.Extra(QLatin1String("Mode"));
        parts.extras.clear();
        const ModeWord mode = WordOf(ModeWords::Fldigi, demodulation, bandwidth);
        if (!mode.isExact)
            lost.Count("modes that are none here");
        else if (bandwidth > 0 && ModeOf(ModeWords::Fldigi, mode.word).bandwidth != bandwidth)
            lost.Count("bandwidths");
        AppendWholeHertz(out, settings.GetFrequency().GetValue(), lost);
        out += ' ';
        out += !kept.isNull() ? kept.toStdString() : std::string(mode.word.empty() ? "USB" : mode.word);
        out += ' ' + (carrier.isEmpty() ? "0" : carrier.toStdString());
        out += ' ' + (modem.isEmpty() ? "NULL" : modem.toStdString()) + ' ';
        if (!AppendPlainCell(out, JoinComment(parts), '\n'))
            lost.Count("control characters in names");
        out += '\n';
        ++lost.entries;
    }
};

} // namespace

const Format FldigiFrequencies{
    "fldigi",
    "fldigi frequencies",
    ".txt",
    "carriers and modems have no place in our lists; bandwidths have none in the file",
    knows,
    read,
    []() -> std::unique_ptr<Encoder> { return std::make_unique<FldigiEncoder>(); }};

} // namespace Interchange
