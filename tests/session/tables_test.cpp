#include "session/tables.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>

#include "session/settings.h"
#include "text/angles.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/text_state.h"

namespace orvantis {
namespace {

TEST(Tables, ANameWithoutAShortFormGivesItsFirstThreeLetters) {
    EXPECT_EQ(PointShortName(13), "Chi");
    EXPECT_EQ(PointShortName(1), "Mon");
    EXPECT_EQ(PointShortName(33), "Vus");
    EXPECT_EQ(PointShortName(2), "The");
}

TEST(Tables, NumbersOutsideTheTableHaveNoName) {
    EXPECT_EQ(PointName(0), "");
    EXPECT_EQ(PointName(37), "");
    EXPECT_EQ(PointShortName(-1), "");
}

TEST(Tables, GlyphBytesAreThoseOfTheGlyphFont) {
    EXPECT_EQ(static_cast<unsigned char>(PointGlyph(1)), 182);
    EXPECT_EQ(static_cast<unsigned char>(PointGlyph(36)), 217);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(0)), 220);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(1)), 221);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(2)), 129);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(12)), 139);
}

TEST(Tables, MapDetailsNameEachClassOnce) {
    std::set<std::int16_t> classes;
    for (const MapDetail& detail : kMapDetails) classes.insert(detail.detailClass);
    EXPECT_EQ(classes.size(), 8U);
    EXPECT_EQ(kMapDetails[1].name, "Islands");
    EXPECT_EQ(kMapDetails[1].detailClass, 5);
    EXPECT_FALSE(kMapDetails[6].hasLines);
}

// The words are those that files, reports and other programs have known since the first version.
TEST(Tables, EveryPointHasItsNameAndShortName) {
    struct Row {
        std::int16_t number;
        const char* name;
        const char* shortName;
    };
    constexpr std::array<Row, 36> rows = {{
        {1, "The Moon", "Mon"},   {2, "The Earth", "The"},   {3, "The Sun", "Sun"},
        {4, "Vulcan", "Vul"},     {5, "Mercury", "Mer"},     {6, "Venus", "Ven"},
        {7, "Mars", "Mar"},       {8, "Jupiter", "Jup"},     {9, "Saturn", "Sat"},
        {10, "Uranus", "Ura"},    {11, "Neptune", "Nep"},    {12, "Pluto", "Plu"},
        {13, "Chiron", "Chi"},    {14, "Vesta", "Ves"},      {15, "Pallas", "Pal"},
        {16, "Juno", "Jun"},      {17, "Ceres", "Cer"},      {18, "Hygeia", "Hyg"},
        {19, "Astraea", "Ast"},   {20, "North Node", "Nod"}, {21, "South Node", "SNo"},
        {22, "Ascendant", "Asc"}, {23, "Midheaven", "Mid"},  {24, "Vertex", "Ver"},
        {25, "EastPoint", "Eas"}, {26, "Pt Fortune", "Pt "}, {27, "Cupido", "Cup"},
        {28, "Hades", "Had"},     {29, "Zeus", "Zeu"},       {30, "Kronos", "Kro"},
        {31, "Apollon", "Apo"},   {32, "Admetos", "Adm"},    {33, "Vulcanus", "Vus"},
        {34, "Poseidon", "Pos"},  {35, "TransPluto", "TPl"}, {36, "Black Moon", "BMo"},
    }};
    for (const Row& row : rows) {
        EXPECT_EQ(PointName(row.number), row.name);
        EXPECT_EQ(PointShortName(row.number), row.shortName);
        EXPECT_EQ(static_cast<unsigned char>(PointGlyph(row.number)), 181 + row.number);
    }
}

template <std::size_t count>
void ExpectWords(const std::array<std::string_view, count>& table,
                 std::initializer_list<std::string_view> words) {
    ASSERT_EQ(words.size(), count);
    std::size_t i = 0;
    for (const std::string_view word : words) {
        EXPECT_EQ(table[i], word) << "entry " << i;
        ++i;
    }
}

