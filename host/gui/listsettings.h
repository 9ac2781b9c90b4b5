#pragma once

#include <QByteArray>
#include <QString>

/// Keeps how the operator arranged lists and windows, in an INI file of the application's configuration
/// directory. A setting that cannot be read counts as missing; a failure to write is told.
namespace ListSettings {

/// Sets the directory; the standard configuration directory of the application is used until then.
void SetDirectory(const QString& directory);

/// A text under a name; empty when there is none.
QString LoadText(const QString& name);
void SaveText(const QString& name, const QString& text);

/// A state of a Qt widget. Qt does not check such a state, and a damaged one can cost much time and memory.
/// So it is kept with a check sum, and counts as missing when that is wrong.
QByteArray Load(const QString& name);
void Save(const QString& name, const QByteArray& state);

} // namespace ListSettings
