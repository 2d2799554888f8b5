#pragma once

#include "platform/numbers.h"

/// Lengths on forms are twips, 15 to the logical pixel.
constexpr int twips_per_pixel = 15;

/// `twips` in logical pixels, rounded with ties to even.
inline int to_pixels(double twips)
{
    return rounded<i32>(twips / twips_per_pixel);
}

/// Logical pixels in twips.
constexpr int to_twips(int pixels)
{
    return pixels * twips_per_pixel;
}
