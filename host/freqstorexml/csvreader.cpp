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

void CheckCount(const CsvScanner& scanner, const CsvHeading& heading) {
    if (scanner.Cells().size() > heading.Columns().size())
        scanner.Fail(QStringLiteral("there are %1 cells, but only %2 columns")
                         .arg(scanner.Cells().size())
                         .arg(heading.Columns().size()));
}

/// Puts the cells of row after row into one record. A cell that says what it said in the row before is not
/// looked at again; most do.
class RowReader {
public:
    RowReader(IRGObject& record, const CsvHeading& heading) : m_heading(heading) {
        for (std::size_t i = 0; i < heading.Columns().size(); ++i)
            if (const CsvColumn* const column = heading.Columns()[i])
                m_columns.push_back({i, column->At(record), {}});
    }

    void Read(const CsvScanner& scanner) {
        const auto& cells = scanner.Cells();
        for (Column& column : m_columns) {
            const std::string_view cell =
                column.index < cells.size() ? cells[column.index] : std::string_view();
            if (cell == column.before)
                continue;
            column.before = cell;
            const std::string_view text = m_heading.IsGuarded() ? Unguarded(cell, column.member) : cell;
            if (const char* whatItIsNot = AssignMember(column.member, text, m_cache))
                scanner.Fail(ToText(m_heading.Columns()[column.index]->name) + QStringLiteral(" \"") +
                             ToText(cell.substr(0, 80)) + QStringLiteral("\" is not ") +
                             QString::fromLatin1(whatItIsNot));
        }
    }

private:
    struct Column {
        std::size_t index;
        MemberPtr member;   ///< not set, as the record comes, while `before` is empty
        std::string before; ///< the cell of the last row
    };

    const CsvHeading& m_heading;
    std::vector<Column> m_columns; ///< those that the record knows
    TextCache m_cache;
};

/// The frequency of the row at hand, if it has one.
std::optional<double> FrequencyOf(const CsvScanner& scanner, const CsvHeading& heading) {
    const auto& cells = scanner.Cells();
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
    RowReader reader(record, heading);
    const MemberPtr frequencyMember = heading.Columns()[heading.FrequencyColumn()]->At(record);
    const double& frequency = *std::get<double*>(frequencyMember);
    while (scanner.NextRow()) {
        CheckCount(scanner, heading);
        reader.Read(scanner);
        if (IRGObject::IsValid(frequency)) {
            heading.Note(frequency, scanner);
            if (!FileProblems::IsFrequency(frequency))
                problems.CheckFrequency(scanner.Line(), frequency);
        }
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
        CheckCount(scanner, heading);
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
