// The zone file. See places/zones.h, and text/zones.h for the table and who reads it.
#include "places/zones.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>

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

// The line without the last character of UTF-8, which the cut at kLineBytes may have split: its
// lead and up to three bytes that continue it. In a line of code page 1252 the same bytes are
// characters, any number of which may follow one another.
std::string_view WithoutLastCharacter(std::string_view line) {
    for (int i = 0; i < 3 && !line.empty() && (line.back() & 0xC0) == 0x80; ++i) {
        line.remove_suffix(1);
    }
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

// Reads the lines, which end in CRLF, LF or CR, of the file as long as it is now. False: it can't
// be read to that end.
bool ReadZoneFile(FileHandle file, ZoneTable& table) {
    std::string line;
    bool begun = false;  // a line that hasn't ended yet
    char before = 0;
    std::array<std::uint8_t, 1 << 14> block{};
    const std::int64_t length = std::min(FileLength(file), kLongestZoneFile);
    for (std::int64_t done = 0; done < length && table.ZoneCount < kMostZones;) {
        const auto portion = std::span(block).first(
            static_cast<std::size_t>(std::min<std::int64_t>(length - done, block.size())));
        if (ReadWhatIsThere(file, done + 1, portion) != portion.size()) return false;
        done += static_cast<std::int64_t>(portion.size());
        for (std::size_t i = 0; i < portion.size() && table.ZoneCount < kMostZones; ++i) {
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
    return true;
}

}  // namespace

void LoadZones() {
    const std::string own = session.UserDataPath + std::string(kZoneFile);
    const std::string shipped = session.ShippedDir + std::string(kZoneFile);
    // A file of the user's own that can't be opened is told; another one doesn't stand in for it.
    const bool useShipped =
        IsMissing(own) && !session.ShippedDir.empty() && FileExists(shipped) != 0;
    const FileHandle file = FileOpener(useShipped ? shipped : own, open_mode::kReadText, 0, kFalse);
    if (file < 1) return;
    ZoneTable table;
    if (ReadZoneFile(file, table)) zones = std::move(table);
    CloseFile(file);
}

}  // namespace orvantis
