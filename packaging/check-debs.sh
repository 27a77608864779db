#!/usr/bin/env bash
# Builds the Debian packages of both builds (Qt 5: preset deb, Qt 6: preset
# qt6-deb) and tries them as a Debian 12 user would, in a clean Debian 12
# root:
#   1. apt installs the run-time packages of each build (library, Designer
#      plug-in, translations) alone, with only what their Depends pull in;
#      every library must resolve its own dependencies;
#   2. apt installs both run-time sets side by side (no file of one may
#      belong to the other), then both -dev packages and the tools to build
#      packaging/deb-consumer against /usr once per build; each program runs
#      (widgets shown offscreen) and finds its build's Designer plug-in where
#      its Qt's Designer looks;
#   3. apt purges all the packages, and no file of theirs may be left.
#
# The root (debootstrap --variant=minbase bookworm) is made once and kept in
# $VEL_DEB_ROOT_CACHE (default /var/cache/vel_qt_widgets/debian12-root); each
# run works on a throw-away overlay (or copy) of it, so the cache stays clean.
# Downloaded .deb files are kept beside it, in apt-archives/, and the package
# lists in apt-lists/. The Debian mirror is the one this machine's apt uses
# for bookworm. The build folders (build-deb, build-qt6-deb) are kept, so a
# second run rebuilds nothing that did not change.
#
# Needs root, debootstrap and dpkg-dev (./dev.sh deps installs them).
# Usage: packaging/check-debs.sh        (run from anywhere in the tree)
set -euo pipefail

SOURCE_DIR=$(cd "$(dirname "$0")/.." && pwd)
CACHE_DIR=${VEL_DEB_CACHE_DIR:-/var/cache/vel_qt_widgets}
ROOT_CACHE=${VEL_DEB_ROOT_CACHE:-$CACHE_DIR/debian12-root}
ARCHIVES=$CACHE_DIR/apt-archives
LISTS=$CACHE_DIR/apt-lists
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

