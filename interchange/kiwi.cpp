#include "interchange/formatlist.h"
#include "interchange/jsonevents.h"
#include "interchange/outgoing.h"
#include "interchange/rows.h"
#include "interchange/schedule.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <array>
#include <cmath>
#include <map>

namespace Interchange {

namespace {

// The labels of a web receiver, as a table and as JSON: frequencies in kHz, pass bands in Hz from the
// frequency, times on air in UTC.

constexpr char HeadingLine[] =
    "Freq kHz;Mode;Ident;Notes;Extension;Type;PB low;PB high;Offset;DOW;Begin;End;Sig bw";
constexpr std::string_view AllDays = "MTWTFSS"; // a day off is "_"
constexpr unsigned Monday = 0x40;               // in the mask of days
constexpr std::size_t LeastFields = 12;
constexpr std::size_t MostFields = 13;

/// What both forms say of a frequency. Empty texts are not said.
struct Label {
    qint64 line = 0;
    std::string_view frequency = {};
    std::string_view mode = {};
    std::string_view name = {};
    std::string_view notes = {};
    std::string_view extension = {};
    std::string_view type = {};
    std::string_view low = {};
    std::string_view high = {};
    std::string_view offset = {};
    std::string_view days = {};
    std::string_view begin = {};
    std::string_view end = {};
    std::string_view signal = {};
};

/// The members of a label that our records have no place for, and what stands for nothing in them.
struct LabelExtra {
    const char* key;   ///< that no other format has for something else
    const char* usual; ///< in the table
    std::string_view Label::*member;
};
constexpr LabelExtra Extras[] = {
    {"Extension", "", &Label::extension}, {"Type", "T0", &Label::type},
    {"Offset Hz", "0", &Label::offset},   {"DOW", "MTWTFSS", &Label::days},
    {"Begin", "0000", &Label::begin},     {"End", "2400", &Label::end},
    {"Sig bw", "0", &Label::signal},
};

/// Always, as far as the label says nothing that can be understood.
Schedule scheduleOf(const Label& label) {
    Schedule schedule;
    if (!label.begin.empty() && !label.end.empty())
        TakeTimes(std::string(label.begin).append(1, '-').append(label.end), schedule);
    if (label.days.size() == AllDays.size()) {
        for (std::size_t day = 0; day < AllDays.size(); ++day)
            schedule.days &= label.days[day] == '_' ? ~(1U << day) : ~0U;
    }
    return schedule;
}

void take(const Label& label, Reading& reading) {
    if (!reading.IsWanted(scheduleOf(label)))
        return;
    const std::optional<double> low = HertzOf(label.low, 1);
    const std::optional<double> high = HertzOf(label.high, 1);
    for (const auto& [text, edge] : {std::pair(label.low, low), std::pair(label.high, high)}) {
        if (!text.empty() && !edge) { // a row of another table
            reading.Refuse(
                label.line,
                QCoreApplication::translate("Readers", "\"%1\" is no edge of a pass band").arg(TextOf(text)));
            return;
        }
    }
    std::string width;
    if (low && high && *high > *low)
        AppendFixed(width, *high - *low, 0);
    for (const auto& [key, edge] : {std::pair("PB low", label.low), std::pair("PB high", label.high)}) {
        if (!width.empty() || edge != "0")
            reading.Extra(key, edge);
    }
    for (const LabelExtra& extra : Extras) {
        if (label.*extra.member != extra.usual)
            reading.Extra(extra.key, label.*extra.member);
    }
    reading.Take({.line = label.line,
                  .frequency = label.frequency,
                  .hertzPerUnit = 1000,
                  .bandwidth = width,
                  .words = ModeWords::Kiwi,
                  .mode = label.mode,
                  .name = label.name,
                  .notes = label.notes});
}

bool knowsCsv(const QString& head) {
    return BeginsWithHeadings(head, QLatin1Char(';'), {"Freq kHz", "Mode", "Ident"});
}

std::string_view withoutApostrophe(std::string_view text) {
    return text.starts_with('\'') ? text.substr(1) : text;
}

void readCsv(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, {';', true, true});
    if (!rows.Next())
        return;
    while (rows.Next()) {
        if (!rows.HasCells(LeastFields, MostFields))
            continue;
        take({.line = rows.Line(),
              .frequency = rows.Cell(0),
              .mode = rows.Cell(1),
              .name = rows.Cell(2),
              .notes = rows.Cell(3),
              .extension = rows.Cell(4),
              .type = rows.Cell(5),
              .low = rows.Cell(6),
              .high = rows.Cell(7),
              .offset = rows.Cell(8),
              .days = rows.Cell(9),
              .begin = withoutApostrophe(rows.Cell(10)),
              .end = withoutApostrophe(rows.Cell(11)),
              .signal = rows.Cell(12)},
             reading);
    }
}

bool knowsJson(const QString& head) {
    static const QRegularExpression labels(QStringLiteral("^\\s*\\{[^\\[]*\"dx\"\\s*:\\s*\\["));
    return labels.match(head).hasMatch();
}

/// Takes "%20" and the like of old files apart. A text with blanks or with other per cent signs is no such
/// one.
std::string decoded(const std::string& text) {
    static const QRegularExpression encoded(QStringLiteral("^([^% ]|%[0-9a-fA-F]{2})*$"));
    if (text.find('%') == std::string::npos || !encoded.match(QString::fromStdString(text)).hasMatch())
        return text;
    const QByteArray bytes = QByteArray::fromPercentEncoding(QByteArray::fromStdString(text));
    return REPORTGENERATOR::IsUtf8({bytes.constData(), static_cast<size_t>(bytes.size())})
               ? bytes.toStdString()
               : text;
}

/// Days by the mask, as letters.
std::string daysOf(std::string_view mask) {
    const std::optional<int> bits = REPORTGENERATOR::ParseInteger(mask);
    if (!bits)
        return {};
    std::string days(AllDays);
    for (std::size_t day = 0; day < days.size(); ++day) {
        if ((static_cast<unsigned>(*bits) & (Monday >> day)) == 0)
            days[day] = '_';
    }
    return days;
}

unsigned maskOf(const QString& days) {
    unsigned mask = 0;
    for (int day = 0; day < days.size() && day < static_cast<int>(AllDays.size()); ++day)
        mask |= days[day] == u'_' ? 0 : Monday >> day;
    return mask;
}

/// "600" is "0600".
std::string timeOf(std::string_view number) {
    return number.empty() ? std::string()
                          : std::string(4 - std::min<std::size_t>(number.size(), 4), '0').append(number);
}

/// Labels of the form [kHz, "MODE", "ident", "notes", {options}], within {"dx": [...]}.
class Labels : public JsonEvents {
public:
    explicit Labels(Reading& reading) : m_reading(reading) {}

