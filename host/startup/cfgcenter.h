#pragma once

#include <QString>

#include <memory>

/// One configuration: settings by key. What is written is in the file at once, and the file is replaced
/// whole.
class ICfg {
public:
    /// The user of the settings: the application at its end or its start, the administrator, or a plug-in.
    enum View : int { Shutdown = 0, StartUp = 1, Administration = 2, PlugIn = 4 };

    virtual ~ICfg() = default;
    /// The setting, or the default when there is none or the file cannot be read (which is told).
    virtual QString GetString(const QString& key, const QString& defaultValue) const = 0;
    /// "true", "yes", "on" and "1" are true; "false", "no", "off" and "0" are false; any other text is none.
    virtual bool GetBool(const QString& key, bool defaultValue) const = 0;
    virtual int GetInt(const QString& key, int defaultValue) const = 0;
    virtual void SetString(const QString& key, const QString& value) = 0;
    virtual void SetBool(const QString& key, bool value) = 0;
    /// The path of a file in an area of the application ("LocalTargetList", "Targets.xml"): the one that is
    /// configured, else the bare name, which lies in the data directory.
    virtual QString GetFilePath(const QString& area, const QString& fileName) const = 0;
};

/// The configuration service: INI files in one directory.
///
/// \code
/// const QString section = QStringLiteral("Bookmarks");
/// const std::unique_ptr<ICfg> settings(CfgCenter::CreateCfg(section, ICfg::PlugIn, QString()));
/// settings->SetBool(QStringLiteral("AskBeforeDelete"), true);
/// const bool asks = settings->GetBool(QStringLiteral("AskBeforeDelete"), false); // true
/// \endcode
class CfgCenter {
public:
    /// Sets the directory of the files; it is the XDG configuration directory of the application until then.
    static void SetDirectory(const QString& directory);
    static QString GetDirectory();

    /// The application's settings, and the administrator's; owned by the service.
    static ICfg& GetAppCfg(ICfg::View view);
    static ICfg& GetAdminCfg(ICfg::View view);
    /// The settings of a section of their own ("FrequencyStore"), owned by the caller; `part` names a group
    /// of them, empty for the section's general ones. A group falls back on the general settings.
    [[nodiscard]] static ICfg* CreateCfg(const QString& section, ICfg::View view, const QString& part);
};
