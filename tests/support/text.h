#pragma once

#include <QString>

/// A text of a test, which is UTF-8.
inline QString Q(const char* text) {
    return QString::fromUtf8(text);
}
