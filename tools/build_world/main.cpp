// build-world: makes level1.pnt and world.ovm from the sources that data/README.md names.
#include <cstdio>
#include <fstream>
#include <map>
#include <string>

#include "coasts.h"
#include "database.h"
#include "geopackage.h"
#include "land_mask.h"
#include "pn2.h"
#include "states.h"
#include "topojson.h"
#include "waters.h"
#include "world_map.h"

namespace orvantis::world {

namespace {

constexpr char kUsage[] =
    "build-world: the world database from its sources\n"
    "  --atlas F    TopoJSON of the countries, 1:10 million\n"
    "  --states F   GeoPackage with the table states_provinces\n"
    "  --lakes F    pn2 file of the lakes\n"
    "  --rivers F   pn2 file of the rivers\n"
    "  --names DIR  folder of seeds.txt, lakes.txt and rivers.txt\n"
    "  -o DIR       where level1.pnt and world.ovm are written\n"
    "  --mask F     where the mask of land and water is written; optional\n"
    "Example: build-world --atlas countries-10m.json --states world_map.gpkg\n"
    "  --lakes ne_50m_lakes.pn2 --rivers ne_50m_rivers_lake_centerlines.pn2\n"
    "  --names tools/build_world -o data\n";

using Arguments = std::map<std::string, std::string>;

int Complain(const std::string& what, const std::string& why, int exitCode) {
    std::fprintf(stderr, "build-world: %s: %s\n", what.c_str(), why.c_str());
    return exitCode;
}

bool ReadArguments(int count, char** words, Arguments& arguments) {
    for (int i = 1; i + 1 < count; i += 2) arguments[words[i]] = words[i + 1];
    for (const char* needed : {"--atlas", "--states", "--lakes", "--rivers", "--names", "-o"}) {
        if (!arguments.contains(needed)) return false;
    }
    return count % 2 == 1;
}

bool WriteFile(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(file.flush());
}

// Reads everything. False, with the file and the reason, if a source can't be read.
bool ReadSources(Arguments& arguments, Sources& sources, std::string& file, std::string& error) {
    std::vector<State> states;
    std::vector<Pn2Feature> lakes;
    std::vector<Pn2Feature> rivers;
    std::vector<PlaceName> lakeNames;
    std::vector<PlaceName> riverNames;
    file = arguments["--atlas"];
    if (!ReadTopology(file, sources.topology, error)) return false;
    file = arguments["--states"];
    if (!ReadStates(file, CountriesWithStates(), states, error)) return false;
    file = arguments["--lakes"];
    if (!ReadPn2(file, lakes, error)) return false;
    file = arguments["--rivers"];
    if (!ReadPn2(file, rivers, error)) return false;
    error = "can't be read";
    file = arguments["--names"] + "/lakes.txt";
    if (!ReadPlaceNames(file, lakeNames)) return false;
    file = arguments["--names"] + "/rivers.txt";
    if (!ReadPlaceNames(file, riverNames)) return false;

    sources.land = CollectLand(sources.topology);
    sources.borders = CollectBorders(sources.topology);
    sources.states = CollectStateLines(states);
    sources.lakes = CollectLakes(lakes, lakeNames);
    sources.rivers = CollectRivers(rivers, riverNames);
    return true;
}

int Build(Arguments& arguments) {
    Sources sources;
    std::string file;
    std::string error;
    if (!ReadSources(arguments, sources, file, error)) return Complain(file, error, 3);
    std::vector<PlaceName> seeds;
    file = arguments["--names"] + "/seeds.txt";
    if (!ReadPlaceNames(file, seeds)) return Complain(file, "can't be read", 3);

    IslandSummary islands;
    const auto classes = ChooseLines(sources, islands);
    const Bytes level1 = WriteLevel1(classes, BorderEnds(sources.borders));
    if (level1.empty()) return Complain("level1.pnt", "a class has more lines than codes", 1);

    std::map<std::string, Bytes> outputs;
    outputs[arguments["-o"] + "/level1.pnt"] = level1;
    outputs[arguments["-o"] + "/world.ovm"] = MakeWorldMap(seeds);
    if (arguments.contains("--mask")) outputs[arguments["--mask"]] = MakeLandMask(sources.land);
    for (const auto& [path, bytes] : outputs) {
        if (!WriteFile(path, bytes)) return Complain(path, "can't be written", 1);
        std::printf("%s: %zu bytes\n", path.c_str(), bytes.size());
    }
    for (const auto& [number, lines] : classes) {
        std::printf("class %d: %zu lines\n", number, lines.size());
    }
    std::printf("islands: %d of %d, the least by size %.0f km2; %zu seeds\n", islands.kept,
                islands.all, islands.leastKept, seeds.size());
    return 0;
}

}  // namespace

}  // namespace orvantis::world

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "--help") {
        std::fputs(orvantis::world::kUsage, stdout);
        return 0;
    }
    orvantis::world::Arguments arguments;
    if (!orvantis::world::ReadArguments(argc, argv, arguments)) {
        std::fputs(orvantis::world::kUsage, stderr);
        return 2;
    }
    return orvantis::world::Build(arguments);
}
