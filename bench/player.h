#pragma once

#include <benchmark/benchmark.h>

// The media control and the poll, on a file of 5 MB at 128 kbit/s, through SDL's dummy driver.

/// The bare system calls that read the whole file: without a header that tells its length, every frame must be seen.
void open_counted_floor(benchmark::State& state);
/// From Open to the first sample that goes out, the sound output being open already. Most of it is the wait until the
/// output asks for samples; the counter `ready` is the part until the length is known, in
/// seconds.
void open_counted_work(benchmark::State& state);

/// The bare system calls that read the file's first buffer, in which a header tells the length.
void open_told_floor(benchmark::State& state);
void open_told_work(benchmark::State& state);

/// What the poll and the position bar ask the media control each time, while it plays.
void poll_values(benchmark::State& state);
/// A tick of the poll with its labels and knob, while a file plays.
void poll_tick(benchmark::State& state);

/// Plays for some seconds; the counter `cpu_percent` is the share of one core that the process took.
void play_share(benchmark::State& state);
