#include "platform/media_player/DecodedTrack.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int channels = 2;

/// Parts of a second that are decoded ahead: enough for a disk that has to wake another reader, soon decoded anew.
constexpr int stores_in_a_second = 2;

} // namespace

void DecodedTrack::begin(int rate, std::int64_t length)
{
    rate_ = rate;
    length_ = length;
    store_.resize(static_cast<std::size_t>(channels * rate / stores_in_a_second));
}

void DecodedTrack::stop()
{
    is_playing_ = false;
    go_to(0);
    asked_position_.reset();
}

void DecodedTrack::seek(double seconds)
{
    if (length_ == 0)
        return;
    const double position = seconds > 0 ? std::min(seconds, length()) : 0.0;
    const auto sample = static_cast<std::int64_t>(std::llround(position * rate_));
    go_to(position < length() ? std::min(sample, length_ - 1) : length_);
    asked_position_ = position;
}

void DecodedTrack::go_to(std::int64_t sample)
{
    taken_ = sample;
    decoded_ = sample;
    seek_is_due_ = true;
    is_filling_ = true;
    is_held_ = true;
    continues_ = false;
}

double DecodedTrack::position() const
{
    if (asked_position_)
        return *asked_position_;
    return rate_ == 0 ? 0.0 : static_cast<double>(taken_) / rate_;
}

double DecodedTrack::length() const
{
    return rate_ == 0 ? 0.0 : static_cast<double>(length_) / rate_;
}

bool DecodedTrack::is_sounding() const
{
    return is_playing_ && taken_ < length_;
}

DecodedTrack::Taken DecodedTrack::take(std::span<float> samples)
{
    if (!is_sounding() || is_held_)
        return {};
    const Taken taken{.count = std::min(std::ssize(samples) / channels, stored()), .continues = continues_};
    auto value = samples.begin();
    for (const std::int64_t end = taken_ + taken.count; taken_ < end; ++taken_)
        for (std::int64_t channel = 0; channel < channels; ++channel)
            *value++ = stored_value(taken_, channel);
    if (taken.count > 0) {
        asked_position_.reset();
        continues_ = true;
    }
    const bool has_all = decoded_ == length_;
    is_filling_ = !has_all && (is_filling_ || stored() < capacity() / 2);
    is_held_ = !has_all && stored() == 0;
    return taken;
}

std::int64_t DecodedTrack::take_seek()
{
    seek_is_due_ = false;
    return taken_;
}

std::int64_t DecodedTrack::wanted_samples() const
{
    const bool wants = is_sounding() && !seek_is_due_ && is_filling_;
    return wants ? capacity() - stored() : 0;
}

void DecodedTrack::add(std::span<const float> samples)
{
    if (seek_is_due_)
        return;
    const std::int64_t end = decoded_ + std::min(std::ssize(samples) / channels, length_ - decoded_);
    auto value = samples.begin();
    for (; decoded_ < end; ++decoded_)
        for (std::int64_t channel = 0; channel < channels; ++channel)
            stored_value(decoded_, channel) = *value++;
    note_added();
}

void DecodedTrack::end_at(std::int64_t length)
{
    length_ = std::min(length_, length);
    decoded_ = std::min(decoded_, length_);
    if (taken_ >= length_) {
        taken_ = length_;
        asked_position_.reset();
    }
    note_added();
}

std::int64_t DecodedTrack::capacity() const
{
    return std::ssize(store_) / channels;
}

float& DecodedTrack::stored_value(std::int64_t sample, std::int64_t channel)
{
    return store_[static_cast<std::size_t>(sample % capacity() * channels + channel)];
}

void DecodedTrack::note_added()
{
    if (decoded_ == length_ || stored() == capacity()) {
        is_filling_ = false;
        is_held_ = false;
    }
}
