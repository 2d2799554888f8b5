#pragma once

#include "companion/LookAhead.h"
#include "companion/Output.h"
#include "companion/PathSource.h"

#include <functional>

/// Hands all music files among the paths to `looks`, and tells what can't be walked. `folder_end` is called at its turn
/// when the files of a walked folder are through.
void walk_files(PathSource& paths, Output& output, LookAhead& looks, const std::function<void()>& folder_end = {});
