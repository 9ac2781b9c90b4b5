#include "interchange/outgoing.h"

#include <QCoreApplication>

namespace Interchange {

Outgoing::Outgoing(const FreqStoreXml::FrequencyStoreEntry& entry, ModeWords words, bool hasNone,
                   Account& lost)
    : hertz(entry.GetFFM_Settings().GetFrequency().GetValue()),
      bandwidth(entry.GetFFM_Settings().GetIFBandwidth().GetValue()),
      demodulation(FreqStoreXml::FFM_Settings::AnalogDemodToName(entry.GetFFM_Settings().GetAnalogDemod())),
      parts(SplitComment(entry.GetComment())),
      word(WordOf(words, demodulation, bandwidth)),
      m_words(words) {
    if (word.empty() && !(hasNone && demodulation.isEmpty()))
        lost.Count(QT_TRANSLATE_NOOP("Account", "modes that are none here"));
    ++lost.entries;
}

QString Outgoing::Kept(const char* key, const char* usual) const {
    const QString text = parts.Extra(QLatin1String(key));
    return text.isNull() ? QString::fromLatin1(usual) : text;
}

std::string Outgoing::Word(const char* none) const {
    if (const std::string kept = parts.Extra(QLatin1String("Mode")).toStdString(); !kept.empty()) {
        const Mode meant = ModeOf(m_words, kept);
        if (meant.isKnown && meant.name == demodulation)
            return kept;
    }
    return std::string(word.empty() ? std::string_view(none) : word);
}

void Outgoing::CountBandwidth(Account& lost) const {
    if (bandwidth > 0 && ModeOf(m_words, word).bandwidth != bandwidth)
        lost.Count(QT_TRANSLATE_NOOP("Account", "bandwidths"));
}

} // namespace Interchange
