#include "text/fields.h"

#include <algorithm>
#include <limits>

namespace orvantis {

namespace {

constexpr std::int32_t kLargest = 1000000000;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool BelongsToNumber(char c) {
    return IsDigit(c) || c == '-';
}

}  // namespace

bool FieldWalker::Next(std::string_view& field) {
    const std::size_t start = rest_.find_first_not_of(rules_.separators);
    if (start == std::string_view::npos) {
        rest_ = {};
        return false;
    }
    rest_.remove_prefix(start);
    std::size_t end = 1;
    const bool number = BelongsToNumber(rest_.front());
    while (end < rest_.size() && rules_.separators.find(rest_[end]) == std::string_view::npos &&
           (!rules_.splitNumbers || BelongsToNumber(rest_[end]) == number)) {
        ++end;
    }
    field = rest_.substr(0, end);
    rest_.remove_prefix(end);
    return true;
}

bool FieldWalker::IsAllowed(std::string_view field) const {
    return rules_.allowed.empty() ||
           field.find_first_not_of(rules_.allowed) == std::string_view::npos;
}

bool IsDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsDigit);
}

std::int32_t LeadingInteger(std::string_view field) {
    const bool isSigned = !field.empty() && (field.front() == '-' || field.front() == '+');
    const bool negative = isSigned && field.front() == '-';
    if (isSigned) field.remove_prefix(1);
    std::int64_t value = 0;
    for (const char c : field) {
        if (!IsDigit(c)) break;
        value = std::min<std::int64_t>(value * 10 + (c - '0'), kLargest);
    }
    return static_cast<std::int32_t>(negative ? -value : value);
}

bool FitInt16(std::int32_t value, std::int16_t& narrow) {
    using Limits = std::numeric_limits<std::int16_t>;
    const std::int32_t nearest = std::clamp<std::int32_t>(value, Limits::min(), Limits::max());
    narrow = static_cast<std::int16_t>(nearest);
    return nearest == value;
}

bool BlankFirst(std::string& text, std::string_view word) {
    const std::size_t position = text.find(word);
    if (position == std::string::npos) return false;
    std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(position), word.size(), ' ');
    return true;
}

}  // namespace orvantis
