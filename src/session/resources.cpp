// The string table. See resources.h.
#include "session/resources.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <span>

#include "session/files.h"
#include "session/session_state.h"
#include "text/bytes.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::int64_t kLongestLibrary = std::int64_t{1} << 20;  // bytes
constexpr std::int32_t kHighestId = 65535;

// The program's own strings: the words of charts' types and subtypes, each list behind its count,
// and the places of points in the houses; the last list as a whole is no longer used.
constexpr std::array<std::string_view, 16> kChartTypes = {
    "15",          "Natal",      "Sec.Prog.", "Directed",         "Return",    "Combined",
    "Harmonic",    "Antiscia",   "Pre-Natal", "Rise/Set",         "Lun.Phase", "Tert.Prog.",
    "Minor Prog.", "User Prog.", "Locality",  "Tert.Prog. (True)"};
constexpr std::array<std::string_view, 48> kChartSubtypes = {"47",
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
                                                             "- Profection (Annual)"};
constexpr std::array<std::string_view, 6> kHousePlaces = {
    "Neptune on 1st", "Pluto on 1st", "N Node on 1st", "Vertex on 7th", "EP on 1st", "MC on 10th"};

// A run of strings with ids one after the other; its first entry stands at `id`.
struct StringRun {
    std::int32_t id;
    std::span<const std::string_view> strings;
};

constexpr std::array<StringRun, 3> kOwnStrings = {
    {{470, kChartTypes}, {490, kChartSubtypes}, {600, kHousePlaces}}};

// The strings of the library; empty: there is none.
std::map<std::int32_t, std::string> libraryStrings;

std::string OwnString(std::int32_t id) {
    for (const StringRun& run : kOwnStrings) {
        const std::int32_t place = id - run.id;
        if (place < 0 || place >= static_cast<std::int32_t>(run.strings.size())) continue;
        return std::string(run.strings[static_cast<std::size_t>(place)]);
    }
    return "";
}

std::string StringOf(std::int32_t id) {
    if (libraryStrings.empty()) return OwnString(id);
    const auto found = libraryStrings.find(id);
    return found == libraryStrings.end() ? "" : found->second;
}

// Id of a line "471=Natal", -1 if it isn't of that form.
std::int32_t IdOfLine(std::string_view line) {
    const std::size_t digits = line.find_first_not_of("0123456789");
    if (digits == std::string_view::npos || digits == 0 || line[digits] != '=') return -1;
    const double id = NumericValue(line.substr(0, digits));
    return id <= kHighestId ? static_cast<std::int32_t>(id) : -1;
}

std::map<std::int32_t, std::string> ParseLibrary(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    std::map<std::int32_t, std::string> strings;
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
    const auto count = static_cast<std::int16_t>(std::lrint(std::clamp(number, 0.0, 32767.0)));
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
        std::string path = folder;
        path.append(product).append(wanted).append(".TXT");
        if (FetchFile(path, kLongestLibrary, bytes) != 0) continue;
        libraryStrings = ParseLibrary({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        if (!libraryStrings.empty()) return;
    }
}

void ReleaseResourceLibrary() {
    libraryStrings.clear();
}

std::string ResString(std::int16_t id, std::int16_t offset) {
    return StringOf(std::int32_t{id} + offset);
}

void ResStringList(std::int16_t id, std::vector<std::string>& array, std::int16_t count) {
    const std::size_t wanted = count > 0 ? static_cast<std::size_t>(count) : array.size();
    if (array.size() < wanted) array.resize(wanted);
    std::int32_t next = id;
    for (std::size_t i = 0; i < wanted; ++i) array[i] = StringOf(++next);
}

void BuildChartWords() {
    BuildList(470, 15, chartWords.chartTypes);
    BuildList(490, 47, chartWords.chartSubtypes);
    BuildList(600, 5, chartWords.thirdList);
}

}  // namespace orvantis
