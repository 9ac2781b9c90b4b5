#pragma once

#include <QString>

class QHeaderView;

/// Order, widths and visibility of columns as a text that a person can read: "0:140 2:auto 1:90:hidden" are
/// three columns, named by their numbers, from left to right. Widths are in pixels; "auto" is one that the
/// list sets itself.
namespace ColumnArrangement {

QString Of(QHeaderView& header);
/// False, and nothing changes, when the text does not name each column once, shows none, or has a width that
/// no column has.
bool Apply(QHeaderView& header, const QString& text);

} // namespace ColumnArrangement
