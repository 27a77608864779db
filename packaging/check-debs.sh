#!/usr/bin/env bash
# Builds the Debian packages and tries them as a Debian 12 user would, in a
# clean Debian 12 root:
#   1. apt installs the run-time packages (library, Designer plug-in,
#      translations) with only what their Depends pull in; every library
#      must resolve its own dependencies;
#   2. apt installs the -dev package and the tools to build
#      packaging/deb-consumer against /usr, which then runs (widgets shown
#      offscreen) and finds the Designer plug-in where Qt Designer looks;
#   3. apt purges the packages, and no file of theirs may be left.
#
# The root (debootstrap --variant=minbase bookworm) is made once and kept in
# $VEL_DEB_ROOT_CACHE (default /var/cache/vel_qt_widgets/debian12-root); each
# run works on a throw-away overlay (or copy) of it, so the cache stays clean.
# Downloaded .deb files are kept beside it, in apt-archives/. The Debian
# mirror is the one this machine's apt uses for bookworm.
#
# Needs root, debootstrap and dpkg-dev (./dev.sh deps installs them).
# Usage: packaging/check-debs.sh        (run from anywhere in the tree)
set -euo pipefail

SOURCE_DIR=$(cd "$(dirname "$0")/.." && pwd)
CACHE_DIR=${VEL_DEB_CACHE_DIR:-/var/cache/vel_qt_widgets}
ROOT_CACHE=${VEL_DEB_ROOT_CACHE:-$CACHE_DIR/debian12-root}
ARCHIVES=$CACHE_DIR/apt-archives
SUITE=bookworm

say() { echo "check-debs (${SECONDS}s): $*"; }
fail() {
    echo "check-debs: FAILED: $*" >&2
    exit 1
}

[ "$(id -u)" -eq 0 ] || fail "must run as root (debootstrap, chroot, mount)"
command -v debootstrap >/dev/null || fail "debootstrap is missing (./dev.sh deps)"
command -v dpkg-shlibdeps >/dev/null || fail "dpkg-shlibdeps is missing (./dev.sh deps)"

# The URI this machine's apt uses for a suite, from one-line .list files or
# deb822 .sources files (disabled entries skipped).
host_mirror() {
    local suite=$1 f
    for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -f "$f" ] || continue
        awk -v suite="$suite" '
            $1 == "deb" {
                i = 2
                if ($i ~ /^\[/) { while ($i !~ /\]$/) i++; i++ }
                if ($(i + 1) == suite) { print $i; exit }
            }' "$f"
    done
    for f in /etc/apt/sources.list.d/*.sources; do
        [ -f "$f" ] || continue
        awk -v suite="$suite" '
            function flush() {
                if (types ~ /(^| )deb( |$)/ && enabled != "no" && (" " suites " ") ~ (" " suite " ")) {
                    split(uris, u, " "); print u[1]; found = 1
                }
                types = ""; uris = ""; suites = ""; enabled = ""
            }
            /^[ \t]*$/ { flush(); if (found) exit; next }
            /^Types:/ { sub(/^Types:[ \t]*/, ""); types = $0 }
            /^URIs:/ { sub(/^URIs:[ \t]*/, ""); uris = $0 }
            /^Suites:/ { sub(/^Suites:[ \t]*/, ""); suites = $0 }
            /^Enabled:/ { sub(/^Enabled:[ \t]*/, ""); enabled = tolower($0) }
            END { if (!found) flush() }' "$f"
    done
}

MIRROR=$(host_mirror "$SUITE" | head -n1)
SECURITY_MIRROR=$(host_mirror "$SUITE-security" | head -n1)
[ -n "$MIRROR" ] || fail "no Debian mirror for $SUITE in /etc/apt/sources.list(.d)"

