#include "host/freqstorexml/csvreader.h"

#include "host/freqstorexml/csvscanner.h"
#include "host/report/irgobject.h"
#include "host/report/textform.h"

#include <algorithm>

namespace FreqStoreXml {

using namespace REPORTGENERATOR;

namespace {

QString ToText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string_view Trimmed(std::string_view text) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

/// The layout's columns in the file's order, null where the layout does not know the heading.
std::vector<const CsvColumn*> ReadHeading(CsvScanner& scanner, const CsvLayout& layout) {
    if (!scanner.NextRow())
        scanner.Fail(QStringLiteral("the file is empty"));
    std::vector<const CsvColumn*> columns;
    for (const std::string_view heading : scanner.Cells()) {
        const CsvColumn* column = layout.Find(Trimmed(heading));
        if (column && std::ranges::find(columns, column) != columns.end())
            scanner.Fail(QStringLiteral("the column %1 is there twice").arg(ToText(column->name)));
        columns.push_back(column);
    }
    if (std::ranges::all_of(columns, [](const CsvColumn* column) { return column == nullptr; }))
        scanner.Fail(QStringLiteral("the first line names no column that is known"));
    return columns;
}

void ReadRow(const CsvScanner& scanner, const std::vector<const CsvColumn*>& columns, IRGObject& record,
             TextCache& cache) {
    const auto& cells = scanner.Cells();
    if (cells.size() > columns.size())
        scanner.Fail(
            QStringLiteral("there are %1 cells, but only %2 columns").arg(cells.size()).arg(columns.size()));
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (!columns[i])
            continue;
        if (const char* whatItIsNot = AssignMember(columns[i]->At(record), cells[i], cache))
            scanner.Fail(ToText(columns[i]->name) + QStringLiteral(" \"") + ToText(cells[i].substr(0, 80)) +
                         QStringLiteral("\" is not ") + QString::fromLatin1(whatItIsNot));
    }
}

} // namespace

void ReadCsvRecords(QIODevice& device, const QString& name, const CsvLayout& layout, IObjectList& items) {
    CsvScanner scanner(device, name);
    TextCache cache;
    const std::vector<const CsvColumn*> columns = ReadHeading(scanner, layout);
    while (scanner.NextRow()) {
        ReadRow(scanner, columns, items.Append(), cache);
        items.Completed();
    }
}

} // namespace FreqStoreXml
