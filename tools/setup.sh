#!/usr/bin/env bash
# tools/setup.sh build|test|windows: installs with apt what is missing to build, to build and test, or to build and
# test the component for Windows.
# Says nothing and touches nothing where everything is there already.
set -euo pipefail

usage="usage: tools/setup.sh build|test|windows"
purpose=${1:?$usage}
case $purpose in build | test | windows) ;; *) echo "$usage" >&2; exit 2 ;; esac

# What shows that a thing is there (a command, a header or a file), and the package that brings it.
needed=(
    g++ g++
    cmake cmake
    ninja ninja-build
    git git
    python3 python3
    sqlite3.h libsqlite3-dev
    nlohmann/json.hpp nlohmann-json3-dev
    CLI/CLI.hpp libcli11-dev
)
# The same for what can be done without, and what is left out then.
wanted=(
    qt6/QtWidgets/QApplication qt6-base-dev
    /usr/lib/qt6/bin/lrelease qt6-l10n-tools
    /usr/share/qt6/translations/qtbase_it.qm qt6-translations-l10n
)
left_out="the desktop window or its English is left out"
# What builds and runs the Windows component.
windows=()
if [ "$purpose" = test ]; then
    wanted+=(
        xvfb-run xvfb
        xauth xauth
        /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf fonts-dejavu-core
    )
    left_out="the desktop window, its English or its tests are left out"
    needed+=(
        gtest/gtest.h libgtest-dev
        gmock/gmock.h libgmock-dev
        benchmark/benchmark.h libbenchmark-dev
        clang++ clang
        '/usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.asan-*.a' libclang-rt-dev
        clang-format clang-format
        clang-tidy clang-tidy
        run-clang-tidy clang-tidy
        llvm-cov llvm
    )
fi

if [ "$purpose" = windows ]; then
    windows=(
        x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64-posix
        x86_64-w64-mingw32-widl mingw-w64-tools
        wine wine
        wineserver wine64
        '/usr/lib/*/wine/x86_64-windows/stdole2.tlb' libwine
        /usr/src/googletest/CMakeLists.txt googletest
    )
fi

is_there() {
    case $1 in
        /*) compgen -G "$1" >/dev/null ;;
        *.h | *.hpp) [ -e "/usr/include/$1" ] || [ -e "/usr/local/include/$1" ] ;;
        # Debian keeps Qt's headers below the name of the machine's kind.
        qt6/*) compgen -G "/usr/include/*/$1" >/dev/null || [ -e "/usr/include/$1" ] ;;
        *) command -v "$1" >/dev/null 2>&1 ;;
    esac
}

# missing SIGN PACKAGE...: the packages whose sign is not there, each once.
missing() {
    while [ $# -gt 0 ]; do
        is_there "$1" || echo "$2"
        shift 2
    done | sort -u
}

log=$(mktemp)
trap 'rm -f "$log"' EXIT

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if [ -t 0 ]; then as_root=(sudo); else as_root=(sudo -n); fi
fi

can_install() {
    command -v apt-get >/dev/null 2>&1 || return 1
    [ ${#as_root[@]} -eq 0 ] || command -v sudo >/dev/null 2>&1
}

apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o DPkg::Lock::Timeout=120 "$@" >"$log" 2>&1
}

install_packages() {
    local options=(install --no-install-recommends)
    # The lists of a machine that is in use often do; a fresh one has none yet.
    apt "${options[@]}" "$@" || { apt update && apt "${options[@]}" "$@"; }
}

mapfile -t packages < <(missing "${needed[@]}")

if [ ${#packages[@]} -gt 0 ]; then
    if ! can_install; then
        echo "setup: missing ${packages[*]}, and there is no apt-get with root rights to install it with" >&2
        exit 1
    fi
    echo "setup: installing ${packages[*]}" >&2
    if ! install_packages "${packages[@]}"; then
        echo "setup: missing ${packages[*]}, apt-get could not install it: $(tail -n 1 "$log")" >&2
        exit 1
    fi
    mapfile -t packages < <(missing "${needed[@]}")
    if [ ${#packages[@]} -gt 0 ]; then
        echo "setup: still missing after installation: ${packages[*]}" >&2
        exit 1
    fi
    # The compiler cache only saves time: where it cannot be had, things go on without it.
    if ! is_there ccache; then install_packages ccache || true; fi
fi

# wish LEFT_OUT SIGN PACKAGE...: installs what is not there yet; says what is left out where that cannot be done.
wish() {
    local without=$1 packages
    shift
    mapfile -t packages < <(missing "$@")
    if [ ${#packages[@]} -gt 0 ] && can_install; then
        echo "setup: installing ${packages[*]}" >&2
        install_packages "${packages[@]}" || true
        mapfile -t packages < <(missing "$@")
    fi
    if [ ${#packages[@]} -gt 0 ]; then
        echo "setup: without ${packages[*]}, which could not be installed, $without" >&2
    fi
}

wish "$left_out" "${wanted[@]}"
wish "the Windows component is left out" "${windows[@]}"

version=$(cmake --version | sed -n '1s/[^0-9]*\([0-9.]*\).*/\1/p')
if [ "$(printf '%s\n' 3.25 "$version" | sort -V | head -n 1)" != 3.25 ]; then
    echo "setup: cmake 3.25 or newer is needed, this is $version" >&2
    exit 1
fi
