#pragma once

#include <QByteArray>
#include <QString>

/// Where lists remember how the operator arranged their columns: an INI file of the application's
/// configuration directory.
namespace ListSettings {

/// Sets the directory; the standard configuration directory of the application is used until then.
void SetDirectory(const QString& directory);

QByteArray Load(const QString& name);
void Save(const QString& name, const QByteArray& headerState);

} // namespace ListSettings