TEST(Tables, SignsHaveTheirNamesAbbreviationsAndGlyphs) {
    ExpectWords(kSignNames, {"", "Aries", "Taurus", "Gemini", "Cancer", "Leo", "Virgo", "Libra",
                             "Scorpio", "Sagittarius", "Capricorn", "Aquarius", "Pisces"});
    ExpectWords(kSignAbbrevs,
                {"", "Ar", "Ta", "Ge", "Cn", "Le", "Vi", "Li", "Sc", "Sg", "Cp", "Aq", "Pi"});
    for (std::int16_t sign = 2; sign <= 12; ++sign) {
        EXPECT_EQ(static_cast<unsigned char>(SignGlyph(sign)), 127 + sign);
    }
}

TEST(Tables, MonthsHaveTheirNames) {
    ExpectWords(kMonthNames, {"", "January", "February", "March", "April", "May", "June", "July",
                              "August", "September", "October", "November", "December"});
}

TEST(Tables, MonthsHaveTheirShortNames) {
    constexpr std::array<const char*, 14> names = {"",    "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec", ""};
    for (std::size_t month = 0; month < names.size(); ++month) {
        EXPECT_EQ(MonthShortName(static_cast<std::int16_t>(month)), names[month]);
    }
    EXPECT_EQ(MonthShortName(-1), "");
}

TEST(Tables, LineStylesAndSymbolShapesHaveTheirNames) {
    ExpectWords(kLineStyleNames, {"Solid", "Dash", "Dot", "Dash_Dot", "Dash_Dot_Dot"});
    ExpectWords(kSymbolShapeNames, {"Rectangle", "RoundRectangle", "Ellipse"});
}

TEST(Tables, TheGlyphsOfTheChartDrawingsAreTheseBytes) {
    constexpr std::array<int, 27> aspects = {223, 224, 225, 144, 145, 146, 147, 148, 149,
                                             150, 151, 152, 153, 154, 155, 226, 227, 158,
                                             228, 160, 161, 162, 163, 164, 165, 166, 167};
    for (std::size_t n = 0; n < aspects.size(); ++n) {
        EXPECT_EQ(static_cast<unsigned char>(AspectGlyph(static_cast<std::int16_t>(n))),
                  aspects[n]);
    }
    const auto byte = [](char c) { return static_cast<int>(static_cast<unsigned char>(c)); };
    EXPECT_EQ(byte(kDrawingGlyphs[0]), 140);
    EXPECT_EQ(byte(kDrawingGlyphs[1]), 222);
    EXPECT_EQ(byte(kDrawingGlyphs[2]), 168);
    EXPECT_EQ(byte(kDrawingGlyphs[3]), 169);
    EXPECT_EQ(byte(kHorizonGlyphs[0]), 252);
    EXPECT_EQ(byte(kHorizonGlyphs[1]), 253);
}

TEST(Tables, SinesAndCosinesOfWholeDegreesAreThoseOfTheLibrary) {
    // Expected: the mathematics library on degree * pi / 180, pi as 4 * arctan(1); to a few units
    // in the last place, since compilers may take sine and cosine in one call.
    const double pi = 4 * std::atan(1.0);
    for (int degree = 0; degree <= 360; ++degree) {
        EXPECT_NEAR(WholeDegrees().sine[degree], std::sin(degree * (pi / 180)), 5e-16);
        EXPECT_NEAR(WholeDegrees().cosine[degree], std::cos(degree * (pi / 180)), 5e-16);
    }
}

TEST(Tables, ZodiacsHaveTheirNames) {
    ExpectWords(kAyanamsaNames,
                {"", "Tropical", "Fagan-Allen", "Lahiri", "DeLuce", "Raman", "Usha-Shashi",
                 "Krishnamurti", "Djwhal Khul", "Draconic", "User SVP"});
}

TEST(Tables, HouseSystemsHaveTheirNames) {
    ExpectWords(kHouseSystemNames, {"", "Campanus", "Koch", "Meridian", "Morinus", "Placidus",
                                    "Porphyry", "Regiomontanus", "Topocentric", "Equal"});
}

TEST(Tables, EclipseTypesHaveTheirNames) {
    ExpectWords(kEclipseTypeNames,
                {"Partial", "Central Total", "Central Annular", "Central Annular/Total",
                 "Non-Central Total", "Non-Central Annular"});
}

