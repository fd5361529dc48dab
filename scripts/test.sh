#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests. An argument names another preset
# (release, debug, sanitize).
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}
scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset" -j "$(nproc)"
