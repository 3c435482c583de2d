#!/usr/bin/env bash
# clang-tidy over the program, its tests and its benchmarks. Argument: a build folder with its
# compile commands.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
log=$build/tidy.log
status=0

tidy() {
    xargs -P "$(nproc)" -n 2 clang-tidy-14 --quiet -p "$build" \
        --extra-arg=-Wno-unknown-warning-option "$@" >>"$log" 2>&1 || status=1
}

# The tests do without the path analyzer: it takes a minute over the branches of a file's many
# expectations, and each of these paths is run under the sanitizers anyway.
: >"$log"
git ls-files 'src/*.cpp' 'bench/*.cpp' | tidy
git ls-files 'tests/*.cpp' | tidy --checks='-clang-analyzer-*'

# The chatter about suppressed warnings is left out; a finding makes clang-tidy, and so xargs, fail.
grep -vE ' warnings (and [0-9]+ errors )?generated\.$|^Suppressed|^Use -header-filter' "$log" || true
exit "$status"
