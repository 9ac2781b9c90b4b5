#pragma once

#include <QString>

class QTreeWidgetItem;

/// What the headings of the lists' columns mean.
namespace ColumnTips {

/// What a heading means, in the language of the window; empty for one that says enough.
QString Of(const char* title);
/// Gives a column's heading its tool tip: its name, and what it means.
void Set(QTreeWidgetItem& headings, int column, const char* title);

} // namespace ColumnTips
