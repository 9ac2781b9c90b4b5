#pragma once

#include "host/freqstorexml/csvlayout.h"

#include <QString>

#include <functional>

class QIODevice;

namespace FreqStoreXml {

/// Reads a CSV file with a heading, row by row, into one record, and calls `take` when it holds a row.
/// The record comes empty, and nobody else changes it.
/// Columns are found by their headings; headings that the layout does not know are passed over. What is not
/// UTF-8 is converted, and told as a problem, as are frequencies that cannot be and a last row that is cut.
/// Throws RGException "name:line: reason", having then passed on the rows before the bad one.
void ReadCsvRecords(QIODevice& device, const QString& name, const CsvLayout& layout,
                    REPORTGENERATOR::IRGObject& record, const std::function<void()>& take);

/// The content of a CSV file of frequencies, in numbers.
struct CsvLook {
    qint64 rows = 0;
    qint64 frequencies = 0; ///< rows with a frequency above 0
    qint64 cutLine = 0;     ///< of a last row that is cut; 0 when there is none
};

/// Goes through a CSV file without making records of its rows: only their frequencies are read. Throws
/// RGException as ReadCsvRecords() does.
CsvLook LookAtCsv(QIODevice& device, const QString& name, const CsvLayout& layout);

} // namespace FreqStoreXml
