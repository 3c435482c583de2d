#include "text/strings.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace orvantis {

namespace {

unsigned char UpperByte(unsigned char c) {
    if (c >= 'a' && c <= 'z') return static_cast<unsigned char>(c - 32);
    if (c >= 0xE0 && c != 0xF7 && c != 0xFF) return static_cast<unsigned char>(c - 32);
    return c;
}

unsigned char LowerByte(unsigned char c) {
    if (c >= 'A' && c <= 'Z') return static_cast<unsigned char>(c + 32);
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<unsigned char>(c + 32);
    return c;
}

// Value of an unsigned number that no double can say: 0 with a negative exponent or, without an
// exponent, with all of its figures behind the point; else infinite.
double BeyondDoubles(std::string_view number) {
    const std::size_t exponent = number.find_first_of("eE");
    const bool small = exponent != std::string_view::npos
                           ? number[exponent + 1] == '-'
                           : number[number.find_first_not_of('0')] == '.';
    return small ? 0 : std::numeric_limits<double>::infinity();
}

}  // namespace

std::string_view TrimRight(std::string_view text) {
    const std::size_t end = text.find_last_not_of(' ');
    return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

std::string_view Trim(std::string_view text) {
    const std::string_view cut = TrimRight(text);
    const std::size_t start = cut.find_first_not_of(' ');
    return start == std::string_view::npos ? std::string_view{} : cut.substr(start);
}

std::string UpperAscii(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return result;
}

std::string LowerAscii(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

std::string UpperCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(UpperByte(static_cast<unsigned char>(c)));
    return result;
}

std::string LowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(LowerByte(static_cast<unsigned char>(c)));
    return result;
}

bool SameText(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return UpperByte(static_cast<unsigned char>(x)) == UpperByte(static_cast<unsigned char>(y));
    });
}

double NumericValue(std::string_view text) {
    text = Trim(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
    // from_chars also reads a second sign, "inf" and "nan", which are no numbers here.
    if (text.empty() || (text[0] != '.' && (text[0] < '0' || text[0] > '9'))) return 0;
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        value = BeyondDoubles(text.substr(0, static_cast<std::size_t>(result.ptr - text.data())));
    }
    return negative ? -value : value;
}

std::string ZeroPadded(std::int32_t value, int digits) {
    std::string number = std::to_string(value < 0 ? -static_cast<std::int64_t>(value) : value);
    if (static_cast<int>(number.size()) < digits) {
        number.insert(0, static_cast<std::size_t>(digits) - number.size(), '0');
    }
    return value < 0 ? "-" + number : number;
}

}  // namespace orvantis