    void Begin(bool) override {
        if (++m_depth == LabelDepth - 1)
            m_isLabels = m_key == "dx"; // else it is a table of something else
        if (m_depth == LabelDepth) {
            m_fields = {};
            m_fieldCount = 0;
            m_hasMode = false;
            m_options.clear();
        }
    }
    void End(bool) override {
        if (m_depth-- == LabelDepth && m_isLabels)
            takeLabel();
    }
    void Key(std::string_view key) override { m_key = key; }
    void Take(Scalar kind, std::string_view text) override {
        if (m_depth == LabelDepth && m_fieldCount < m_fields.size()) {
            m_hasMode = m_hasMode || (m_fieldCount == 1 && kind == Scalar::Text);
            m_fields[m_fieldCount++] = text;
        } else if (m_depth == LabelDepth + 1)
            m_options[m_key] = kind == Scalar::True ? std::string_view("1") : text;
    }

private:
    static constexpr int LabelDepth = 3;

    static bool isType(std::string_view option) {
        return option.size() > 1 && option[0] == 'T' && option[1] >= '0' && option[1] <= '9';
    }
    static bool isKnown(std::string_view option) {
        constexpr std::string_view Known[] = {"lo", "hi", "o", "d0", "b0", "e0", "p", "s"};
        return isType(option) || std::ranges::find(Known, option) != std::end(Known);
    }

    std::string_view option(const char* key) const {
        const auto found = m_options.find(key);
        return found == m_options.end() ? std::string_view() : std::string_view(found->second);
    }
    std::string_view type() const {
        const auto found = std::find_if(m_options.begin(), m_options.end(), [](const auto& known) {
            return isType(known.first) && known.second == "1";
        });
        return found == m_options.end() ? std::string_view() : std::string_view(found->first);
    }
    void takeLabel() {
        if (!m_hasMode) { // as of a frequency with a decimal comma
            m_reading.Refuse(Line(), QCoreApplication::translate("Readers", "its second field is no mode"));
            return;
        }
        const std::string name = decoded(m_fields[2]);
        const std::string notes = decoded(m_fields[3]);
        const std::string days = daysOf(option("d0"));
        const std::string begin = timeOf(option("b0"));
        const std::string end = timeOf(option("e0"));
        for (const auto& [key, content] : m_options) {
            if (!isKnown(key))
                m_reading.Extra(key, content);
        }
        take({.line = Line(),
              .frequency = m_fields[0],
              .mode = m_fields[1],
              .name = name,
              .notes = notes,
              .extension = option("p"),
              .type = type(),
              .low = option("lo"),
              .high = option("hi"),
              .offset = option("o"),
              .days = days,
              .begin = begin,
              .end = end == "0000" ? std::string_view("2400") : std::string_view(end),
              .signal = option("s")},
             m_reading);
    }

