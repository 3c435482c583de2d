// INI files: sections of keys with texts as values, as the desktop's profile functions keep them.
//
//   [Section]
//   ; a comment
//   Key = "value"
//
// Section and key names are compared without regard to case. Of a key that occurs twice in sections
// of one name the first counts. Blanks and tabs around names and values don't count; a value that
// needs them stands in quotes. Every other line is kept as it is and means nothing; so does a key
// above all sections, and a byte order mark. Lines end in CRLF or LF.
//
// The store hands bytes through as they are, but for what no line can hold: a line break in a value
// becomes a blank when it is written, and a value ends at a NUL. The program writes paths in the
// platform's own bytes and words in UTF-8; see session/ini_settings.h for who reads what.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "surface/values.h"

namespace orvantis {

/// An INI file as it was read, with the places of its keys. Made by ReadIni and ParseIni.
struct IniFile {
    /// A line "name = value" of a section.
    struct Key {
        std::uint32_t line;  ///< offset of its line in the text
        std::uint32_t hash;  ///< of the section's name and the key's, whatever their case
        std::uint32_t next;  ///< number of the next key of the same bucket, counted from 1; 0: none
    };
    std::string text;                    ///< the whole file, byte for byte; "" if there was none
    std::vector<std::uint32_t> headers;  ///< offsets of the section lines, in their order
    std::vector<Key> keys;               ///< in their order
    std::vector<std::uint32_t> buckets;  ///< the first key of each, counted from 1; 0: none
};

/// Files beyond this length are no INI files: they read as empty and aren't written to.
inline constexpr std::int64_t kLongestIni = std::int64_t{16} << 20;

/// Reads an INI file. A bare name stands for a file in session.IniDir, a name with a folder in it
/// for itself. A missing, unreadable or overlong file gives nothing; no message, no error.
IniFile ReadIni(std::string_view name);

/// The same of a text, which may be up to kLongestIni bytes long; a longer one gives nothing.
IniFile ParseIni(std::string text);

/// Value of a key: blanks at both ends and one pair of quotes around it removed, up to a NUL, cut
/// to `width` characters; `defaultText`, cut likewise, if the key isn't there. A sequence of bytes
/// that is a character in UTF-8 counts as one, any other byte as one.
std::string IniText(const IniFile& ini, std::string_view section, std::string_view key,
                    std::string_view defaultText, std::size_t width);

/// The leading number of such a value, 0 if it has none.
double IniNumber(const IniFile& ini, std::string_view section, std::string_view key,
                 std::string_view defaultText, std::size_t width);

struct IniEntry {
    std::string key;
    std::string value;  ///< a line break in it becomes a blank; it ends at a NUL
};

/// Sets keys of a section in their order: a key that is there keeps its place, a new one goes to
/// the end of the section, a new section to the end of the file. Of an entry that comes twice the
/// last value counts. The file, and the folder it lies in, are made if they aren't there; a new
/// file has CRLF, an old one keeps its kind. False, with the old file as it was and a run-time
/// error, if it can't be read whole or replaced.
bool WriteIni(std::string_view name, std::string_view section, std::span<const IniEntry> entries);

}  // namespace orvantis
