#include "host/startup/cfgcenter.h"

#include "host/base/numbers.h"
#include "host/startup/settingsfile.h"

#include <QStandardPaths>

namespace {

QString& directory() {
    static QString path;
    return path;
}

class IniCfg : public ICfg {
public:
    explicit IniCfg(const QString& section, const QString& part = QString())
        : m_section(section), m_part(part) {}

    QString GetString(const QString& key, const QString& defaultValue) const override {
        const QVariant setting = find(key);
        if (!setting.isValid())
            return defaultValue;
        // The file format takes a text with commas for a list.
        return setting.toStringList().join(QStringLiteral(", "));
    }
    bool GetBool(const QString& key, bool defaultValue) const override {
        const QString text = GetString(key, QString()).toLower();
        if (QStringList{"true", "yes", "on", "1"}.contains(text))
            return true;
        return defaultValue && !QStringList{"false", "no", "off", "0"}.contains(text);
    }
    int GetInt(const QString& key, int defaultValue) const override {
        int number = 0;
        return Quor::ParseInt(GetString(key, QString()), number) ? number : defaultValue;
    }
    void SetString(const QString& key, const QString& text) override {
        (void)SettingsFile::Write(fileName(), partKey(key), text); // which tells its failures
    }
    void SetBool(const QString& key, bool on) override {
        SetString(key, on ? QStringLiteral("true") : QStringLiteral("false"));
    }
    QString GetFilePath(const QString& area, const QString& name) const override {
        return GetString(QStringLiteral("%1/%2").arg(area, name), name);
    }

private:
    /// Looked up with each use: the directory may be set after a configuration was handed out.
    QString fileName() const { return QStringLiteral("%1/%2.ini").arg(CfgCenter::GetDirectory(), m_section); }
    QString partKey(const QString& key) const {
        return m_part.isEmpty() ? key : m_part + QLatin1Char('/') + key;
    }
    QVariant find(const QString& key) const {
        const QVariantMap settings = SettingsFile::Read(fileName());
        return settings.value(partKey(key), settings.value(key));
    }

    QString m_section;
    QString m_part;
};

} // namespace

void CfgCenter::SetDirectory(const QString& path) {
    directory() = path;
}

QString CfgCenter::GetDirectory() {
    return directory().isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)
                                 : directory();
}

ICfg& CfgCenter::GetAppCfg(ICfg::View) {
    static auto* const cfg = new IniCfg(QStringLiteral("Application"));
    return *cfg;
}

ICfg& CfgCenter::GetAdminCfg(ICfg::View) {
    static auto* const cfg = new IniCfg(QStringLiteral("Administration"));
    return *cfg;
}

ICfg* CfgCenter::CreateCfg(const QString& section, ICfg::View, const QString& part) {
    return new IniCfg(section, part);
}
