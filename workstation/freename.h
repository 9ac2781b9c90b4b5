#pragma once

#include <QString>

/// `path` when there is no such file, else the first free one of "name-2.xml", "name-3.xml", ...
QString FreeName(const QString& path);
