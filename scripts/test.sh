#!/usr/bin/env bash
# Sets up the machine, builds everything and runs every test: first the whole
# program, then the libraries and the file loader again under ASan and UBSan.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
jobs=$(nproc)

cmake --preset default >/dev/null
cmake --build --preset default -j "$jobs"
status=0
ctest --preset default -j "$jobs" || status=1

cmake --preset sanitize >/dev/null
cmake --build --preset sanitize -j "$jobs"
ctest --preset sanitize -j "$jobs" || status=1
exit $status
