#include "workstation/icons.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>

#include <gtest/gtest.h>

namespace {

/// Restores the application's palette at the end of a test.
class IconsTest : public testing::Test {
protected:
    ~IconsTest() override { QGuiApplication::setPalette(m_before); }

    static void SetText(QPalette::ColorGroup group, const QColor& color) {
        QPalette palette = QGuiApplication::palette();
        palette.setColor(group, QPalette::WindowText, color);
        QGuiApplication::setPalette(palette);
    }

    static QStringList Names() {
        QStringList names;
        for (const QFileInfo& file : QDir(QStringLiteral(":/icons")).entryInfoList())
            names << file.completeBaseName();
        return names;
    }

    static QImage Draw(const QIcon& icon, int size, QIcon::Mode mode = QIcon::Normal) {
        return icon.pixmap(QSize(size, size), 1.0, mode).toImage().convertToFormat(QImage::Format_ARGB32);
    }

    /// Pixels that are mostly covered, and of these how many are of the colour.
    static std::pair<int, int> Count(const QImage& image, const QColor& color) {
        std::pair<int, int> counts{};
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.alpha() < 128)
                    continue;
                ++counts.first;
                counts.second += std::abs(pixel.red() - color.red()) <= 2 &&
                                 std::abs(pixel.green() - color.green()) <= 2 &&
                                 std::abs(pixel.blue() - color.blue()) <= 2;
            }
        }
        return counts;
    }

private:
    QPalette m_before = QGuiApplication::palette();
};

TEST_F(IconsTest, EveryIconIsLineArtInTheTextColor) {
    SetText(QPalette::Active, QColor(10, 200, 30));
    ASSERT_GE(Names().size(), 30);
    for (const QString& name : Names()) {
        for (const int size : {16, 24, 32}) {
            const auto [covered, colored] = Count(Draw(Icons::Get(name), size), QColor(10, 200, 30));
            EXPECT_GE(covered, size / 2) << qPrintable(name) << " at " << size;
            EXPECT_LT(covered, size * size * 9 / 10) << qPrintable(name) << " at " << size;
            const bool own = name == QLatin1String("freqstore"); // the program's own has its colours
            EXPECT_TRUE(own || colored == covered) << qPrintable(name) << " at " << size;
        }
    }
}

TEST_F(IconsTest, AnIconFollowsThePaletteAndItsMode) {
    SetText(QPalette::Active, Qt::black);
    const QIcon icon = Icons::Get(QStringLiteral("open"));
    EXPECT_GT(Count(Draw(icon, 16), Qt::black).second, 16);
    SetText(QPalette::Active, Qt::white);
    SetText(QPalette::Disabled, Qt::red);
    EXPECT_GT(Count(Draw(icon, 16), Qt::white).second, 16);
    EXPECT_GT(Count(Draw(icon, 16, QIcon::Disabled), Qt::red).second, 16);
}

TEST_F(IconsTest, AnUnknownNameHasNoIcon) {
    EXPECT_TRUE(Icons::Get(QStringLiteral("no-such-icon")).isNull());
    EXPECT_FALSE(Icons::Get(QStringLiteral("freqstore")).isNull());
}

} // namespace
