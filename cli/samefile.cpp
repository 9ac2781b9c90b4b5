#include "cli/samefile.h"

#include "host/base/problems.h"

#include <QFile>

#include <sys/stat.h>

bool IsSameFile(const QString& first, const QString& second) {
    struct stat one {};
    struct stat other {};
    return stat(QFile::encodeName(first).constData(), &one) == 0 &&
           stat(QFile::encodeName(second).constData(), &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

bool WouldLose(const QString& in, const QString& out) {
    if (!IsSameFile(in, out))
        return false;
    Problems::Report("samefile",
                     {out, 0,
                      QStringLiteral("is kept: it was not read without problems, and would lose what was not "
                                     "read; --force replaces it")});
    return true;
}
