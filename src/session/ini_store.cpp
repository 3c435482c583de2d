// INI files. See ini_store.h for the contract. A file is gone through once, when it is read; its
// keys are then found by the hash of their names, and written in one pass over the text. The links
// between keys of one hash are made without comparing names, so that no file, whatever its keys,
// takes more than a time that grows with its length.
#include "session/ini_store.h"

#include <algorithm>
#include <bit>

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

// The line that begins at an offset.
Line LineAt(std::string_view file, std::uint32_t offset) {
    Line line;
    line.next = offset;
    NextLine(file, line);
    return line;
}

// A line "name = value".
struct KeyLine {
    std::string_view name;
    std::string_view value;  // without blanks around it
};

bool TakeKey(const Line& line, KeyLine& key) {
    if (line.isHeader || line.text.starts_with(';')) return false;
    const std::size_t equals = line.text.find('=');
    if (equals == std::string_view::npos) return false;
    key = {WithoutBlanks(line.text.substr(0, equals)), WithoutBlanks(line.text.substr(equals + 1))};
    return true;
}

// Hash (FNV-1a) of a name behind that of its section; the same for upper and lower case.
constexpr std::uint32_t kHashStart = 2166136261U;

std::uint32_t Hash(std::uint32_t before, std::string_view name) {
    constexpr std::uint32_t caseBit = 0x20;
    std::uint32_t hash = (before ^ 0xFFU) * 16777619U;
    for (const char c : name) {
        hash = (hash ^ (static_cast<std::uint8_t>(c) & ~caseBit)) * 16777619U;
    }
    return hash;
}

std::size_t BucketOf(const IniFile& ini, std::uint32_t hash) {
    return (hash ^ (hash >> 16)) & (ini.buckets.size() - 1);  // their count is a power of two
}

bool SameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && SameText(a, b);
}

// Number of the key in ini.keys, their count if it isn't there.
std::size_t FindKey(const IniFile& ini, std::string_view section, std::string_view key) {
    if (ini.buckets.empty()) return ini.keys.size();
    const std::uint32_t hash = Hash(Hash(kHashStart, section), key);
    for (std::uint32_t i = ini.buckets[BucketOf(ini, hash)]; i != 0; i = ini.keys[i - 1].next) {
        const IniFile::Key& place = ini.keys[i - 1];
        if (place.hash != hash) continue;
        KeyLine line;
        TakeKey(LineAt(ini.text, place.line), line);
        const auto header = std::upper_bound(ini.headers.begin(), ini.headers.end(), place.line);
        if (SameName(line.name, key) && SameName(LineAt(ini.text, header[-1]).header, section)) {
            return i - 1;
        }
    }
    return ini.keys.size();
}

// Offset behind the last line of the section that isn't blank, npos if there is no such section.
std::size_t SectionEnd(const IniFile& ini, std::string_view section) {
    for (const std::uint32_t offset : ini.headers) {
        Line line = LineAt(ini.text, offset);
        if (!SameName(line.header, section)) continue;
        std::size_t end = line.next;
        while (NextLine(ini.text, line) && !line.isHeader) {
            if (!line.text.empty()) end = line.next;
        }
        return end;
    }
    return std::string_view::npos;
}

// Bytes of the character that begins a text: those of a character of UTF-8, otherwise one.
std::size_t CharacterLength(std::string_view text) {
    const auto first = static_cast<std::uint8_t>(text.front());
    const std::size_t length = first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (first > 0xF4 || length > text.size()) return 1;
    const bool whole = std::all_of(text.begin() + 1, text.begin() + static_cast<long>(length),
                                   [](char c) { return (static_cast<std::uint8_t>(c) >> 6) == 2; });
    return whole ? length : 1;
}

std::string CutTo(std::string_view text, std::size_t width) {
    std::size_t end = 0;
    for (; width > 0 && end < text.size(); --width) end += CharacterLength(text.substr(end));
    return std::string(text.substr(0, end));
}

std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

