#!/usr/bin/env bash
# Sets everything up, builds the program with its tests and runs them. A preset's name as the first
# argument builds and tests that one (release if none is given).
set -euo pipefail
cd "$(dirname "$0")"
. scripts/setup.sh

preset=${1:-release}
need_packages build test
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset" -j "$(nproc)"
