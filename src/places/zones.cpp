// The zone file. See places/zones.h, and text/zones.h for the table and who reads it.
#include "places/zones.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "session/files.h"
#include "session/session_state.h"
#include "text/code_page.h"
#include "text/strings.h"
#include "text/zones.h"

namespace orvantis {

namespace {

// A line of the zone file, in characters. The line may be shorter; what lies behind is left out.
//
// | Offset | Size | Field                                            |
// |--------|------|--------------------------------------------------|
// | 0      | 5    | mnemonic, in either case                         |
// | 5      | 30   | name                                             |
// | 35     | 6    | time, such as "+5:00": hours WEST positive       |
constexpr std::size_t kMnemonicWidth = 5;
constexpr std::size_t kNameWidth = 30;
constexpr std::size_t kTimeWidth = 6;
constexpr std::size_t kLineWidth = kMnemonicWidth + kNameWidth + kTimeWidth;

// The number of zones has 16 bits, and a line of a sound file far less than 512 bytes: what lies
// beyond either is left out.
constexpr std::int16_t kMostZones = 32767;
constexpr std::int64_t kLongestZoneFile = std::int64_t{kMostZones} * 512;

// Bytes of a line that are kept: no character of UTF-8 has more than four, and the last one may be
// cut short.
constexpr std::size_t kLineBytes = (kLineWidth + 1) * 4;

constexpr std::string_view kZoneFile = "timezone.fil";

// The line without the last character, which the cut at kLineBytes may have split.
std::string_view WithoutLastCharacter(std::string_view line) {
    while (!line.empty() && (line.back() & 0xC0) == 0x80) line.remove_suffix(1);
    if (!line.empty()) line.remove_suffix(1);
    return line;
}

void AddZone(ZoneTable& table, std::string_view bytes) {
    const bool isCut = bytes.size() >= kLineBytes;
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (table.ZoneCount == 0 && bytes.starts_with(byteOrderMark)) {
        bytes.remove_prefix(byteOrderMark.size());
    }
    if (isCut) bytes = WithoutLastCharacter(bytes);
    std::string line = FromEditedText(bytes);
    line.resize(kLineWidth, ' ');
    table.ZoneMnemonic.push_back(UpperCase(line.substr(0, kMnemonicWidth)));
    table.ZoneName.push_back(line.substr(kMnemonicWidth, kNameWidth));
    table.ZoneTime.push_back(line.substr(kMnemonicWidth + kNameWidth));
    ++table.ZoneCount;
}

// Lines end in CRLF, LF or CR.
ZoneTable ReadZoneFile(FileHandle file) {
    ZoneTable table;
    std::string line;
    bool begun = false;  // a line that hasn't ended yet
    char before = 0;
    std::array<std::uint8_t, 1 << 14> block{};
    for (std::int64_t position = 1; position < kLongestZoneFile;) {
        const std::size_t got = ReadWhatIsThere(file, position, block);
        if (got == 0) break;
        position += static_cast<std::int64_t>(got);
        for (std::size_t i = 0; i < got && table.ZoneCount < kMostZones; ++i) {
            const char c = static_cast<char>(block[i]);
            const bool secondOfCrLf = c == '\n' && before == '\r';
            before = c;
            if (secondOfCrLf) continue;
            begun = c != '\r' && c != '\n';
            if (begun) {
                if (line.size() < kLineBytes) line += c;
            } else {
                AddZone(table, line);
                line.clear();
            }
        }
    }
    if (begun && table.ZoneCount < kMostZones) AddZone(table, line);
    return table;
}

}  // namespace

void LoadZones() {
    const std::string own = session.UserDataPath + std::string(kZoneFile);
    const std::string shipped = session.ShippedDir + std::string(kZoneFile);
    const bool useShipped =
        FileExists(own) == 0 && !session.ShippedDir.empty() && FileExists(shipped) != 0;
    const FileHandle file = FileOpener(useShipped ? shipped : own, open_mode::kReadText, 0, kFalse);
    if (file < 1) return;
    zones = ReadZoneFile(file);
    CloseFile(file);
}

}  // namespace orvantis
