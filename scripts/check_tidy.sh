#!/usr/bin/env bash
# clang-tidy over the program, its tests and its benchmarks. Argument: a build folder, built with
# Ninja, with its compile commands.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
log=$build/tidy.log
status=0

# A file that was found clean isn't looked at again until it, a header of this project that it
# includes, or the checks change. What it was then is kept as the name of an empty file.
clean=${XDG_CACHE_HOME:-$HOME/.cache}/orvantis-tidy
mkdir -p "$clean"
find "$clean" -type f -mtime +30 -delete
ninja -C "$build" -t deps |
    awk -v top="$PWD/" '/#deps/ {file = ""; next}
        {path = ""; sub(/^ +/, "")}
        index($0, top) == 1 {path = substr($0, length(top) + 1)}
        /^\.\.\/\.\.\/[a-z]/ {path = substr($0, 7)}
        path != "" {if (file == "") file = path
                    print file, path}' >"$build/tidy.deps"

# What a file is made of, as one number; fails for a file that the build doesn't know.
state_of() {
    grep -q "^$1 " "$build/tidy.deps" || return 1
    {
        clang-tidy-14 --version
        cat .clang-tidy scripts/check_tidy.sh
        awk -v file="$1" '$1 == file {print $2}' "$build/tidy.deps" | sort -u | xargs sha256sum
    } | sha256sum | cut -c1-64
}

tidy_one() {
    local file=$1
    shift
    local kept
    kept=$clean/$(state_of "$file") || kept=
    [ -n "$kept" ] && [ -e "$kept" ] && return 0
    clang-tidy-14 --quiet -p "$build" --extra-arg=-Wno-unknown-warning-option "$@" "$file" \
        >>"$log" 2>&1 && { [ -z "$kept" ] || touch "$kept"; }
}
export build log clean
export -f state_of tidy_one

tidy() {
    xargs -P "$(nproc)" -I FILE bash -c 'tidy_one "$@"' tidy FILE "$@"
}

# The tests do without the path analyzer: it takes a minute over the branches of a file's many
# expectations, and each of these paths is run under the sanitizers anyway.
: >"$log"
git ls-files 'src/*.cpp' 'bench/*.cpp' | tidy || status=1
git ls-files 'tests/*.cpp' | tidy --checks='-clang-analyzer-*' || status=1

# The chatter about suppressed warnings is left out.
grep -vE ' warnings (and [0-9]+ errors )?generated\.$|^Suppressed|^Use -header-filter' "$log" || true
exit "$status"
