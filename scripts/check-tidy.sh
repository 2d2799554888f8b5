#!/usr/bin/env bash
# Runs clang-tidy over our sources:  scripts/check-tidy.sh BUILD_FOLDER [FILE...]
# The folder must be built, as the code that moc writes is included. Without files it takes all.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=$1
shift

if (($#)); then
    printf '%s\0' "$@"
else
    find src samples tests bench tour -name '*.cpp' -print0
fi | xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet -p "$build" 2>&1 |
    sed '/^[0-9]* warnings\{0,1\} generated\.$/d'
