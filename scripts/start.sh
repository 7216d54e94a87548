#!/usr/bin/env bash
# Sets up the machine, builds the designer and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default
exec ./build/bin/ivr-designer "$@"
