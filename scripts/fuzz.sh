#!/usr/bin/env bash
# Runs the fuzzing programs:  scripts/fuzz.sh SECONDS [TARGET...]
# Each target (all without names) runs for so long on a copy of its corpus under fuzz/corpus/, two at a time. What a run
# has learned and found is left under build/fuzz/runs/TARGET/; fails when one of them found something.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
export seconds=$1
shift
targets=("$@")
if ((!$#)); then
    mapfile -t targets < <(find fuzz/corpus -mindepth 1 -maxdepth 1 -printf '%f\n' | sort)
fi

scripts/install-packages.sh build fuzz
scripts/build.sh fuzz

# Files of the runs lie in memory where the system offers that.
memory=$([[ -w /dev/shm ]] && echo /dev/shm || echo "${TMPDIR:-/tmp}")
TMPDIR=$(mktemp -d "$memory/quilmo-fuzz-XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

run_target() {
    local run=build/fuzz/runs/$1 options=()
    rm -rf "$run"
    mkdir -p "$run/finds"
    cp -r "fuzz/corpus/$1" "$run/corpus"
    [[ ! -f fuzz/$1.dict ]] || options+=("-dict=fuzz/$1.dict")
    if LC_ALL=C.UTF-8 "build/fuzz/fuzz/fuzz_$1" "${options[@]}" -max_total_time="$seconds" -timeout=10 \
        -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$run/finds/" "$run/corpus" >"$run/log" 2>&1; then
        echo "$1: $(grep -o 'Done .*' "$run/log"), no find"
        return
    fi
    tail -n 60 "$run/log"
    echo "$1: FOUND SOMETHING, kept as $(find "$run/finds" -type f | tr '\n' ' ')"
    echo "Again:  build/fuzz/fuzz/fuzz_$1 $run/finds/*"
    return 1
}
export -f run_target

printf '%s\0' "${targets[@]}" | xargs -0 -n 1 -P 2 bash -c 'run_target "$1"' fuzz
