#include "interchange/formatlist.h"
#include "interchange/outgoing.h"
#include "interchange/rows.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace Interchange {

namespace {

// The frequencies of a program for digital modes: whole Hz, the radio's mode, the carrier in the audio band,
// the modem, and what it is used for, with blanks between them.

constexpr char HeadingLine[] = "# rfcarrier rig_mode carrier mode usage";

/// Entries without the heading, as somebody may paste them: TABs are those of tables, of which the lines of
/// our own lists are some.
bool knows(const QString& head) {
    static const QRegularExpression entry(QStringLiteral("^\\d{5,} +[A-Z][\\w-]* +\\d+ +[A-Z0-9/_-]+( |$)"));
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
                           QCoreApplication::translate(
                               "Readers", "does not begin with a frequency in whole Hz, a mode, a carrier "
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

/// What was kept as one word, which has no blanks.
std::string wordOf(const QString& kept, const char* usual) {
    const QString word = kept.simplified().replace(u' ', u'_');
    return word.isEmpty() ? usual : word.toStdString();
}

class FldigiEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += HeadingLine;
        out += '\n';
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const Outgoing of(entry, ModeWords::Fldigi, false, lost);
        of.CountBandwidth(lost);
        AppendWholeHertz(out, of.hertz, lost);
        out += ' ' + of.Word("USB");
        for (const auto& [key, usual] : {std::pair("Carrier", "0"), std::pair("Modem", "NULL")})
            out += ' ' + wordOf(of.Kept(key, usual), usual);
        out += ' ' + of.Comment().toStdString() + '\n';
        of.CountRest(lost);
    }
};

} // namespace

const Format FldigiFrequencies{
    "fldigi",
    QT_TRANSLATE_NOOP("Format", "fldigi frequencies"),
    ".txt",
    "carriers and modems have no place in our lists; bandwidths have none in the file",
    knows,
    read,
    []() -> std::unique_ptr<Encoder> { return std::make_unique<FldigiEncoder>(); }};

} // namespace Interchange
