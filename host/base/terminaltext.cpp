#include "host/base/terminaltext.h"

#include <algorithm>
#include <unistd.h>

namespace {

struct Range {
    char16_t first;
    char16_t last;
};
constexpr Range Unseen[] = {{0x00, 0x08},     {0x0a, 0x1f},     {0x7f, 0x9f},
                            {0x200e, 0x200f}, {0x202a, 0x202e}, {0x2066, 0x2069}};

bool isUnseen(QChar c) {
    return std::any_of(std::begin(Unseen), std::end(Unseen), [c](const Range& range) {
        return c.unicode() >= range.first && c.unicode() <= range.last;
    });
}

QString escaped(const char* prefix, int code, int digits) {
    return QLatin1String(prefix) + QString::number(code, 16).rightJustified(digits, QLatin1Char('0'));
}

/// The bytes that are printed as they are; the others are shown as numbers.
QString visibleBytes(const QByteArray& bytes) {
    QString text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7f)
            text += QLatin1Char(c);
        else
            text += escaped("\\x", byte, 2);
    }
    return text;
}

} // namespace

QString VisibleText(const QString& text) {
    if (std::none_of(text.cbegin(), text.cend(), isUnseen)) // nearly all texts
        return text;
    QString visible;
    for (const QChar c : text) {
        if (isUnseen(c))
            visible += escaped("\\u", c.unicode(), 4);
        else
            visible += c;
    }
    return visible;
}

QByteArray TextFor(FILE* stream, const QString& text) {
    return isatty(fileno(stream)) == 1 ? VisibleText(text).toUtf8() : text.toUtf8();
}

QString RefuseArguments(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (!argument.isValidUtf8())
            return QStringLiteral("\"%1\" is not UTF-8").arg(visibleBytes(argument));
    }
    return QString();
}
