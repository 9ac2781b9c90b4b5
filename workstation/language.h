#pragma once

#include <QStringList>
#include <QTranslator>

/// The language of the window's texts, ours and Qt's own, from construction to destruction. The texts of the
/// sources are English, and what has no translation stays so. Counts are grouped as the language does it;
/// what files and cells hold does not depend on it.
class Language {
public:
    /// The codes of all languages: "de", "en".
    static QStringList Known();
    /// The key of the application's setting: a code, or empty for the language of the desktop.
    static QString SettingName();
    /// The first of the desktop's languages ("de-AT", "C") that is known; English when none is.
    static QString FirstKnown(const QStringList& languages);

    /// An empty code asks for the language of the settings; one there that is not known is told, and the
    /// desktop's is taken.
    explicit Language(const QString& code);
    ~Language();

    const QString& GetCode() const { return m_code; }

private:
    QString m_code;
    QTranslator m_qt;
    QTranslator m_own;
};
