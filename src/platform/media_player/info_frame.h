#pragma once

#include <cstdint>
#include <span>

/// What the first frame of a file may hold in place of sound: a header that tells how many frames follow.
struct InfoFrame
{
    bool is_there = false;
    std::int64_t frames = 0; ///< frames behind this one; 0 when it doesn't tell
};

/// Bytes of the smallest frame that there is, except in free format.
inline constexpr std::int64_t smallest_frame = 24;

/// Looks for a "Xing" or "Info" header in a frame of the MPEG header `header` and the bytes `body` behind that.
InfoFrame read_info_frame(std::uint32_t header, std::span<const unsigned char> body);
