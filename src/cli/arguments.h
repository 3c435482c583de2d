// The words of a call: options with and without values, and what stands between them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvantis::cli {

/// Exit codes of every verb.
inline constexpr int kDone = 0;
inline constexpr int kWorkFailed = 1;
inline constexpr int kWrongCall = 2;
inline constexpr int kUnreadable = 3;

/// Writes "orvantis-cli: what: why" to standard error and returns the exit code.
int Complain(int exitCode, std::string_view what, std::string_view why);

/// A text of a file, in UTF-8, as a terminal may show it: control characters are "?".
std::string PlainText(std::string_view utf8);

/// Option names that a verb knows.
struct OptionNames {
    std::vector<std::string_view> withValue;      ///< e.g. "--size"
    std::vector<std::string_view> withoutValue;   ///< e.g. "--json"
    std::vector<std::string_view> withNumbers{};  ///< a value of numbers may follow, e.g. "--grid"
    /// Words that begin with one "-", such as "-10:30", are no options, and neither is anything
    /// behind a word "--".
    bool singleDashIsText = false;
};

/// A call taken apart.
struct Arguments {
    std::vector<std::string> words;  ///< what isn't an option
    std::vector<std::pair<std::string, std::string>> values;
    std::vector<std::string> flags;

    bool Has(std::string_view flag) const;
    std::optional<std::string> Value(std::string_view name) const;
};

/// Takes the words after the verb apart. On a wrong call complains and gives no value.
std::optional<Arguments> TakeApart(const std::vector<std::string>& words, const OptionNames& names);

/// A list such as "1,3,5-12" of numbers from `low` to `high`; no value if it is malformed.
std::optional<std::vector<std::int16_t>> ParseNumberList(std::string_view text, std::int16_t low,
                                                         std::int16_t high);

/// A whole text as a number; no value otherwise.
std::optional<double> ParseNumber(std::string_view text);
std::optional<std::int32_t> ParseInteger(std::string_view text);

}  // namespace orvantis::cli