# 1. The packages.
say "building the packages (preset deb)"
cd "$SOURCE_DIR"
cmake --preset deb >/dev/null
cmake --build --preset deb -j"$(nproc 2>/dev/null || echo 2)"
PACKAGE_DIR="$SOURCE_DIR/build-deb/packages"
rm -rf "$PACKAGE_DIR"
(cd build-deb && cpack -G DEB -B "$PACKAGE_DIR" >/dev/null)
rm -rf "$PACKAGE_DIR/_CPack_Packages"
mapfile -t DEBS < <(find "$PACKAGE_DIR" -maxdepth 1 -name '*.deb' | sort)
[ ${#DEBS[@]} -eq 5 ] || fail "expected 5 packages, cpack made ${#DEBS[@]}"
PACKAGES=()
for deb in "${DEBS[@]}"; do
    PACKAGES+=("$(dpkg-deb -f "$deb" Package)")
    say "$(basename "$deb")"
done

# Installed into /usr, the libraries need no run path.
mkdir -p "$PACKAGE_DIR/inspect"
for deb in "${DEBS[@]}"; do dpkg-deb -x "$deb" "$PACKAGE_DIR/inspect"; done
while IFS= read -r -d '' lib; do
    if readelf -d "$lib" | grep -E 'RPATH|RUNPATH' >/dev/null; then
        fail "$lib carries a run path in a /usr package"
    fi
done < <(find "$PACKAGE_DIR/inspect" -type f -name '*.so*' -print0)
rm -rf "$PACKAGE_DIR/inspect"

# 2. The clean root, made once.
if [ ! -e "$ROOT_CACHE/.vel-complete" ]; then
    say "debootstrap $SUITE from $MIRROR into $ROOT_CACHE (once)"
    rm -rf "$ROOT_CACHE.partial"
    mkdir -p "$CACHE_DIR"
    debootstrap --variant=minbase "$SUITE" "$ROOT_CACHE.partial" "$MIRROR" >"$CACHE_DIR/debootstrap.log" 2>&1 ||
        fail "debootstrap failed, see $CACHE_DIR/debootstrap.log"
    {
        printf 'Types: deb\nURIs: %s\nSuites: %s %s-updates\nComponents: main\n' "$MIRROR" "$SUITE" "$SUITE"
        printf 'Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg\n'
        if [ -n "$SECURITY_MIRROR" ]; then
            printf '\nTypes: deb\nURIs: %s\nSuites: %s-security\nComponents: main\n' "$SECURITY_MIRROR" "$SUITE"
            printf 'Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg\n'
        fi
    } >"$ROOT_CACHE.partial/etc/apt/sources.list.d/debian.sources"
    rm -f "$ROOT_CACHE.partial/etc/apt/sources.list"
    rm -rf "$ROOT_CACHE.partial/var/cache/apt/archives"/*.deb
    touch "$ROOT_CACHE.partial/.vel-complete"
    rm -rf "$ROOT_CACHE"
    mv "$ROOT_CACHE.partial" "$ROOT_CACHE"
fi
mkdir -p "$ARCHIVES/partial"

# 3. A throw-away root on top of the cached one; everything mounted here is
# unmounted on every way out.
WORK=$(mktemp -d /tmp/vel-check-debs.XXXXXX)
ROOT=$WORK/root
MOUNTS=()
CHILD=
cleanup() {
    local i
    if [ -n "$CHILD" ]; then # stop whatever still runs in the root
        kill -TERM -- "-$CHILD" 2>/dev/null || true
        wait "$CHILD" 2>/dev/null || true
    fi
    for ((i = ${#MOUNTS[@]} - 1; i >= 0; i--)); do
        umount "${MOUNTS[i]}" 2>/dev/null || umount -l "${MOUNTS[i]}" 2>/dev/null || true
    done
    # Never delete through a mount that is still there (/dev is bound in).
    if grep -F " $WORK" /proc/mounts >/dev/null; then
        echo "check-debs: still mounted under $WORK, left in place" >&2
    else
        rm -rf --one-file-system "$WORK"
    fi
}
trap cleanup EXIT
trap 'exit 130' INT TERM
mount_on() { # mount_on <target> <mount arguments...>
    local target=$1
    shift
    mkdir -p "$target"
    mount "$@" "$target" || return 1
    MOUNTS+=("$target")
}

# The throw-away layer lives in memory when it may (about 1 GB is written).
mount_on "$WORK" -t tmpfs -o size=4g,mode=0755 vel-check-debs 2>/dev/null || true
mkdir -p "$ROOT" "$WORK/upper" "$WORK/ovwork"
if mount_on "$ROOT" -t overlay overlay \
    -o "lowerdir=$ROOT_CACHE,upperdir=$WORK/upper,workdir=$WORK/ovwork" 2>/dev/null; then
    :
else
    say "no overlay file system here: copying the root"
    cp -a "$ROOT_CACHE/." "$ROOT/"
fi
mount_on "$ROOT/proc" -t proc proc
mount_on "$ROOT/dev" --bind /dev
mount_on "$ROOT/var/cache/apt/archives" --bind "$ARCHIVES"
cp /etc/resolv.conf "$ROOT/etc/resolv.conf" 2>/dev/null || true
# dpkg without an fsync per file (the root is thrown away anyway).
echo force-unsafe-io >"$ROOT/etc/dpkg/dpkg.cfg.d/vel-check-unsafe-io"
# No services start inside the root.
printf '#!/bin/sh\nexit 101\n' >"$ROOT/usr/sbin/policy-rc.d"
chmod +x "$ROOT/usr/sbin/policy-rc.d"

mkdir -p "$ROOT/tmp/vel/debs"
cp "${DEBS[@]}" "$ROOT/tmp/vel/debs/"
cp -r "$SOURCE_DIR/packaging/deb-consumer" "$ROOT/tmp/vel/deb-consumer"
printf '%s\n' "${PACKAGES[@]}" >"$ROOT/tmp/vel/packages"
role() { printf '%s\n' "${PACKAGES[@]}" | grep -E -m1 -e "$1" || fail "no package matches $1"; }
WIDGETS=$(role '^lib.*widgets[0-9]+$')
SYSTEM=$(role '^lib.*system[0-9]+$')
DEV=$(role '-dev$')
DESIGNER=$(role '-designer-plugin$')
L10N=$(role '-l10n$')
printf '%s\n' "WIDGETS=$WIDGETS" "SYSTEM=$SYSTEM" "DEV=$DEV" "DESIGNER=$DESIGNER" "L10N=$L10N" \
    >"$ROOT/tmp/vel/roles"

cat >"$ROOT/tmp/vel/inside.sh" <<'INSIDE'
#!/bin/bash
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
unset LD_LIBRARY_PATH QT_PLUGIN_PATH
say() { echo "check-debs (Debian 12 root, ${SECONDS}s): $*"; }
fail() { echo "check-debs (Debian 12 root): FAILED: $*" >&2; exit 1; }
apt_get() { apt-get -q -o Dpkg::Use-Pty=0 "$@"; }
cd /tmp/vel
mapfile -t PACKAGES <packages
source ./roles

apt_get update >/dev/null

say "apt install of the run-time packages"
apt_get install -y --no-install-recommends \
    ./debs/"$SYSTEM"_*.deb ./debs/"$WIDGETS"_*.deb \
    ./debs/"$DESIGNER"_*.deb ./debs/"$L10N"_*.deb >apt-runtime.log 2>&1 || { cat apt-runtime.log; fail "apt install"; }
# In Debian's multiarch library folder, and known to the loader's cache (the
# packages' ldconfig trigger ran).
LIBDIR=$(dpkg -S libvel_qt_widgets.so.0 | awk '$2 ~ /\/libvel_qt_widgets\.so\.0$/ {print $2; exit}')
LIBDIR=$(dirname "$LIBDIR")
[[ "$LIBDIR" =~ ^/usr/lib/[a-z0-9_]+-linux-gnu[a-z0-9_]*$ ]] ||
    fail "libvel_qt_widgets.so.0 is not in a multiarch library folder (got '$LIBDIR')"
ldconfig -p | grep 'libvel_qt_widgets\.so\.0 ' >/dev/null || fail "ldconfig does not know libvel_qt_widgets.so.0"
ldconfig -p | grep 'libvel_system\.so\.0 ' >/dev/null || fail "ldconfig does not know libvel_system.so.0"
for lib in "$LIBDIR"/libvel_qt_widgets.so.0 "$LIBDIR"/libvel_system.so.0; do
    [ -e "$lib" ] || fail "$lib is not installed"
    if ldd "$lib" | grep 'not found' >/dev/null; then
        ldd "$lib" >&2
        fail "$lib: a library it needs is not installed (Depends incomplete)"
    fi
done
PLUGIN=$LIBDIR/qt5/plugins/designer/libvel_qt_widgets.so
[ -e "$PLUGIN" ] || fail "no Designer plug-in at $PLUGIN"
[ -f /usr/share/vel_qt_widgets/translations/vel_qt_widgets_de.qm ] || fail "no German catalogue"

say "apt install of the -dev package and of the tools for an outside project"
apt_get install -y --no-install-recommends ./debs/"$DEV"_*.deb \
    g++ make cmake qttools5-dev >apt-dev.log 2>&1 || { cat apt-dev.log; fail "apt install"; }

# The packages hold on to each other: removing a library takes along every
# package that needs it.
takes_along() { # takes_along <package> <dependent>...
    local package=$1 removed
    shift
    removed=$(apt-get -s remove "$package" | awk '$1 == "Remv" {printf "%s ", $2}')
    for dependent; do
        [[ " $removed" == *" $dependent "* ]] ||
            fail "$dependent does not depend on $package (removing it removes only: $removed)"
    done
}
takes_along "$SYSTEM" "$WIDGETS" "$DEV" "$DESIGNER"
takes_along "$WIDGETS" "$DEV" "$DESIGNER"
for p in "$WIDGETS" "$SYSTEM" "$DEV" "$DESIGNER" "$L10N"; do
    [ "$(dpkg-query -W -f='${Version}' "$p")" = "$(dpkg-deb -f ./debs/"$p"_*.deb Version)" ] ||
        fail "$p: installed version differs from the package's"
done

say "building an outside project against /usr"
cmake -S deb-consumer -B build -DCMAKE_BUILD_TYPE=Release >build.log 2>&1 || { cat build.log; fail "configure"; }
cmake --build build >>build.log 2>&1 || { cat build.log; fail "build"; }
./build/vel_deb_consumer 2>/dev/null || fail "vel_deb_consumer"
./build/vel_designer_check 2>/dev/null | grep -v skipped || fail "vel_designer_check: Designer would not list the widgets"

say "apt purge"
for p in "${PACKAGES[@]}"; do dpkg -L "$p"; done | sort -u >files-before
apt_get purge -y "${PACKAGES[@]}" >apt-purge.log 2>&1 || { cat apt-purge.log; fail "apt purge"; }
for p in "${PACKAGES[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Abbrev}' "$p" 2>/dev/null || true)
    [ -z "$status" ] || [ "${status:1:1}" = n ] || fail "$p is still known to dpkg (status $status)"
done
left=$(while read -r f; do
    if [ -e "$f" ] || [ -L "$f" ]; then
        [ -d "$f" ] && [ ! -L "$f" ] && [ -n "$(dpkg -S "$f" 2>/dev/null)" ] && continue
        echo "$f"
    fi
done <files-before)
[ -z "$left" ] || fail "left behind after purge: $left"
stray=$(find /usr /etc /var/lib/dpkg/info \( -iname '*vel_qt_widgets*' -o -iname '*vel-qt-widgets*' \
    -o -iname '*vel_system*' -o -iname '*vel-system*' \) -print)
[ -z "$stray" ] || fail "left behind after purge: $stray"
say "purged, nothing left"
INSIDE
chmod +x "$ROOT/tmp/vel/inside.sh"

say "trying the packages in a clean Debian 12 root"
# In its own session, so that an interrupted run stops everything in the
# root before unmounting it.
# With a clean environment: the host's build settings (a compiler launcher,
# flags, prefixes) name tools the root does not have.
setsid env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive chroot "$ROOT" /tmp/vel/inside.sh &
CHILD=$!
wait "$CHILD"
CHILD=
say "OK: ${PACKAGES[*]} install, work and purge cleanly in Debian 12"
