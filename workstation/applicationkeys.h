#pragma once

#include <QString>

/// Settings in which the workstation remembers what was open last, and where files were.
namespace SettingKeys {

inline const QString TargetsFile = QStringLiteral("Window/TargetsFile");
inline const QString JobFile = QStringLiteral("Window/JobFile");
inline const QString Folder = QStringLiteral("Window/Folder");

} // namespace SettingKeys
