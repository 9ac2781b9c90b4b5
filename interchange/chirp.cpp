#include "interchange/formatlist.h"
#include "interchange/outgoing.h"
#include "interchange/rows.h"

#include <QCoreApplication>

#include <algorithm>

namespace Interchange {

namespace {

// The memory channels of a channel editor. Frequencies are in MHz with six decimals, steps in kHz. A location
// is the channel's number in the radio; those that follow one another from 0 on go without saying.

constexpr double HertzPerMegahertz = 1e6;
constexpr char LocationKey[] = "Location";

/// A column with what stands in it for a channel that has nothing to say there.
struct Column {
    const char* heading;
    const char* usual;
};
constexpr Column Columns[] = {
    {"Location", nullptr},  {"Name", nullptr},      {"Frequency", nullptr}, {"Duplex", ""},
    {"Offset", "0.000000"}, {"Tone", ""},           {"rToneFreq", "88.5"},  {"cToneFreq", "88.5"},
    {"DtcsCode", "023"},    {"DtcsPolarity", "NN"}, {"RxDtcsCode", "023"},  {"CrossMode", "Tone->Tone"},
    {"Mode", nullptr},      {"TStep", "5.00"},      {"Skip", ""},           {"Power", ""},
    {"Comment", nullptr},   {"URCALL", ""},         {"RPT1CALL", ""},       {"RPT2CALL", ""},
    {"DVCODE", ""},
};

bool knows(const QString& head) {
    const QStringList cells = FirstCells(head, QLatin1Char(','));
    const auto has = [&cells](const char* heading) {
        return cells.contains(QLatin1String(heading), Qt::CaseInsensitive);
    };
    return has("Location") && has("Frequency") && (has("Duplex") || has("rToneFreq"));
}

bool isComment(const Rows& rows) {
    return rows.First().starts_with('#');
}

void read(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, {',', true, true});
    bool isBegun = rows.Next();
    while (isBegun && isComment(rows))
        isBegun = rows.Next();
    if (!isBegun)
        reading.Fail(0, QCoreApplication::translate("Readers", "has no headings"));
    const Heading heading(rows);
    const int location = heading.Find("Location");
    const int name = heading.Find("Name");
    const int frequency = heading.Find("Frequency");
    const int mode = heading.Find("Mode");
    const int comment = heading.Find("Comment");
    if (frequency < 0)
        reading.Fail(rows.Line(), QCoreApplication::translate("Readers", "has no column \"Frequency\""));
    struct Extra {
        std::size_t column;
        std::string key;
        std::string_view usual;
    };
    std::vector<Extra> extras;
    for (std::size_t i = 0; i < heading.Count(); ++i) {
        const auto* const known =
            std::find_if(std::begin(Columns), std::end(Columns), [&](const Column& column) {
                return heading.Find(column.heading) == static_cast<int>(i);
            });
        if (known == std::end(Columns) || known->usual)
            extras.push_back({i, heading.NameAt(i), known == std::end(Columns) ? "" : known->usual});
    }
    qint64 nextLocation = 0;
    while (rows.Next()) {
        if (isComment(rows) || !rows.HasCells(1, heading.Count()))
            continue;
        for (const Extra& extra : extras) {
            if (const std::string_view content = rows.Cell(extra.column); content != extra.usual)
                reading.Extra(extra.key, content);
        }
        const std::optional<int> number = REPORTGENERATOR::ParseInteger(rows.CellIn(location));
        if (number.value_or(-1) != nextLocation)
            reading.Extra(LocationKey, rows.CellIn(location));
        nextLocation = (number ? *number : nextLocation) + 1;
        Station station{.line = rows.Line(),
                        .frequency = rows.CellIn(frequency),
                        .hertzPerUnit = HertzPerMegahertz,
                        .words = ModeWords::Chirp,
                        .mode = rows.CellIn(mode),
                        .name = rows.CellIn(name),
                        .notes = rows.CellIn(comment)};
        if (station.name.empty() && station.notes.empty())
            station.name = rows.CellIn(location);
        reading.Take(station);
    }
}

class ChirpEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        for (const Column& column : Columns) {
            if (&column != Columns)
                out += ',';
            out += column.heading;
        }
        out += "\r\n";
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const Outgoing of(entry, ModeWords::Chirp, true, lost);
        of.CountBandwidth(lost);
        for (const Column& column : Columns) {
            if (&column != Columns)
                out += ',';
            const QLatin1String heading(column.heading);
            if (heading == QLatin1String("Location"))
                out += std::to_string(locationOf(of));
            else if (heading == QLatin1String("Name"))
                AppendCell(out, of.parts.name, ',');
            else if (heading == QLatin1String("Frequency"))
                AppendMegahertz(out, of.hertz, lost);
            else if (heading == QLatin1String("Mode"))
                out += of.Word("Auto");
            else if (heading == QLatin1String("Comment"))
                AppendCell(out, of.parts.notes, ',');
            else
                AppendCell(out, of.Kept(column.heading, column.usual), ',');
        }
        of.CountRest(lost);
        out += "\r\n";
    }

private:
    /// The channel's number that was kept, unless the list has been put into another order since.
    qint64 locationOf(const Outgoing& of) {
        if (of.parts.Extra(QLatin1String(LocationKey)).toInt() >= m_nextLocation)
            m_nextLocation = of.Kept(LocationKey, "0").toInt();
        return m_nextLocation++;
    }

    qint64 m_nextLocation = 0;
};

} // namespace

const Format ChirpCsv{
    "chirp-csv",
    "CHIRP CSV",
    ".csv",
    "tones, offsets, steps, power and call signs have no place in our lists; bandwidths have "
    "none in the file",
    knows,
    read,
    []() -> std::unique_ptr<Encoder> { return std::make_unique<ChirpEncoder>(); }};

} // namespace Interchange
