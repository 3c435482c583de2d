#include "topojson.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace orvantis::world {

namespace {

using nlohmann::json;

// Positions of an arc are deltas of whole units of the transform.
DegLine DecodeArc(const json& arc, const json& transform) {
    const double scaleX = transform.at("scale").at(0);
    const double scaleY = transform.at("scale").at(1);
    const double shiftX = transform.at("translate").at(0);
    const double shiftY = transform.at("translate").at(1);
    DegLine line;
    long x = 0;
    long y = 0;
    for (const json& delta : arc) {
        x += delta.at(0).get<long>();
        y += delta.at(1).get<long>();
        line.push_back(
            {static_cast<double>(x) * scaleX + shiftX, static_cast<double>(y) * scaleY + shiftY});
    }
    return line;
}

// An arc number below 0 is the bitwise complement of the arc, run backwards.
void NotePolygon(const json& polygon, int country, Topology& topology) {
    for (const json& ring : polygon) {
        for (const json& item : ring) {
            const long number = item.get<long>();
            const bool forward = number >= 0;
            const long arc = forward ? number : ~number;
            topology.usage.at(static_cast<std::size_t>(arc)).push_back({country, forward});
        }
    }
}

void NoteCountry(const json& geometry, Topology& topology) {
    const int country = static_cast<int>(topology.countries.size());
    topology.countries.push_back(geometry.at("properties").at("name"));
    const std::string type = geometry.value("type", "");
    if (type == "Polygon") NotePolygon(geometry.at("arcs"), country, topology);
    if (type == "MultiPolygon") {
        for (const json& polygon : geometry.at("arcs")) NotePolygon(polygon, country, topology);
    }
}

}  // namespace

bool ReadTopology(const std::string& path, Topology& topology, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "can't be opened";
        return false;
    }
    // The JSON library reports by exceptions; they end here.
    try {
        const json document = json::parse(file);
        for (const json& arc : document.at("arcs")) {
            topology.arcs.push_back(DecodeArc(arc, document.at("transform")));
        }
        topology.usage.resize(topology.arcs.size());
        for (const json& geometry : document.at("objects").at("countries").at("geometries")) {
            NoteCountry(geometry, topology);
        }
    } catch (const std::exception& reason) {
        error = reason.what();
        return false;
    }
    return true;
}

}  // namespace orvantis::world
