#pragma once

#include <QByteArray>
#include <QString>

/// Where lists and windows remember how the operator arranged them: an INI file of the application's
/// configuration directory. What cannot be read counts as not there; what cannot be written is told.
namespace ListSettings {

/// Sets the directory; the standard configuration directory of the application is used until then.
void SetDirectory(const QString& directory);

/// A text under a name; empty when there is none.
QString LoadText(const QString& name);
void SaveText(const QString& name, const QString& text);

/// A state of Qt's own, which Qt takes as it comes and which may cost any time and memory when it is damaged:
/// it is kept with a check sum, and without the right one it counts as not there.
QByteArray Load(const QString& name);
void Save(const QString& name, const QByteArray& state);

} // namespace ListSettings
