#include "workstation/look.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

namespace {

struct Shade {
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};
constexpr Shade Shades[] = {
    {QPalette::Window, 0xefefef, 0x2a2d31},
    {QPalette::WindowText, 0x1b1d1f, 0xe6e8ea},
    {QPalette::Base, 0xffffff, 0x1d1f22},
    {QPalette::AlternateBase, 0xf5f6f7, 0x24272b},
    {QPalette::Text, 0x1b1d1f, 0xe6e8ea},
    {QPalette::Button, 0xe6e7e9, 0x373b40},
    {QPalette::ButtonText, 0x1b1d1f, 0xe6e8ea},
    {QPalette::BrightText, 0xffffff, 0xffffff},
    {QPalette::Highlight, 0x2a6fc9, 0x3d7fd6},
    {QPalette::HighlightedText, 0xffffff, 0xffffff},
    {QPalette::ToolTipBase, 0xffffe6, 0x3c4147},
    {QPalette::ToolTipText, 0x1b1d1f, 0xe6e8ea},
    {QPalette::PlaceholderText, 0x74797e, 0x9aa0a6},
    {QPalette::Link, 0x1f5fbf, 0x7fb2ff},
    {QPalette::LinkVisited, 0x6a3fa0, 0xc3a2ff},
    {QPalette::Light, 0xffffff, 0x4a4f55},
    {QPalette::Midlight, 0xf2f3f4, 0x41464b},
    {QPalette::Mid, 0xb9bcc0, 0x1f2225},
    {QPalette::Dark, 0x9b9fa4, 0x17191b},
    {QPalette::Shadow, 0x6c7075, 0x0d0e0f},
};
/// What cannot be used has its texts so.
constexpr QPalette::ColorRole Texts[] = {QPalette::WindowText, QPalette::Text, QPalette::ButtonText};
constexpr Shade Disabled{QPalette::Text, 0x8b9095, 0x7b8188};

QPalette paletteOf(bool dark) {
    QPalette palette;
    for (const Shade& shade : Shades)
        palette.setColor(shade.role, QColor::fromRgb(dark ? shade.dark : shade.light));
    for (const QPalette::ColorRole role : Texts)
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(dark ? Disabled.dark : Disabled.light));
    return palette;
}

/// Fusion draws the edges of boxes darker than what they stand on, which is hardly seen on dark grounds.
class DarkStyle : public QProxyStyle {
public:
    DarkStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (!option || (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton))
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        QStyleOptionButton lighter;
        lighter.QStyleOption::operator=(*option);
        // The edge is this divided by 1.4, and its fill is another role.
        lighter.palette.setColor(QPalette::Window, option->palette.color(QPalette::WindowText));
        QProxyStyle::drawPrimitive(element, &lighter, painter, widget);
    }
};

} // namespace

Look::Look() : m_style(QApplication::style()->name()), m_font(QApplication::font()) {}

Look::~Look() {
    SetTheme(Theme::Desktop);
    SetFontSize(0);
}

void Look::SetTheme(Theme theme) {
    if (std::exchange(m_theme, theme) == theme)
        return;
    // Styles of desktops may paint in colours of their own; Fusion takes those of the palette.
    if (theme == Theme::Dark)
        QApplication::setStyle(new DarkStyle); // the application's from now on
    else
        QApplication::setStyle(theme == Theme::Desktop ? m_style : QStringLiteral("Fusion"));
    QApplication::setPalette(theme == Theme::Desktop ? QPalette() : paletteOf(theme == Theme::Dark));
}

void Look::SetFontSize(int points) {
    QFont font(m_font);
    if (points > 0)
        font.setPointSize(points);
    if (font != QApplication::font())
        QApplication::setFont(font);
}
