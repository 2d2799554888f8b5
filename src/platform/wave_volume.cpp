#include "platform/wave_volume.h"

#include <atomic>

namespace {

std::atomic<std::uint32_t> output_level{0xFFFFFFFF};

} // namespace

void waveOutSetVolume(i32 device, i32 level)
{
    if (device == 0)
        output_level = static_cast<std::uint32_t>(level);
}

std::uint32_t wave_output_level()
{
    return output_level;
}
