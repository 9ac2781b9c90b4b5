#include "host/gui/listsettings.h"

#include <QSettings>
#include <QStandardPaths>

namespace ListSettings {
namespace {

QString& directory() {
    static QString path;
    return path;
}

QSettings settings() {
    const QString dir = directory().isEmpty()
                            ? QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)
                            : directory();
    return {dir + QStringLiteral("/columns.ini"), QSettings::IniFormat};
}

} // namespace

void SetDirectory(const QString& path) {
    directory() = path;
}

QByteArray Load(const QString& name) {
    return settings().value(name).toByteArray();
}

void Save(const QString& name, const QByteArray& headerState) {
    settings().setValue(name, headerState);
}

} // namespace ListSettings
