#include "host/gui/colorset.h"

#include <QGuiApplication>
#include <QPalette>

#include <iterator>

namespace {

// In the order of IColorBase::ECOLOR.
constexpr ColorDefinition Colors[] = {
    {0xb3261e, 0xff8a80}, // error text
    {0x8a5000, 0xffb74d}, // warning text
    {0x1b6e3a, 0x7ddc9a}, // good text
    {0x666b70, 0xa0a6ac}, // muted text
    {0xf7f8fa, 0x1b1e22}, // bar background
    {0xd5d9de, 0x363b42}, // bar grid
    {0x40464d, 0xc3c9d0}, // bar text
    {0xc2185b, 0xff6fa3}, // bar tuned
    {0x1f5fbf, 0x6ea8ff}, // mark target
    {0x7a3db8, 0xc79bff}, // mark memory
    {0xa35200, 0xffab5c}, // mark NOI
    {0x00707a, 0x4fd3dc}, // mark result
    {0x55606b, 0xaeb9c4}, // mark detection
};
static_assert(std::size(Colors) == IColorBase::COLOR_COUNT);

} // namespace

QColor ColorDefinition::GetColor() const {
    return GetColor(ColorSet::IsDark());
}

const ColorSet& ColorSet::Instance() {
    static const ColorSet instance;
    return instance;
}

const ColorDefinition& ColorSet::GetColorDefinition(IColorBase::ECOLOR color) const {
    const bool known = color >= 0 && color < IColorBase::COLOR_COUNT;
    return Colors[known ? color : IColorBase::MUTED_TEXT];
}

bool ColorSet::IsDark() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}
