#include "host/base/coord.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

struct Position {
    const char* name;
    double longitude;
    double latitude;
    CoordFormat format;
    QString text;
};

class CoordText : public testing::TestWithParam<Position> {};

TEST_P(CoordText, IsThatOfTheFormat) {
    const Position& row = GetParam();
    EXPECT_EQ(Coord(row.longitude, row.latitude).GetString(row.format), row.text);
}

// The grid coordinates were computed apart from the library, from the series of the transverse Mercator and
// the closed form of the polar stereographic projection.
INSTANTIATE_TEST_SUITE_P(
    Formats, CoordText,
    testing::Values(
        Position{"Decimal", 13.37771, 52.51628, CoordFormat::DecimalDegrees, "52.51628°N 13.37771°E"},
        Position{"DecimalSouthWest", -43.5, -22.25, CoordFormat::DecimalDegrees, "22.25000°S 43.50000°W"},
        Position{"Minutes", 13.37771, 52.51628, CoordFormat::DegreesMinutes, "52°30.977'N 13°22.663'E"},
        Position{"Seconds", 13.37771, 52.51628, CoordFormat::DegreesMinutesSeconds,
                 "52°30'58.6\"N 13°22'39.8\"E"},
        Position{"NoSixtyMinutes", 0, 9.9999999, CoordFormat::DegreesMinutes, "10°00.000'N 0°00.000'E"},
        Position{"NoSixtySeconds", -9.9999999, 0, CoordFormat::DegreesMinutesSeconds,
                 "0°00'00.0\"N 10°00'00.0\"W"},
        Position{"Utm", 13.37771, 52.51628, CoordFormat::Utm, "33N 389918 5819700"},
        Position{"UtmOnItsMeridian", 3, 0, CoordFormat::Utm, "31N 500000 0"},
        Position{"UtmSouth", -43.21, -22.95, CoordFormat::Utm, "23S 683530 7460897"},
        Position{"Mgrs", 13.37771, 52.51628, CoordFormat::Mgrs, "33UUU8991819699"},
        Position{"MgrsNearThePole", 0, 89, CoordFormat::Mgrs, "ZAF0000088973"},
        Position{"CornerOfTheWorld", 180, -90, CoordFormat::DecimalDegrees, "90.00000°S 180.00000°E"}),
    [](const auto& row) { return row.param.name; });

TEST(CoordOutside, HasNoTextInAnyFormat) {
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto format : {CoordFormat::DecimalDegrees, CoordFormat::DegreesMinutes,
                              CoordFormat::DegreesMinutesSeconds, CoordFormat::Utm, CoordFormat::Mgrs}) {
        for (const auto& coord :
             {Coord(0, 90.001), Coord(0, -91), Coord(180.5, 0), Coord(-181, 0), Coord(Nan, 0), Coord(0, Nan)})
            EXPECT_EQ(coord.GetString(format), QStringLiteral("---"));
    }
}

TEST(CoordOrigin, IsTheDefault) {
    EXPECT_EQ(Coord().GetString(CoordFormat::DecimalDegrees), QString("0.00000°N 0.00000°E"));
}

} // namespace
