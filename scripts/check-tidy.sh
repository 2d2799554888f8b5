#!/usr/bin/env bash
# Runs clang-tidy over our sources:  scripts/check-tidy.sh BUILD_FOLDER [FILE...]
# The folder must be built, as the code that moc writes is included. Without files it takes all.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
export build=$1
shift

# One clang-tidy for each file, with its words kept together; a clean file says nothing.
check_file() {
    local words
    words=$(clang-tidy --quiet -p "$build" "$1" 2>&1) && return
    printf '%s\n' "$words"
    return 1
}
export -f check_file

if (($#)); then
    printf '%s\0' "$@"
else
    find src companion assets samples tests bench tour -name '*.cpp' -print0
fi | xargs -0 -n 1 -P "$(nproc)" bash -c 'check_file "$1"' check-tidy
