#include "controls/frequencystore/files/linefields.h"

#include "host/base/numbers.h"
#include "host/base/tokenizer.h"

#include <QCoreApplication>

namespace {

constexpr size_t MaxPooledTexts = 16;

} // namespace

QString LineFields::TextPool::Text(QStringView view) {
    if (view.isEmpty())
        return QString();
    for (const QString& known : m_texts) {
        if (view == known)
            return known;
    }
    if (m_texts.size() >= MaxPooledTexts)
        m_texts.erase(m_texts.begin());
    m_texts.push_back(view.toString());
    return m_texts.back();
}

void LineFields::Take(QStringView line) {
    m_count = Quor::separateString(line, m_fields, MaxFields);
    number(m_layout.frequency, frequency, QT_TRANSLATE_NOOP("Readers", "frequency"));
    number(m_layout.bandwidth, bandwidth, QT_TRANSLATE_NOOP("Readers", "bandwidth"));
    if (has(m_layout.comment))
        comment = m_fields[m_layout.comment].toString();
    if (has(m_layout.demodulation))
        demodulation = m_demodulations.Text(m_fields[m_layout.demodulation]);
    if (has(m_layout.threatClass))
        threatClass = m_threatClasses.Text(m_fields[m_layout.threatClass]);
    if (has(m_layout.priority) && !Quor::ParseInt(m_fields[m_layout.priority], priority)) {
        priority = 0;
        complain(m_layout.priority, QT_TRANSLATE_NOOP("Readers", "priority"));
    }
}

void LineFields::number(int field, double& value, const char* what) {
    if (has(field) && !Quor::ParseDouble(m_fields[field], value)) {
        value = 0;
        complain(field, what);
    }
}

void LineFields::complain(int field, const char* what) {
    m_reader.ReportProblem(
        QCoreApplication::translate("Readers", "\"%1\" is no %2; 0 is taken")
            .arg(m_fields[field].left(40).toString(), QCoreApplication::translate("Readers", what)));
}
