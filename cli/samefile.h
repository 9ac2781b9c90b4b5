#pragma once

#include <QString>

/// Whether two names stand for one file, by other spellings and by links, too; false where there is none.
bool IsSameFile(const QString& first, const QString& second);

/// Whether writing `out` would replace a file that could not be read whole. Tells it as a problem.
bool WouldLose(const QString& in, const QString& out);
