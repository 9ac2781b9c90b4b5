#include "host/startup/settingsfile.h"

#include "host/base/problems.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <QSettings>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <optional>

namespace SettingsFile {
namespace {

constexpr char TraceSource[] = "cfgcenter";
constexpr qint64 MostBytes = 1024 * 1024;

QHash<QString, QString>& toldReasons() {
    static auto* const reasons = new QHash<QString, QString>;
    return *reasons;
}

/// Many settings are read from one file: what is wrong with it is told once.
void tell(TracePlace place, const QString& path, const QString& reason) {
    if (toldReasons().value(path) == reason)
        return;
    toldReasons()[path] = reason;
    Problems::Report(place, {path, 0, reason});
}

/// Moves a damaged file out of the way; false when it stays where it is.
bool keepDamaged(const QString& path, const QString& reason) {
    const QString kept = path + QStringLiteral(".bad");
    const bool moved = std::rename(QFile::encodeName(path), QFile::encodeName(kept)) == 0;
    tell(TraceSource, path,
         QStringLiteral("%1, defaults are used; %2")
             .arg(reason,
                  moved ? QStringLiteral("it is kept as ") + kept
                        : QStringLiteral("it cannot be moved to %1: %2").arg(kept, qt_error_string(errno))));
    if (moved)
        toldReasons().remove(path); // another one may come
    return moved;
}

/// The content of a file, empty when there is none or a damaged one has been moved away; nothing when what is
/// there cannot be used.
std::optional<QByteArray> bytesOf(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        return QByteArray();
    if (!info.isFile()) {
        tell(TraceSource, path, QStringLiteral("this is no ordinary file, defaults are used"));
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        tell(TraceSource, path,
             QStringLiteral("configuration cannot be read, defaults are used: ") + file.errorString());
        return std::nullopt;
    }
    QByteArray bytes = file.read(MostBytes + 1);
    if (bytes.size() <= MostBytes)
        return bytes;
    file.close();
    if (keepDamaged(path, QStringLiteral("configuration is larger than 1 MiB")))
        return QByteArray();
    return std::nullopt;
}

/// A file's content for QSettings to work on, where nobody else locks, changes or replaces it.
class Copy {
public:
    /// False when there is no place for it.
    bool Take(const QByteArray& bytes) {
        m_bytes = bytes;
        return m_file.open() && m_file.write(bytes) == bytes.size() && m_file.flush() &&
               m_file.size() == bytes.size();
    }
    /// Nothing when the content is malformed.
    std::optional<QVariantMap> Parse() const {
        if (m_bytes.contains("@Variant(")) // nothing here is stored as an object of unknown size
            return std::nullopt;
        const QSettings settings(m_file.fileName(), QSettings::IniFormat);
        QVariantMap all;
        for (const QString& key : settings.allKeys()) // only now all of it is looked at
            all.insert(key, settings.value(key));
        return settings.status() == QSettings::NoError ? std::optional(all) : std::nullopt;
    }
    /// The content with a setting changed.
    std::optional<QByteArray> With(const QString& key, const QVariant& value) const {
        QSettings settings(m_file.fileName(), QSettings::IniFormat);
        settings.setValue(key, value);
        settings.sync();
        QFile changed(m_file.fileName());
        if (settings.status() != QSettings::NoError || !changed.open(QIODevice::ReadOnly))
            return std::nullopt;
        return changed.readAll();
    }

private:
    QTemporaryFile m_file;
    QByteArray m_bytes;
};

/// What was parsed last: settings are asked for one by one.
struct Parsed {
    QByteArray bytes;
    QVariantMap settings;
};

Parsed& lastParsed() {
    static auto* const parsed = new Parsed;
    return *parsed;
}

/// What is set in memory alone, by file.
struct Memory {
    bool isOn = false;
    QHash<QString, QVariantMap> settings;
};

Memory& memory() {
    static auto* const kept = new Memory;
    return *kept;
}

const QString Malformed = QStringLiteral("configuration is malformed");
const QString NoPlace = QStringLiteral("there is no place for a temporary file");

/// All settings as the file has them.
QVariantMap readFile(const QString& path) {
    const std::optional<QByteArray> bytes = bytesOf(path);
    if (!bytes || bytes->isEmpty())
        return {};
    Parsed& last = lastParsed();
    if (last.bytes == *bytes)
        return last.settings;
    Copy copy;
    if (!copy.Take(*bytes)) {
        tell(TraceSource, path,
             QStringLiteral("configuration cannot be read, defaults are used: ") + NoPlace);
        return {};
    }
    const std::optional<QVariantMap> settings = copy.Parse();
    if (settings)
        last = {*bytes, *settings};
    else
        keepDamaged(path, Malformed);
    return settings.value_or(QVariantMap());
}

} // namespace

QVariantMap Read(const QString& path) {
    QVariantMap settings = readFile(path);
    if (memory().isOn)
        settings.insert(memory().settings.value(path));
    return settings;
}

void KeepInMemory(bool on) {
    memory() = {on, {}};
}

bool Write(const QString& path, const QString& key, const QVariant& value) {
    if (memory().isOn) {
        memory().settings[path].insert(key, value);
        return true;
    }
    const auto refuse = [&](const QString& reason) {
        tell(TraceSource, path, QStringLiteral("a setting cannot be written: ") + reason);
        return false;
    };
    const std::optional<QByteArray> before = bytesOf(path);
    if (!before)
        return refuse(QStringLiteral("what is there cannot be used"));
    Copy copy;
    Copy anew;
    if (!copy.Take(*before) || !anew.Take(QByteArray()))
        return refuse(NoPlace);
    const bool isSound = copy.Parse().has_value();
    if (!isSound && !keepDamaged(path, Malformed))
        return refuse(QStringLiteral("what is there cannot be used"));
    const std::optional<QByteArray> bytes = (isSound ? copy : anew).With(key, value);
    if (!bytes)
        return refuse(NoPlace);
    if (bytes == before)
        return true;
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit())
        return refuse(file.errorString());
    toldReasons().remove(path);
    return true;
}

} // namespace SettingsFile
