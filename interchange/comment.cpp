#include "interchange/comment.h"

#include <QUrl>

#include <algorithm>

namespace Interchange {

namespace {

constexpr QLatin1String Between(" | ");
constexpr QStringView ExtrasBegin(u" {");
constexpr char16_t BetweenExtras[] = u"; ";

/// Characters that have a meaning in extras are written as "%7B" and the like.
QString escaped(const QString& text) {
    const auto isSpecial = [](QChar c) {
        return c == u'%' || c == u';' || c == u'{' || c == u'}' || c == u'=';
    };
    if (std::none_of(text.begin(), text.end(), isSpecial))
        return text;
    QString out;
    for (const QChar c : text) {
        if (isSpecial(c))
            out += QLatin1Char('%') + QString::number(c.unicode(), 16).toUpper();
        else
            out += c;
    }
    return out;
}

QString unescaped(QStringView text) {
    return QUrl::fromPercentEncoding(text.toUtf8());
}

/// One line of text, without characters that no file of text holds.
QString inOneLine(const QString& text) {
    const auto isControl = [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7F; };
    if (std::none_of(text.begin(), text.end(), isControl))
        return text;
    QString line = text;
    std::replace_if(line.begin(), line.end(), isControl, QChar(u' '));
    return line.simplified();
}

} // namespace

QString CommentParts::Extra(QLatin1String key) const {
    const auto found =
        std::find_if(extras.begin(), extras.end(), [key](const auto& extra) { return extra.first == key; });
    return found == extras.end() ? QString() : found->second;
}

QString JoinComment(const CommentParts& parts) {
    QString text = inOneLine(parts.name.isEmpty() ? parts.notes : parts.name);
    if (!parts.name.isEmpty() && !parts.notes.isEmpty())
        text += Between + inOneLine(parts.notes);
    if (parts.extras.empty())
        return text;
    QStringView between = ExtrasBegin;
    for (const auto& [key, value] : parts.extras) {
        text += between;
        text += escaped(inOneLine(key));
        text += u'=';
        text += escaped(inOneLine(value));
        between = BetweenExtras;
    }
    return text += u'}';
}

CommentParts SplitComment(const QString& comment) {
    CommentParts parts;
    QStringView text = comment;
    if (const qsizetype begin = text.endsWith(QLatin1Char('}')) ? text.lastIndexOf(ExtrasBegin) : -1;
        begin >= 0) {
        const QStringView inside = text.mid(begin + ExtrasBegin.size()).chopped(1);
        for (const QStringView extra : inside.split(QStringView(BetweenExtras))) {
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
    const qsizetype between = text.indexOf(Between);
    parts.name = (between < 0 ? text : text.first(between)).toString();
    if (between >= 0)
        parts.notes = text.mid(between + Between.size()).toString();
    return parts;
}

} // namespace Interchange
