#pragma once

#include "platform/numbers.h"

#include <cstdint>

/// Sets the wave output level: the left channel in the low word, the right one in the high word, each 0 to 65535.
/// There is one device, number 0; any other is passed over. Until the first call the level is full.
void waveOutSetVolume(i32 device, i32 level);

/// The level last set, as the sound output takes it; may be asked from any thread.
std::uint32_t wave_output_level();
