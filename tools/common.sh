# Shared by ./run and ./test: packages, configuring and building. Sourced, not run.

source_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
program=$(basename "$0")

packages=(
    cmake ninja-build clang-format
    g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest
    wine64 xvfb
    fonts-dejavu-core fonts-open-sans fonts-tlwg-loma-ttf fonts-wqy-microhei
)

say() { printf '%s: %s\n' "$program" "$*"; }

# step HINT COMMAND...: runs the command; when it fails, says which one and what to do.
step() {
    local hint=$1 code=0
    shift
    "$@" || code=$?
    [ "$code" = 0 ] && return
    printf '%s: this command failed with code %s: %s\n%s: %s\n' \
        "$program" "$code" "$*" "$program" "$hint" >&2
    exit "$code"
}

install_packages() {
    local missing=() package status
    for package in "${packages[@]}"; do
        status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
        [ "$status" = "install ok installed" ] || missing+=("$package")
    done
    [ ${#missing[@]} = 0 ] && return

    say "installing with apt-get: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" != 0 ]; then
        as_root=(sudo)
        command -v sudo >/dev/null || {
            say "these packages are missing, and only root can install them:" >&2
            say "apt-get install ${missing[*]}" >&2
            exit 1
        }
    fi
    step "check the network and the package sources" \
        "${as_root[@]}" apt-get update -qq
    step "install the packages by hand, then try again" \
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# build PRESET TARGET...
build() {
    local preset=$1
    shift
    cd "$source_dir"
    if [ ! -e "out/$preset/build.ninja" ]; then
        step "read the lines above; removing out/$preset starts over" \
            cmake --preset "$preset" -Wno-dev
    fi
    step "read the compiler's lines above" cmake --build --preset "$preset" --target "$@"
}

# A second Ctrl+C does not keep the session from ending.
end_session() {
    trap '' INT TERM
    "$source_dir/tools/wine-session" down
}

# Starts the Wine session unless one runs already, and ends it together with this script.
start_session() {
    local up=${QUILLET_WINE_HOME:-$source_dir/out/wine}/up
    if [ -e "$up" ] && "$source_dir/tools/wine-session" alive; then
        return
    fi
    trap end_session EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    step "look for a wineserver or an Xvfb that cannot start" "$source_dir/tools/wine-session" up
}
