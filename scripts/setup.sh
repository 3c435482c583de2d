# Sourced by run.sh, test.sh and .ci/run: installs the Debian packages that a call needs and are
# not there yet. Usage: need_packages build|test|check ...

packages_of() {
    case $1 in
        build)
            # Compiler and build; the libraries; ephemeris files; the fonts behind the glyphs.
            echo ca-certificates cmake ninja-build g++ ccache qt6-base-dev libgl-dev \
                nlohmann-json3-dev libswe-dev swe-basic-data swe-standard-data fonts-dejavu-core \
                fonts-noto-core libgtest-dev libbenchmark-dev
            ;;
        test)
            # A display for the window's tests, and independent witnesses: of positions, of PDF and
            # of XML.
            echo xvfb libx11-dev libxtst-dev swetest poppler-utils libxml2-utils
            ;;
        check)
            # The style gate, the sanitizers of clang and the fuzzer.
            echo git clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev
            ;;
    esac
}

need_packages() {
    local group package missing=()
    for group in "$@"; do
        for package in $(packages_of "$group"); do
            dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
                missing+=("$package")
        done
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if ! command -v apt-get >/dev/null; then
        echo "These Debian packages, or your system's own of the kind, are needed: ${missing[*]}" >&2
        return 0
    fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! command -v sudo >/dev/null; then
            echo "Install these packages as root first: ${missing[*]}" >&2
            return 1
        fi
    fi
    echo "Installing ${missing[*]}"
    # sudo doesn't hand the caller's environment on.
    "${as_root[@]}" apt-get update -q >/dev/null
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}" >/dev/null
}
