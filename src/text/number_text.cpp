#include "text/number_text.h"

#include <array>
#include <charconv>

namespace orvantis {

std::string ShortNumberText(float value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

}  // namespace orvantis
