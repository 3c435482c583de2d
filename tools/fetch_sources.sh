#!/usr/bin/env bash
# Gets the sources of the world map from their packages and makes data/level1.pnt, data/world.ovm,
# the test's mask of land and water, the default settings, the sample charts and the tables of minor
# planets. Run it when the data is to be renewed; the program is built and tested with the files
# that are committed.
#
# Needs apt-get, npm and libsqlite3-dev beside what the build and the tests need.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/setup.sh
need_packages build test
sources=build/sources
mkdir -p "$sources"

# Sources unpacked by an earlier run are kept.
unpack() {
    [ -d "$sources/$1" ] && return
    (cd "$sources" && apt-get download "$1" && dpkg -x "$1"_*.deb "$1" && rm "$1"_*.deb)
}
unpack qgis-common
unpack marble-qt-data
[ -d "$sources/node_modules/world-atlas" ] || npm install --prefix "$sources" world-atlas@2.0.2

cmake --preset release -B build/tools -DORVANTIS_TOOLS=ON
cmake --build build/tools --target build-world build-defaults build-sample build-asteroids \
    orvantis-cli

earth=$sources/marble-qt-data/usr/share/marble/data/naturalearth
bin=build/tools/bin
"$bin/build-world" \
    --atlas "$sources/node_modules/world-atlas/countries-10m.json" \
    --states "$sources/qgis-common/usr/share/qgis/resources/data/world_map.gpkg" \
    --lakes "$earth/ne_50m_lakes.pn2" \
    --rivers "$earth/ne_50m_rivers_lake_centerlines.pn2" \
    --names tools/build_world -o data --mask tests/data/land_mask.bin
"$bin/build-defaults" data
"$bin/build-sample" data/sample.cht
"$bin/build-asteroids" data
"$bin/orvantis-cli" database check data/level1.pnt
