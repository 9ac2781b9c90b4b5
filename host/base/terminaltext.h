#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>

// Texts of files come from others, and a terminal obeys what stands in them: a control character may clear
// the screen or retitle the window, a mark of direction may make "gpj.exe" of a name.

/// The text with each control character (C0 but TAB, DEL, C1) and each mark of direction (U+200E, U+200F,
/// U+202A to U+202E, U+2066 to U+2069) as "\u" and four hexadecimal digits.
QString VisibleText(const QString& text);

/// The text in UTF-8, whatever the locale: visible where the stream is a terminal, as it is elsewhere.
QByteArray TextFor(FILE* stream, const QString& text);

/// Why the arguments of a program are refused: names the first one that is not UTF-8, with its bad bytes as
/// "\x" and two digits. Empty when all are UTF-8. Qt would turn such a file name into another one.
QString RefuseArguments(int argc, const char* const* argv);
