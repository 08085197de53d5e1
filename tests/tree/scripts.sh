#!/usr/bin/env bash
# Fails for a slip in a shell script.
set -euo pipefail
cd "$1"

mapfile -t scripts < <(grep -rlE '^#!.*\b(ba)?sh$' run test .ci benchmarks src tests tools)
((${#scripts[@]} >= 10))
exec shellcheck "${scripts[@]}"
