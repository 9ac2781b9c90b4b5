#pragma once

#include <QVariantMap>

/// One INI file of settings. Only an ordinary, well-formed file of at most a megabyte is read; anything else
/// in its place is told once and never opened, and a damaged file is moved to its name with ".bad" behind it,
/// in place of the one kept there before. A file is written whole or not at all.
namespace SettingsFile {

/// All settings by "section/key", or by "key" alone above all sections; none when there is no such file.
QVariantMap Read(const QString& path);
/// From now on what is set is kept in memory alone, over what the files say: they are another process's.
/// False forgets it, and writes again.
void KeepInMemory(bool on);
/// Sets one, in a file and a folder that are made when they are missing. False, told, when that cannot be.
[[nodiscard]] bool Write(const QString& path, const QString& key, const QVariant& value);

} // namespace SettingsFile
