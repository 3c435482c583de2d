#!/usr/bin/env bash
# Builds the fuzz targets and runs each for some seconds. Argument: seconds a target.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=$1

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
for target in build/fuzz/bin/*_fuzz; do
    name=$(basename "$target")
    corpus=build/fuzz/corpus/$name
    mkdir -p "$corpus"
    seeds=()
    [ -d "fuzz/seeds/$name" ] && seeds=("fuzz/seeds/$name")
    echo "$name, $seconds s"
    "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/$name-" "$corpus" "${seeds[@]}" >"build/fuzz/$name.log" 2>&1 ||
        { tail -n 40 "build/fuzz/$name.log"; exit 1; }
    grep -E 'number_of_executed_units|new_units_added' "build/fuzz/$name.log"
done
