#include "host/base/tokenizer.h"

#include <algorithm>
#include <limits>

namespace Quor {

QString Tokenizer::operator()(const QString& separators) {
    while (m_position < m_text.size() && separators.contains(m_text[m_position]))
        ++m_position;
    const qsizetype start = m_position;
    while (m_position < m_text.size() && !separators.contains(m_text[m_position]))
        ++m_position;
    return start < m_position ? m_text.mid(start, m_position - start) : QString();
}

unsigned char separateString(QStringView text, QStringView* parts, unsigned char maxParts) {
    unsigned char count = 0;
    qsizetype start = 0;
    while (start < text.size() && count < maxParts) {
        qsizetype end = text.indexOf(QLatin1Char('\t'), start);
        if (end < 0)
            end = text.size();
        parts[count++] = text.mid(start, end - start);
        start = end + 1;
    }
    return count;
}

unsigned char separateString(QString text, QString* parts, unsigned char maxParts) {
    QStringView views[std::numeric_limits<unsigned char>::max()];
    const unsigned char count = separateString(QStringView(text), views, maxParts);
    for (unsigned char i = 0; i < count; ++i)
        parts[i] = views[i].toString();
    return count;
}

QString OneField(QString text) {
    // Looked at first without detaching: nearly all texts are fine.
    const auto isControl = [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7F; };
    if (std::none_of(text.cbegin(), text.cend(), isControl))
        return text;
    for (QChar& c : text) {
        if (c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r'))
            c = QLatin1Char(' ');
        else if (isControl(c))
            c = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

} // namespace Quor
