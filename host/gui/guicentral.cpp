#include "host/gui/guicentral.h"

#include <QCoreApplication>

namespace {

struct FormatName {
    CoordFormat format;
    const char* name;
};

constexpr FormatName FormatNames[] = {
    {CoordFormat::DecimalDegrees, QT_TRANSLATE_NOOP("GuiCentral", "Decimal degrees")},
    {CoordFormat::DegreesMinutes, QT_TRANSLATE_NOOP("GuiCentral", "Degrees, minutes")},
    {CoordFormat::DegreesMinutesSeconds, QT_TRANSLATE_NOOP("GuiCentral", "Degrees, minutes, seconds")},
    {CoordFormat::Utm, QT_TRANSLATE_NOOP("GuiCentral", "UTM")},
    {CoordFormat::Mgrs, QT_TRANSLATE_NOOP("GuiCentral", "MGRS")},
};

} // namespace

GuiCentral& GuiCentral::Instance() {
    static auto* const instance = new GuiCentral;
    return *instance;
}

GuiCentral::GuiCentral() {
    m_positionFormat.SetName(QStringLiteral("PositionFormat"));
    for (const FormatName& entry : FormatNames) {
        const auto number = static_cast<int>(entry.format);
        m_positionFormat.AddItem(QCoreApplication::translate("GuiCentral", entry.name), number, number);
    }
}
