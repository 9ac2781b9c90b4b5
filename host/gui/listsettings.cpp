#include "host/gui/listsettings.h"

#include "host/startup/settingsfile.h"

#include <QCryptographicHash>
#include <QStandardPaths>

namespace ListSettings {
namespace {

QString& directory() {
    static QString path;
    return path;
}

QString fileName() {
    const QString dir = directory().isEmpty()
                            ? QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)
                            : directory();
    return dir + QStringLiteral("/columns.ini");
}

QByteArray sumOf(const QByteArray& state) {
    return QCryptographicHash::hash(state, QCryptographicHash::Sha1).toHex();
}

} // namespace

void SetDirectory(const QString& path) {
    directory() = path;
}

QString LoadText(const QString& name) {
    return SettingsFile::Read(fileName()).value(name).toString();
}

void SaveText(const QString& name, const QString& text) {
    (void)SettingsFile::Write(fileName(), name, text); // which tells its failures
}

QByteArray Load(const QString& name) {
    const QByteArray text = LoadText(name).toLatin1();
    const qsizetype colon = text.indexOf(':');
    const auto state =
        QByteArray::fromBase64Encoding(text.mid(colon + 1), QByteArray::AbortOnBase64DecodingErrors);
    return colon > 0 && state && text.left(colon) == sumOf(*state) ? *state : QByteArray();
}

void Save(const QString& name, const QByteArray& state) {
    SaveText(name, QString::fromLatin1(sumOf(state) + ':' + state.toBase64()));
}

} // namespace ListSettings
