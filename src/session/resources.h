// The string table: words that a language library can replace.
//
// The library of a language is a text file "OV2EN.TXT" (product and language) in the program's
// folder, with one string a line, "471=Natal", in UTF-8; lines of any other form are passed over.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvantis {

/// Modes of LoadResourceLibrary.
inline constexpr std::int16_t kLanguageOfSystem = 0;
inline constexpr std::int16_t kLanguageGiven = 2;

/// Loads the strings of a language. Mode kLanguageOfSystem takes the first two letters of the
/// desktop's language abbreviation, kLanguageGiven the argument. Without such a file the program's
/// own strings stand.
void LoadResourceLibrary(std::int16_t mode, std::string_view language, std::string_view product);

/// Lets the library go; the program's own strings stand again.
void ReleaseResourceLibrary();

/// String number `id + offset` of the library, or of the program's own table without a library.
/// "" if there is none.
std::string ResString(std::int16_t id, std::int16_t offset);

/// Fills `array` (counting from 0) with the strings at id + 1, id + 2 and so on, up to `count`
/// entries; with `count` 0 up to the size that the array has. The array then has at least that many
/// entries: where there is no string, also behind the last one, its entry is "".
void ResStringList(std::int16_t id, std::vector<std::string>& array, std::int16_t count);

/// The lists of words that charts are described with; they count from 1, element 0 stands empty.
struct ChartWords {
    std::vector<std::string> chartTypes;     ///< "Natal" and so on
    std::vector<std::string> chartSubtypes;  ///< "Chart" and so on
    std::vector<std::string> thirdList;      ///< see BuildChartWords
};

extern ChartWords chartWords;

/// Builds the three lists. Each has its count at its id, rounded to nearest, ties to even; a count
/// below 1 takes the list's own. A list has all entries that it counts, "" where the library has no
/// string. The third list's count reads as 0, so it shows five entries of the house list: charts
/// have been described with these words for so long that they stay.
void BuildChartWords();

}  // namespace orvantis
