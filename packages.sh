# Shared by ./run and ./test: installs the Debian packages that are missing. Sourced, not run.

build_packages="g++ cmake ninja-build libfmt-dev libutf8proc-dev libsqlite3-dev libdeflate-dev libcli11-dev
    libpng-dev rapidjson-dev qt6-base-dev qt6-translations-l10n librsvg2-bin"
# A display, a window manager, a tray, a person's hands, and a small font that has Chinese.
window_test_packages="xvfb xauth openbox trayer xdotool fonts-wqy-microhei"
test_packages="libgtest-dev libgmock-dev fceux $window_test_packages"

say() { printf '\n== %s\n' "$*"; }

install_missing() {
    local package missing=""
    for package in "$@"; do
        if ! dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed'; then
            missing="$missing $package"
        fi
    done
    [ -n "$missing" ] || return 0
    if ! command -v apt-get >/dev/null; then
        echo "These packages are missing, and there is no apt-get here to install them:$missing" >&2
        return 1
    fi
    local root=""
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Run this as root, or install sudo, or install by hand:$missing" >&2
            return 1
        fi
        root="sudo"
    fi
    say "Installing:$missing"
    $root apt-get update -qq
    $root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends $missing >/dev/null
}
