#pragma once

#include <benchmark/benchmark.h>

// Copying many files into an empty folder of the same disk, whose changes are all written before each round begins.
// The environment variable QUILMO_BENCH_FILES sets how many files there are at most. A row is left out where less than
// three times the needed room is free.

/// `cp -a` of 1,000 files of 4 MB, which leaves to the system when the copies go to the disk.
void copy_large_floor(benchmark::State& state);
/// The same, and a sync of each copy after that.
void copy_large_floor_synced(benchmark::State& state);
/// The program's file operation, which syncs each copy before it gives it a name.
void copy_large_work(benchmark::State& state);

/// `cp -a` of 5,000 files of 3 KB, and a sync of each copy after that.
void copy_small_floor_synced(benchmark::State& state);
void copy_small_work(benchmark::State& state);
