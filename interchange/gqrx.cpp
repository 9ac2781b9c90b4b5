#include "interchange/formatlist.h"
#include "interchange/outgoing.h"
#include "interchange/rows.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace Interchange {

namespace {

// The bookmarks of a receiver's program: a part of tags with their colours, then one of bookmarks, in which
// frequency and bandwidth are whole Hz. Fields are padded with blanks and know no quotes. Its band plan is a
// table with commas.

constexpr std::size_t TagFields = 2;
constexpr std::size_t BookmarkFields = 5;
constexpr std::size_t BandFields = 6;
constexpr FreqStoreXml::CsvDialect Bookmarks{';', false, false};
constexpr FreqStoreXml::CsvDialect Bands{',', false, false};

bool isComment(const Rows& rows) {
    return Trimmed(rows.First()).starts_with('#');
}

/// Bookmarks without their tags, as somebody may paste them, are known by the program's blanks and words: a
/// spreadsheet's table may have the same columns in other units.
bool knowsBookmarks(const QString& head) {
    static const QRegularExpression tag(QStringLiteral("^[^;]*;\\s*#[0-9a-fA-F]{6}$"));
    static const QRegularExpression bookmark(QStringLiteral("^\\d+ *; [^;]*; ([^;]*); +\\d+ *;( [^;]*)?$"));
    const QString line = FirstContentLine(head);
    const QRegularExpressionMatch found = bookmark.match(line);
    return tag.match(line).hasMatch() ||
           (found.hasMatch() && ModeOf(ModeWords::Gqrx, found.captured(1).trimmed().toStdString()).isKnown);
}

void readBookmarks(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, Bookmarks);
    bool isBehindTags = false;
    while (rows.Next()) {
        if (isComment(rows))
            continue;
        if (rows.Count() == TagFields && !isBehindTags) {
            reading.GetAccount().Count(QT_TRANSLATE_NOOP("Account", "colours of tags"));
            continue;
        }
        if (!rows.HasCells(BookmarkFields, BookmarkFields))
            continue;
        isBehindTags = true;
        if (const std::string_view tags = rows.Cell(4); tags != "Untagged")
            reading.Extra("Tags", tags);
        reading.Take({.line = rows.Line(),
                      .frequency = rows.Cell(0),
                      .bandwidth = rows.Cell(3),
                      .words = ModeWords::Gqrx,
                      .mode = rows.Cell(2),
                      .name = rows.Cell(1)});
    }
}

class BookmarkEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += "# Tag name          ;  color\n"
               "Untagged            ; #c0c0c0\n"
               "\n"
               "# Frequency ; Name                     ; Modulation          ;  Bandwidth; Tags\n";
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const Outgoing of(entry, ModeWords::Gqrx, true, lost);
        pad(out, 12, true, [&] { AppendWholeHertz(out, of.hertz, lost); });
        pad(out, 25, false, [&] {
            if (!AppendPlainCell(out, of.Comment(), ';'))
                lost.Count(QT_TRANSLATE_NOOP("Account", "\";\" in names"));
        });
        pad(out, 20, false, [&] { out += of.Word("Demod Off"); });
        pad(out, 10, true, [&] { AppendWholeHertz(out, of.FilterBandwidth("Demod Off", lost), lost); });
        if (!AppendPlainCell(out, of.Kept("Tags", "Untagged"), ';'))
            lost.Count(QT_TRANSLATE_NOOP("Account", "\";\" in tags"));
        of.CountRest(lost);
        out += '\n';
    }

private:
    /// Appends a field and "; ", with blanks up to a width before or behind its text.
    static void pad(std::string& out, std::size_t width, bool right, const std::function<void()>& append) {
        const std::size_t begin = out.size();
        append();
        const std::size_t size = std::min(out.size() - begin, width);
        out.insert(right ? begin : out.size(), width - size, ' ');
        out += "; ";
    }
};

bool knowsBands(const QString& head) {
    static const QRegularExpression band(
        QStringLiteral("^\\d+\\s*,\\s*\\d+\\s*,[^,]*,[^,]*,\\s*#[0-9a-fA-F]{6,8}\\s*,"));
    return band.match(FirstContentLine(head)).hasMatch();
}

void readBands(QIODevice& device, Reading& reading) {
    Rows rows(device, reading, Bands);
    while (rows.Next()) {
        if (isComment(rows))
            continue;
        const std::optional<double> begin = HertzOf(rows.Cell(0), 1);
        const std::optional<double> end = HertzOf(rows.Cell(1), 1);
        if (rows.Count() < BandFields || !begin || !end || *end < *begin) {
            reading.Refuse(rows.Line(), QCoreApplication::translate("Readers", "is no band"));
            continue;
        }
        std::string middle;
        AppendFixed(middle, (*begin + *end) / 2, 3);
        std::string width;
        AppendFixed(width, *end - *begin, 3);
        reading.Extra("Step", rows.Cell(3));
        reading.Extra("Color", rows.Cell(4));
        std::string name(rows.Cell(5));
        for (std::size_t i = BandFields; i < rows.Count(); ++i) // there are no quotes
            name.append(", ").append(rows.Cell(i));
        reading.Take({.line = rows.Line(),
                      .frequency = middle,
                      .bandwidth = width,
                      .words = ModeWords::Chirp, // which are those of band plans
                      .mode = rows.Cell(2),
                      .name = name});
    }
}

} // namespace

const Format GqrxBookmarks{
    "gqrx",
    QT_TRANSLATE_NOOP("Format", "Gqrx bookmarks"),
    ".csv",
    "colours of tags have no place in our lists; \";\" and fractions of a Hz have none in the file",
    knowsBookmarks,
    readBookmarks,
    []() -> std::unique_ptr<Encoder> { return std::make_unique<BookmarkEncoder>(); }};

const Format GqrxBandPlan{
    "gqrx-bands", QT_TRANSLATE_NOOP("Format", "Gqrx band plan"),
    ".csv",       "steps and colours have no place in our lists; a band is its middle and its width",
    knowsBands,   readBands,
    nullptr};

} // namespace Interchange
