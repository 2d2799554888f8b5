#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

/// A piece of the program's work on files, which can be of any number.
struct Work
{
    using Measure = void (*)(benchmark::State& state, int files);

    std::string name;
    Measure work = nullptr;
    Measure floor = nullptr;  ///< the bare system calls of the same work; left out where it has none
    std::vector<int> sizes{}; ///< how many files
    /// Few files get many turns in a round, as the first turn finds the processor's caches cold.
    int files_a_round = 10000;
};

/// What a file is, and its tag.
std::vector<Work> file_works();
/// The file list.
std::vector<Work> list_works();
/// The dialogs that convert.
std::vector<Work> dialog_works();
/// The folder tree; its files are folders.
std::vector<Work> tree_works();
