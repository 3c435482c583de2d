#include "names.h"

#include <cmath>
#include <cstdint>
#include <fstream>
#include <sstream>

namespace orvantis::world {

namespace {

constexpr std::size_t kNameWidth = 20;

// Letters of U+0100 to U+017F without their accents, in order.
constexpr std::string_view kLatinExtendedA =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOo"
    "OoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
static_assert(kLatinExtendedA.size() == 0x80);

// One code point from UTF-8; malformed bytes give U+FFFD.
std::uint32_t TakeCodePoint(std::string_view& text) {
    const auto lead = static_cast<std::uint8_t>(text.front());
    std::size_t length = 1;
    std::uint32_t value = lead;
    if (lead >= 0xC0) {
        length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        value = lead & (0x7FU >> length);
    }
    if (length > text.size() || (lead >= 0x80 && lead < 0xC0)) {
        text.remove_prefix(1);
        return 0xFFFD;
    }
    for (std::size_t i = 1; i < length; ++i) {
        value = value << 6 | (static_cast<std::uint8_t>(text[i]) & 0x3FU);
    }
    text.remove_prefix(length);
    return value;
}

char CodePageByte(std::uint32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint < 0x100)) {
        return static_cast<char>(codePoint);
    }
    if (codePoint >= 0x100 && codePoint < 0x100 + kLatinExtendedA.size()) {
        return kLatinExtendedA[codePoint - 0x100];
    }
    if (codePoint == 0x2018 || codePoint == 0x2019) return '\'';
    if (codePoint == 0x2013) return '-';
    return '?';
}

}  // namespace

std::string ToCodePage(std::string_view utf8) {
    std::string result;
    while (!utf8.empty()) result += CodePageByte(TakeCodePoint(utf8));
    return result;
}

std::string PairName(std::string_view first, std::string_view second) {
    while (first.size() + 1 + second.size() > kNameWidth) {
        (first.size() > second.size() ? first : second).remove_suffix(1);
    }
    return std::string(first) + "-" + std::string(second);
}

bool ReadPlaceNames(const std::string& path, std::vector<PlaceName>& names) {
    std::ifstream file(path);
    if (!file) return false;
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line.front() == '#') continue;
        std::istringstream words(line);
        double lat = 0;
        double longitude = 0;
        std::string name;
        if (!(words >> lat >> longitude) || !std::getline(words >> std::ws, name)) return false;
        names.push_back({{static_cast<int>(std::lrint(longitude * 60)),
                          static_cast<int>(std::lrint(lat * 60)), -1},
                         ToCodePage(name)});
    }
    return true;
}

}  // namespace orvantis::world
