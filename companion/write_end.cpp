#include "companion/write_end.h"

#include "mp3/TagRecord.h"
#include "platform/uninterrupted.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <span>

namespace {

constexpr qint64 second = 1'000'000'000; ///< in nanoseconds

} // namespace

OpenEnd open_end(const QByteArray& native)
{
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    OpenEnd open{.file = Descriptor(uninterrupted([&] { return ::open(native.constData(), flags); })), .end = {}};
    open.end = read_end(open.file);
    if (open.end.status && (open.end.status->st_mode & S_IWUSR) == 0)
        open.end.reason = {.code = Reason::unreadable, .detail = error_text(EACCES)};
    return open;
}

int write_end(const OpenEnd& open, const QByteArray& block)
{
    qint64 offset = open.end.status->st_size - TagRecord::block_bytes;
    for (std::span bytes(block.constData(), static_cast<std::size_t>(block.size())); !bytes.empty();) {
        const ssize_t part =
            uninterrupted([&] { return pwrite(open.file.number(), bytes.data(), bytes.size(), offset); });
        if (part <= 0)
            return part < 0 ? errno : EIO;
        bytes = bytes.subspan(static_cast<std::size_t>(part));
        offset += part;
    }
    return 0;
}

qint64 time_of(const struct stat& status)
{
    return status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec;
}

int set_time(const Descriptor& file, qint64 nanoseconds)
{
    const qint64 part = (nanoseconds % second + second) % second;
    const std::array<timespec, 2> times{timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT},
                                        timespec{.tv_sec = (nanoseconds - part) / second, .tv_nsec = part}};
    return futimens(file.number(), times.data()) == 0 ? 0 : errno;
}
