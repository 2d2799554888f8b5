#include "platform/media_player/info_frame.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t mark_size = 4;
constexpr std::size_t number_size = 4;

bool is_layer_3(std::uint32_t header)
{
    return (header >> 17U & 3U) == 1;
}

/// Bytes between the MPEG header and the mark: those that tell a decoder how to take a frame's sound apart.
std::size_t side_information_size(std::uint32_t header)
{
    const bool is_mpeg_1 = (header >> 19U & 3U) == 3;
    const bool is_mono = (header >> 6U & 3U) == 3;
    if (is_mpeg_1)
        return is_mono ? 17 : 32;
    return is_mono ? 9 : 17;
}

/// The big-endian number in the first four of `bytes`.
std::uint32_t number_at(std::span<const unsigned char> bytes)
{
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U | bytes[3];
}

} // namespace

InfoFrame read_info_frame(std::uint32_t header, std::span<const unsigned char> body)
{
    const std::size_t place = side_information_size(header);
    if (!is_layer_3(header) || body.size() < place + mark_size + 2 * number_size)
        return {};
    const auto is_mark = [&](std::string_view mark) {
        return std::ranges::equal(body.subspan(place, mark_size), mark);
    };
    if (!is_mark("Xing") && !is_mark("Info"))
        return {};
    const std::uint32_t fields = number_at(body.subspan(place + mark_size));
    const bool tells_frames = (fields & 1U) != 0;
    return {.is_there = true, .frames = tells_frames ? number_at(body.subspan(place + mark_size + number_size)) : 0};
}
