#include "host/freqlist/rowtext.h"

#include "host/base/numbers.h"
#include "host/freqstorexml/csvoptions.h"
#include "host/gui/sortlistview.h"

using FreqStoreXml::CsvOptions;

namespace {

bool isNumber(const QString& text) {
    double number = 0;
    return Quor::ParseDouble(text, number);
}

} // namespace

RowText::RowText(const SortListView& list) : m_columns(list.ShownColumns()) {
    Add([&list](int column) { return list.headerItem()->text(column); });
    m_isEmpty = true;
}

void RowText::addCell(QString cell, bool isLast) {
    cell.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    if (CsvOptions::IsSpreadsheetSafe() && CsvOptions::NeedsGuard(cell) && !isNumber(cell))
        m_text += QLatin1Char(CsvOptions::Guard);
    m_text += cell;
    m_text += isLast ? QLatin1Char('\n') : QLatin1Char('\t');
}

QStringList RowText::CellsOf(const QString& line) {
    QStringList cells = line.split(QLatin1Char('\t'));
    for (QString& cell : cells) {
        if (cell.startsWith(QLatin1Char(CsvOptions::Guard)) &&
            CsvOptions::NeedsGuard(QStringView(cell).mid(1)))
            cell.remove(0, 1);
    }
    return cells;
}
