#pragma once

#include <QString>

/// Text forms of a geographic position.
enum class CoordFormat { DecimalDegrees, DegreesMinutes, DegreesMinutesSeconds, Utm, Mgrs };

/// A geographic position (WGS 84), in degrees, east and north positive.
class Coord {
public:
    Coord() = default;
    Coord(double longitude, double latitude) : m_longitude(longitude), m_latitude(latitude) {}

    double GetLongitude() const { return m_longitude; }
    double GetLatitude() const { return m_latitude; }
    /// The position in a format; "---" for an invalid position, and for one outside the grid.
    QString GetString(CoordFormat format) const;

private:
    double m_longitude = 0;
    double m_latitude = 0;
};
