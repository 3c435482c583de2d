#include "session/tables.h"

#include "text/code_page.h"
#include "text/dates.h"

namespace orvantis {

namespace {

struct PointWords {
    std::string_view name;
    std::string_view shortName;  // empty: the first three letters of the name
};

constexpr std::array<PointWords, 37> kPoints = {{
    {"", ""},
    {"The Moon", "Mon"},
    {"The Earth", ""},
    {"The Sun", "Sun"},
    {"Vulcan", ""},
    {"Mercury", ""},
    {"Venus", ""},
    {"Mars", ""},
    {"Jupiter", ""},
    {"Saturn", ""},
    {"Uranus", ""},
    {"Neptune", ""},
    {"Pluto", ""},
    {"Chiron", ""},
    {"Vesta", ""},
    {"Pallas", ""},
    {"Juno", ""},
    {"Ceres", ""},
    {"Hygeia", ""},
    {"Astraea", ""},
    {"North Node", "Nod"},
    {"South Node", "SNo"},
    {"Ascendant", ""},
    {"Midheaven", ""},
    {"Vertex", ""},
    {"EastPoint", ""},
    {"Pt Fortune", ""},
    {"Cupido", ""},
    {"Hades", ""},
    {"Zeus", ""},
    {"Kronos", ""},
    {"Apollon", ""},
    {"Admetos", ""},
    {"Vulcanus", "Vus"},
    {"Poseidon", ""},
    {"TransPluto", "TPl"},
    {"Black Moon", "BMo"},
}};

}  // namespace

std::string_view PointName(std::int16_t point) {
    if (point < 1 || point > 36) return "";
    return kPoints[static_cast<std::size_t>(point)].name;
}

std::string PointShortName(std::int16_t point) {
    if (point < 1 || point > 36) return "";
    const PointWords& words = kPoints[static_cast<std::size_t>(point)];
    return std::string(words.shortName.empty() ? words.name.substr(0, 3) : words.shortName);
}

char PointGlyph(std::int16_t point) {
    return static_cast<char>(181 + point);
}

char SignGlyph(std::int16_t sign) {
    if (sign == 0) return static_cast<char>(220);
    return static_cast<char>(sign == 1 ? 221 : 127 + sign);
}

char AspectGlyph(std::int16_t aspect) {
    switch (aspect) {
        case 0:
            return kConjunctionGlyph;
        case 1:
            return kOppositionGlyph;
        case 2:
            return static_cast<char>(225);
        case 15:
            return static_cast<char>(226);
        case 16:
            return static_cast<char>(227);
        case 18:
            return static_cast<char>(228);
        default:
            return static_cast<char>(141 + aspect);
    }
}

const std::array<char, 4> kDrawingGlyphs = {kRetrogradeGlyph, kStationaryGlyph, kLunarEclipseGlyph,
                                            static_cast<char>(169)};

const std::array<char, 2> kHorizonGlyphs = {static_cast<char>(252), static_cast<char>(253)};

std::string_view MonthShortName(std::int16_t month) {
    if (month < 1 || month > 12) return "";
    return kMonthNames[static_cast<std::size_t>(month)].substr(0, 3);
}

const std::array<std::string_view, 13> kSignNames = {
    "",      "Aries",   "Taurus",      "Gemini",    "Cancer",   "Leo",   "Virgo",
    "Libra", "Scorpio", "Sagittarius", "Capricorn", "Aquarius", "Pisces"};

const std::array<std::string_view, 11> kAyanamsaNames = {
    "",        "Tropical",    "Fagan-Allen",  "Lahiri",      "DeLuce",
    "Raman",   "Usha-Shashi", "Krishnamurti", "Djwhal Khul", "Draconic",
    "User SVP"};

const std::array<std::string_view, 10> kHouseSystemNames = {
    "",         "Campanus", "Koch",          "Meridian",    "Morinus",
    "Placidus", "Porphyry", "Regiomontanus", "Topocentric", "Equal"};

const std::array<std::string_view, 15> kLineTypeNames = {"",
                                                         "Culminate",
                                                         "Anticulminate",
                                                         "Rise",
                                                         "Set",
                                                         "Paran RS/RS",
                                                         "Paran RS/MI",
                                                         "Local Space",
                                                         "Local House",
                                                         "Horizon",
                                                         "Ecliptic",
                                                         "Signs",
                                                         "Eclipse",
                                                         "Partial Eclipse",
                                                         ""};

const std::array<std::string_view, 5> kLineStyleNames = {"Solid", "Dash", "Dot", "Dash_Dot",
                                                         "Dash_Dot_Dot"};

const std::array<std::string_view, 3> kSymbolShapeNames = {"Rectangle", "RoundRectangle",
                                                           "Ellipse"};

const std::array<std::string_view, 6> kEclipseTypeNames = {
    "Partial",           "Central Total",      "Central Annular", "Central Annular/Total",
    "Non-Central Total", "Non-Central Annular"};

const std::array<MapDetail, 8> kMapDetails = {{{"Coasts", 1, true},
                                               {"Islands", 5, true},
                                               {"Lakes", 6, true},
                                               {"Rivers", 7, true},
                                               {"Countries", 2, true},
                                               {"States", 4, true},
                                               {"Country Names", 3, false},
                                               {"City Names", 8, false}}};

}  // namespace orvantis
