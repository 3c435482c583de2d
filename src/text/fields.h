// Typed texts taken apart: the walk over fields that the parsers of dates, times, coordinates and
// zones share, each with separators and characters of its own, and the number in front of a field.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// How a kind of text falls into fields.
struct FieldRules {
    std::string_view separators;  ///< characters between fields; any number of them is one gap
    std::string_view allowed;     ///< characters that a field may hold; empty: any
    bool splitNumbers = false;    ///< a field also ends between a figure or "-" and anything else
};

inline constexpr std::string_view kDigits = "0123456789";

/// Dates: "31 Dec 1992", "31/12/1992", "31DEC1992". "-" belongs to numbers.
inline constexpr FieldRules kDateFields = {" ./,;:'", {}, true};
/// Times and coordinates: figures alone, with "-" as one more separator.
inline constexpr FieldRules kTimeFields = {" ./,;:'-", kDigits, false};
inline constexpr FieldRules kCoordinateFields = kTimeFields;
/// Zones: ":" alone between fields of figures and signs.
inline constexpr FieldRules kZoneFields = {":", "0123456789+-", false};

/// Walks over the fields of a text that outlives it.
class FieldWalker {
  public:
    FieldWalker(std::string_view text, const FieldRules& rules) : rest_(text), rules_(rules) {}

    /// Takes the next field, which isn't empty. False: the text is at its end.
    bool Next(std::string_view& field);

    /// True if the field holds no character but those that the rules allow.
    bool IsAllowed(std::string_view field) const;

  private:
    std::string_view rest_;
    FieldRules rules_;
};

/// True if a text holds figures alone.
bool IsDigits(std::string_view text);

/// The whole number that a field begins with, "+" or "-" and figures; 0 if it begins with none. A
/// number beyond plus or minus 1,000,000,000 gives that bound, which fits no field of a date, time
/// or place.
std::int32_t LeadingInteger(std::string_view field);

/// Narrows to 16 bits. False: it doesn't fit, and `narrow` is the nearest end of the range.
bool FitInt16(std::int32_t value, std::int16_t& narrow);

/// Overwrites the first occurrence of a word with blanks. False: there is none.
bool BlankFirst(std::string& text, std::string_view word);

}  // namespace orvantis