// The value as it has to stand in a file to be read back as it is.
std::string Written(std::string_view value) {
    std::string text(UpToNul(value));
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

// What comes in place of a part of a file.
struct Edit {
    std::size_t begin = 0;
    std::size_t end = 0;  // equal to begin where something is inserted
    std::string text;
};

// The lines of keys that a section hasn't got, and where they go.
Edit Insertion(const IniFile& ini, std::string_view section, std::span<const IniEntry> added) {
    const std::string_view file = ini.text;
    const std::string lineBreak(LineBreakOf(file));
    Edit edit;
    std::size_t position = SectionEnd(ini, section);
    if (position == std::string_view::npos) {
        edit.text = "[" + std::string(section) + "]" + lineBreak;
        position = file.size();
    }
    edit.begin = edit.end = position;
    const bool startsLine = position == 0 || file[position - 1] == '\n' || file == kByteOrderMark;
    if (!startsLine) edit.text.insert(0, lineBreak);
    for (const IniEntry& entry : added) {
        edit.text += entry.key + "=" + Written(entry.value) + lineBreak;
    }
    return edit;
}

// The changes of a file that set keys of a section, in the order of their places.
std::vector<Edit> EditsOf(const IniFile& ini, std::string_view section,
                          std::span<const IniEntry> entries) {
    std::vector<Edit> edits;
    std::vector<IniEntry> added;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto later = entries.subspan(i + 1);
        const bool comesAgain = std::any_of(later.begin(), later.end(), [&](const IniEntry& e) {
            return SameName(e.key, entries[i].key);
        });
        if (comesAgain) continue;
        const std::size_t number = FindKey(ini, section, entries[i].key);
        if (number == ini.keys.size()) {
            added.push_back(entries[i]);
            continue;
        }
        const Line line = LineAt(ini.text, ini.keys[number].line);
        KeyLine key;
        TakeKey(line, key);
        edits.push_back(
            {line.begin, line.end, std::string(key.name) + "=" + Written(entries[i].value)});
    }
    if (!added.empty()) edits.push_back(Insertion(ini, section, added));
    // At one place the new lines come before the line that is there.
    std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
        return a.begin != b.begin ? a.begin < b.begin : a.end < b.end;
    });
    return edits;
}

// The text of a file with keys of a section set in it.
std::string WithKeys(const IniFile& ini, std::string_view section,
                     std::span<const IniEntry> entries) {
    const std::string_view file = ini.text;
    std::string text;
    std::size_t done = 0;
    for (const Edit& edit : EditsOf(ini, section, entries)) {
        text.append(file.substr(done, edit.begin - done)).append(edit.text);
        done = edit.end;
    }
    return text.append(file.substr(done));
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
    return ParseIni(TextOf(bytes));
}

IniFile ParseIni(std::string text) {
    IniFile ini;
    if (text.size() > static_cast<std::size_t>(kLongestIni)) return ini;
    ini.text = std::move(text);
    Line line;
    std::uint32_t section = 0;  // hash of its name
    while (NextLine(ini.text, line)) {
        const auto offset = static_cast<std::uint32_t>(line.begin);
        if (line.isHeader) {
            ini.headers.push_back(offset);
            section = Hash(kHashStart, line.header);
        }
        KeyLine key;
        if (ini.headers.empty() || !TakeKey(line, key)) continue;
        ini.keys.push_back({offset, Hash(section, key.name), 0});
    }
    // Linked from the last to the first, so that the first of doubled keys is found first.
    ini.buckets.resize(std::bit_ceil(ini.keys.size() + 1));
    for (std::size_t i = ini.keys.size(); i > 0; --i) {
        std::uint32_t& first = ini.buckets[BucketOf(ini, ini.keys[i - 1].hash)];
        ini.keys[i - 1].next = first;
        first = static_cast<std::uint32_t>(i);
    }
    return ini;
}

std::string IniText(const IniFile& ini, std::string_view section, std::string_view key,
                    std::string_view defaultText, std::size_t width) {
    const std::size_t number = FindKey(ini, section, key);
    if (number == ini.keys.size()) return CutTo(defaultText, width);
    KeyLine line;
    TakeKey(LineAt(ini.text, ini.keys[number].line), line);
    std::string_view value = line.value;
    if (IsQuoted(value)) value = value.substr(1, value.size() - 2);
    return CutTo(UpToNul(value), width);
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
        const std::string text = WithKeys(ParseIni(TextOf(bytes)), section, entries);
        bytes.assign(text.begin(), text.end());
        errorNumber = StoreFile(path, bytes);
    }
    if (errorNumber != 0) RaiseRunTimeError(errorNumber);
    return errorNumber == 0;
}

}  // namespace orvantis
