// The fixed lists of words: line types, points, signs, months, zodiacs, house systems, map details.
// Lists count from 1 where the numbers in files do; element 0 then stands empty.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// Number and full name of a point, 1 to 36. "" for any other number.
std::string_view PointName(std::int16_t point);

/// Short name: that of the table, or the first three letters of the name.
std::string PointShortName(std::int16_t point);

/// Byte of a point in the glyph font: 181 + number, for 1 to 36.
char PointGlyph(std::int16_t point);

/// Byte of a sign in the glyph font, 1 to 12; entry 1 is byte 221, the others 127 + number.
char SignGlyph(std::int16_t sign);

extern const std::array<std::string_view, 13> kSignNames;         ///< 1 to 12
extern const std::array<std::string_view, 13> kSignAbbrevs;       ///< 1 to 12
extern const std::array<std::string_view, 11> kAyanamsaNames;     ///< 1 to 10
extern const std::array<std::string_view, 10> kHouseSystemNames;  ///< 1 to 9
extern const std::array<std::string_view, 15> kLineTypeNames;     ///< 0 to 14
extern const std::array<std::string_view, 6> kEclipseTypeNames;   ///< 0 to 5

/// One kind of detail that a map can show.
struct MapDetail {
    std::string_view name;     ///< caption in the program's lists
    std::int16_t detailClass;  ///< thousands digit of line codes, index of MapDocument::hidden
    bool hasLines;             ///< false: the class stands for labels alone
};

/// In drawing order, positions 0 to 7.
extern const std::array<MapDetail, 8> kMapDetails;

}  // namespace orvantis
