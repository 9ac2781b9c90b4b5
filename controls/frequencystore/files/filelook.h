#pragma once

#include <QString>

/// What a look at a file finds before a list's handler gets it: nothing is changed by it.
struct FileLook {
    QString refusal; ///< why no list can read it (there is none, a folder, a picture, a foreign table of
                     ///< MHz); without the file's name; empty when one can try
    QString kind;    ///< in the operator's words: "LTL lines", "frequency-store XML", "CSV", "job", "profile
                     ///< table", ...; empty for a file of no known kind
    qint64 rows = 0; ///< records or lines that would become entries; -1 when not known
    qint64 frequencies = 0;      ///< how many of them have a frequency above 0; -1 when not known
    qint64 firstProblemLine = 0; ///< 1 for the first line; 0 when there is no problem, or it is no line's
};

/// Looks at a file as the target, NOI or memory list would read it by its name, without telling or tracing
/// anything. Power sweeps have no heading and are refused: whoever takes those asks for them first. Needs
/// memory for a few pieces of the file and the time of reading it once or twice.
FileLook LookAtFile(const QString& path);
