#include "host/base/coord.h"

#include "host/base/numbers.h"

#include <GeographicLib/MGRS.hpp>
#include <GeographicLib/UTMUPS.hpp>
#include <charconv>
#include <cmath>

namespace {

/// MGRS digits per axis for one metre.
constexpr int MgrsPrecision = 5;

void appendNumber(QString& text, qint64 number, int digits) {
    char buffer[24];
    const auto length = std::to_chars(buffer, std::end(buffer), number).ptr - buffer;
    for (auto digit = length; digit < digits; ++digit)
        text += QLatin1Char('0');
    text += QLatin1String(buffer, length);
}

void appendDegrees(QString& text, double value, const char* hemispheres, CoordFormat format) {
    constexpr QChar Degree(0xb0);
    const double magnitude = std::abs(value);
    // Rounded once, in the smallest unit shown, so that no 60 appears.
    if (format == CoordFormat::DegreesMinutes) {
        const auto thousandths = static_cast<qint64>(std::llround(magnitude * 60 * 1000));
        appendNumber(text, thousandths / 60000, 1);
        text += Degree;
        appendNumber(text, thousandths / 1000 % 60, 2);
        text += QLatin1Char('.');
        appendNumber(text, thousandths % 1000, 3);
        text += QLatin1Char('\'');
    } else if (format == CoordFormat::DegreesMinutesSeconds) {
        const auto tenths = static_cast<qint64>(std::llround(magnitude * 3600 * 10));
        appendNumber(text, tenths / 36000, 1);
        text += Degree;
        appendNumber(text, tenths / 600 % 60, 2);
        text += QLatin1Char('\'');
        appendNumber(text, tenths / 10 % 60, 2);
        text += QLatin1Char('.');
        appendNumber(text, tenths % 10, 1);
        text += QLatin1Char('"');
    } else {
        Quor::AppendFixed(text, magnitude, 5);
        text += Degree;
    }
    text += QLatin1Char(hemispheres[value < 0 ? 1 : 0]);
}

QString grid(double longitude, double latitude, CoordFormat format) {
    int zone = 0;
    bool north = true;
    double easting = 0;
    double northing = 0;
    GeographicLib::UTMUPS::Forward(latitude, longitude, zone, north, easting, northing);
    if (format == CoordFormat::Mgrs) {
        std::string text;
        GeographicLib::MGRS::Forward(zone, north, easting, northing, latitude, MgrsPrecision, text);
        return QString::fromStdString(text);
    }
    return QStringLiteral("%1 %2 %3")
        .arg(QString::fromStdString(GeographicLib::UTMUPS::EncodeZone(zone, north)).toUpper(),
             QString::number(easting, 'f', 0), QString::number(northing, 'f', 0));
}

} // namespace

QString Coord::GetString(CoordFormat format) const {
    const QString none = QStringLiteral("---");
    if (!(std::abs(m_latitude) <= 90) || !(std::abs(m_longitude) <= 180))
        return none;
    if (format != CoordFormat::Utm && format != CoordFormat::Mgrs) {
        QString text;
        text.reserve(28);
        appendDegrees(text, m_latitude, "NS", format);
        text += QLatin1Char(' ');
        appendDegrees(text, m_longitude, "EW", format);
        return text;
    }
    try {
        return grid(m_longitude, m_latitude, format);
    } catch (const GeographicLib::GeographicErr&) {
        return none;
    }
}
