#include "interchange/comment.h"

#include <QUrl>

#include <algorithm>

namespace Interchange {

namespace {

constexpr char Between[] = " | ";
constexpr char ExtrasBegin[] = " {";
constexpr char BetweenExtras[] = "; ";

/// Appends one line of text, without characters that no file of text holds.
void appendInOneLine(std::string& out, std::string_view utf8) {
    const auto isControl = [](char c) { return (c >= 0 && c < 0x20) || c == 0x7F; };
    if (std::none_of(utf8.begin(), utf8.end(), isControl)) {
        out += utf8;
        return;
    }
    std::string line(utf8);
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    out += QString::fromStdString(line).simplified().toStdString();
}

/// The same for a part of an extra: characters that have a meaning there become "%7B" and the like.
void appendEscaped(std::string& out, std::string_view utf8) {
    constexpr std::string_view Special = "%;{}=";
    const std::size_t begin = out.size();
    appendInOneLine(out, utf8);
    for (std::size_t at = out.find_first_of(Special, begin); at != out.npos;
         at = out.find_first_of(Special, at + 3)) {
        constexpr char Digits[] = "0123456789ABCDEF";
        const char c = out[at];
        out.replace(at, 1, {'%', Digits[c >> 4], Digits[c & 0xF]});
    }
}

QString unescaped(QStringView text) {
    return QUrl::fromPercentEncoding(text.toUtf8());
}

} // namespace

QString CommentParts::Extra(QLatin1String key) const {
    const auto found =
        std::find_if(extras.begin(), extras.end(), [key](const auto& extra) { return extra.first == key; });
    return found == extras.end() ? QString() : found->second;
}

void CommentMaker::Extra(std::string_view key, std::string_view value) {
    if (HasExtras())
        m_extras += BetweenExtras;
    appendEscaped(m_extras, key);
    m_extras += '=';
    appendEscaped(m_extras, value);
}

QString CommentMaker::Take(std::string_view name, std::string_view notes) {
    m_text.clear();
    appendInOneLine(m_text, name.empty() ? notes : name);
    if (!name.empty() && !notes.empty()) {
        m_text += Between;
        appendInOneLine(m_text, notes);
    }
    if (HasExtras())
        m_text.append(ExtrasBegin).append(m_extras) += '}';
    ForgetExtras();
    return QString::fromStdString(m_text);
}

QString CommentMaker::Take(const QString& comment) {
    if (!HasExtras())
        return comment;
    const bool hasOwn = !SplitComment(comment).extras.empty();
    m_text = hasOwn ? comment.chopped(1).toStdString() + BetweenExtras : comment.toStdString() + ExtrasBegin;
    (m_text += m_extras) += '}';
    ForgetExtras();
    return QString::fromStdString(m_text);
}

QString InOneLine(const QString& text) {
    if (std::ranges::none_of(text, [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7F; }))
        return text; // as most are
    std::string line;
    appendInOneLine(line, text.toStdString());
    return QString::fromStdString(line);
}

QString JoinComment(const CommentParts& parts) {
    CommentMaker maker;
    for (const auto& [key, value] : parts.extras)
        maker.Extra(key.toStdString(), value.toStdString());
    return maker.Take(parts.name.toStdString(), parts.notes.toStdString());
}

CommentParts SplitComment(const QString& comment) {
    CommentParts parts;
    QStringView text = comment;
    if (const qsizetype begin =
            text.endsWith(QLatin1Char('}')) ? text.lastIndexOf(QLatin1String(ExtrasBegin)) : -1;
        begin >= 0) {
        const QStringView inside = text.mid(begin + QLatin1String(ExtrasBegin).size()).chopped(1);
        for (const QStringView extra : inside.split(QString::fromLatin1(BetweenExtras))) {
            const qsizetype equals = extra.indexOf(QLatin1Char('='));
            if (equals <= 0) { // somebody's own braces
                parts.extras.clear();
                break;
            }
            parts.extras.emplace_back(unescaped(extra.first(equals)), unescaped(extra.mid(equals + 1)));
        }
        if (!parts.extras.empty())
            text = text.first(begin);
    }
    const qsizetype between = text.indexOf(QLatin1String(Between));
    parts.name = (between < 0 ? text : text.first(between)).toString();
    if (between >= 0)
        parts.notes = text.mid(between + QLatin1String(Between).size()).toString();
    return parts;
}

} // namespace Interchange
