#!/usr/bin/env bash
# clang-tidy with the committed .clang-tidy over the library's own sources
# (src/vel_qt_widgets, src/vel_system, src/designer). Fails on any finding.
#
#   tools/run-clang-tidy.sh [build dir]     default: build (cmake --preset default)
#
# The build dir must be configured with CMAKE_EXPORT_COMPILE_COMMANDS (the
# presets do); the library is built first, so that the files moc and rcc
# generate exist.
set -euo pipefail
cd "$(dirname "$0")/.."

BUILD_DIR=${1:-build}
CLANG_TIDY=${CLANG_TIDY:-clang-tidy}
DATABASE="$BUILD_DIR/compile_commands.json"

command -v "$CLANG_TIDY" >/dev/null || { echo "run-clang-tidy: $CLANG_TIDY not found" >&2; exit 2; }
[ -f "$DATABASE" ] || { echo "run-clang-tidy: no $DATABASE; configure with a preset first" >&2; exit 2; }

cmake --build "$BUILD_DIR" --target vel_qt_widgets vel_system >/dev/null

# The library's translation units as the compilation database lists them;
# generated files (moc, rcc) live in the build dir and are left out.
mapfile -t FILES < <(python3 - "$DATABASE" "$PWD" <<'PY'
import json, os, sys
root = os.path.realpath(sys.argv[2])
dirs = [os.path.join(root, "src", d) + os.sep for d in ("vel_qt_widgets", "vel_system", "designer")]
seen = set()
for entry in json.load(open(sys.argv[1])):
    path = os.path.realpath(os.path.join(entry["directory"], entry["file"]))
    if any(path.startswith(d) for d in dirs) and path not in seen:
        seen.add(path)
        print(path)
PY
)
[ ${#FILES[@]} -gt 0 ] || { echo "run-clang-tidy: no library sources in $DATABASE" >&2; exit 2; }

echo "run-clang-tidy: ${#FILES[@]} files"
JOBS=$(nproc 2>/dev/null || echo 2)
# --warnings-as-errors turns every finding into a failing exit status. The
# "N warnings generated" counts (of the Qt headers' warnings, filtered out
# anyway) are dropped.
printf '%s\0' "${FILES[@]}" \
    | xargs -0 -n 1 -P "$JOBS" "$CLANG_TIDY" -p "$BUILD_DIR" --quiet --warnings-as-errors='*' \
        2> >(grep -v -E '^[0-9]+ warnings? (and [0-9]+ errors? )?generated\.$' >&2)
echo "run-clang-tidy: clean"
