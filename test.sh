#!/usr/bin/env bash
# Builds everything with warnings as errors and runs all tests; needs no display and no sound card.
set -euo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")"

scripts/install-packages.sh build run test
scripts/build.sh ci
ctest --preset ci -j "$(nproc)"
