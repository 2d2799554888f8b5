#pragma once

#include "platform/numbers.h"

#include <array>
#include <cstdint>
#include <span>

/// What the samples of each channel are multiplied by: left, right.
using Gains = std::array<float, 2>;

/// The gains of a wave output level (left in the low word, right in the high one, each 0 to 65535) and a player level
/// in hundredths of a decibel: 0 and above is full, -10000 and below exactly silent.
Gains gains_of(std::uint32_t wave_level, i32 volume);

/// Gives samples their level on the way out, without clicks: a change of level is spread over some milliseconds, and
/// so is a jump from one sound to another or to silence. Samples are pairs, left and right in turn.
class Fader
{
public:
    /// Takes `rate` samples in a second.
    explicit Fader(int rate);

    /// Gives `samples` the level `target`: the first `sounding` of them are sound, silence follows. `continues`: the
    /// sound follows that of the last call.
    void apply(std::span<float> samples, std::int64_t sounding, bool continues, Gains target);
    /// The last call made nothing but silence; the next sound begins at its own level.
    bool is_quiet() const { return is_quiet_; }

private:
    struct Channel
    {
        float gain = 0;
        float last = 0; ///< as it went out
        float jump = 0; ///< what is still added, less with each sample, to make up for a jump
    };

    float gain_step_;
    std::int64_t smooth_samples_;
    std::int64_t still_to_smooth_ = 0;
    bool is_quiet_ = true;
    bool was_sounding_ = false;
    std::array<Channel, 2> channels_;
};
