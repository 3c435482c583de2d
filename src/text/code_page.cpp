#include "text/code_page.h"

#include <array>

namespace orvantis {

namespace {

// Bytes 128 to 159. All others of the page have the number of their Unicode character.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& text, char32_t character) {
    const auto tail = [&](int shift) {
        text += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        tail(0);
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        tail(6);
        tail(0);
    }
}

// Takes one well-formed character off the front of `text`. Returns its length in bytes, 0 if what
// stands there isn't one: a stray or missing continuation byte, a form longer than needed, half of
// a surrogate pair, or a number above the last character.
int TakeCharacter(std::string_view text, char32_t& character) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byte(0);
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < static_cast<std::size_t>(length)) return 0;
    character = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        character = (character << 6) | (byte(i) & 0x3F);
    }
    const char32_t least = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    if (character < least || character > 0x10FFFF) return 0;
    if (character >= 0xD800 && character <= 0xDFFF) return 0;
    return length;
}

}  // namespace

char32_t CodePageCharacter(std::uint8_t byte) {
    if (byte < 128 || byte >= 160) return byte;
    return kUpperControls[byte - 128];
}

int CodePageByte(char32_t character) {
    if (character < 128 || (character >= 160 && character < 256)) {
        return static_cast<int>(character);
    }
    for (std::size_t i = 0; i < kUpperControls.size(); ++i) {
        if (kUpperControls[i] == character) return static_cast<int>(i) + 128;
    }
    return -1;
}

std::string ToUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        AppendUtf8(text, CodePageCharacter(static_cast<std::uint8_t>(byte)));
    }
    return text;
}

std::string FromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        char32_t character = 0;
        const int length = TakeCharacter(text, character);
        const int byte = length > 0 ? CodePageByte(character) : -1;
        bytes += byte >= 0 ? static_cast<char>(byte) : '?';
        text.remove_prefix(length > 0 ? length : 1);
    }
    return bytes;
}

std::string FromEditedText(std::string_view text) {
    char32_t ignored = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const int length = TakeCharacter(rest, ignored);
        if (length == 0) return std::string(text);
        rest.remove_prefix(static_cast<std::size_t>(length));
    }
    return FromUtf8(text);
}

}  // namespace orvantis
