#include "platform/media_player/gains.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float full_word = 65535;
constexpr i32 silent_volume = -10000;
constexpr double hundredths_to_the_decade = 2000;

/// How long the level takes from silent to full, and how long a jump is smoothed.
constexpr float gain_seconds = 0.008F;
constexpr float smooth_seconds = 0.005F;

} // namespace

Gains gains_of(std::uint32_t wave_level, i32 volume)
{
    const double level =
        volume > silent_volume ? std::pow(10.0, std::min(volume, i32{0}) / hundredths_to_the_decade) : 0.0;
    const auto gain = [level](std::uint32_t word) {
        return static_cast<float>(level * static_cast<double>(word & 0xFFFFU) / full_word);
    };
    return {gain(wave_level), gain(wave_level >> 16U)};
}

Fader::Fader(int rate)
    : gain_step_(1 / (gain_seconds * static_cast<float>(rate))),
      smooth_samples_(std::lround(smooth_seconds * static_cast<float>(rate)))
{
}

void Fader::apply(std::span<float> samples, std::int64_t sounding, bool continues, Gains target)
{
    auto value = samples.begin();
    for (std::int64_t sample = 0; sample < std::ssize(samples) / std::ssize(channels_); ++sample) {
        const bool sounds = sample < sounding;
        const bool jumps = sounds != was_sounding_ || (sounds && sample == 0 && !continues);
        if (jumps)
            still_to_smooth_ = smooth_samples_;
        const float share = static_cast<float>(still_to_smooth_) / static_cast<float>(smooth_samples_);
        for (std::size_t number = 0; number < channels_.size(); ++number, ++value) {
            Channel& channel = channels_.at(number);
            const float change = target.at(number) - channel.gain;
            channel.gain += is_quiet_ ? change : std::clamp(change, -gain_step_, gain_step_);
            const float sound = sounds ? *value * channel.gain : 0;
            if (jumps)
                channel.jump = channel.last - sound;
            channel.last = sound + channel.jump * share;
            *value = channel.last;
        }
        still_to_smooth_ = std::max<std::int64_t>(still_to_smooth_ - 1, 0);
        was_sounding_ = sounds;
        is_quiet_ = is_quiet_ && !sounds;
    }
    is_quiet_ = sounding == 0 && still_to_smooth_ == 0;
}