TEST(Tables, LineTypesHaveTheirNames) {
    ExpectWords(kLineTypeNames, {"", "Culminate", "Anticulminate", "Rise", "Set", "Paran RS/RS",
                                 "Paran RS/MI", "Local Space", "Local House", "Horizon", "Ecliptic",
                                 "Signs", "Eclipse", "Partial Eclipse", ""});
}

TEST(Tables, MapDetailsHaveTheirNamesAndClassesInDrawingOrder) {
    struct Row {
        const char* name;
        std::int16_t detailClass;
    };
    constexpr std::array<Row, 8> rows = {{{"Coasts", 1},
                                          {"Islands", 5},
                                          {"Lakes", 6},
                                          {"Rivers", 7},
                                          {"Countries", 2},
                                          {"States", 4},
                                          {"Country Names", 3},
                                          {"City Names", 8}}};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kMapDetails[i].name, rows[i].name);
        EXPECT_EQ(kMapDetails[i].detailClass, rows[i].detailClass);
        EXPECT_EQ(kMapDetails[i].hasLines, i < 6);
    }
}

TEST(Tables, EveryLineTypeHasItsDefaultStyle) {
    // displayed, planetColour, colour (red in the low byte), thickness, style, symbolShape
    constexpr std::array<std::array<std::int32_t, 6>, 15> rows = {{
        {-1, 0, 0x000000, 1, 0, 0},   // no name
        {-1, -1, 0x00FFFF, 1, 0, 2},  // Culminate
        {-1, 0, 0x00FFFF, 1, 2, 2},   // Anticulminate
        {-1, 0, 0xFFFFFF, 1, 0, 1},   // Rise
        {-1, 0, 0xFFFFFF, 1, 0, 1},   // Set
        {0, 0, 0x00FFFF, 1, 0, 2},    // Paran RS/RS
        {0, 0, 0x00FFFF, 1, 0, 2},    // Paran RS/MI
        {0, -1, 0xFFFF00, 2, 0, 0},   // Local Space
        {0, 0, 0x00FFFF, 1, 0, 2},    // Local House
        {0, 0, 0x00FFFF, 1, 0, 2},    // Horizon
        {0, 0, 0x00FFFF, 1, 0, 2},    // Ecliptic
        {0, 0, 0x00FFFF, 1, 0, 2},    // Signs
        {-1, 0, 0x0000FF, 3, 0, 2},   // Eclipse
        {-1, 0, 0x000000, 1, 0, 2},   // Partial Eclipse
        {-1, -1, 0xFFFFFF, 1, 0, 2},  // label of a point
    }};
    const auto styles = DefaultLineStyles();
    ASSERT_EQ(styles.size(), rows.size());
    for (std::size_t type = 0; type < rows.size(); ++type) {
        const LineStyle& style = styles[type];
        const std::array<std::int32_t, 6> values = {style.displayed, style.planetColour,
                                                    style.colour,    style.thickness,
                                                    style.style,     style.symbolShape};
        EXPECT_EQ(values, rows[type]) << "line type " << type;
    }
}

TEST(Tables, TheOtherDefaultsAreThese) {
    const Options fresh;
    EXPECT_EQ(TextState().CenturyBase, 1900);
    EXPECT_EQ(fresh.lineMode, 1);
    EXPECT_EQ(fresh.mapZodiac, 0);
    EXPECT_EQ(fresh.paranPoint, 1);
    EXPECT_EQ(fresh.paranLimit, 60);
    EXPECT_EQ(fresh.geodeticAscDsc, -1);
    EXPECT_EQ(fresh.houseSystem, 5);
    EXPECT_EQ(fresh.ayanamsa, 1);
    EXPECT_EQ(fresh.localLineExtent, 360);
    EXPECT_EQ(fresh.trueNode, -1);
    EXPECT_EQ(fresh.vulcWeston, -1);
    EXPECT_EQ(fresh.extraAnnotation, -1);
    EXPECT_EQ(fresh.dayNight, 0);
}

}  // namespace
}  // namespace orvantis
