#include "host/base/coord.h"

#include "host/base/numbers.h"

#include <GeographicLib/MGRS.hpp>
#include <GeographicLib/UTMUPS.hpp>
#include <cmath>

namespace {

/// MGRS digits per axis for one metre.
constexpr int MgrsPrecision = 5;

QString degrees(double value, const char* hemispheres, CoordFormat format) {
    const QLatin1Char hemisphere(hemispheres[value < 0 ? 1 : 0]);
    const double magnitude = std::abs(value);
    if (format == CoordFormat::DecimalDegrees) {
        QString text;
        text.reserve(12);
        Quor::AppendFixed(text, magnitude, 5);
        text += QChar(0xb0);
        return text += hemisphere;
    }
    // Rounded once, in the smallest unit shown, so that no 60 appears.
    if (format == CoordFormat::DegreesMinutes) {
        const auto thousandths = static_cast<qint64>(std::llround(magnitude * 60 * 1000));
        return QStringLiteral("%1%2%3'%4")
            .arg(thousandths / 60000)
            .arg(QChar(0xb0))
            .arg(static_cast<double>(thousandths % 60000) / 1000.0, 6, 'f', 3, QLatin1Char('0'))
            .arg(hemisphere);
    }
    const auto tenths = static_cast<qint64>(std::llround(magnitude * 3600 * 10));
    return QStringLiteral("%1%2%3'%4\"%5")
        .arg(tenths / 36000)
        .arg(QChar(0xb0))
        .arg(tenths / 600 % 60, 2, 10, QLatin1Char('0'))
        .arg(static_cast<double>(tenths % 600) / 10.0, 4, 'f', 1, QLatin1Char('0'))
        .arg(hemisphere);
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
    if (format != CoordFormat::Utm && format != CoordFormat::Mgrs)
        return degrees(m_latitude, "NS", format) + QLatin1Char(' ') + degrees(m_longitude, "EW", format);
    try {
        return grid(m_longitude, m_latitude, format);
    } catch (const GeographicLib::GeographicErr&) {
        return none;
    }
}
