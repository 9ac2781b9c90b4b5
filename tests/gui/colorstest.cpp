#include "host/gui/colorset.h"
#include "host/gui/guicentral.h"
#include "host/gui/quiettext.h"

#include <QGuiApplication>
#include <QPalette>

#include <cmath>
#include <gtest/gtest.h>
#include <set>

namespace {

/// Relative luminance of sRGB, 0 (black) to 1 (white).
double luminance(const QColor& color) {
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a);
    const double y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

TEST(Colors, StandOutFromTheirBackgroundInLightAndDark) {
    constexpr double Legible = 4.5;
    const auto color = [](IColorBase::ECOLOR name, bool dark) {
        return ColorSet::Instance().GetColorDefinition(name).GetColor(dark);
    };
    for (const bool dark : {false, true}) {
        const QColor window = dark ? QColor(0x2b, 0x2b, 0x2b) : QColor(0xef, 0xef, 0xef);
        for (const auto name : {IColorBase::ERROR_TEXT, IColorBase::WARNING_TEXT, IColorBase::GOOD_TEXT,
                                IColorBase::MUTED_TEXT})
            EXPECT_GE(contrast(color(name, dark), window), Legible) << name << (dark ? " dark" : " light");
        std::set<QRgb> marks;
        for (int mark = IColorBase::BAR_TEXT; mark < IColorBase::COLOR_COUNT; ++mark) {
            const QColor shown = color(static_cast<IColorBase::ECOLOR>(mark), dark);
            EXPECT_GE(contrast(shown, color(IColorBase::BAR_BACKGROUND, dark)), Legible) << mark;
            EXPECT_TRUE(marks.insert(shown.rgb()).second) << "two marks of one colour: " << mark;
        }
    }
}

TEST(Colors, FollowThePalette) {
    const QPalette before = QGuiApplication::palette();
    const ColorDefinition& text = ColorSet::Instance().GetColorDefinition(IColorBase::BAR_TEXT);
    for (const bool dark : {false, true}) {
        QPalette palette;
        palette.setColor(QPalette::Base, dark ? Qt::black : Qt::white);
        palette.setColor(QPalette::Text, dark ? Qt::white : Qt::black);
        QGuiApplication::setPalette(palette);
        EXPECT_EQ(text.GetColor(), text.GetColor(dark));
    }
    QGuiApplication::setPalette(before);
}

TEST(PositionFormat, OffersEveryFormatUnderItsNumber) {
    ValueSelection* format = GuiCentral::Instance().GetPositionFormat();
    const Coord place(11.5, 48.25);
    std::set<QString> texts;
    for (const auto wanted : {CoordFormat::DecimalDegrees, CoordFormat::DegreesMinutes,
                              CoordFormat::DegreesMinutesSeconds, CoordFormat::Utm, CoordFormat::Mgrs}) {
        EXPECT_TRUE(format->Select(static_cast<long>(wanted)));
        EXPECT_EQ(GuiCentral::Instance().CurrentPositionFormat(), wanted);
        EXPECT_EQ(format->GetCurrentIndex(), static_cast<long>(wanted));
        texts.insert(place.GetString(GuiCentral::Instance().CurrentPositionFormat()));
    }
    EXPECT_EQ(texts.size(), 5U);
    EXPECT_EQ(format->GetItemCount(), 5);
    format->Select(0L);
}

TEST(QuietTexts, AreReadWhateverTheThemeLeavesForPlaceholders) {
    QPalette palette;
    palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    for (const auto& [text, base] : {std::pair(Qt::white, Qt::black), std::pair(Qt::black, Qt::white)}) {
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Base, base);
        const QColor quiet = QuietText(palette);
        const double opacity = quiet.alphaF();
        const double shown =
            opacity * quiet.lightnessF() + (1 - opacity) * palette.color(QPalette::Base).lightnessF();
        EXPECT_GT(std::abs(shown - palette.color(QPalette::Base).lightnessF()), 0.5);
        EXPECT_GT(std::abs(shown - palette.color(QPalette::Text).lightnessF()), 0.3) << "quieter than texts";
    }
}

} // namespace
