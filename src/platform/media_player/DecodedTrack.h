#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// A file as it plays: its length, the position, and the samples decoded ahead of it. Knows no disk, device or
/// thread; a sample is a pair, left and right. Fresh, it has no file yet and plays as soon as there is one.
class DecodedTrack
{
public:
    /// The file is ready: samples in a second and in all.
    void begin(int rate, std::int64_t length);
    /// Goes to the beginning and stays there.
    void stop();
    /// Goes to a position in seconds; one outside the file means its nearest end. Without effect before begin.
    void seek(double seconds);

    /// Seconds; as given to the last seek until something is taken.
    double position() const;
    double length() const;
    /// Whether samples are to be taken: it plays and isn't at its end.
    bool is_sounding() const;
    /// What take gave.
    struct Taken
    {
        std::int64_t count = 0;
        bool continues = false; ///< the first one follows the last one taken before
    };
    /// The next samples, as many as fit into `samples`. None while the store is filled for the first time after begin,
    /// a seek or a stutter.
    Taken take(std::span<float> samples);

    /// The decoder has to go somewhere else before more is added.
    bool wants_seek() const { return is_sounding() && seek_is_due_; }
    /// The sample where it has to go; asked once for each seek.
    std::int64_t take_seek();
    /// How many decoded samples should be added now: from half full until full, 0 else.
    std::int64_t wanted_samples() const;
    /// Adds decoded samples, not more than wanted; what lies behind the length is left out, and so is what was decoded
    /// before a seek.
    void add(std::span<const float> samples);
    /// Nothing more can be decoded: the file ends at this sample.
    void end_at(std::int64_t length);

private:
    std::int64_t stored() const { return decoded_ - taken_; }
    std::int64_t capacity() const;
    float& stored_value(std::int64_t sample, std::int64_t channel);
    void go_to(std::int64_t sample);
    /// Ends filling once the store is full or has the last sample.
    void note_added();

    int rate_ = 0;
    std::int64_t length_ = 0;
    bool is_playing_ = true;
    bool seek_is_due_ = false;
    bool is_filling_ = true;
    bool is_held_ = true;                  ///< nothing is taken until filling ends
    bool continues_ = false;               ///< nothing was skipped since the last take
    std::optional<double> asked_position_; ///< in the caller's own number, which no rounding to samples has touched
    std::int64_t taken_ = 0;               ///< the next sample to take
    std::int64_t decoded_ = 0;             ///< the next sample to add
    std::vector<float> store_;             ///< a ring: the sample n stands at n modulo its capacity
};
