# Shared by ./run, ./test, bench/run and packaging/deb: installs the Debian packages that are missing,
# and builds. Sourced, not run.

build_packages="g++ cmake ninja-build libfmt-dev libutf8proc-dev libsqlite3-dev libdeflate-dev libcli11-dev
    libpng-dev rapidjson-dev libarchive-dev libexpat1-dev libcurl4-openssl-dev libsodium-dev qt6-base-dev librsvg2-bin"
# Qt's own texts in Chinese, a font that has Chinese, and the plug-in for Wayland sessions.
window_packages="qt6-translations-l10n fonts-wqy-microhei qt6-wayland"
# A display, a window manager, a tray and a person's hands.
window_test_packages="xvfb xauth openbox trayer xdotool"
# A server to fetch updates from, and what makes its certificates and signatures.
update_test_packages="nginx-light openssl minisign"
# The console inside: what checks and plays carts.
console_packages="fceux"
test_packages="libgtest-dev libgmock-dev $console_packages $window_packages $window_test_packages $update_test_packages"
# The compilers for Windows, what runs its programs here, and what makes the libraries for it.
windows_packages="g++-mingw-w64-x86-64-posix wine64 g++ cmake ninja-build make dpkg-dev tcl"
# What the session with the window for Windows needs: a display with fonts and hands, and xxd, which
# reads what the registry holds.
windows_session_packages="$window_test_packages fonts-wqy-microhei xxd"
# Qt's programs that run while a Qt or a program with it is built, of the same version; Qt's own texts.
windows_window_packages="qt6-base-dev qt6-base-dev-tools qt6-translations-l10n librsvg2-bin"
# What finds out a Debian package's dependencies.
deb_packages="file dpkg-dev gzip $window_packages"

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
    local install="$root env LC_ALL=C DEBIAN_FRONTEND=noninteractive apt-get install --no-install-recommends"
    # How many packages come along, and how much disk they take.
    $install --assume-no $missing 2>/dev/null |
        grep -E '^[0-9]+ upgraded|^Need to get|^After this' | sed 's/^/   /' || true
    $install -y -q $missing | awk '/^Setting up/ { if (++n % 20 == 0) { print "   " n " packages set up"; fflush() } }'
    # The tests start their own; nobody asked for one that serves this machine's port 80 from now on.
    case " $missing " in
        *" nginx-light "*) [ ! -d /run/systemd/system ] || $root systemctl disable --now -q nginx ;;
    esac
}

# build PRESET TARGETS...: all targets where none is named. Counts the steps, in one place of a
# terminal, at every tenth elsewhere; silent where nothing is out of date.
build() {
    local preset=$1 targets=() terminal=0
    shift
    [ $# = 0 ] || targets=(--target "$@")
    [ ! -t 1 ] || terminal=1
    NINJA_STATUS="step %f %t " cmake --build --preset "$preset" ${targets[@]+"${targets[@]}"} |
        awk -v terminal=$terminal '
            function end_count() { if (counting) { print ""; counting = 0 } }
            $1 == "step" && NF > 3 {
                if (terminal) {
                    printf "\r   %d of %d", $2, $3
                    counting = 1
                } else if ($2 * 10 >= (tenth + 1) * $3) {
                    tenth = int($2 * 10 / $3)
                    print "   " $2 " of " $3
                }
                fflush()
                next
            }
            /^ninja: no work to do/ { next }
            { end_count(); print; fflush() }
            END { end_count() }'
}
