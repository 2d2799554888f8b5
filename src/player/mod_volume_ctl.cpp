#include "player/mod_volume_ctl.h"

#include "core/mod_of_grobal_var.h"
#include "platform/wave_volume.h"
#include "player/knob.h"

#include <limits>

namespace {

constexpr i16 word_for_each_percent = 327; // half of what the device takes: 100 percent make 32700 of 32767
constexpr i32 both_words = 0x10001;
constexpr double largest = std::numeric_limits<i32>::max();
constexpr i32 never_given = -65536;
constexpr i32 given_instead = -65537;
constexpr i32 silence = -10000;

/// The player's level for the percentages up to `last`: what is missing to 100 times `factor`.
struct Band
{
    i16 last;
    i32 factor;
};

constexpr Band loudness[] = {{3, -100}, {10, -20}, {15, -16}, {100, -13}};

void set_player_volume(i16 percent, MediaPlayerCtl& player)
{
    if (percent < 0 || percent > 200) {
        set_volume_percent(0);
        return;
    }
    for (const auto& [last, factor] : loudness) {
        if (percent <= last) {
            player.set_Volume((100 - percent) * factor);
            return;
        }
    }
    set_volume_percent(100);
}

} // namespace

// Twice 2147483647 is subtracted and not 2^32, on purpose: the told levels depend on it.
i32 folded_level(double doubled)
{
    double d = doubled;
    if (d >= largest) {
        d = largest - d;
        d = -(d + largest);
    }
    const i32 level = rounded<i32>(d);
    return level == never_given ? given_instead : level;
}

void set_wave_volume(i16 percent)
{
    const i16 word = checked<i16>(std::int64_t{percent} * word_for_each_percent);
    const i32 words = checked<i32>(std::int64_t{word} * both_words);
    shared.volume_word = folded_level(2.0 * words);
    waveOutSetVolume(0, shared.volume_word);
}

void set_volume_percent(i16 percent)
{
    shared.vol_type = percent;
    if (shared.is_muted != 0)
        return;
    if (percent < 1)
        set_wave_volume(0);
    else if (percent >= 100)
        set_wave_volume(100);
    else
        set_wave_volume(percent);
}

void sync_player_volume(const Place& knob, const Place& track, MediaPlayerCtl& player)
{
    if (shared.is_muted == 1) {
        set_volume_percent(0);
        player.set_Volume(silence);
        return;
    }
    const i16 percent = rounded<i16>(knob_percent(knob, track));
    set_volume_percent(percent);
    set_player_volume(percent, player);
}

void restore_volume(Place& knob, const Place& track)
{
    place_knob(knob, track, shared.vol_type);
    set_volume_percent(shared.vol_type);
}
