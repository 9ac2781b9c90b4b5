#pragma once

#include "host/freqstorexml/frequencystorelisthelper.h"
#include "host/report/recordinfo.h"

#include <string_view>
#include <vector>

namespace FreqStoreXml {

/// A column of a CSV file: its heading, and the way to its member through the record's sub-records.
struct CsvColumn {
    std::string_view name;
    std::vector<const REPORTGENERATOR::MemberInfo*> path;

    REPORTGENERATOR::MemberPtr At(REPORTGENERATOR::IRGObject& record) const;
};

/// The columns of one kind of CSV file, in the order in which they are written. Layouts are made once and
/// live as long as the process.
struct CsvLayout {
    std::vector<CsvColumn> columns;

    /// Throws RGException for a number that is no list type.
    static const CsvLayout& Of(FrequencyStoreListHelper::ListType type);
    static const CsvLayout& OfDetectionResults();

    /// The column of that heading, or null.
    const CsvColumn* Find(std::string_view heading) const;
};

} // namespace FreqStoreXml
