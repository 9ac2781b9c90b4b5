#include "host/freqstorexml/recordlistwriter.h"

#include "host/freqstorexml/csvoptions.h"
#include "host/report/irgobject.h"
#include "host/report/outputfile.h"
#include "host/report/textform.h"
#include "host/report/xmltext.h"

#include <algorithm>

namespace FreqStoreXml {

using namespace REPORTGENERATOR;

namespace {

constexpr std::size_t FlushSize = 256 * 1024;

bool NeedsQuotes(QStringView text) {
    const auto special = [](QChar c) {
        return c == u',' || c == u';' || c == u'"' || c == u'\n' || c == u'\r';
    };
    const auto blank = [](QChar c) { return c == u' ' || c == u'\t'; };
    return std::ranges::any_of(text, special) || blank(text.front()) || blank(text.back());
}

void AppendCell(std::string& out, const MemberPtr& value, bool guarded) {
    if (!IsSet(value))
        return;
    auto* const* text = std::get_if<QString*>(&value);
    const bool quotes = text && NeedsQuotes(**text);
    out.append(quotes ? 1 : 0, '"');
    out.append(guarded && text && CsvOptions::NeedsGuard(**text) ? 1 : 0, CsvOptions::Guard);
    AppendMember(out, value, CsvEscapes);
    out.append(quotes ? 1 : 0, '"');
}

} // namespace

RecordListWriter::RecordListWriter(QIODevice& device, const QString& name, const CsvLayout* layout)
    : m_device(device), m_name(name), m_layout(layout), m_isGuarded(CsvOptions::IsSpreadsheetSafe()) {}

void RecordListWriter::Begin(const IRGObject& head) {
    if (!m_layout)
        return AppendDocumentHead(m_buffer, head);
    for (const CsvColumn& column : m_layout->columns) {
        if (!m_buffer.empty())
            m_buffer += ',';
        m_buffer += column.name;
    }
    if (m_isGuarded)
        m_buffer.append(1, ',').append(CsvOptions::SafeMark);
    m_buffer += "\r\n";
}

void RecordListWriter::Append(const IRGObject& record) {
    if (m_layout)
        AppendRow(const_cast<IRGObject&>(record)); // the table's functions serve reading and writing alike
    else
        AppendDocumentItem(m_buffer, record);
    if (m_buffer.size() >= FlushSize)
        Flush();
}

void RecordListWriter::AppendRow(IRGObject& record) {
    for (const CsvColumn& column : m_layout->columns) {
        if (&column != &m_layout->columns.front())
            m_buffer += ',';
        AppendCell(m_buffer, column.At(record), m_isGuarded);
    }
    m_buffer.append(m_isGuarded ? 1 : 0, ',');
    m_buffer += "\r\n";
}

void RecordListWriter::End(const IRGObject& head) {
    if (!m_layout)
        AppendDocumentTail(m_buffer, head);
    Flush();
}

void RecordListWriter::Flush() {
    WriteBytes(m_device, m_name, m_buffer);
    m_buffer.clear();
}

} // namespace FreqStoreXml
