#include "controls/frequencystore/files/filekind.h"

#include <algorithm>

const OwnFileRow& RowOf(OwnFile kind) {
    return *std::ranges::find(OwnFiles, kind, &OwnFileRow::kind);
}

bool IsNamedAs(OwnFile kind, const QString& path) {
    const char* const mark = RowOf(kind).mark;
    return kind == OwnFile::Job ? path.endsWith(QLatin1String(mark)) : PathContains(path, mark);
}
