#pragma once

#include <cstddef>
#include <vector>

/// Places from 1 of things that are numbered by serials as they come (0, 1, ...) and whose places close up when one
/// goes. Every operation takes logarithmic time.
class OrderIndex
{
public:
    /// Takes in one more thing, at the last place; gives its serial.
    int append();
    void remove(int serial);
    int count() const { return count_; }
    /// The place of a thing that is there.
    int place(int serial) const;
    /// The serial of the thing at a place from 1 to count().
    int serial(int place) const;

private:
    int sum(std::size_t first_slots) const;

    std::vector<int> sums_; ///< a Fenwick tree: the element n holds the sum of the slots up to n that it stands for
    int count_ = 0;
};
