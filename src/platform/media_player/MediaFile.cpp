#include "platform/media_player/MediaFile.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t buffer_size = 64 * std::size_t{1024};

} // namespace

MediaFile::MediaFile(const QString& path, const std::atomic<bool>& cancelled)
    : file_(path, BinaryFile::Access::read), cancelled_(cancelled), buffer_(buffer_size)
{
}

qint64 MediaFile::read(std::span<char> bytes)
{
    qint64 done = 0;
    while (done < std::ssize(bytes)) {
        if (cancelled_)
            return -1;
        const std::span<const char> ahead = buffered();
        const auto part = ahead.first(std::min(ahead.size(), bytes.size() - static_cast<std::size_t>(done)));
        if (part.empty())
            break;
        std::ranges::copy(part, bytes.begin() + done);
        done += std::ssize(part);
        place_ += std::ssize(part);
    }
    return done;
}

qint64 MediaFile::seek(qint64 offset, int whence)
{
    qint64 from = 0;
    switch (whence) {
    case SEEK_SET:
        break;
    case SEEK_CUR:
        from = place_;
        break;
    case SEEK_END:
        from = length();
        break;
    default:
        return -1;
    }
    if (offset < -from)
        return -1;
    place_ = from + offset;
    return place_;
}

std::span<const char> MediaFile::buffered()
{
    if (place_ < buffer_place_ || place_ >= buffer_place_ + filled_) {
        buffer_place_ = place_;
        filled_ = file_.read_at(place_, buffer_);
    }
    return std::span(buffer_)
        .first(static_cast<std::size_t>(filled_))
        .subspan(static_cast<std::size_t>(place_ - buffer_place_));
}
