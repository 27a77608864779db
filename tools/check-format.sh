#!/usr/bin/env bash
# Fails on any line of the C++ sources that clang-format, with the committed
# .clang-format, would change. Fix with:
#
#   tools/check-format.sh --fix
#
# The sources are the files git tracks under src, include, tests, examples
# and bench, so build output is never looked at.
set -euo pipefail
cd "$(dirname "$0")/.."

CLANG_FORMAT=${CLANG_FORMAT:-clang-format}
command -v "$CLANG_FORMAT" >/dev/null || { echo "check-format: $CLANG_FORMAT not found" >&2; exit 2; }

mapfile -t FILES < <(git ls-files -- src include tests examples bench | grep -E '\.(cpp|h)$')
[ ${#FILES[@]} -gt 0 ] || { echo "check-format: no sources found" >&2; exit 2; }

if [ "${1:-}" = "--fix" ]; then
    "$CLANG_FORMAT" -i --style=file "${FILES[@]}"
    exit 0
fi
if ! "$CLANG_FORMAT" --dry-run -Werror --style=file "${FILES[@]}"; then
    echo "check-format: the files above are not formatted; run tools/check-format.sh --fix" >&2
    exit 1
fi
echo "check-format: ${#FILES[@]} files formatted"
