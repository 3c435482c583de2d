// The string table. See resources.h.
#include "session/resources.h"

#include <algorithm>
#include <map>

#include "session/files.h"
#include "session/session_state.h"
#include "text/bytes.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::int64_t kLongestLibrary = std::int64_t{1} << 20;  // bytes
constexpr std::int32_t kHighestId = 65535;

using StringTable = std::map<std::int32_t, std::string>;

// A run of strings with ids one after the other; its first entry stands at `id`.
struct StringRun {
    std::int32_t id;
    std::initializer_list<const char*> strings;
};

// The program's own strings.
const StringTable& OwnStrings() {
    static const StringTable table = [] {
        const std::initializer_list<StringRun> runs = {
            {470,
             {"15", "Natal", "Sec.Prog.", "Directed", "Return", "Combined", "Harmonic", "Antiscia",
              "Pre-Natal", "Rise/Set", "Lun.Phase", "Tert.Prog.", "Minor Prog.", "User Prog.",
              "Locality", "Tert.Prog. (True)"}},
            {490,
             {"47",
              "Chart",
              "- Midpoints",
              "- Drv Asc",
              "- Drv MC",
              "Solar",
              "Lunar",
              "Advanced Options",
              "- Solar Arc",
              "- Asc Arc",
              "- Vtx Arc",
              "- User Arc",
              "- 0\xB0 Cap",
              "- 0\xB0 Ari",
              "Group - Drv Asc",
              "- Davison",
              "Bailey Conception",
              "Bailey Quickening",
              "Bailey Birth (C)",
              "Bailey Birth (Q)",
              "Jayne Vulcan",
              "Jayne Uranus (C)",
              "Jayne Sigma",
              "Jayne Isis",
              "Jayne Mercury",
              "Jayne Neptune (A)",
              "Jayne Rex",
              "Jayne Lion",
              "Jayne Mars",
              "Jayne Morya",
              "Jayne Pluto",
              "Jayne Moon",
              "Jayne Sun",
              "Jayne Chiron",
              "Jayne Venus",
              "Jayne Jupiter",
              "Jayne Birth (C)",
              "Coalescent",
              "Arc Transform",
              "Johndro (R.A.)",
              "Johndro (Long.)",
              "Geodetic (R.A.)",
              "Geodetic (Long.)",
              "Relocated",
              "Wynn Key",
              "Progressed Solar",
              "- User Arc",
              "- Profection (Annual)"}},
            // Places of points in the houses; the list as a whole is no longer used.
            {600,
             {"Neptune on 1st", "Pluto on 1st", "N Node on 1st", "Vertex on 7th", "EP on 1st",
              "MC on 10th"}},
        };
        StringTable strings;
        for (const StringRun& run : runs) {
            std::int32_t id = run.id;
            for (const char* text : run.strings) strings[id++] = text;
        }
        return strings;
    }();
    return table;
}

// The strings of the library; empty: there is none.
StringTable libraryStrings;

const StringTable& Strings() {
    return libraryStrings.empty() ? OwnStrings() : libraryStrings;
}

// Highest id that has a string.
std::int32_t LastId() {
    return Strings().rbegin()->first;
}

// Id of a line "471=Natal", -1 if it isn't of that form.
std::int32_t IdOfLine(std::string_view line) {
    const std::size_t digits = line.find_first_not_of("0123456789");
    if (digits == std::string_view::npos || digits == 0 || line[digits] != '=') return -1;
    const double id = NumericValue(line.substr(0, digits));
    return id <= kHighestId ? static_cast<std::int32_t>(id) : -1;
}

StringTable ParseLibrary(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    StringTable strings;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::int32_t id = IdOfLine(line);
        if (id >= 0) strings.emplace(id, FromUtf8(line.substr(line.find('=') + 1)));
    }
    return strings;
}

// One of the lists of words: its entries from element 1 on.
void BuildList(std::int16_t id, std::int16_t standardCount, std::vector<std::string>& list) {
    const double number = NumericValue(ResString(id, 0));
    const auto count = static_cast<std::int16_t>(std::clamp(number, 0.0, 32767.0));
    list.clear();
    ResStringList(id, list, count < 1 ? standardCount : count);
    list.insert(list.begin(), "");
}

}  // namespace

ChartWords chartWords;

void LoadResourceLibrary(std::int16_t mode, std::string_view language, std::string_view product) {
    ReleaseResourceLibrary();
    const std::string wanted = mode == kLanguageOfSystem
                                   ? UpperCase(session.shell->LanguageAbbreviation().substr(0, 2))
                                   : std::string(language);
    for (const std::string& folder : {session.ProgramDir, session.ShippedDir}) {
        if (folder.empty()) continue;
        Bytes bytes;
        const std::string path = folder + std::string(product) + wanted + ".TXT";
        if (FetchFile(path, kLongestLibrary, bytes) != 0) continue;
        libraryStrings = ParseLibrary({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        if (!libraryStrings.empty()) return;
    }
}

void ReleaseResourceLibrary() {
    libraryStrings.clear();
}

std::string ResString(std::int16_t id, std::int16_t offset) {
    const auto found = Strings().find(std::int32_t{id} + offset);
    return found == Strings().end() ? "" : found->second;
}

void ResStringList(std::int16_t id, std::vector<std::string>& array, std::int16_t count) {
    const auto there = static_cast<std::size_t>(std::clamp(LastId() - id, 0, 32767));
    const std::size_t wanted = count > 0 ? static_cast<std::size_t>(count) : array.size();
    const std::size_t filled = std::min(wanted, there);
    if (array.size() < filled) array.resize(filled);
    for (std::size_t i = 0; i < filled; ++i) {
        array[i] = ResString(id, static_cast<std::int16_t>(i + 1));
    }
}

void BuildChartWords() {
    BuildList(470, 15, chartWords.chartTypes);
    BuildList(490, 47, chartWords.chartSubtypes);
    BuildList(600, 5, chartWords.thirdList);
}

}  // namespace orvantis
