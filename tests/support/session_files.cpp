#include "support/session_files.h"

#include <filesystem>

#include "charts/KVCharts.h"
#include "map/map_document.h"
#include "map/point_database.h"
#include "support/paths.h"

namespace orvantis {

namespace fs = std::filesystem;

SessionFiles::SessionFiles() {
    paths.programDir = folder_.File("program");
    paths.shippedData = folder_.File("shipped");
    paths.config = folder_.File("config");
    paths.ephemeris = SystemPaths().ephemeris;
    for (const char* name : {"program/Userdata", "shipped", "config", "system", "sibling"}) {
        fs::create_directories(folder_.File(name));
    }
    Write("shipped", "level1.pnt", TwoLines());
    Write("shipped", "timezone.fil", FileBytes(DataFile("timezone.fil")));
}

std::string SessionFiles::At(std::string_view folder, std::string_view name) const {
    const std::string_view place = folder == "user" ? "program/Userdata" : folder;
    return folder_.File(std::string(place) + "/" + std::string(name));
}

std::string SessionFiles::Write(std::string_view folder, std::string_view name,
                                const Bytes& bytes) const {
    return folder_.Write(At(folder, name).substr(folder_.Path().size()), bytes);
}

std::string SessionFiles::Write(std::string_view folder, std::string_view name,
                                std::string_view text) const {
    return Write(folder, name, Bytes(text.begin(), text.end()));
}

void SessionFiles::AddSibling(int digit) const {
    Write("config", "KELVANE" + std::to_string(digit) + ".INI",
          "[Kelvane]\r\nSystemDataPath=" + At("system", "") +
              "\r\nUserDataPath=" + At("sibling", "") + "\r\n");
}

Bytes TwoLines() {
    Bytes bytes;
    AppendLine(bytes, 1000, "One", {{5, 0, 0}, {1, 10, 10}, {5, 20, 0}});
    AppendLine(bytes, 2000, "Two", {{5, 0, 0}, {5, 20, 0}});
    return bytes;
}

Bytes SelectionOf(std::int16_t point) {
    Bytes bytes(std::size_t{36} * 22, ' ');
    for (std::int16_t i = 1; i <= 36; ++i) {
        PutI16(&bytes[static_cast<std::size_t>(i - 1) * 22 + 20], i == point ? kTrue : kFalse);
    }
    return bytes;
}

Bytes ColoursOf(Colour colour) {
    Bytes bytes(144);
    for (std::size_t i = 0; i < bytes.size(); i += 4) PutI32(&bytes[i], colour);
    return bytes;
}

Bytes ExchangeFile(std::string_view name) {
    FileChart chart;
    chart.event.name = name;
    chart.event.year = 1969;
    chart.event.month = 7;
    chart.event.day = 20;
    Bytes bytes(3171);
    PutFileChart(bytes.data(), chart);
    return bytes;
}

Bytes MapOf(std::string_view title) {
    MapDocument document;
    document.title = title;
    Bytes bytes(kMapDocumentSize);
    PutMapDocument(bytes.data(), document);
    return bytes;
}

}  // namespace orvantis
