#include "cli/show.h"

#include "cli/arguments.h"
#include "cli/command.h"
#include "host/base/tokenizer.h"

#include <algorithm>
#include <cstdio>

namespace {

using Row = std::vector<EntryField>;

void print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
}

/// Texts as JSON quotes them; numbers as they stand, which JSON reads, too.
QString quoted(const QString& text) {
    QString out(QLatin1Char('"'));
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            out += QLatin1Char('\\');
        if (c.unicode() < 0x20)
            out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            out += c;
    }
    return out + QLatin1Char('"');
}

void printJson(const CliList& list) {
    bool first = true;
    print(QStringLiteral("["));
    list.ForEachEntry([&](const Row& row) {
        QStringList members;
        for (const EntryField& field : row)
            members << quoted(field.key) + QLatin1Char(':') +
                           (field.isNumber ? field.text : quoted(field.text));
        print((first ? QStringLiteral("\n{") : QStringLiteral(",\n{")) + members.join(QLatin1Char(',')) +
              QLatin1Char('}'));
        first = false;
    });
    print(QStringLiteral("\n]\n"));
}

void printTsv(const CliList& list) {
    bool first = true;
    list.ForEachEntry([&](const Row& row) {
        QStringList keys;
        QStringList texts;
        for (const EntryField& field : row) {
            keys << field.key;
            texts << Quor::OneField(field.text);
        }
        if (std::exchange(first, false))
            print(keys.join(QLatin1Char('\t')) + QLatin1Char('\n'));
        print(texts.join(QLatin1Char('\t')) + QLatin1Char('\n'));
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
    });
    const auto cell = [&](const QString& text, size_t column, bool right) {
        const QString cut = Quor::OneField(text).left(widths[column]);
        return right ? cut.rightJustified(widths[column]) : cut.leftJustified(widths[column]);
    };
    for (size_t r = 0; r < rows.size(); ++r) {
        QStringList heads;
        QStringList cells;
        for (size_t i = 0; i < rows[r].size(); ++i) {
            heads << cell(rows[r][i].key, i, rows[r][i].isNumber);
            cells << cell(rows[r][i].text, i, rows[r][i].isNumber);
        }
        if (r == 0)
            print(heads.join(QStringLiteral("  ")) + QLatin1Char('\n'));
        print(cells.join(QStringLiteral("  ")) + QLatin1Char('\n'));
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
    std::fprintf(stderr, "freqstore-cli %s: no format is called \"%s\"\n", command, qPrintable(format));
    return nullptr;
}

int RunShow(const QStringList& arguments) {
    Arguments args("show", "Reads a file through the list's own reader and prints the entries in list order.",
                   1);
    AddFormatOption(args.Parser());
    args.Parser().addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("File to read."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    const EntryPrinter print = PrinterOf(args.Value("format"), "show");
    if (!print)
        return ExitUsage;
    const ProblemPrinter problems;
    const std::unique_ptr<CliList> list = args.List(args.Files().first());
    if (!list)
        return ExitUsage;
    if (!list->Read(args.Files().first()))
        return ExitFile;
    print(*list);
    return problems.Count() == 0 ? ExitDone : ExitFile;
}
