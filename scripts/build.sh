#!/usr/bin/env bash
# Configures a preset, with further arguments for cmake where there are any, and builds it:
#   scripts/build.sh PRESET [ARGUMENT...]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
preset=$1

# A build folder that came along when the project was copied or moved still points to the old place.
fresh=()
cache=build/$preset/CMakeCache.txt
if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "$cache"; then
    fresh=(--fresh)
fi

cmake --preset "$preset" "${fresh[@]}" "${@:2}"
cmake --build --preset "$preset" -j "$(nproc)"
