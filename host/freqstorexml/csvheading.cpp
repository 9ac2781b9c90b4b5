#include "host/freqstorexml/csvheading.h"

#include "host/freqstorexml/csvoptions.h"
#include "host/freqstorexml/csvscanner.h"

#include <algorithm>
#include <cmath>

namespace FreqStoreXml {

namespace {

/// Below this, in hertz, nobody listens; in MHz it is all that there is.
constexpr double LeastLarge = 30'000;

/// Columns that tell whose table a file is.
struct ForeignColumn {
    std::string_view name;
    const char* program;
};

constexpr ForeignColumn ForeignColumns[] = {
    {"Duplex", "CHIRP"},
    {"rToneFreq", "CHIRP"},
    {"cToneFreq", "CHIRP"},
    {"DtcsCode", "CHIRP"},
    {"DtcsPolarity", "CHIRP"},
    {"TStep", "CHIRP"},
    {"URCALL", "CHIRP"},
    {"RPT1CALL", "CHIRP"},
    {"RPT2CALL", "CHIRP"},
    {"Freq (Hz)", "SDRangel"},
    {"Ch BW (Hz)", "SDRangel"},
    {"TH (dB)", "SDRangel"},
    {"Sq (dB)", "SDRangel"},
    {"# Frequency", "Gqrx"},
    {"# Tag name", "Gqrx"},
    {"Alpha Tag", "RadioReference"},
    {"PL Output Tone", "RadioReference"},
};

QString ToText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string_view Trimmed(std::string_view text) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

/// Whether any list of this system has a column of that name. One without a name holds nothing.
bool IsOurs(std::string_view name) {
    return name.empty() || name == CsvOptions::SafeMark ||
           CsvLayout::Of(FrequencyStoreListHelper::XmlList).Find(name) ||
           CsvLayout::OfDetectionResults().Find(name);
}

} // namespace

CsvHeading::CsvHeading(CsvScanner& scanner, const CsvLayout& layout) {
    if (!scanner.NextRow())
        scanner.Fail(QStringLiteral("the file is empty"));
    for (const std::string_view heading : scanner.Cells())
        takeColumn(Trimmed(heading), scanner, layout);
    refuseForeign(scanner);
}

void CsvHeading::takeColumn(std::string_view name, const CsvScanner& scanner, const CsvLayout& layout) {
    const CsvColumn* column = layout.Find(name);
    if (column && std::ranges::find(m_columns, column) != m_columns.end())
        scanner.Fail(QStringLiteral("the column %1 is there twice").arg(ToText(name)));
    if (name == "Frequency") {
        m_hasFrequency = true;
        m_frequency = m_columns.size();
    }
    m_isGuarded = m_isGuarded || name == CsvOptions::SafeMark;
    m_columns.push_back(column);
    const auto* const foreign = std::ranges::find(ForeignColumns, name, &ForeignColumn::name);
    if (foreign != std::end(ForeignColumns) && m_foreign.isEmpty()) {
        m_foreign = ToText(name);
        m_program = foreign->program;
    }
    if (m_unknown.isEmpty() && !IsOurs(name))
        m_unknown = ToText(name.substr(0, 80));
}

void CsvHeading::refuseForeign(const CsvScanner& scanner) const {
    const QString whose = m_foreign.isEmpty() ? QString()
                                              : QStringLiteral("this is a table of %1 (column \"%2\")")
                                                    .arg(QString::fromLatin1(m_program), m_foreign);
    if (!m_hasFrequency)
        scanner.Fail((whose.isEmpty() ? QString() : whose + QStringLiteral(": ")) +
                     QStringLiteral("there is no column \"Frequency\""));
    if (!whose.isEmpty())
        scanner.Fail(whose + QStringLiteral(": its frequencies are no hertz"));
}

void CsvHeading::Note(double frequency, const CsvScanner& scanner) {
    m_anyLarge = m_anyLarge || std::abs(frequency) >= LeastLarge;
    if (!m_unknown.isEmpty() && m_brokenLine == 0 && frequency != std::trunc(frequency))
        m_brokenLine = scanner.Line();
}

void CsvHeading::CheckFrequencies(const QString& fileName) const {
    if (m_brokenLine > 0 && !m_anyLarge)
        throw RGException(REPORTGENERATOR::ErrorText(
            fileName, m_brokenLine,
            QStringLiteral("the frequencies are no hertz: all are below 30000, some have decimals, and the "
                           "column \"%1\" is of another program")
                .arg(m_unknown)));
}

} // namespace FreqStoreXml
