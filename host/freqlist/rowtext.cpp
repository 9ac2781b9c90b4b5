#include "host/freqlist/rowtext.h"

#include "host/gui/sortlistview.h"

RowText::RowText(const SortListView& list) : m_columns(list.ShownColumns()) {
    Add([&list](int column) { return list.headerItem()->text(column); });
    m_isEmpty = true;
}

void RowText::addCell(QString cell, bool isLast) {
    cell.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    m_text += cell;
    m_text += isLast ? QLatin1Char('\n') : QLatin1Char('\t');
}
