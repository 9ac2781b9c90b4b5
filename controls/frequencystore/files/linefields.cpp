#include "controls/frequencystore/files/linefields.h"

#include "host/base/numbers.h"

void LineFields::Take() {
    m_count = m_reader.Fields(m_fields, MaxFields);
    number(m_layout.frequency, frequency, "frequency");
    number(m_layout.bandwidth, bandwidth, "bandwidth");
    text(m_layout.comment, comment);
    text(m_layout.demodulation, demodulation);
    text(m_layout.threatClass, threatClass);
    if (has(m_layout.priority) && !Quor::ParseInt(m_fields[m_layout.priority], priority)) {
        priority = 0;
        complain(m_layout.priority, "priority");
    }
}

/// The text's memory is used again from line to line, unless somebody has kept the text.
void LineFields::text(int field, QString& value) {
    if (!has(field))
        return;
    value.resize(m_fields[field].size());
    std::copy(m_fields[field].begin(), m_fields[field].end(), value.begin());
}

void LineFields::number(int field, double& value, const char* what) {
    if (has(field) && !Quor::ParseDouble(m_fields[field], value)) {
        value = 0;
        complain(field, what);
    }
}

void LineFields::complain(int field, const char* what) {
    m_reader.ReportProblem(QStringLiteral("\"%1\" is no %2; 0 is taken")
                               .arg(m_fields[field].left(40).toString(), QString::fromLatin1(what)));
}
