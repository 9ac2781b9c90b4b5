#include "host/report/textinput.h"

#include "host/base/fileproblems.h"
#include "host/report/byteinput.h"

namespace REPORTGENERATOR {

TextInput::TextInput(QIODevice& device, const QString& name) : m_form(LookAtText(device)), m_device(&device) {
    if (!m_form.refusal.isEmpty())
        throw RGException(ErrorText(name, m_form.refusalLine, m_form.refusal));
    if (m_form.encoding != TextEncoding::Utf8)
        m_device = &m_converted.emplace(device, m_form.encoding);
}

void TextInput::Tell(FileProblems& problems) const {
    if (const QString remark = m_form.Remark(); !remark.isEmpty())
        problems.ReportAlways(m_form.foreignLine, remark);
    else if (m_converted)
        problems.ReportAlways(1, QStringLiteral("is not UTF-8, and is read all the same"));
}

} // namespace REPORTGENERATOR