    Reading& m_reading;
    int m_depth = 0;
    bool m_isLabels = false;
    std::string m_key;
    std::array<std::string, 4> m_fields;
    std::size_t m_fieldCount = 0;
    bool m_hasMode = false;
    std::map<std::string, std::string> m_options;
};

void readJson(QIODevice& device, Reading& reading) {
    Labels labels(reading);
    ReadJsonEvents(device, reading, labels);
}

/// An entry as a label, in both forms.
class LabelOut {
    Outgoing m_entry;

public:
    LabelOut(const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost)
        : m_entry(entry, ModeWords::Kiwi, false, lost), mode(QString::fromStdString(m_entry.Word("AM"))) {
        AppendKilohertz(frequency, m_entry.hertz, lost);
        setPassBand(m_entry.word, m_entry.bandwidth);
        CountFraction(m_entry.bandwidth, lost);
    }
    const QString& Name() const { return m_entry.parts.name; }
    const QString& Notes() const { return m_entry.parts.notes; }
    /// What was kept, or what stands for nothing.
    QString Extra(const char* key) const {
        const auto* const known =
            std::find_if(std::begin(Extras), std::end(Extras),
                         [key](const LabelExtra& extra) { return extra.key == QLatin1String(key); });
        return m_entry.Kept(key, known->usual);
    }

    void CountRest(Account& lost) const { m_entry.CountRest(lost); }

    std::string frequency; ///< kHz
    QString mode;
    double low = 0; ///< Hz
    double high = 0;

private:
    /// The pass band that the entry had, if it still is as wide; else one at the usual side of the frequency.
    void setPassBand(std::string_view word, double bandwidth) {
        low = m_entry.Kept("PB low", "").toDouble();
        high = m_entry.Kept("PB high", "").toDouble();
        if (high > low && high - low == bandwidth)
            return;
        constexpr double Lowest = 300; // of speech
        if (bandwidth <= 0) {
            low = high = 0;
            return;
        }
        low = word == "USB" ? Lowest : word == "LSB" ? -Lowest - bandwidth : -bandwidth / 2;
        low = std::floor(low); // both are written without decimals
        high = low + bandwidth;
    }
};

class CsvEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += HeadingLine;
        out += '\n';
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const LabelOut label(entry, lost);
        const QChar apostrophe = QLatin1Char('\'');
        out += label.frequency;
        for (const QString& text :
             {label.mode, label.Name(), label.Notes(), label.Extra("Extension"), label.Extra("Type")})
            append(out, text);
        out += ';';
        AppendFixed(out, label.low, 0);
        out += ';';
        AppendFixed(out, label.high, 0);
        for (const QString& text :
             {label.Extra("Offset Hz"), label.Extra("DOW"), apostrophe + label.Extra("Begin"),
              apostrophe + label.Extra("End"), label.Extra("Sig bw")})
            append(out, text);
        out += '\n';
        label.CountRest(lost);
    }

private:
    static void append(std::string& out, const QString& text) {
        out += ';';
        AppendCell(out, text, ';');
    }
};

class JsonEncoder : public Encoder {
public:
    void Begin(std::string& out) override { out += "{\"dx\":[\n"; }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        out += lost.entries > 0 ? ",\n[" : "[";
        const LabelOut label(entry, lost);
        out += label.frequency;
        for (const QString& text : {label.mode, label.Name(), label.Notes()}) {
            out += ',';
            AppendJsonText(out, text);
        }
        out += ",{";
        AppendJsonText(out, label.Extra("Type"));
        out += ":1,\"lo\":";
        AppendFixed(out, label.low, 0);
        out += ",\"hi\":";
        AppendFixed(out, label.high, 0);
        if (const QString offset = label.Extra("Offset Hz"); offset != QLatin1String("0"))
            out += ",\"o\":" + number(offset);
        if (const QString days = label.Extra("DOW"); days != QLatin1String(AllDays.data()))
            out += ",\"d0\":" + std::to_string(maskOf(days));
        if (const QString begin = label.Extra("Begin"), end = label.Extra("End");
            begin != QLatin1String("0000") || end != QLatin1String("2400"))
            out += ",\"b0\":" + number(begin) + ",\"e0\":" + number(end);
        if (const QString extension = label.Extra("Extension"); !extension.isEmpty()) {
            out += ",\"p\":";
            AppendJsonText(out, extension);
        }
        if (const QString signal = label.Extra("Sig bw"); signal != QLatin1String("0"))
            out += ",\"s\":" + number(signal);
        out += "}]";
        label.CountRest(lost);
    }

    void End(std::string& out) override { out += "\n]}\n"; }

private:
    /// A text that was a number; 0 for any other.
    static std::string number(const QString& text) {
        std::string out;
        AppendFixed(out, text.toDouble(), 0);
        return out;
    }
};

constexpr char Lost[] = "types, offsets, schedules and the side of the pass band have no place in our lists";

} // namespace

const Format KiwiCsv{"kiwi-csv",
                     QT_TRANSLATE_NOOP("Format", "KiwiSDR labels, CSV"),
                     ".csv",
                     Lost,
                     knowsCsv,
                     readCsv,
                     []() -> std::unique_ptr<Encoder> { return std::make_unique<CsvEncoder>(); },
                     true};

const Format KiwiJson{"kiwi-json",
                      QT_TRANSLATE_NOOP("Format", "KiwiSDR labels, JSON"),
                      ".json",
                      Lost,
                      knowsJson,
                      readJson,
                      []() -> std::unique_ptr<Encoder> { return std::make_unique<JsonEncoder>(); },
                      true};

} // namespace Interchange
