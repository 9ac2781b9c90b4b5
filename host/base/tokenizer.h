#pragma once

#include <QString>
#include <QStringView>

namespace Quor {

/// Takes a text apart, token by token, passing over empty ones.
class Tokenizer {
public:
    explicit Tokenizer(const QString& text) : m_text(text) {}
    /// The next token, delimited by any of the separator characters; a null text at the end.
    QString operator()(const QString& separators);

private:
    QString m_text;
    qsizetype m_position = 0;
};

/// Splits a line at every single TAB into at most `maxParts` parts and returns how many it wrote. Empty
/// fields count, a TAB at the end of the line ends the last field without starting another, and what lies
/// beyond the maximum is dropped.
unsigned char separateString(QStringView text, QStringView* parts, unsigned char maxParts);
unsigned char separateString(QString text, QString* parts, unsigned char maxParts);

/// A text as one field of such a line: TABs and line breaks become blanks, and what else is no text becomes
/// U+FFFD, so that the line is one record and its file a text file.
QString OneField(QString text);

} // namespace Quor
