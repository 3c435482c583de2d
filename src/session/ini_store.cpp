// INI files. See ini_store.h for the contract. A file is kept as its text, and a key is looked for
// from the top each time: the program's own INI has a kilobyte and some forty keys.
#include "session/ini_store.h"

#include <algorithm>

#include "session/files.h"
#include "session/session_state.h"
#include "text/bytes.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool IsQuoted(std::string_view value) {
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == '"' || value.front() == '\'');
}

// One line of a file: where it stands, and what it says.
struct Line {
    std::size_t begin = 0;    // offset of its first character, behind a byte order mark
    std::size_t end = 0;      // offset of its line break, CR included; the file's end without one
    std::size_t next = 0;     // offset of the next line
    std::string_view text;    // without blanks around it
    bool isHeader = false;    // a section line
    std::string_view header;  // the section's name, if so
};

// Takes the next line, which begins at line.next. False at the end of the file.
bool NextLine(std::string_view file, Line& line) {
    if (line.next >= file.size()) return false;
    line.begin = line.next;
    if (line.begin == 0 && file.starts_with(kByteOrderMark)) line.begin = kByteOrderMark.size();
    const std::size_t lineFeed = file.find('\n', line.begin);
    line.end = std::min(lineFeed, file.size());
    line.next = lineFeed == std::string_view::npos ? file.size() : lineFeed + 1;
    if (lineFeed != std::string_view::npos && line.end > line.begin && file[line.end - 1] == '\r') {
        --line.end;
    }
    line.text = WithoutBlanks(file.substr(line.begin, line.end - line.begin));
    line.isHeader = false;
    if (!line.text.starts_with('[')) return true;
    const std::size_t close = line.text.find(']');
    line.isHeader = close != std::string_view::npos;
    if (line.isHeader) line.header = WithoutBlanks(line.text.substr(1, close - 1));
    return true;
}

// Where a key stands in a file, or would.
struct KeyPlace {
    bool found = false;
    Line line;                                        // its line, if found
    std::string_view key;                             // its name as the file spells it, if found
    std::string_view value;                           // without blanks around it, if found
    std::size_t sectionEnd = std::string_view::npos;  // behind the section's last line that isn't
                                                      // blank; npos: no such section
};

KeyPlace FindKey(std::string_view file, std::string_view section, std::string_view key) {
    KeyPlace place;
    Line line;
    bool inside = false;       // in a section of that name
    bool insideFirst = false;  // in the first of them
    while (NextLine(file, line)) {
        if (line.isHeader) {
            inside = SameText(line.header, section);
            insideFirst = inside && place.sectionEnd == std::string_view::npos;
        }
        if (insideFirst && !line.text.empty()) place.sectionEnd = line.next;
        if (!inside || line.isHeader || line.text.starts_with(';')) continue;
        const std::size_t equals = line.text.find('=');
        if (equals == std::string_view::npos) continue;
        const std::string_view name = WithoutBlanks(line.text.substr(0, equals));
        if (name.size() != key.size() || !SameText(name, key)) continue;
        place.found = true;
        place.line = line;
        place.key = name;
        place.value = WithoutBlanks(line.text.substr(equals + 1));
        return place;
    }
    return place;
}

// The value as it has to stand in a file to be read back as it is.
std::string Written(std::string_view value) {
    std::string text(value);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    if (WithoutBlanks(text).size() < text.size() || IsQuoted(text)) text = '"' + text + '"';
    return text;
}

std::string_view LineBreakOf(std::string_view file) {
    const std::size_t lineFeed = file.find('\n');
    const bool alone =
        lineFeed != std::string_view::npos && (lineFeed == 0 || file[lineFeed - 1] != '\r');
    return alone ? "\n" : kCrLf;
}

// Sets one key in the text of a file.
void SetKey(std::string& file, std::string_view section, const IniEntry& entry) {
    const std::string lineBreak(LineBreakOf(file));
    const KeyPlace place = FindKey(file, section, entry.key);
    if (place.found) {
        const std::string line = std::string(place.key) + "=" + Written(entry.value);
        file.replace(place.line.begin, place.line.end - place.line.begin, line);
        return;
    }
    std::string added = entry.key + "=" + Written(entry.value) + lineBreak;
    std::size_t position = place.sectionEnd;
    if (position == std::string_view::npos) {
        added.insert(0, "[" + std::string(section) + "]" + lineBreak);
        position = file.size();
    }
    const bool startsLine =
        position == 0 || file[position - 1] == '\n' || std::string_view(file) == kByteOrderMark;
    file.insert(position, startsLine ? added : lineBreak + added);
}

std::string PathOfIni(std::string_view name) {
    const bool bare = name.find_first_of("\\/") == std::string_view::npos;
    return bare ? session.IniDir + std::string(name) : std::string(name);
}

std::string TextOf(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

}  // namespace

IniFile ReadIni(std::string_view name) {
    Bytes bytes;
    FetchFile(PathOfIni(name), kLongestIni, bytes);
    return {TextOf(bytes)};
}

std::string IniText(const IniFile& ini, std::string_view section, std::string_view key,
                    std::string_view defaultText, std::size_t width) {
    const KeyPlace place = FindKey(ini.text, section, key);
    if (!place.found) return std::string(defaultText.substr(0, width));
    std::string_view value = place.value;
    if (IsQuoted(value)) value = value.substr(1, value.size() - 2);
    return std::string(value.substr(0, width));
}

double IniNumber(const IniFile& ini, std::string_view section, std::string_view key,
                 std::string_view defaultText, std::size_t width) {
    return NumericValue(IniText(ini, section, key, defaultText, width));
}

bool WriteIni(std::string_view name, std::string_view section, std::span<const IniEntry> entries) {
    const std::string path = PathOfIni(name);
    Bytes bytes;
    std::int16_t errorNumber = FetchFile(path, kLongestIni, bytes);
    if (errorNumber == error::kPathNotFound) MakeFolderOf(path);
    if (errorNumber == error::kFileNotFound || errorNumber == error::kPathNotFound) errorNumber = 0;
    if (errorNumber == 0) {
        std::string text = TextOf(bytes);
        for (const IniEntry& entry : entries) SetKey(text, section, entry);
        bytes.assign(text.begin(), text.end());
        errorNumber = StoreFile(path, bytes);
    }
    if (errorNumber != 0) RaiseRunTimeError(errorNumber);
    return errorNumber == 0;
}

}  // namespace orvantis
