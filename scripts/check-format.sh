#!/usr/bin/env bash
# Tells where a source file of ours is not formatted as .clang-format says; changes nothing.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
find src companion assets samples tests bench tour fuzz \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 clang-format --dry-run -Werror
