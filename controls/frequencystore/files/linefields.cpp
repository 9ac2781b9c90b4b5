#include "controls/frequencystore/files/linefields.h"

#include "host/base/numbers.h"

#include <QCoreApplication>

void LineFields::Take() {
    m_count = m_reader.Fields(m_fields, MaxFields);
    number(m_layout.frequency, frequency, QT_TRANSLATE_NOOP("Readers", "frequency"));
    number(m_layout.bandwidth, bandwidth, QT_TRANSLATE_NOOP("Readers", "bandwidth"));
    text(m_layout.comment, comment);
    text(m_layout.demodulation, demodulation);
    text(m_layout.threatClass, threatClass);
    if (has(m_layout.priority) && !Quor::ParseInt(m_fields[m_layout.priority], priority)) {
        priority = 0;
        complain(m_layout.priority, QT_TRANSLATE_NOOP("Readers", "priority"));
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
    m_reader.ReportProblem(
        QCoreApplication::translate("Readers", "\"%1\" is no %2; 0 is taken")
            .arg(m_fields[field].left(40).toString(), QCoreApplication::translate("Readers", what)));
}

void LineBlock::Add(const LineFields& fields) {
    if (m_lines.empty()) {
        constexpr size_t CharactersPerLine = 40;
        m_lines.reserve(MostLines);
        m_texts.reserve(MostLines * CharactersPerLine);
    }
    Line& line = m_lines.emplace_back(Line{fields.frequency, fields.bandwidth, fields.priority, {}});
    size_t text = 0;
    for (const QString* part : {&fields.comment, &fields.demodulation, &fields.threatClass}) {
        m_texts.append(reinterpret_cast<const char16_t*>(part->utf16()), static_cast<size_t>(part->size()));
        line.ends[text++] = static_cast<qsizetype>(m_texts.size());
    }
}

void LineBlock::ForEach(const std::function<void(const LineRecord&)>& take) const {
    const QStringView texts(m_texts.data(), static_cast<qsizetype>(m_texts.size()));
    qsizetype begin = 0;
    for (const Line& line : m_lines) {
        const auto& [comment, demodulation, threatClass] = line.ends;
        take({line.frequency, line.bandwidth, line.priority, texts.sliced(begin, comment - begin),
              texts.sliced(comment, demodulation - comment),
              texts.sliced(demodulation, threatClass - demodulation)});
        begin = threatClass;
    }
}
