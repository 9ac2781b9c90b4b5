#include "host/freqstorexml/csvoptions.h"

namespace FreqStoreXml {

namespace {
bool spreadsheetSafe = false;
}

void CsvOptions::SetSpreadsheetSafe(bool safe) {
    spreadsheetSafe = safe;
}

bool CsvOptions::IsSpreadsheetSafe() {
    return spreadsheetSafe;
}

bool CsvOptions::NeedsGuard(QStringView text) {
    return !text.isEmpty() && QStringView(u"=+-@\t\r'").contains(text.front());
}

} // namespace FreqStoreXml
