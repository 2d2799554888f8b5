#!/usr/bin/env bash
# Measures the program beside the bare system calls of the same work and beside other programs, and writes the tables of
# docs/performance.md:  ./bench.sh [--quick] [PART...]
# Parts: files, list, dialogs, tree, start, memory, companion, peers, slow-peers, player, copies; all without names. The
# tables of the other parts keep what was measured last. --quick runs everything once on few files and writes no page, to see that it still
# runs. Other programs are measured where they are installed:  scripts/install-packages.sh peers
set -euo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")"

quick=
parts=()
for argument in "$@"; do
    if [[ $argument == --quick ]]; then quick=1; else parts+=("$argument"); fi
done
((${#parts[@]})) || parts=(files list dialogs tree start memory companion peers slow-peers player copies)

scripts/install-packages.sh build run bench
scripts/build.sh bench

programs=$PWD/build/bench/bench
stopwatch=$programs/quilmo-bench-stopwatch
results=$PWD/build/bench/results${quick:+-quick}
mkdir -p "$results"
# shellcheck disable=SC2034 # peers.sh uses files and folders
rounds=27 processes=3 largest=100000 files=10000 folders=50 rows=20000
# shellcheck disable=SC2034
[[ -z $quick ]] || rounds=1 processes=1 largest=300 files=200 folders=4 rows=500

# On disk and not in memory: that is where music lies, and all is in the system's cache for the program and its floor.
TMPDIR=$(mktemp -d "${TMPDIR:-/tmp}/quilmo-bench-XXXXXX")
export TMPDIR
memory=$TMPDIR
needed=$((2 * 1024 * 1024)) # KiB
available=$(df --output=avail /dev/shm 2>/dev/null | tail -1) || true
[[ ! -w /dev/shm ]] || ((${available:-0} < needed)) || memory=$(mktemp -d /dev/shm/quilmo-bench-XXXXXX)
trap 'rm -rf "$TMPDIR" "$memory"' EXIT
export HOME=$TMPDIR/home XDG_RUNTIME_DIR=$TMPDIR LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy
export QUILMO_BENCH_FILES=${QUILMO_BENCH_FILES:-${quick:+5}}
[[ -n $QUILMO_BENCH_FILES ]] || QUILMO_BENCH_FILES=100
mkdir "$HOME"

source bench/peers.sh

# run_bench PATTERN: the benchmarks of these names, in turn round by round. Several processes share the rounds, as where
# in memory one of them happens to lie makes a tenth of difference to all of its rounds.
run_bench() {
    local process
    for ((process = 0; process < processes; ++process)); do
        "$programs/quilmo-bench" --benchmark_filter="^($1)/?" --benchmark_enable_random_interleaving=true \
            --rounds=$((rounds / processes)) --largest="$largest" --results="$part_results"
    done
}

measure_start() {
    local round
    for ((round = 0; round < 4 * rounds; ++round)); do
        # The size of the splash.
        note_of start/floor "$programs/quilmo-bench-first-frame-bare" 480 300
        note_of start/work "$programs/quilmo-bench-first-frame"
    done >>"$part_results"
}

measure_memory() {
    local round
    mkdir "$TMPDIR/rows"
    "$programs/quilmo-bench-corpus" make "$TMPDIR/rows" "$rows" 1 plain
    for ((round = 0; round < (rounds + 8) / 9; ++round)); do
        # The size of the main window.
        "$programs/quilmo-bench-memory-at-rest-bare" 996 672 | sed 's|^rest|memory/floor|'
        HOME="$TMPDIR/rows/folder 000" QUILMO_BENCH_FOLDER='Home(H:)' "$programs/quilmo-bench-memory-at-rest" |
            sed 's|^rest|memory/work|; s|^rows|memory/rows|'
    done >>"$part_results"
}

describe_machine() {
    tell() { printf 'machine/%s\t%s\n' "$1" "$2"; }
    tell Processor "$(sed -n '/^model name/{s/.*: //p;q}' /proc/cpuinfo)"
    tell Cores "$(nproc)"
    tell Memory "$(awk '/^MemTotal/ {printf "%.0f GB", $2 / 1048576}' /proc/meminfo)"
    tell Kernel "$(uname -sr)"
    tell System "$(sed -n 's/^PRETTY_NAME="\(.*\)"/\1/p' /etc/os-release)"
    tell 'File system' "$(stat -f -c %T "$TMPDIR"), warm cache"
    tell Compiler "g++ $(g++ -dumpfullversion), release flags of run.sh"
    tell Qt "$(pkg-config --modversion Qt6Core)"
    tell Screen "none (Qt's offscreen platform)"
}

for part in "${parts[@]}"; do
    echo "== $part"
    part_results=$TMPDIR/results
    : >"$part_results"
    case $part in
    files) run_bench 'classify|write_tags' ;;
    list) run_bench 'fill_list_view|sort_.*|select_all' ;;
    dialogs) run_bench 'fill_final_list|change_fif|preview' ;;
    tree) TMPDIR=$memory run_bench 'expand|walk' ;;
    start) measure_start ;;
    memory) measure_memory ;;
    companion) TMPDIR=$memory measure_companion >>"$part_results" ;;
    peers) TMPDIR=$memory measure_peers "${peers[@]}" >>"$part_results" ;;
    slow-peers) TMPDIR=$memory measure_peers "${slow_peers[@]}" >>"$part_results" ;;
    player) run_bench 'open_.*|poll_.*|play_share' ;;
    copies) run_bench 'copy_.*' ;;
    *)
        echo "$0: there is no part \"$part\"" >&2
        exit 2
        ;;
    esac
    mv "$part_results" "$results/$part"
done
describe_machine >"$results/machine"

page=docs/performance.md
if [[ -n $quick ]]; then
    page=$TMPDIR/performance.md
    cp docs/performance.md "$page"
fi
cat "$results"/* >"$TMPDIR/all"
"$programs/quilmo-bench-page" "$TMPDIR/all" "$page"
if [[ -n $quick ]]; then
    echo "Everything runs. Few files say nothing about times, so docs/performance.md stays as it was."
else
    sed -n '/table aims/,/end -->/{/^|/p}' "$page"
    echo "All tables: $page"
fi
