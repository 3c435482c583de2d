#include "cli/arguments.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>

namespace orvantis::cli {

namespace {

// True if a word that is no known option has the form of one.
bool LooksLikeOption(std::string_view word, const OptionNames& names) {
    return names.singleDashIsText ? word.starts_with("--") : word.size() > 1 && word[0] == '-';
}

bool Contains(const std::vector<std::string_view>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// True for a word such as "5", "-1.5" or "10,20".
bool IsNumbers(std::string_view word) {
    return !word.empty() && word.find_first_not_of("0123456789.,+-") == std::string_view::npos;
}

template <typename Number>
std::optional<Number> WholeNumber(std::string_view text) {
    Number number{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc{} || result.ptr != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

std::string PlainText(std::string_view utf8) {
    std::string plain(utf8);
    for (char& c : plain) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) c = '?';
    }
    // Those from 128 to 159 are two bytes in UTF-8.
    for (std::size_t at = plain.find('\xC2'); at != std::string::npos;
         at = plain.find('\xC2', at + 1)) {
        const bool control =
            at + 1 < plain.size() && static_cast<unsigned char>(plain[at + 1]) < 0xA0;
        if (control) plain.replace(at, 2, "?");
    }
    return plain;
}

int Complain(int exitCode, std::string_view what, std::string_view why) {
    std::cerr << "orvantis-cli: " << what << ": " << why << "\n";
    return exitCode;
}

bool Arguments::Has(std::string_view flag) const {
    return std::find(flags.begin(), flags.end(), flag) != flags.end();
}

std::optional<std::string> Arguments::Value(std::string_view name) const {
    for (const auto& [key, value] : values) {
        if (key == name) return value;
    }
    return std::nullopt;
}

std::optional<Arguments> TakeApart(const std::vector<std::string>& words,
                                   const OptionNames& names) {
    Arguments arguments;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (names.singleDashIsText && word == "--" && !optionsEnded) {
            optionsEnded = true;
            continue;
        }
        if (optionsEnded) {
            arguments.words.push_back(word);
            continue;
        }
        if (Contains(names.withoutValue, word)) {
            arguments.flags.push_back(word);
        } else if (Contains(names.withNumbers, word)) {
            const bool valued = i + 1 < words.size() && IsNumbers(words[i + 1]);
            if (valued) {
                arguments.values.emplace_back(word, words[++i]);
            } else {
                arguments.flags.push_back(word);
            }
        } else if (Contains(names.withValue, word)) {
            if (i + 1 == words.size()) {
                Complain(kWrongCall, word, "needs a value");
                return std::nullopt;
            }
            arguments.values.emplace_back(word, words[++i]);
        } else if (LooksLikeOption(word, names)) {
            Complain(kWrongCall, word, "unknown option");
            return std::nullopt;
        } else {
            arguments.words.push_back(word);
        }
    }
    return arguments;
}

std::optional<std::vector<std::int16_t>> ParseNumberList(std::string_view text, std::int16_t low,
                                                         std::int16_t high) {
    std::vector<std::int16_t> numbers;
    while (true) {
        const std::size_t comma = text.find(',');
        const std::string_view item = text.substr(0, comma);
        const std::size_t dash = item.find('-');
        const auto first = WholeNumber<std::int16_t>(item.substr(0, dash));
        const auto last = dash == std::string_view::npos
                              ? first
                              : WholeNumber<std::int16_t>(item.substr(dash + 1));
        if (!first || !last || *first < low || *last > high || *first > *last) return std::nullopt;
        for (std::int16_t number = *first; number <= *last; ++number) numbers.push_back(number);
        if (comma == std::string_view::npos) return numbers;
        text.remove_prefix(comma + 1);
    }
}

std::optional<double> ParseNumber(std::string_view text) {
    const std::optional<double> number = WholeNumber<double>(text);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    return number;
}

std::optional<std::int32_t> ParseInteger(std::string_view text) {
    return WholeNumber<std::int32_t>(text);
}

}  // namespace orvantis::cli
