#pragma once

#include <QString>

/// What a look at a file saw, before any list is handed it.
struct FileLook {
    QString refusal;             ///< why no list can read it; empty when one can
    QString kind;                ///< what kind of file it is, in words
    qint64 rows = 0;             ///< entries that it would make
    qint64 frequencies = 0;      ///< of these, how many have a frequency
    qint64 firstProblemLine = 0; ///< 1 for the first line; 0 when there is no problem
};

/// Looks through a file as a list would read it, in constant memory. Nothing is told, traced or changed.
FileLook LookAtFile(const QString& path);