# 1. The packages, one set per build. The build folders stay between runs;
# configuring again is only needed when there is none yet (the build itself
# reruns CMake when a CMake file changed).
cd "$SOURCE_DIR"
NJOBS=$(nproc 2>/dev/null || echo 2)
declare -A BUILD_DIR=([5]=build-deb [6]=build-qt6-deb) PRESET=([5]=deb [6]=qt6-deb)
declare -A SET_DEBS SET_PACKAGES
for major in 5 6; do
    build_dir=$SOURCE_DIR/${BUILD_DIR[$major]}
    say "building the Qt $major packages (preset ${PRESET[$major]})"
    if [ ! -f "$build_dir/CMakeCache.txt" ]; then
        cmake --preset "${PRESET[$major]}" >/dev/null
    fi
    cmake --build --preset "${PRESET[$major]}" -j"$NJOBS"
    package_dir=$build_dir/packages
    rm -rf "$package_dir"
    (cd "$build_dir" && cpack -G DEB -B "$package_dir" >/dev/null)
    rm -rf "$package_dir/_CPack_Packages"
    mapfile -t debs < <(find "$package_dir" -maxdepth 1 -name '*.deb' | sort)
    [ ${#debs[@]} -eq 5 ] || fail "Qt $major: expected 5 packages, cpack made ${#debs[@]}"
    packages=()
    for deb in "${debs[@]}"; do
        packages+=("$(dpkg-deb -f "$deb" Package)")
        say "$(basename "$deb")"
    done
    SET_DEBS[$major]="${debs[*]}"
    SET_PACKAGES[$major]="${packages[*]}"

    # Installed into /usr, the libraries need no run path.
    mkdir -p "$package_dir/inspect"
    for deb in "${debs[@]}"; do dpkg-deb -x "$deb" "$package_dir/inspect"; done
    while IFS= read -r -d '' lib; do
        if readelf -d "$lib" | grep -E 'RPATH|RUNPATH' >/dev/null; then
            fail "$lib carries a run path in a /usr package"
        fi
    done < <(find "$package_dir/inspect" -type f -name '*.so*' -print0)
    rm -rf "$package_dir/inspect"
done
read -r -a DEBS5 <<<"${SET_DEBS[5]}"
read -r -a DEBS6 <<<"${SET_DEBS[6]}"
read -r -a PACKAGES5 <<<"${SET_PACKAGES[5]}"
read -r -a PACKAGES6 <<<"${SET_PACKAGES[6]}"
PACKAGES=("${PACKAGES5[@]}" "${PACKAGES6[@]}")

# The two sets install side by side: no package name and no file (other
# than a folder) in both.
shared=$(printf '%s\n' "${PACKAGES5[@]}" "${PACKAGES6[@]}" | sort | uniq -d)
[ -z "$shared" ] || fail "package names in both sets: $shared"
files_of() { # the files and links (not folders) of some .deb files
    local deb
    for deb; do dpkg-deb -c "$deb"; done | awk '$1 !~ /^d/ {sub(/^\.\//, "/", $6); print $6}' | sort -u
}
shared=$(comm -12 <(files_of "${DEBS5[@]}") <(files_of "${DEBS6[@]}"))
[ -z "$shared" ] || fail "files in both the Qt 5 and the Qt 6 packages: $shared"

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
mkdir -p "$ARCHIVES/partial" "$LISTS/partial"

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
# Kept package lists make apt-get update a check that nothing changed.
mount_on "$ROOT/var/lib/apt/lists" --bind "$LISTS"
cp /etc/resolv.conf "$ROOT/etc/resolv.conf" 2>/dev/null || true
# dpkg without an fsync per file (the root is thrown away anyway).
echo force-unsafe-io >"$ROOT/etc/dpkg/dpkg.cfg.d/vel-check-unsafe-io"
# No services start inside the root.
printf '#!/bin/sh\nexit 101\n' >"$ROOT/usr/sbin/policy-rc.d"
chmod +x "$ROOT/usr/sbin/policy-rc.d"

mkdir -p "$ROOT/tmp/vel/debs/qt5" "$ROOT/tmp/vel/debs/qt6"
cp "${DEBS5[@]}" "$ROOT/tmp/vel/debs/qt5/"
cp "${DEBS6[@]}" "$ROOT/tmp/vel/debs/qt6/"
cp -r "$SOURCE_DIR/packaging/deb-consumer" "$ROOT/tmp/vel/deb-consumer"
printf '%s\n' "${PACKAGES[@]}" >"$ROOT/tmp/vel/packages"
# Each set's packages by role, for the script in the root (roles-5, roles-6).
for major in 5 6; do
    read -r -a packages <<<"${SET_PACKAGES[$major]}"
    role() {
        printf '%s\n' "${packages[@]}" | grep -E -m1 -e "$1" || fail "Qt $major: no package matches $1"
    }
    if [ "$major" = 5 ]; then suffix=; else suffix=-qt$major; fi
    {
        echo "MAJOR=$major"
        echo "SUFFIX=$suffix"
        echo "WIDGETS=$(role "^lib.*widgets${suffix:+$suffix-}[0-9]+\$")"
        echo "SYSTEM=$(role "^lib.*system${suffix:+$suffix-}[0-9]+\$")"
        echo "DEV=$(role '-dev$')"
        echo "DESIGNER=$(role '-designer-plugin$')"
        echo "L10N=$(role '-l10n$')"
    } >"$ROOT/tmp/vel/roles-$major"
done

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
# use_set <major>: MAJOR, SUFFIX ("" or -qt6) and the package roles of one set.
use_set() { source ./roles-"$1"; }
runtime_debs() { # the .deb files of the current set's run-time packages
    local p
    for p in "$SYSTEM" "$WIDGETS" "$DESIGNER" "$L10N"; do echo ./debs/qt"$MAJOR"/"$p"_*.deb; done
}
set_packages() { echo "$WIDGETS" "$SYSTEM" "$DEV" "$DESIGNER" "$L10N"; }

apt_get update >/dev/null

# The current set's run-time packages as installed: the libraries in
# Debian's multiarch library folder, known to the loader's cache (the
# packages' ldconfig trigger ran) and finding everything they need; the
# plug-in where its Qt's Designer looks; Qt's SVG plug-ins that draw the
# widgets' icons; the catalogues.
check_runtime() {
    local widgets_so=libvel_qt_widgets$SUFFIX.so.0 system_so=libvel_system$SUFFIX.so.0 libdir lib
    libdir=$(dpkg -L "$WIDGETS" | awk -v f="/$widgets_so" 'substr($0, length($0) - length(f) + 1) == f && !n++ {print}')
    libdir=$(dirname "${libdir:-/nowhere/x}")
    [[ "$libdir" =~ ^/usr/lib/[a-z0-9_]+-linux-gnu[a-z0-9_]*$ ]] ||
        fail "$widgets_so is not in a multiarch library folder (got '$libdir')"
    for lib in "$widgets_so" "$system_so"; do
        ldconfig -p | awk -v l="$lib" '$1 == l {found = 1} END {exit !found}' || fail "ldconfig does not know $lib"
        [ -e "$libdir/$lib" ] || fail "$libdir/$lib is not installed"
        if ldd "$libdir/$lib" | grep 'not found' >/dev/null; then
            ldd "$libdir/$lib" >&2
            fail "$libdir/$lib: a library it needs is not installed (Depends incomplete)"
        fi
        # One Qt per process: a library of one build never pulls in the other's Qt.
        if ldd "$libdir/$lib" | grep -E "libQt[0-9]" | grep -v "libQt$MAJOR" >/dev/null; then
            ldd "$libdir/$lib" >&2
            fail "$libdir/$lib loads a Qt other than Qt $MAJOR"
        fi
    done
    PLUGIN=$libdir/qt$MAJOR/plugins/designer/libvel_qt_widgets$SUFFIX.so
    [ -e "$PLUGIN" ] || fail "no Designer plug-in at $PLUGIN"
    [ -e "$libdir/qt$MAJOR/plugins/iconengines/libqsvgicon.so" ] ||
        fail "Qt $MAJOR's SVG icon engine is not installed (Depends of $WIDGETS)"
    [ -f "/usr/share/vel_qt_widgets$SUFFIX/translations/vel_qt_widgets_de.qm" ] ||
        fail "no German catalogue in /usr/share/vel_qt_widgets$SUFFIX/translations"
}

# Purges packages; none may stay known to dpkg, and no file of theirs may be
# left (folders still owned by other packages aside).
purge_and_check() {
    local p status left stray
    for p; do dpkg -L "$p"; done | sort -u >files-before
    apt_get purge -y "$@" >apt-purge.log 2>&1 || { cat apt-purge.log; fail "apt purge"; }
    for p; do
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
}

# The packages hold on to each other: removing a library takes along every
# package that needs it, and nothing of the other build.
takes_along() { # takes_along <package> <dependent>...
    local package=$1 removed
    shift
    removed=$(apt-get -s remove "$package" | awk '$1 == "Remv" {printf "%s ", $2}')
    for dependent; do
        [[ " $removed" == *" $dependent "* ]] ||
            fail "$dependent does not depend on $package (removing it removes only: $removed)"
    done
}
leaves_alone() { # leaves_alone <package> <other>...
    local package=$1 removed
    shift
    removed=$(apt-get -s remove "$package" | awk '$1 == "Remv" {printf "%s ", $2}')
    for other; do
        [[ " $removed" != *" $other "* ]] || fail "removing $package removes $other too"
    done
}

# Each run-time set alone in the clean root: Qt 6's first, then gone again
# with everything it pulled in, so that Qt 5's finds nothing of it.
use_set 6
say "apt install of the Qt 6 run-time packages alone"
mapfile -t debs < <(runtime_debs)
apt_get install -y --no-install-recommends "${debs[@]}" >apt-runtime6.log 2>&1 ||
    { cat apt-runtime6.log; fail "apt install"; }
check_runtime
say "apt purge of the Qt 6 run-time packages and of what they pulled in"
purge_and_check "$SYSTEM" "$WIDGETS" "$DESIGNER" "$L10N"
apt_get autoremove --purge -y >apt-autoremove.log 2>&1 || { cat apt-autoremove.log; fail "apt autoremove"; }
! ls /usr/lib/*/libQt6Core.so.6 >/dev/null 2>&1 || fail "Qt 6 is still installed after autoremove"

use_set 5
say "apt install of the Qt 5 run-time packages alone"
mapfile -t debs < <(runtime_debs)
apt_get install -y --no-install-recommends "${debs[@]}" >apt-runtime5.log 2>&1 ||
    { cat apt-runtime5.log; fail "apt install"; }
check_runtime

say "apt install of the Qt 6 run-time packages beside the Qt 5 ones"
use_set 6
mapfile -t debs < <(runtime_debs)
apt_get install -y --no-install-recommends "${debs[@]}" >apt-runtime56.log 2>&1 ||
    { cat apt-runtime56.log; fail "apt install"; }
for major in 5 6; do
    use_set "$major"
    check_runtime
done

say "apt install of both -dev packages and of the tools for outside projects"
use_set 5
dev5=(./debs/qt5/"$DEV"_*.deb)
use_set 6
dev6=(./debs/qt6/"$DEV"_*.deb)
apt_get install -y --no-install-recommends "${dev5[@]}" "${dev6[@]}" \
    g++ make cmake qttools5-dev qt6-tools-dev >apt-dev.log 2>&1 || { cat apt-dev.log; fail "apt install"; }

for major in 5 6; do
    use_set "$major"
    if [ "$major" = 5 ]; then other=6; else other=5; fi
    mapfile -t others < <(source ./roles-"$other"; set_packages | tr ' ' '\n')
    takes_along "$SYSTEM" "$WIDGETS" "$DEV" "$DESIGNER"
    takes_along "$WIDGETS" "$DEV" "$DESIGNER"
    leaves_alone "$SYSTEM" "${others[@]}"
    for p in $(set_packages); do
        [ "$(dpkg-query -W -f='${Version}' "$p")" = "$(dpkg-deb -f ./debs/qt"$MAJOR"/"$p"_*.deb Version)" ] ||
            fail "$p: installed version differs from the package's"
    done
done

for major in 5 6; do
    use_set "$major"
    say "building an outside project against /usr with Qt $MAJOR (find_package(vel_qt_widgets$SUFFIX))"
    build=build-qt$MAJOR
    cmake -S deb-consumer -B "$build" -DCMAKE_BUILD_TYPE=Release -DVEL_QT_MAJOR="$MAJOR" >"$build.log" 2>&1 ||
        { cat "$build.log"; fail "configure"; }
    cmake --build "$build" >>"$build.log" 2>&1 || { cat "$build.log"; fail "build"; }
    # Linked to this build's library, which loads this build's Qt only.
    ldd "$build"/vel_deb_consumer | grep -F "libvel_qt_widgets$SUFFIX.so.0 => /" >/dev/null ||
        { ldd "$build"/vel_deb_consumer >&2; fail "vel_deb_consumer (Qt $MAJOR) is not linked to libvel_qt_widgets$SUFFIX.so.0"; }
    if ldd "$build"/vel_deb_consumer | grep -E "libvel_qt_widgets(-qt[0-9]+)?\.so|libQt[0-9]" |
        grep -v -E "libvel_qt_widgets$SUFFIX\.so\.0 |libQt$MAJOR" >/dev/null; then
        ldd "$build"/vel_deb_consumer >&2
        fail "vel_deb_consumer (Qt $MAJOR) loads the other build's library or Qt"
    fi
    ./"$build"/vel_deb_consumer 2>/dev/null || fail "vel_deb_consumer (Qt $MAJOR)"
    found=$(./"$build"/vel_designer_check 2>/dev/null) ||
        { echo "$found"; fail "vel_designer_check: Qt $MAJOR's Designer would not list the widgets"; }
    grep -v skipped <<<"$found"
    grep -F "vel_designer_check: /usr/lib/" <<<"$found" | grep -E "/qt$MAJOR/plugins/designer/libvel_qt_widgets$SUFFIX\.so\$" >/dev/null ||
        fail "vel_designer_check: Qt $MAJOR's Designer did not load libvel_qt_widgets$SUFFIX.so from its own plug-in folder"
done

say "apt purge of both sets"
purge_and_check "${PACKAGES[@]}"
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
say "OK: ${PACKAGES[*]} install (alone and side by side), work and purge cleanly in Debian 12"
