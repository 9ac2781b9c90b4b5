#include "host/freqstorexml/csvreader.h"

#include "host/base/fileproblems.h"
#include "host/freqstorexml/csvheading.h"
#include "host/freqstorexml/csvoptions.h"
#include "host/freqstorexml/csvscanner.h"
#include "host/report/irgobject.h"
#include "host/report/textform.h"
#include "host/report/textinput.h"

#include <optional>

namespace FreqStoreXml {

using namespace REPORTGENERATOR;

namespace {

QString ToText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Takes away the apostrophe that stands before what would be a formula.
std::string_view Unguarded(std::string_view text, const MemberPtr& member) {
    if (std::holds_alternative<QString*>(member) && text.starts_with(CsvOptions::Guard))
        text.remove_prefix(1);
    return text;
}

/// Where the cells of a row go: the members of a record in the file's order of columns, none for a column
/// that the record does not know.
using Targets = std::vector<std::optional<MemberPtr>>;

Targets TargetsIn(IRGObject& record, const CsvHeading& heading) {
    Targets targets;
    for (const CsvColumn* column : heading.Columns())
        targets.push_back(column ? std::optional(column->At(record)) : std::nullopt);
    return targets;
}

void ReadRow(const CsvScanner& scanner, const CsvHeading& heading, const Targets& targets, TextCache& cache) {
    const auto& cells = scanner.Cells();
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (!targets[i])
            continue;
        const std::string_view cell = i < cells.size() ? cells[i] : std::string_view();
        const std::string_view text = heading.IsGuarded() ? Unguarded(cell, *targets[i]) : cell;
        if (const char* whatItIsNot = AssignMember(*targets[i], text, cache))
            scanner.Fail(ToText(heading.Columns()[i]->name) + QStringLiteral(" \"") +
                         ToText(cell.substr(0, 80)) + QStringLiteral("\" is not ") +
                         QString::fromLatin1(whatItIsNot));
    }
}

/// The frequency of the row at hand, if it has one.
std::optional<double> FrequencyOf(const CsvScanner& scanner, const CsvHeading& heading) {
    const auto& cells = scanner.Cells();
    if (cells.size() > heading.Columns().size())
        scanner.Fail(QStringLiteral("there are %1 cells, but only %2 columns")
                         .arg(cells.size())
                         .arg(heading.Columns().size()));
    if (heading.FrequencyColumn() >= cells.size())
        return std::nullopt;
    return ParseNumber(cells[heading.FrequencyColumn()]);
}

bool IsCut(const CsvScanner& scanner, const CsvHeading& heading) {
    return !scanner.RowEnds() && scanner.Cells().size() < heading.Columns().size();
}

} // namespace

void ReadCsvRecords(QIODevice& device, const QString& name, const CsvLayout& layout, IRGObject& record,
                    const std::function<void()>& take) {
    TextInput input(device, name);
    CsvScanner scanner(input.Device(), name);
    CsvHeading heading(scanner, layout);
    FileProblems problems(name, "csvreader");
    input.Tell(problems);
    TextCache cache;
    const Targets targets = TargetsIn(record, heading);
    while (scanner.NextRow()) {
        if (const std::optional<double> frequency = FrequencyOf(scanner, heading)) {
            heading.Note(*frequency, scanner);
            if (!FileProblems::IsFrequency(*frequency))
                problems.CheckFrequency(scanner.Line(), *frequency);
        }
        ReadRow(scanner, heading, targets, cache);
        if (IsCut(scanner, heading))
            problems.ReportAlways(scanner.Line(), QStringLiteral("the last row has only %1 of %2 cells and "
                                                                 "no line end; the file may be cut")
                                                      .arg(scanner.Cells().size())
                                                      .arg(heading.Columns().size()));
        take();
    }
    heading.CheckFrequencies(name);
}

CsvLook LookAtCsv(QIODevice& device, const QString& name, const CsvLayout& layout) {
    TextInput input(device, name);
    CsvScanner scanner(input.Device(), name);
    CsvHeading heading(scanner, layout);
    CsvLook look;
    while (scanner.NextRow()) {
        ++look.rows;
        if (const std::optional<double> frequency = FrequencyOf(scanner, heading)) {
            heading.Note(*frequency, scanner);
            look.frequencies += *frequency > 0 ? 1 : 0;
        }
        if (IsCut(scanner, heading))
            look.cutLine = scanner.Line();
    }
    heading.CheckFrequencies(name);
    return look;
}

} // namespace FreqStoreXml
