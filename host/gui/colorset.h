#pragma once

#include <QColor>

/// Names of the themed colours.
class IColorBase {
public:
    enum ECOLOR {
        ERROR_TEXT,   ///< what is wrong
        WARNING_TEXT, ///< what deserves a look
        GOOD_TEXT,    ///< what is in order, such as a locked signal
        MUTED_TEXT,   ///< what is there but does not apply
        BAR_BACKGROUND,
        BAR_GRID,
        BAR_TEXT,
        BAR_TUNED, ///< the receiver's frequency on the bar
        MARK_TARGET,
        MARK_MEMORY,
        MARK_NOI,
        MARK_RESULT,
        MARK_DETECTION,
        COLOR_COUNT
    };
};

/// One colour in its light and its dark form.
class ColorDefinition {
public:
    constexpr ColorDefinition(QRgb light, QRgb dark) : m_light(light), m_dark(dark) {}

    /// The form that goes with the present palette of the application; ask again when the palette changes.
    QColor GetColor() const;
    QColor GetColor(bool dark) const { return QColor::fromRgb(dark ? m_dark : m_light); }

private:
    QRgb m_light;
    QRgb m_dark;
};

/// The colours of the GUI by name. Texts and marks stand out from their background in both forms, and the
/// marks of the lists can be told apart without red and green.
class ColorSet {
public:
    static const ColorSet& Instance();

    /// A number outside the named colours gives the muted text colour.
    const ColorDefinition& GetColorDefinition(IColorBase::ECOLOR color) const;
    /// Whether the application's palette is a dark one.
    static bool IsDark();

private:
    ColorSet() = default;
};
