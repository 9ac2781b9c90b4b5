#include "interchange/formatlist.h"
#include "interchange/jsonevents.h"
#include "interchange/outgoing.h"
#include "interchange/rows.h"

#include <QCoreApplication>
#include <QHash>

#include <charconv>
#include <map>

namespace Interchange {

namespace {

// The frequency manager of a receiver's program: lists of bookmarks by name, with frequency and bandwidth in
// Hz and the number of a mode. An export is one list without its name; in old files the bookmarks stand
// directly in their list. In all of them a bookmark is an object with a frequency.

constexpr char UsualList[] = "General";
constexpr const char* Modes[] = {"NFM", "WFM", "AM", "DSB", "USB", "CW", "LSB", "RAW"};

bool knows(const QString& head) {
    return head.trimmed().startsWith(QLatin1Char('{')) &&
           (head.contains(QLatin1String("\"bookmarks\"")) || head.contains(QLatin1String("\"lists\"")));
}

class Bookmarks : public JsonEvents {
public:
    explicit Bookmarks(Reading& reading) : m_reading(reading) {}

    void Begin(bool isObject) override {
        m_frames.push_back({m_key, isObject, false, {}, {}, {}, {}});
        m_key.clear();
    }
    void End(bool) override {
        const Frame frame = std::move(m_frames.back());
        m_frames.pop_back();
        if (frame.hasFrequency)
            take(frame);
        else if (frame.isObject && m_frames.size() >= 1 && m_frames.back().name == "bookmarks")
            m_reading.Refuse(
                Line(),
                QCoreApplication::translate("Readers", "\"%1\" has no frequency").arg(TextOf(frame.name)));
    }
    void Key(std::string_view key) override { m_key = key; }
    void Take(Scalar kind, std::string_view text) override {
        if (m_frames.empty() || !m_frames.back().isObject)
            return;
        Frame& frame = m_frames.back();
        if (m_key == "frequency") {
            frame.hasFrequency = true;
            frame.frequency = text;
        } else if (m_key == "bandwidth") {
            frame.bandwidth = text;
        } else if (m_key == "mode") {
            frame.mode = kind == Scalar::Number ? std::string(text) : std::string();
        } else if (kind != Scalar::False && kind != Scalar::Null) {
            frame.rest.emplace_back(m_key, kind == Scalar::True ? "true" : text);
        }
    }

private:
    struct Frame {
        std::string name;
        bool isObject;
        bool hasFrequency;
        std::string frequency;
        std::string bandwidth;
        std::string mode;
        std::vector<std::pair<std::string, std::string>> rest;
    };

    void take(const Frame& frame) {
        size_t number = std::size(Modes);
        std::from_chars(frame.mode.data(), frame.mode.data() + frame.mode.size(), number);
        if (number >= std::size(Modes) && !frame.mode.empty()) {
            m_reading.GetAccount().Count(QT_TRANSLATE_NOOP("Account", "unknown modes"));
            m_reading.Extra("Mode", frame.mode);
        }
        for (const auto& [key, content] : frame.rest)
            m_reading.Extra(key, content);
        if (const std::string_view list = listName(); list != UsualList)
            m_reading.Extra("List", list);
        m_reading.Take({.line = Line(),
                        .frequency = frame.frequency,
                        .bandwidth = frame.bandwidth,
                        .words = ModeWords::SdrPlus,
                        .mode = number < std::size(Modes) ? Modes[number] : std::string_view(),
                        .name = frame.name});
    }
    /// The name of the list in which the present bookmark stands; empty in an export.
    std::string_view listName() const {
        for (auto frame = m_frames.rbegin(); frame != m_frames.rend(); ++frame) {
            if (frame->name != "bookmarks")
                return frame->name == "lists" ? std::string_view() : frame->name;
        }
        return {};
    }

    Reading& m_reading;
    std::vector<Frame> m_frames;
    std::string m_key;
};

void read(QIODevice& device, Reading& reading) {
    Bookmarks bookmarks(reading);
    ReadJsonEvents(device, reading, bookmarks);
}

class BookmarkEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += "{\n    \"bookmarkDisplayMode\": 1,\n    \"lists\": {";
        beginList(out, QLatin1String(UsualList));
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const Outgoing of(entry, ModeWords::SdrPlus, false, lost);
        const QString list = of.Kept("List", UsualList);
        List& names = m_lists[list];
        std::string& to = list == QLatin1String(UsualList) ? out : names.bookmarks;
        to += names.counts.isEmpty() ? "\n" : ",\n";
        to += "                ";
        AppendJsonText(to, uniqueName(of.Comment(), of.hertz, names.counts, lost));
        to += ": {\"bandwidth\": ";
        const qint64 mode = modeOf(of);
        const bool isOurs = mode < static_cast<qint64>(std::size(Modes));
        appendNumber(to, of.FilterBandwidth(isOurs ? Modes[mode] : "", lost));
        to += ", \"frequency\": ";
        appendNumber(to, of.hertz);
        to += ", \"mode\": " + std::to_string(mode) + "}";
        of.CountRest(lost);
    }

    void End(std::string& out) override {
        endList(out);
        for (const auto& [name, list] : m_lists) {
            if (list.bookmarks.empty())
                continue;
            out += ',';
            beginList(out, name);
            out += list.bookmarks;
            endList(out);
        }
        out += "\n    },\n    \"selectedList\": \"General\"\n}\n";
    }

private:
    struct List {
        std::string bookmarks;      ///< none of the usual list, which go into the file at once
        QHash<QString, int> counts; ///< of names, with the last number that each was given
    };

    static void beginList(std::string& out, const QString& name) {
        out += "\n        ";
        AppendJsonText(out, name);
        out += ": {\n            \"bookmarks\": {";
    }
    static void endList(std::string& out) {
        out += "\n            },\n            \"showOnWaterfall\": true\n        }";
    }
    static void appendNumber(std::string& out, double hertz) {
        AppendFixed(out, hertz, 3);
        while (out.ends_with('0') && out[out.size() - 2] != '.')
            out.pop_back();
    }
    /// Of an entry without a demodulation, that of another program, which was kept.
    static qint64 modeOf(const Outgoing& of) {
        const auto* const found = std::find(std::begin(Modes), std::end(Modes), of.Word(""));
        if (found != std::end(Modes))
            return found - std::begin(Modes);
        return of.demodulation.isEmpty() ? of.Kept("Mode", "0").toUInt() : 0;
    }
    /// Bookmarks of a list are known by their names: none may be there twice.
    static QString uniqueName(const QString& wanted, double hertz, QHash<QString, int>& names,
                              Account& lost) {
        const QString name = wanted.isEmpty() ? QStringLiteral("%1 Hz").arg(hertz, 0, 'f', 0) : wanted;
        QString unique = name;
        while (names.contains(unique))
            unique = QStringLiteral("%1 (%2)").arg(name).arg(++names[name]);
        names.insert(unique, 1);
        if (unique != name)
            lost.Count(QT_TRANSLATE_NOOP("Account", "names that are there twice"));
        return unique;
    }

    std::map<QString, List> m_lists;
};

} // namespace

const Format SdrPlusJson{
    "sdrpp",
    QT_TRANSLATE_NOOP("Format", "SDR++ frequency manager"),
    ".json",
    "names of lists have no place in our lists; modes beyond its eight, and names that are there "
    "twice, have none in the file",
    knows,
    read,
    []() -> std::unique_ptr<Encoder> { return std::make_unique<BookmarkEncoder>(); }};

} // namespace Interchange
