#pragma once

#include "platform/controls/ListView.h"
#include "platform/numbers.h"

#include <span>
#include <vector>

/// What a click on a column header does: turns the direction of that column round (it becomes 1, descending, at the
/// first click) and sorts by it. `toggles` holds one direction for each of `sortable_columns`; other columns do
/// nothing.
void sort_by_toggle(ListView& list, int column, const std::vector<int>& sortable_columns, std::span<i16> toggles);
