#include "lines/line_list.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "lines/chart_lines.h"
#include "lines/lines_fixture.h"

namespace orvantis {
namespace {

class LineList : public LinesOnASurface {
  protected:
    void SetUp() override {
        LinesOnASurface::SetUp();
        ShowTypes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
        Place(1, 40, 18);
        Place(3, 100, 23);
        Place(7, 250, -20);
        Chart().RA[23] = 10;
        Chart().Dec[23] = 4;
        chartNow.PlaceLat = 48;
        chartNow.PlaceLongW = -16;
        options.paranPoint = 1;
        options.paranLimit = 90;
    }
};

std::vector<std::int16_t> TypesOf(const std::vector<MapLine>& lines) {
    std::vector<std::int16_t> types;
    types.reserve(lines.size());
    for (const MapLine& line : lines) types.push_back(line.type);
    return types;
}

std::vector<MapLine> OfType(std::int16_t type) {
    std::vector<MapLine> found;
    for (const MapLine& line : ListLines(1)) {
        if (line.type == type) found.push_back(line);
    }
    return found;
}

std::vector<std::int16_t> PointsOf(const std::vector<MapLine>& lines) {
    std::vector<std::int16_t> points;
    points.reserve(lines.size());
    for (const MapLine& line : lines) points.push_back(line.point);
    return points;
}

TEST_F(LineList, LinesComeByTypeAndThenByPoint) {
    const std::vector<MapLine> lines = ListLines(1);
    const std::vector<std::int16_t> types = TypesOf(lines);
    EXPECT_TRUE(std::is_sorted(types.begin(), types.end()));
    for (std::int16_t type = 1; type <= 11; ++type) {
        EXPECT_EQ(std::count(types.begin(), types.end(), type) > 0, true) << type;
        const std::vector<std::int16_t> points = PointsOf(OfType(type));
        EXPECT_TRUE(std::is_sorted(points.begin(), points.end())) << type;
    }
    for (const std::int16_t type : {1, 2, 3, 4, 7}) {
        EXPECT_EQ(PointsOf(OfType(type)), (std::vector<std::int16_t>{1, 3, 7})) << type;
    }
    EXPECT_EQ(OfType(8).size(), 12U);
    EXPECT_EQ(OfType(9).size(), 1U);
    EXPECT_EQ(OfType(10).size(), 1U);
    EXPECT_EQ(OfType(11).size(), 12U);
}

TEST_F(LineList, EachTypeIsListedAloneWhenItAloneIsOn) {
    for (std::size_t type = 1; type <= 11; ++type) {
        ShowTypes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
        const std::size_t among = OfType(static_cast<std::int16_t>(type)).size();
        ShowTypes({type});
        const std::vector<MapLine> alone = ListLines(1);
        EXPECT_EQ(alone.size(), among) << type;
        for (const MapLine& line : alone) EXPECT_EQ(line.type, type);
    }
    ShowTypes({});
    EXPECT_TRUE(ListLines(1).empty());
}

TEST_F(LineList, PointsThatAreNotSelectedOrNotCalculatedAndTheSouthNodesHorizonAreLeftOut) {
    Place(21, 200, 5);
    pointSelection[3] = kFalse;
    Chart().Lon[7] = -1;
    for (const std::int16_t type : {line_type::kCulminate, line_type::kLocalSpace}) {
        EXPECT_EQ(PointsOf(OfType(type)), (std::vector<std::int16_t>{1, 21})) << type;
    }
    for (const std::int16_t type : {line_type::kRise, line_type::kSet}) {
        EXPECT_EQ(PointsOf(OfType(type)), (std::vector<std::int16_t>{1})) << type;
    }
}

// Digits of a relation: 1 culminating, 2 anticulminating, 3 rising, 4 setting.
void ExpectRelation(const MapLine& line) {
    EXPECT_EQ(line.code % 100, line.point);
    const int tens = line.code / 1000;
    const int units = line.code / 100 % 10;
    EXPECT_TRUE(tens >= 1 && tens <= 4 && units >= 1 && units <= 4) << line.code;
    EXPECT_EQ(tens >= 3 && units >= 3, line.type == line_type::kParanRiseRise) << line.code;
    EXPECT_TRUE(tens >= 3 || units >= 3) << line.code;
}

TEST_F(LineList, CodesAreThoseOfTheMarksInTheFrame) {
    for (const MapLine& line : ListLines(1)) {
        EXPECT_EQ(line.point == 0, line.type > line_type::kLocalSpace) << line.type;
        if (line.type == line_type::kParanRiseRise || line.type == line_type::kParanRiseCulm) {
            ExpectRelation(line);
        } else if (line.point > 0) {
            EXPECT_EQ(line.code, line.point);
        }
    }
    EXPECT_EQ(OfType(line_type::kHorizon)[0].code, 'H');
    EXPECT_EQ(OfType(line_type::kEcliptic)[0].code, 'E');
    for (const std::int16_t type : {line_type::kLocalHouse, line_type::kSigns}) {
        std::set<std::int16_t> codes;
        for (const MapLine& line : OfType(type)) codes.insert(line.code);
        EXPECT_EQ(codes.size(), 12U) << type;
        EXPECT_EQ(*codes.begin(), 1) << type;
        EXPECT_EQ(*codes.rbegin(), 12) << type;
    }
}

TEST_F(LineList, AParanIsTheWholeParallelOfItsLatitude) {
    for (const std::int16_t type : {line_type::kParanRiseRise, line_type::kParanRiseCulm}) {
        const std::vector<MapLine> lines = OfType(type);
        ASSERT_FALSE(lines.empty());
        for (const MapLine& line : lines) {
            ASSERT_EQ(line.runs.size(), 1U);
            EXPECT_EQ(line.runs[0].front().longitude, -180);
            EXPECT_EQ(line.runs[0].back().longitude, 180);
            for (const LinePosition& position : line.runs[0]) {
                EXPECT_EQ(position.lat, static_cast<double>(line.lat));
            }
        }
    }
}

// On the horizon together with a body of declination d stands one on the meridian whose right
// ascension is 90 degrees and more or less the ascensional difference from it:
// sin(AD) = tan(lat) tan(d) (W. Smart, Textbook on Spherical Astronomy, section 31).
TEST_F(LineList, AParanOfAHorizonAndAMeridianHasTheLatitudeOfTheAscensionalDifference) {
    constexpr double kDegree = 3.14159265358979323846 / 180;
    for (const MapLine& line : OfType(line_type::kParanRiseCulm)) {
        const bool paranPointRises = line.code / 100 % 10 >= 3;
        const auto onHorizon = static_cast<std::size_t>(paranPointRises ? 1 : line.point);
        const auto onMeridian = static_cast<std::size_t>(paranPointRises ? line.point : 1);
        const int angles[] = {line.code / 1000, line.code / 100 % 10};
        const int horizon = paranPointRises ? angles[1] : angles[0];
        const int meridian = paranPointRises ? angles[0] : angles[1];
        const double hourAngle = static_cast<double>(Chart().RA[onMeridian]) +
                                 (meridian == 2 ? 180 : 0) -
                                 static_cast<double>(Chart().RA[onHorizon]);
        const double declination = static_cast<double>(Chart().Dec[onHorizon]) * kDegree;
        const double cosine =
            -std::tan(static_cast<double>(line.lat) * kDegree) * std::tan(declination);
        EXPECT_NEAR(std::cos(hourAngle * kDegree), cosine, 1e-6) << line.code;
        // It sets west of the meridian and rises east of it.
        EXPECT_EQ(std::sin(hourAngle * kDegree) > 0, horizon == 4) << line.code;
    }
}

TEST_F(LineList, ParansEndAtTheLimitAndTheLimitItselfIsListed) {
    const auto latitudes = [] {
        std::vector<float> found;
        for (const std::int16_t type : {line_type::kParanRiseRise, line_type::kParanRiseCulm}) {
            for (const MapLine& line : OfType(type)) found.push_back(std::abs(line.lat));
        }
        std::sort(found.begin(), found.end());
        return found;
    };
    const std::vector<float> all = latitudes();
    ASSERT_GE(all.size(), 6U);
    const float limit = all[all.size() / 2];
    options.paranLimit = limit;
    EXPECT_EQ(latitudes().back(), limit);
    EXPECT_EQ(static_cast<long>(latitudes().size()),
              std::upper_bound(all.begin(), all.end(), limit) - all.begin());
    options.paranLimit = std::nextafter(limit, 0.0F);
    EXPECT_LT(latitudes().back(), limit);
}

TEST_F(LineList, ThereAreNoParansOfTheParanPointItselfNorOfOneThatIsNotCalculated) {
    for (const MapLine& line : OfType(line_type::kParanRiseRise)) EXPECT_NE(line.point, 1);
    options.paranPoint = 12;
    EXPECT_TRUE(OfType(line_type::kParanRiseRise).empty());
    EXPECT_TRUE(OfType(line_type::kParanRiseCulm).empty());
}

TEST_F(LineList, TheGeodeticZodiacHasNoLocalLinesNorHorizonAndItsSignsAreMeridians) {
    options.mapZodiac = 1;
    options.geodeticStart = 0;
    for (const std::int16_t type :
         {line_type::kLocalSpace, line_type::kLocalHouse, line_type::kHorizon}) {
        EXPECT_TRUE(OfType(type).empty()) << type;
    }
    const std::vector<MapLine> signs = OfType(line_type::kSigns);
    ASSERT_EQ(signs.size(), 12U);
    for (const MapLine& line : signs) {
        ASSERT_EQ(line.runs.size(), 1U);
        ASSERT_EQ(line.runs[0].size(), 2U);
        EXPECT_EQ(line.runs[0][0].lat, -90);
        EXPECT_EQ(line.runs[0][1].lat, 90);
        const double expected = 30.0 * (line.code - 1);
        EXPECT_NEAR(std::remainder(line.runs[0][0].longitude - expected, 360), 0, 1e-9);
    }
    const std::vector<MapLine> ecliptic = OfType(line_type::kEcliptic);
    ASSERT_EQ(ecliptic.size(), 1U);
    for (const LinePosition& position : ecliptic[0].runs[0]) {
        EXPECT_NEAR(position.lat, 0, 1e-9) << "the ecliptic serves as equator";
    }
}

TEST_F(LineList, TheLocalSpaceLinesHaveTheLengthOfTheOptions) {
    const auto length = [](const MapLine& line) {
        std::size_t samples = 0;
        for (const auto& run : line.runs) samples += run.size();
        return samples - 2 * (line.runs.size() - 1);  // but for the crossings
    };
    for (const auto& [extent, samples] :
         {std::pair<std::int16_t, std::size_t>{360, 181U}, {179, 90U}, {1, 1U}}) {
        options.localLineExtent = extent;
        for (const MapLine& line : OfType(line_type::kLocalSpace)) {
            EXPECT_EQ(length(line), samples) << extent;
        }
    }
}

// Where samples and lines fall on the antimeridian and on the poles.
TEST_F(LineList, NoVertexIsDoubledAndNoLineLeapsFromAnyPlace) {
    Place(point::kMidheaven, 10, 4);
    Place(point::kEastPoint, 100, 0);
    Place(20, 280, -90);
    for (const float lat : {0.0F, 48.0F, -51.48F, 89.99F, 90.0F, -90.0F}) {
        for (const float west : {0.0F, 90.0F, -90.0F, 180.0F, -180.0F, 77.7F}) {
            chartNow.PlaceLat = lat;
            chartNow.PlaceLongW = west;
            for (const MapLine& line : ListLines(1)) {
                ExpectWellCut(line.runs, std::to_string(lat) + " " + std::to_string(west) +
                                             " type " + std::to_string(line.type) + " code " +
                                             std::to_string(line.code));
            }
        }
    }
}

TEST_F(LineList, WordsSayWhatALineTells) {
    const auto words = [](std::int16_t type, std::int16_t point, std::int16_t code) {
        MapLine line;
        line.type = type;
        line.point = point;
        line.code = code;
        return LineWords(line);
    };
    EXPECT_EQ(words(1, 3, 3), "Upper");
    EXPECT_EQ(words(2, 3, 3), "Lower");
    EXPECT_EQ(words(3, 3, 3), "Rising");
    EXPECT_EQ(words(4, 3, 3), "Setting");
    EXPECT_EQ(words(5, 3, 3403), "The Sun Rising / The Moon Setting");
    EXPECT_EQ(words(6, 3, 1403), "The Sun Upper / The Moon Setting");
    EXPECT_EQ(words(6, 3, 3203), "The Sun Rising / The Moon Lower");
    EXPECT_EQ(words(7, 3, 3), "");
    EXPECT_EQ(words(8, 0, 10), "House 10");
    EXPECT_EQ(words(9, 0, 'H'), "");
    EXPECT_EQ(words(10, 0, 'E'), "");
    EXPECT_EQ(words(11, 0, 1), "Aries");
    EXPECT_EQ(words(11, 0, 12), "Pisces");
}

TEST_F(LineList, TypesAreNamedByTheLineMode) {
    const std::array<std::string, 5> inMundo = {"", "Culminate", "Anticulminate", "Rise", "Set"};
    const std::array<std::string, 5> zodiacal = {"", "MC", "IC", "Asc", "Dsc"};
    for (std::int16_t type = 1; type <= 4; ++type) {
        options.lineMode = 1;
        EXPECT_EQ(LineTypeName(type), inMundo[static_cast<std::size_t>(type)]);
        options.lineMode = 2;
        EXPECT_EQ(LineTypeName(type), zodiacal[static_cast<std::size_t>(type)]);
    }
    EXPECT_EQ(LineTypeName(5), "Paran RS/RS");
    EXPECT_EQ(LineTypeName(6), "Paran RS/MI");
    EXPECT_EQ(LineTypeName(7), "Local Space");
    EXPECT_EQ(LineTypeName(8), "Local House");
}

}  // namespace
}  // namespace orvantis
