// The fixed lists of words: line types, points, signs, zodiacs, house systems, map details. They
// are constants: nothing builds them and nothing changes them. Months are in text/dates.h, sines
// and cosines of whole degrees in text/numbers.h; the defaults that a settings file or a key
// overrides are those of the records in session/settings.h. Lists count from 1 where the numbers in
// files do; element 0 then stands empty.
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

/// Byte of a sign in the glyph font: 127 + number for 2 to 12. Entry 1 is byte 221 and there is an
/// entry 0, byte 220.
char SignGlyph(std::int16_t sign);

/// Byte of an aspect in the glyph font, 0 to 26: 141 + number, but for 0, 1, 2, 15, 16 and 18,
/// which are the bytes 223 to 228.
char AspectGlyph(std::int16_t aspect);

/// The glyphs of the chart drawings: retrograde, stationary, eclipse of the Moon, fixed star.
extern const std::array<char, 4> kDrawingGlyphs;

/// A point above and below the horizon, in the chart drawings.
extern const std::array<char, 2> kHorizonGlyphs;

/// Short name of a month, 1 to 12: "Jan" and so on. "" for any other number.
std::string_view MonthShortName(std::int16_t month);

extern const std::array<std::string_view, 13> kSignNames;         ///< 1 to 12
extern const std::array<std::string_view, 11> kAyanamsaNames;     ///< 1 to 10
extern const std::array<std::string_view, 10> kHouseSystemNames;  ///< 1 to 9
extern const std::array<std::string_view, 15> kLineTypeNames;     ///< 0 to 14
extern const std::array<std::string_view, 5> kLineStyleNames;     ///< 0 to 4
extern const std::array<std::string_view, 3> kSymbolShapeNames;   ///< 0 to 2
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
