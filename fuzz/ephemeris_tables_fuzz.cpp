// Any bytes as a table of either series and as a file of elements, read at many moments. What is
// read is finite and in its range; nothing is told.
#include <cmath>
#include <cstdlib>

#include "charts/ephemeris_tables.h"
#include "map_fuzz_folder.h"
#include "support/reset_all.h"
#include "text/run_time_error.h"

namespace {

using orvantis::TablePosition;

void Check(const TablePosition& place) {
    if (!(place.longitude >= 0 && place.longitude <= 360)) std::abort();
    for (const double value : {place.latitude, place.distance, place.longitudeSpeed,
                               place.latitudeSpeed, place.distanceSpeed}) {
        if (!std::isfinite(value)) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantis;
    ResetAll();
    for (const char* name : {"AS19AD.EPH", "OP19AD.EPH", "pluelm21.eph"}) {
        WriteFuzzFile(name, data, size);
    }
    for (int i = 0; i < 52; ++i) {
        std::array<TablePosition, 8> places;
        for (const TableSeries series : {TableSeries::Asteroids, TableSeries::OuterPlanets}) {
            if (!ReadTables(series, FuzzFolder(), i * 7.7 / 36525, places)) continue;
            for (const TablePosition& place : places) Check(place);
        }
    }
    for (int i = 0; i < 35; ++i) {
        TablePosition pluto;
        if (PlutoFromElements(FuzzFolder(), 2350100 + i * 3456.7, pluto)) Check(pluto);
    }
    CloseEphemerisTables();
    if (!TestShell().boxes.empty() || PendingRunTimeError() != 0) std::abort();
    return 0;
}
