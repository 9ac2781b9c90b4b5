#pragma once

#include <QString>

class FrequencyStoreListView;
class QPagedPaintDevice;

/// Puts the rows that a list shows on paper, in the order and with the columns that it shows, a heading and
/// the number of the page on each page.
namespace ListPrint {

/// False when the device takes no painting.
bool Paint(FrequencyStoreListView& view, const QString& title, QPagedPaintDevice& device);

/// Writes a PDF document in place of the file, or nothing; empty, or why it could not be written.
QString WritePdf(FrequencyStoreListView& view, const QString& title, const QString& path);

} // namespace ListPrint
