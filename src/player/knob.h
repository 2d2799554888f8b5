#pragma once

#include "platform/controls/Placed.h"
#include "platform/numbers.h"

/// Where a knob stands in its track, in percent of the way that it can go, unrounded. Raises "Division by zero" if knob
/// and track are of one width.
inline double knob_percent(const Place& knob, const Place& track)
{
    const int way = track.Width() - knob.Width();
    if (way == 0)
        throw RunTimeError(RunTimeError::division_by_zero);
    return static_cast<double>(knob.Left()) / way * 100;
}

/// Puts a knob at `percent` of the way that it can go in its track.
inline void place_knob(Place& knob, const Place& track, double percent)
{
    knob.set_Left(rounded<i32>((track.Width() - knob.Width()) / 100.0 * percent));
}
