#include "cli/show.h"

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/foreign.h"
#include "cli/jsonfile.h"
#include "cli/output.h"

#include <algorithm>
#include <utility>

namespace {

using Row = std::vector<EntryField>;

TakeUtf8 toStandardOutput() {
    return [out = Output(stdout)](std::string_view lines) mutable { return out.Lines(lines); };
}

template <const Interchange::JsonFrame& Frame>
void printJson(const CliList& list) {
    PrintJson(list, Frame, toStandardOutput());
}

/// A text as `Quor::OneField` makes one field of it.
void appendField(std::string& out, QStringView text) {
    AppendUtf8(
        out, text, [](char16_t c) { return c >= 0x20 && c != 0x7f; },
        [&](char16_t c) { out += c == '\t' || c == '\n' || c == '\r' ? " " : "\xef\xbf\xbd"; });
}

void appendLine(std::string& out, const Row& row, QString EntryField::*part) {
    for (const EntryField& field : row) {
        if (&field != row.data())
            out += '\t';
        appendField(out, field.*part);
    }
    out += '\n';
}

void printTsv(const CliList& list) {
    TextPieces pieces(toStandardOutput());
    bool first = true;
    list.ForEachEntry([&](const Row& row) {
        if (std::exchange(first, false))
            appendLine(pieces.Text(), row, &EntryField::key);
        appendLine(pieces.Text(), row, &EntryField::text);
        return pieces.Proceed();
    });
    pieces.HandOn();
}

using Widths = std::vector<qsizetype>;

/// Of each column, that of its widest text, up to a limit.
Widths widthsOf(const CliList& list) {
    constexpr qsizetype MaxWidth = 40;
    Widths widths;
    list.ForEachEntry([&](const Row& row) {
        widths.resize(std::max(widths.size(), row.size()), 0);
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::clamp(row[i].text.size(), std::max(widths[i], row[i].key.size()), MaxWidth);
        return true;
    });
    return widths;
}

/// Cells as wide as their columns; numbers to the right.
void appendCells(std::string& out, const Row& row, QString EntryField::*part, const Widths& widths) {
    for (size_t i = 0; i < row.size(); ++i) {
        const QStringView text = QStringView(row[i].*part).left(widths[i]);
        const auto blanks = static_cast<size_t>(widths[i] - text.size());
        const bool isRight = row[i].type == FieldType::Number;
        out.append((i > 0 ? 2 : 0) + (isRight ? blanks : 0), ' ');
        appendField(out, text);
        out.append(isRight ? 0 : blanks, ' ');
    }
    out += '\n';
}

/// Goes through the list twice, since a million rows are more than the list itself.
void printTable(const CliList& list) {
    const Widths widths = widthsOf(list);
    TextPieces pieces(toStandardOutput());
    bool first = true;
    list.ForEachEntry([&](const Row& row) {
        if (std::exchange(first, false))
            appendCells(pieces.Text(), row, &EntryField::key, widths);
        appendCells(pieces.Text(), row, &EntryField::text, widths);
        return pieces.Proceed();
    });
    pieces.HandOn();
}

struct Format {
    const char* name;
    EntryPrinter print;
};

constexpr Format Formats[] = {{"table", printTable},
                              {"json", printJson<Interchange::JsonArray>},
                              {"jsonl", printJson<Interchange::JsonLines>},
                              {"tsv", printTsv}};

} // namespace

void AddFormatOption(QCommandLineParser& parser) {
    parser.addOption({QStringLiteral("format"), QStringLiteral("table, json, jsonl or tsv."),
                      QStringLiteral("FORMAT"), QStringLiteral("table")});
}

EntryPrinter PrinterOf(const QString& format, const char* command) {
    for (const Format& known : Formats) {
        if (format == QLatin1String(known.name))
            return known.print;
    }
    TellError(
        QStringLiteral("freqstore-cli %1: no format is called \"%2\"").arg(QLatin1String(command), format));
    return nullptr;
}

namespace {

/// Takes the query of `--where`, if there is one, for the list that has been read; false, told, when it is
/// not understood. In an empty list there is nothing to find, whatever was asked.
bool takeWhere(const Arguments& args, CliList& list) {
    const QStringList keys = list.Keys();
    if (!args.IsSet("where") || keys.isEmpty())
        return true;
    Query query = Query::Parse(args.Value("where"), keys);
    if (query.Problem()) {
        args.TellUsage(QStringLiteral("--where, character %1: %2")
                           .arg(query.Problem()->position + 1)
                           .arg(query.Problem()->reason));
        return false;
    }
    list.SetQuery(std::move(query));
    return true;
}

} // namespace

int RunShow(const QStringList& arguments) {
    Arguments args("show", "Reads a file through the list's own reader and prints the entries in list order.",
                   1);
    AddFormatOption(args.Parser());
    args.Parser().addOption({QStringLiteral("where"),
                             QStringLiteral("Print only entries that match, in the language of the window's "
                                            "filter: \"bbc am\", \">7 MHz\", \"demod:am\"."),
                             QStringLiteral("QUERY")});
    Foreign::AddOptions(args.Parser());
    args.Parser().addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("File to read."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    if (!Foreign::CheckOptions(args))
        return ExitUsage;
    const EntryPrinter print = PrinterOf(args.Value("format"), "show");
    if (!print)
        return ExitUsage;
    ProblemPrinter problems;
    const std::unique_ptr<CliList> list = args.List(args.Files().first());
    if (!list)
        return ExitUsage;
    if (!Foreign::Read(args, *list, args.Files().first()))
        return ExitFile;
    problems.Flush();
    if (!takeWhere(args, *list))
        return ExitUsage;
    print(*list);
    return problems.Count() == 0 ? ExitDone : ExitFile;
}
