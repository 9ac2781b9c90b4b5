#pragma once

#include <QString>

/// Names of nodes and values, stored once each: a million entries share the eleven keys of their values.
/// The table lives until the process ends.
namespace Names {

using Id = quint32;

/// The id of a name, made when the name is new. The empty name has id 0.
Id Intern(const QString& name);

/// The id of a name that has been interned before, else `Unknown`: no node or value can carry such a name.
inline constexpr Id Unknown = 0xffffffffu;
Id Find(QStringView name);

const QString& Text(Id id);

} // namespace Names
