#!/usr/bin/env bash
# One entry point for people and CI:
#   ./dev.sh gallery   install what is missing, build, launch the gallery
#                      (without a display it writes one PNG per page)
#   ./dev.sh test      install what is missing, build, run the whole test suite
#                      for Qt 5 and then for Qt 6 (test5 / test6: one of them)
#   ./dev.sh asan      the Qt 5 suite built with AddressSanitizer + UBSan
#                      (asan6: the Qt 6 suite, the same way; not in CI)
#   ./dev.sh debs      build the Debian packages and try them in a clean
#                      Debian 12 root (packaging/check-debs.sh; needs root)
#   ./dev.sh deps      only install the Debian packages
set -euo pipefail
cd "$(dirname "$0")"

PACKAGES=(
    build-essential cmake ninja-build pkg-config
    qtbase5-dev qttools5-dev qttools5-dev-tools libqt5svg5-dev libicu-dev
    qt6-base-dev qt6-tools-dev qt6-tools-dev-tools designer-qt6 qt6-svg-dev
    qt6-l10n-tools libqt6opengl6-dev libgl-dev
    libbenchmark-dev fonts-dejavu-core doxygen
    clang-format clang-tidy
    dpkg-dev file debootstrap
    xvfb x11-utils dbus-x11 at-spi2-core python3-pyatspi
)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

install_missing() {
    local missing=()
    for p in "${PACKAGES[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    if [ ${#missing[@]} -gt 0 ]; then
        echo "dev.sh: installing ${missing[*]}"
        as_root apt-get update
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
    fi
}

njobs() { nproc 2>/dev/null || echo 2; }

build() {
    cmake --preset "$1"
    cmake --build --preset "$1" -j"$(njobs)"
}

case "${1:-}" in
    deps)
        install_missing ;;
    gallery)
        install_missing
        build default
        shift
        exec ./build/examples/gallery/gallery "$@" ;;
    test5)
        install_missing
        build default
        ctest --preset default -j"$(njobs)" ;;
    test6)
        install_missing
        build qt6
        ctest --preset qt6 -j"$(njobs)" ;;
    test)
        install_missing
        build default
        ctest --preset default -j"$(njobs)"
        # Qt 6 second: its consumer test installs both builds into one prefix.
        build qt6
        ctest --preset qt6 -j"$(njobs)" ;;
    asan)
        install_missing
        build asan
        ctest --preset asan -j"$(njobs)" ;;
    asan6)
        install_missing
        build qt6-asan
        ctest --preset qt6-asan -j"$(njobs)" ;;
    debs)
        install_missing
        exec ./packaging/check-debs.sh ;;
    *)
        sed -n '2,11p' "$0" | sed 's/^# \{0,1\}//'
        exit 2 ;;
esac
