#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>

/// Prints UTF-8 on standard output or error; what stands in files is made visible where that is a terminal.
/// Made where it is used: it looks once what the stream is.
class Output {
public:
    explicit Output(FILE* stream);

    /// Prints a text that may come from a file, and a line feed. Both answer false when the stream takes no
    /// more, so that long work can stop.
    bool Line(const QString& text);
    /// Prints the program's own text as it is.
    bool Text(const QString& text) { return put(text.toUtf8()); }

private:
    bool put(const QByteArray& bytes);

    FILE* m_stream;
    bool m_isTerminal;
};

/// Prints a line on standard error.
void TellError(const QString& text);

/// Writes out what standard output still holds. When some of it could not be written the result is not
/// `ExitDone`, and the reason is told; a reader that has gone, as the "head" of a pipe, knows it already.
int FinishOutput(int exitCode);
