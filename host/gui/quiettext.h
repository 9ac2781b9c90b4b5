#pragma once

#include <QPalette>

/// The colour of notes beside what counts: half of that of texts. The palette's own for placeholders is that
/// of a light desktop in some dark ones.
inline QColor QuietText(const QPalette& palette) {
    constexpr float Opacity = 0.55F;
    QColor color = palette.color(QPalette::Text);
    color.setAlphaF(Opacity);
    return color;
}
