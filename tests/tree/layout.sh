#!/usr/bin/env bash
# Fails for a source that clang-format would lay out otherwise, and for a line that is too long: the
# formatter leaves comments as they are.
set -euo pipefail
export LC_ALL=C.UTF-8
cd "$1"

mapfile -t sources < <(find src tests tools benchmarks -name '*.h' -o -name '*.cpp')
status=0
clang-format-14 --dry-run -Werror "${sources[@]}" || status=1

# A text in quotation marks is never broken.
if grep -nE '^[^"]{101,}$' "${sources[@]}"; then
    echo "these lines are longer than 100 characters" >&2
    status=1
fi
exit $status
