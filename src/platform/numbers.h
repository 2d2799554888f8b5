#pragma once

#include "platform/RunTimeError.h"

#include <cmath>
#include <cstdint>
#include <limits>

using i16 = std::int16_t;
using i32 = std::int32_t;

/// `value` as a number of type Whole; raises RunTimeError 6, "Overflow", outside its range.
template<typename Whole> Whole checked(std::int64_t value)
{
    if (value < std::numeric_limits<Whole>::min() || value > std::numeric_limits<Whole>::max())
        throw RunTimeError(RunTimeError::overflow);
    return static_cast<Whole>(value);
}

/// `value` to the nearest whole number, ties to the even one.
inline double round_half_even(double value)
{
    return std::nearbyint(value);
}

/// `value` rounded to the nearest whole number, ties to even, as a number of type Whole; raises "Overflow" outside
/// its range.
template<typename Whole> Whole rounded(double value)
{
    const double whole = round_half_even(value);
    if (!(whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max()))
        throw RunTimeError(RunTimeError::overflow);
    return static_cast<Whole>(whole);
}
