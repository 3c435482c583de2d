// INI files: sections of keys with texts as values, as the desktop's profile functions keep them.
// Section and key names are compared without regard to case; order, comments and foreign keys
// survive every write; a file is replaced only by a whole new one.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "surface/values.h"

namespace orvantis {

/// An INI file as it was read. Values of keys that occur twice are those of the first.
struct IniFile {
    std::unordered_map<std::string, std::string> values;  ///< by section and key, made one
};

/// Reads an INI file. A bare name stands for a file in session.IniDir. A missing or unreadable
/// file, one that is too long or isn't text gives what could be read, at worst nothing; no message.
IniFile ReadIni(std::string_view name);

/// Value of a key: blanks at both ends and one pair of quotes around it removed, cut to `width`
/// characters; `defaultText`, cut likewise, if the key isn't there.
std::string IniText(const IniFile& ini, std::string_view section, std::string_view key,
                    std::string_view defaultText, std::size_t width);

/// The leading number of such a value, 0 if it has none.
double IniNumber(const IniFile& ini, std::string_view section, std::string_view key,
                 std::string_view defaultText, std::size_t width);

struct IniEntry {
    std::string key;
    std::string value;
};

/// Sets keys of a section in their order: a key that is there keeps its place, a new one goes to
/// the end of the section, a new section to the end of the file. The file is made if it isn't
/// there. False, with the old file as it was and a run-time error, if it can't be read or replaced.
bool WriteIni(std::string_view name, std::string_view section, std::span<const IniEntry> entries);

}  // namespace orvantis
