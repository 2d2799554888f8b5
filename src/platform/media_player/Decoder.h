#pragma once

#include "platform/media_player/MediaFile.h"

#include <cstdint>
#include <memory>
#include <span>

struct mpg123_handle_struct;

/// An MP3 file as samples of two channels: a mono file has the same in both. A sample is the pair for one moment.
class Decoder
{
public:
    /// Opens the file at the program's path `path` and finds out its length. Nothing when it can't be read, has no
    /// MPEG frame or `cancelled` was set meanwhile; what is open stays bound to `cancelled`.
    static std::unique_ptr<Decoder> open(const QString& path, const std::atomic<bool>& cancelled);

    /// Samples in a second.
    int rate() const { return rate_; }
    /// Samples in the file: what the header in its first frame tells, else what a walk through all frames counts.
    std::int64_t length() const { return length_; }
    /// Goes to a sample, 0 to length.
    void seek(std::int64_t sample);
    /// Fills `samples`, left and right in turn, with what comes next; gives how many samples (pairs) came, 0 at the
    /// end of the file or after an error.
    std::int64_t decode(std::span<float> samples);
    /// Once nothing more comes: the samples that the file turned out to have.
    std::int64_t real_length();

private:
    struct Closer
    {
        void operator()(mpg123_handle_struct* handle) const;
    };

    Decoder(const QString& path, const std::atomic<bool>& cancelled);
    bool start();
    bool find_format();
    void read_first_frame();
    /// Samples that the frames of the file have, the first one included.
    std::int64_t counted_length();

    MediaFile file_;
    std::unique_ptr<mpg123_handle_struct, Closer> handle_;
    int rate_ = 0;
    std::int64_t length_ = 0;
    std::int64_t lead_ = 0;  ///< samples before the first one to be heard: those of a frame that only holds a header
    std::int64_t place_ = 0; ///< the sample that comes next
    bool place_is_proven_ = false; ///< a sample came since the last seek
};
