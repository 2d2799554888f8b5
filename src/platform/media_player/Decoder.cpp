#include "platform/media_player/Decoder.h"

#include "platform/media_player/info_frame.h"

#include <mpg123.h>

#include <algorithm>

namespace {

constexpr int channels = 2;

/// Frames decoded before the place of a seek: a frame may take bits from as many before it at the lowest bit rates.
constexpr int frames_before_seek = 10;

mpg123_ssize_t read_media(void* file, void* bytes, std::size_t size)
{
    return static_cast<MediaFile*>(file)->read({static_cast<char*>(bytes), size});
}

off_t seek_media(void* file, off_t offset, int whence)
{
    return static_cast<MediaFile*>(file)->seek(offset, whence);
}

} // namespace

void Decoder::Closer::operator()(mpg123_handle_struct* handle) const
{
    mpg123_delete(handle);
}

std::unique_ptr<Decoder> Decoder::open(const QString& path, const std::atomic<bool>& cancelled)
{
    std::unique_ptr<Decoder> decoder(new Decoder(path, cancelled));
    const bool usable = decoder->start() && decoder->length_ > 0 && !cancelled;
    return usable ? std::move(decoder) : nullptr;
}

Decoder::Decoder(const QString& path, const std::atomic<bool>& cancelled) : file_(path, cancelled) {}

bool Decoder::start()
{
    if (!file_.is_open())
        return false;
    handle_.reset(mpg123_new(nullptr, nullptr));
    if (!handle_)
        return false;
    // The header frame counts as one of silence, so that it is skipped and its length believed in one place: here.
    constexpr long flags = MPG123_QUIET | MPG123_SKIP_ID3V2 | MPG123_IGNORE_INFOFRAME;
    mpg123_param(handle_.get(), MPG123_ADD_FLAGS, flags, 0);
    mpg123_param(handle_.get(), MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    mpg123_param(handle_.get(), MPG123_RESYNC_LIMIT, -1, 0);
    mpg123_param(handle_.get(), MPG123_PREFRAMES, frames_before_seek, 0);
    mpg123_replace_reader_handle(handle_.get(), read_media, seek_media, nullptr);
    if (mpg123_open_handle(handle_.get(), &file_) != MPG123_OK || !find_format())
        return false;
    read_first_frame();
    seek(0);
    return true;
}

bool Decoder::find_format()
{
    mpg123_format_none(handle_.get());
    mpg123_format2(handle_.get(), 0, MPG123_STEREO, MPG123_ENC_FLOAT_32);
    long rate = 0;
    int channel_count = 0;
    int encoding = 0;
    if (mpg123_getformat(handle_.get(), &rate, &channel_count, &encoding) != MPG123_OK)
        return false;
    // A file pieced together from several keeps the rate of its first one.
    mpg123_format_none(handle_.get());
    mpg123_format(handle_.get(), rate, MPG123_STEREO, MPG123_ENC_FLOAT_32);
    rate_ = static_cast<int>(rate);
    return channel_count == channels && encoding == MPG123_ENC_FLOAT_32;
}

void Decoder::read_first_frame()
{
    unsigned long header = 0;
    unsigned char* body = nullptr;
    std::size_t size = 0;
    const std::int64_t frame_length = mpg123_spf(handle_.get());
    InfoFrame info;
    if (mpg123_framedata(handle_.get(), &header, &body, &size) == MPG123_OK)
        info = read_info_frame(static_cast<std::uint32_t>(header), {body, size});
    lead_ = info.is_there ? frame_length : 0;
    const bool believed = info.frames > 0 && info.frames <= file_.length() / smallest_frame;
    length_ = believed ? info.frames * frame_length : counted_length() - lead_;
}

std::int64_t Decoder::counted_length()
{
    return mpg123_scan(handle_.get()) == MPG123_OK ? mpg123_length(handle_.get()) : 0;
}

void Decoder::seek(std::int64_t sample)
{
    mpg123_seek(handle_.get(), sample + lead_, SEEK_SET); // where it fails, nothing comes behind it
    place_ = sample;
    place_is_proven_ = false;
}

std::int64_t Decoder::decode(std::span<float> samples)
{
    std::size_t bytes = 0;
    int result = MPG123_NEW_FORMAT;
    while (result == MPG123_NEW_FORMAT && bytes == 0)
        result = mpg123_read(handle_.get(), samples.data(), samples.size_bytes(), &bytes);
    const auto count = static_cast<std::int64_t>(bytes / (channels * sizeof(float)));
    place_ += count;
    place_is_proven_ = place_is_proven_ || count > 0;
    return count;
}

std::int64_t Decoder::real_length()
{
    return place_is_proven_ ? place_ : std::clamp<std::int64_t>(counted_length() - lead_, 0, place_);
}
