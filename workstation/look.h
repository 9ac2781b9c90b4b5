#pragma once

#include <QFont>
#include <QString>

/// How the program looks, from construction to destruction: light, dark or as the desktop has it, and how
/// large its texts are.
class Look {
public:
    enum class Theme { Desktop, Light, Dark };

    Look();
    ~Look();

    void SetTheme(Theme theme);
    /// Points; 0: as the desktop has it.
    void SetFontSize(int points);

private:
    QString m_style; ///< the desktop's
    QFont m_font;
    Theme m_theme = Theme::Desktop;
};
