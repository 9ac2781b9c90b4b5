#include "cli/show.h"

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/jsonfile.h"
#include "cli/output.h"
#include "host/base/tokenizer.h"

#include <algorithm>

namespace {

using Row = std::vector<EntryField>;

void printJson(const CliList& list) {
    Output out(stdout);
    PrintJson(list, [&](const QString& line) { return out.Line(line); });
}

void printTsv(const CliList& list) {
    Output out(stdout);
    bool first = true;
    list.ForEachEntry([&](const Row& row) {
        QStringList keys;
        QStringList texts;
        for (const EntryField& field : row) {
            keys << field.key;
            texts << Quor::OneField(field.text);
        }
        if (std::exchange(first, false))
            out.Line(keys.join(QLatin1Char('\t')));
        return out.Line(texts.join(QLatin1Char('\t')));
    });
}

/// Columns as wide as their widest text; numbers to the right.
void printTable(const CliList& list) {
    constexpr qsizetype MaxWidth = 40;
    std::vector<Row> rows;
    std::vector<qsizetype> widths;
    list.ForEachEntry([&](const Row& row) {
        rows.push_back(row);
        widths.resize(std::max(widths.size(), row.size()), 0);
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::clamp(row[i].text.size(), std::max(widths[i], row[i].key.size()), MaxWidth);
        return true;
    });
    const auto cell = [&](const QString& text, size_t column, bool right) {
        const QString cut = Quor::OneField(text).left(widths[column]);
        return right ? cut.rightJustified(widths[column]) : cut.leftJustified(widths[column]);
    };
    Output out(stdout);
    for (size_t r = 0; r < rows.size(); ++r) {
        QStringList heads;
        QStringList cells;
        for (size_t i = 0; i < rows[r].size(); ++i) {
            const bool isNumber = rows[r][i].type == FieldType::Number;
            heads << cell(rows[r][i].key, i, isNumber);
            cells << cell(rows[r][i].text, i, isNumber);
        }
        if (r == 0)
            out.Line(heads.join(QStringLiteral("  ")));
        if (!out.Line(cells.join(QStringLiteral("  "))))
            return;
    }
}

struct Format {
    const char* name;
    EntryPrinter print;
};

constexpr Format Formats[] = {{"table", printTable}, {"json", printJson}, {"tsv", printTsv}};

} // namespace

void AddFormatOption(QCommandLineParser& parser) {
    parser.addOption({QStringLiteral("format"), QStringLiteral("table, json or tsv."),
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
    args.Parser().addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("File to read."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    const EntryPrinter print = PrinterOf(args.Value("format"), "show");
    if (!print)
        return ExitUsage;
    ProblemPrinter problems;
    const std::unique_ptr<CliList> list = args.List(args.Files().first());
    if (!list)
        return ExitUsage;
    if (!list->Read(args.Files().first()))
        return ExitFile;
    problems.Flush();
    if (!takeWhere(args, *list))
        return ExitUsage;
    print(*list);
    return problems.Count() == 0 ? ExitDone : ExitFile;
}
