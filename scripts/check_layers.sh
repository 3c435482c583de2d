#!/usr/bin/env bash
# Proves the layers: an include points only to a room further left, and Qt is included in raster and
# desktop alone.
set -euo pipefail
cd "$(dirname "$0")/.."

git ls-files 'src/*.cpp' 'src/*.h' | xargs awk '
    # The layer of a file below src/. The records of the session lie left of the map; the rest of
    # the session lies right of the reports.
    function layer(path,    part, name) {
        split(path, part, "/")
        if (part[1] != "session") return rank[part[1]]
        name = part[2]
        sub(/\.(h|cpp)$/, "", name)
        return name in record ? rank["records"] : rank["session"]
    }
    BEGIN {
        count = split("surface text records map charts lines places reports session raster cli desktop",
                      order, " ")
        for (i = 1; i <= count; ++i) rank[order[i]] = i
        count = split("session_state settings tables files state ini_store resources", names, " ")
        for (i = 1; i <= count; ++i) record[names[i]] = 1
    }
    FNR == 1 {
        path = FILENAME
        sub(/^src\//, "", path)
        own = layer(path)
        room = path
        sub(/\/.*/, "", room)
    }
    /^#include "/ {
        split($0, quoted, "\"")
        other = layer(quoted[2])
        if (other == "" || other > own) {
            printf "%s:%d: includes %s, which lies in a later layer\n", FILENAME, FNR, quoted[2]
            bad = 1
        }
    }
    /^#include <Q/ && room != "raster" && room != "desktop" {
        printf "%s:%d: includes Qt\n", FILENAME, FNR
        bad = 1
    }
    END { exit bad }
'
