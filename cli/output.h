#pragma once

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

/// Prints UTF-8 on standard output or error; what stands in files is made visible where that is a terminal.
/// Made where it is used: it looks once what the stream is.
class Output {
public:
    explicit Output(FILE* stream);

    /// Prints a text that may come from a file, and a line feed. All answer false when the stream takes no
    /// more, so that long work can stop.
    bool Line(const QString& text);
    /// Prints many lines, in UTF-8, with their line feeds.
    bool Lines(std::string_view utf8);
    /// Prints the program's own text as it is.
    bool Text(const QString& text) { return put(text.toUtf8()); }

private:
    bool put(QByteArrayView bytes);

    FILE* m_stream;
    bool m_isTerminal;
};

/// Takes a piece of UTF-8; false when no more is wanted.
using TakeUtf8 = std::function<bool(std::string_view)>;

/// One buffer for a text that is made of very many small parts, and handed on in large pieces.
class TextPieces {
public:
    explicit TextPieces(TakeUtf8 take) : m_take(std::move(take)) {}

    /// The piece so far, to be appended to.
    std::string& Text() { return m_text; }
    /// To be called now and then, such as after each line: hands on a piece that is large enough. False when
    /// no more is wanted.
    bool Proceed() { return m_text.size() < PieceSize || HandOn(); }
    /// Hands on what there is.
    bool HandOn();

private:
    static constexpr size_t PieceSize = 64 * 1024;

    TakeUtf8 m_take;
    std::string m_text;
};

/// Appends in UTF-8. ASCII characters that are not plain are given to `escape`, which appends them itself.
template <typename IsPlain, typename Escape>
void AppendUtf8(std::string& out, QStringView text, IsPlain isPlain, Escape escape) {
    const auto isAscii = [](QChar c) { return c.unicode() < 0x80; };
    while (true) {
        const size_t size = out.size();
        out.resize(size + static_cast<size_t>(text.size()));
        char* to = out.data() + size;
        const QChar* from = text.begin();
        for (; from != text.end() && isAscii(*from) && isPlain(from->unicode()); ++from)
            *to++ = static_cast<char>(from->unicode());
        out.resize(static_cast<size_t>(to - out.data()));
        if (from == text.end())
            return;
        const QChar* rest = isAscii(*from) ? from + 1 : std::find_if(from, text.end(), isAscii);
        if (isAscii(*from))
            escape(from->unicode());
        else
            out += QStringView(from, rest).toUtf8().toStdString();
        text = QStringView(rest, text.end());
    }
}

/// Prints a line on standard error.
void TellError(const QString& text);

/// Writes out what standard output still holds. When some of it could not be written the result is not
/// `ExitDone`, and the reason is told; a reader that has gone, as the "head" of a pipe, knows it already.
int FinishOutput(int exitCode);
