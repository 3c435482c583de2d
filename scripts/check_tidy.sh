#!/usr/bin/env bash
# clang-tidy over every source file of the project. Argument: a build folder with its compile
# commands. A file is looked at again only when something that it is made of has changed.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1

git ls-files 'src/*.cpp' 'tests/*.cpp' 'bench/*.cpp' |
    xargs -P "$(nproc)" -n 4 clang-tidy-14 --quiet -p "$build" 2>&1 |
    { grep -v ' warnings generated\.$' || true; } |
    { grep -vE '^(Suppressed|Use -header-filter|Error while processing)' || true; }
exit "${PIPESTATUS[1]}"
