#include "host/startup/cfgcenter.h"

#include "host/base/trace.h"

#include <QSettings>
#include <QStandardPaths>

namespace {

QString& directory() {
    static QString path;
    return path;
}

class IniCfg : public ICfg {
public:
    explicit IniCfg(const QString& section, const QString& part = QString())
        : m_fileName(QStringLiteral("%1/%2.ini").arg(CfgCenter::GetDirectory(), section)), m_part(part) {}

    QString GetString(const QString& key, const QString& defaultValue) const override {
        return value(key, defaultValue).toString();
    }
    bool GetBool(const QString& key, bool defaultValue) const override {
        return value(key, defaultValue).toBool();
    }
    int GetInt(const QString& key, int defaultValue) const override {
        bool ok = false;
        const int number = value(key, defaultValue).toInt(&ok);
        return ok ? number : defaultValue;
    }
    void SetString(const QString& key, const QString& text) override { set(key, text); }
    void SetBool(const QString& key, bool on) override { set(key, on); }
    QString GetFilePath(const QString& area, const QString& fileName) const override {
        return value(QStringLiteral("%1/%2").arg(area, fileName), fileName).toString();
    }

private:
    QVariant value(const QString& key, const QVariant& defaultValue) const {
        const QSettings settings(m_fileName, QSettings::IniFormat);
        traceStatus(settings);
        const QVariant general = settings.value(key, defaultValue);
        return m_part.isEmpty() ? general : settings.value(m_part + QLatin1Char('/') + key, general);
    }
    void set(const QString& key, const QVariant& value) {
        QSettings settings(m_fileName, QSettings::IniFormat);
        settings.setValue(m_part.isEmpty() ? key : m_part + QLatin1Char('/') + key, value);
        settings.sync();
        traceStatus(settings);
    }
    void traceStatus(const QSettings& settings) const {
        if (settings.status() == QSettings::NoError)
            return;
        TraceLazily("cfgcenter", 58, [this, &settings] {
            return settings.status() == QSettings::FormatError
                       ? m_fileName + QStringLiteral(": configuration is malformed, defaults are used")
                       : m_fileName + QStringLiteral(": configuration cannot be accessed");
        });
    }

    QString m_fileName;
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
    static std::unique_ptr<ICfg> cfg;
    cfg = std::make_unique<IniCfg>(QStringLiteral("Application"));
    return *cfg;
}

ICfg& CfgCenter::GetAdminCfg(ICfg::View) {
    static std::unique_ptr<ICfg> cfg;
    cfg = std::make_unique<IniCfg>(QStringLiteral("Administration"));
    return *cfg;
}

ICfg* CfgCenter::CreateCfg(const QString& section, ICfg::View, const QString& part) {
    return new IniCfg(section, part);
}
