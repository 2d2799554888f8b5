#include "platform/controls/column_sort.h"

#include <algorithm>

void sort_by_toggle(ListView& list, int column, const std::vector<int>& sortable_columns, std::span<i16> toggles)
{
    const auto place = std::ranges::find(sortable_columns, column);
    if (place == sortable_columns.end())
        return;
    i16& toggle = toggles[static_cast<std::size_t>(place - sortable_columns.begin())];
    toggle = toggle == 0 ? 1 : 0;
    list.sort(column, toggle == 1 ? ListView::Order::descending : ListView::Order::ascending);
}
