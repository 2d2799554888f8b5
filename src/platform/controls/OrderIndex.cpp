#include "platform/controls/OrderIndex.h"

#include <bit>

namespace {

/// How many slots the element `n` (from 1) of the tree stands for.
constexpr std::size_t span(std::size_t n)
{
    return n & (~n + 1);
}

} // namespace

int OrderIndex::append()
{
    const std::size_t n = sums_.size() + 1;
    sums_.push_back(1 + count_ - sum(n - span(n)));
    ++count_;
    return static_cast<int>(n) - 1;
}

void OrderIndex::remove(int serial)
{
    for (std::size_t n = static_cast<std::size_t>(serial) + 1; n <= sums_.size(); n += span(n))
        --sums_[n - 1];
    --count_;
}

int OrderIndex::place(int serial) const
{
    return sum(static_cast<std::size_t>(serial) + 1);
}

int OrderIndex::serial(int place) const
{
    std::size_t passed = 0;
    for (std::size_t step = std::bit_floor(sums_.size()); step > 0; step /= 2) {
        if (passed + step <= sums_.size() && sums_[passed + step - 1] < place) {
            passed += step;
            place -= sums_[passed - 1];
        }
    }
    return static_cast<int>(passed);
}

int OrderIndex::sum(std::size_t first_slots) const
{
    int sum = 0;
    for (std::size_t n = first_slots; n > 0; n -= span(n))
        sum += sums_[n - 1];
    return sum;
}
