#include "workstation/language.h"

#include "host/base/problems.h"
#include "host/startup/cfgcenter.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>

namespace {

constexpr char Folder[] = ":/translations";
constexpr char Prefix[] = "freqstore_";

QString codeOfSettings() {
    QString code = CfgCenter::GetAppCfg(ICfg::StartUp).GetString(Language::SettingName(), QString());
    if (code.isEmpty() || Language::Known().contains(code))
        return code;
    Problems::Report("language",
                     {QDir(CfgCenter::GetDirectory()).filePath(QStringLiteral("Application.ini")), 0,
                      QStringLiteral("Language is one of %1, not \"%2\"; the desktop's is taken")
                          .arg(Language::Known().join(QStringLiteral(", ")), code)});
    return QString();
}

} // namespace

QStringList Language::Known() {
    QStringList codes;
    for (const QString& file : QDir(Folder).entryList({QLatin1String(Prefix) + QStringLiteral("*.qm")}))
        codes << file.section(QLatin1Char('_'), 1).section(QLatin1Char('.'), 0, 0);
    return codes;
}

QString Language::SettingName() {
    return QStringLiteral("Language");
}

QString Language::FirstKnown(const QStringList& languages) {
    const QStringList known = Known();
    for (const QString& language : languages) {
        const QString code = language.section(QLatin1Char('-'), 0, 0);
        if (known.contains(code))
            return code;
    }
    return QStringLiteral("en");
}

Language::Language(const QString& code) : m_code(code.isEmpty() ? codeOfSettings() : code) {
    const QLocale desktop = QLocale::system();
    if (m_code.isEmpty())
        m_code = FirstKnown(desktop.uiLanguages());
    if (QLocale(m_code).language() != desktop.language())
        QLocale::setDefault(QLocale(m_code));
    // Qt's own texts may not be installed; its buttons are English then.
    if (m_qt.load(QStringLiteral("qtbase_") + m_code, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_qt);
    if (m_own.load(QLatin1String(Prefix) + m_code, QLatin1String(Folder)))
        QCoreApplication::installTranslator(&m_own);
}

Language::~Language() {
    QLocale::setDefault(QLocale::system());
}
