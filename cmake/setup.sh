# Shared by ./run and ./test: install what a bare Debian 12 lacks, and find a display.
# shellcheck shell=bash

# install_missing GROUP...: packages of the groups in cmake/packages.txt that are not installed.
install_missing() {
    local wanted=() missing=() group package name
    while read -r group package; do
        for name in "$@"; do
            [ "$group" = "$name" ] && wanted+=("$package")
        done
    done < <(grep -v '^#' "$ORM_TOP/cmake/packages.txt")
    for package in "${wanted[@]}"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local sudo=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing: ${missing[*]}" >&2
            echo "Install them as root (apt-get install ${missing[*]}) and start again." >&2
            exit 1
        fi
        sudo=(sudo)
    fi
    if ! command -v apt-get >/dev/null; then
        echo "These packages are missing and there is no apt-get to install them: ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing: ${missing[*]}"
    if ! "${sudo[@]}" apt-get update -qq ||
        ! "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null; then
        echo "These packages could not be installed: ${missing[*]}" >&2
        exit 1
    fi
}

# with_display COMMAND...: on the display there is, or on a virtual one.
with_display() {
    if [ -n "${DISPLAY:-}" ]; then
        "$@"
    else
        env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1 xvfb-run -a -s "-screen 0 1600x1200x24" "$@"
    fi
}

# build PRESET [TARGET...]: configure, quietly unless something goes wrong, and build the targets (all without any).
build() {
    local preset=$1 target targets=()
    shift
    for target in "$@"; do
        targets+=(--target "$target")
    done
    cmake --preset "$preset" >"$ORM_TOP/.configure.log" 2>&1 || {
        cat "$ORM_TOP/.configure.log" >&2
        rm -f "$ORM_TOP/.configure.log"
        exit 1
    }
    rm -f "$ORM_TOP/.configure.log"
    cmake --build --preset "$preset" "${targets[@]}"
}
