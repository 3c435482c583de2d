#!/usr/bin/env bash
# Sets everything up, builds the program and starts it with a sample chart on the map. Without a
# display the picture is written to a file instead. --no-start: sets up and builds alone.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/setup.sh

need_packages build
cmake --preset release >/dev/null
cmake --build --preset release --target orvantis orvantis-cli
[ "${1:-}" = --no-start ] && exit 0

bin=build/release/bin
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    status=0
    "$bin/orvantis" --open data/sample.cht:1 "$@" || status=$?
    # 4: the display that is named doesn't answer.
    [ "$status" -eq 4 ] || exit "$status"
fi
"$bin/orvantis-cli" render data/sample.cht:1 -o build/sample.png
echo "No display: the sample chart's map was written to $PWD/build/sample.png"
