#pragma once

#include "host/freqstorexml/csvlayout.h"

#include <QString>

class QIODevice;

namespace FreqStoreXml {

/// Reads a CSV file with a heading into `items`, row by row. Columns are found by their headings; headings
/// that the layout does not know are passed over. Throws RGException "name:line: reason", having then passed
/// on the rows before the bad one.
void ReadCsvRecords(QIODevice& device, const QString& name, const CsvLayout& layout,
                    REPORTGENERATOR::IObjectList& items);

} // namespace FreqStoreXml
