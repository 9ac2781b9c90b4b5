#include "interchange/outgoing.h"

#include <QCoreApplication>

namespace Interchange {

OutgoingComment::OutgoingComment(const QString& comment)
    : parts(SplitComment(InOneLine(comment))), m_isAskedFor(parts.extras.size()) {}

QString OutgoingComment::Kept(const char* key, const char* usual) const {
    SetAskedFor(key);
    const QString text = parts.Extra(QLatin1String(key));
    return text.isNull() ? QString::fromLatin1(usual) : text;
}

void OutgoingComment::SetAskedFor(const char* key) const {
    for (std::size_t i = 0; i < parts.extras.size(); ++i)
        m_isAskedFor[i] = m_isAskedFor[i] || parts.extras[i].first == QLatin1String(key);
}

void OutgoingComment::CountRest(Account& lost) const {
    for (std::size_t i = 0; i < parts.extras.size(); ++i) {
        if (!m_isAskedFor[i])
            lost.Count(parts.extras[i].first.toStdString());
    }
}

QString DemodulationOf(const FreqStoreXml::FrequencyStoreEntry& entry) {
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const QString name = FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod());
    const auto isName = [&name](const char* none) {
        return name.compare(QLatin1String(none), Qt::CaseInsensitive) == 0;
    };
    return isName("NONE") || isName("Unknown") ? QString() : name;
}

Outgoing::Outgoing(const FreqStoreXml::FrequencyStoreEntry& entry, ModeWords words, bool hasNone,
                   Account& lost)
    : OutgoingComment(entry.GetComment()),
      hertz(entry.GetFFM_Settings().GetFrequency().GetValue()),
      bandwidth(entry.GetFFM_Settings().GetIFBandwidth().GetValue()),
      demodulation(DemodulationOf(entry)),
      word(WordOf(words, demodulation, bandwidth)),
      m_words(words) {
    if (word.empty() && !(hasNone && demodulation.isEmpty()))
        lost.Count(QT_TRANSLATE_NOOP("Account", "modes that are none here"));
    ++lost.entries;
}

std::string Outgoing::Word(const char* none) const {
    constexpr char Key[] = "Mode";
    if (const std::string kept = parts.Extra(QLatin1String(Key)).toStdString(); !kept.empty()) {
        const Mode meant = ModeOf(m_words, kept);
        if (meant.isKnown && meant.name == demodulation) {
            SetAskedFor(Key);
            return kept;
        }
    }
    return std::string(word.empty() ? std::string_view(none) : word);
}

double Outgoing::FilterBandwidth(const char* none, Account& lost) const {
    if (bandwidth > 0)
        return bandwidth;
    const double usual = ModeOf(m_words, Word(none)).bandwidth;
    if (usual > 0)
        lost.Count(QT_TRANSLATE_NOOP("Account", "entries without a bandwidth"));
    return usual;
}

void Outgoing::CountBandwidth(Account& lost) const {
    if (bandwidth > 0 && ModeOf(m_words, word).bandwidth != bandwidth)
        lost.Count(QT_TRANSLATE_NOOP("Account", "bandwidths"));
}

} // namespace Interchange
