#pragma once

#include <QString>

/// Whether a path has the mark of a file kind (".xml", ".noi") anywhere in it, in lower case. The name alone
/// tells the kind of a file, so that a mark behind another one ("list.ltl.xml") counts, too.
inline bool PathContains(const QString& path, const char* mark) {
    return path.contains(QLatin1String(mark), Qt::CaseSensitive);
}
