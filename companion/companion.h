#pragma once

#include "companion/LookAhead.h"
#include "companion/Output.h"
#include "companion/PathSource.h"
#include "companion/command_line.h"

#include <span>

/// Runs the program with the words of its command line, its own name first, with so many threads beside its own. What
/// it says and does is the same with any number. Gives its exit status: 0 done, 1 some files could not, 2 wrong usage.
int run_companion(std::span<char*> words, const Streams& streams, int helpers = usual_helpers());

// The commands. Each tells what it does on `output`.

void run_check(const Order& order, PathSource& paths, Output& output);
void run_convert(const Order& order, PathSource& paths, Output& output);
void run_tag(const Order& order, PathSource& paths, Output& output);
void run_info(PathSource& paths, Output& output);
void run_undo(const QByteArray& journal, Output& output);
