#include "companion/read_end.h"

#include "mp3/TagRecord.h"
#include "platform/uninterrupted.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {

Reason unreadable(int error)
{
    return {.code = Reason::unreadable, .detail = error_text(error)};
}

} // namespace

FileEnd read_end(const QByteArray& native)
{
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    return read_end(Descriptor(uninterrupted([&] { return open(native.constData(), flags); })));
}

FileEnd read_end(const Descriptor& file)
{
    FileEnd end{.status = file.is_open() ? status_of(file) : std::nullopt, .block = {}, .reason = {}};
    if (!end.status)
        end.reason = unreadable(errno);
    else if (!S_ISREG(end.status->st_mode))
        end.reason = {.code = Reason::unreadable, .detail = "no regular file"};
    else if (end.status->st_size < TagRecord::block_bytes)
        end.reason = {.code = Reason::too_short};
    if (end.reason)
        return end;
    const qint64 offset = end.status->st_size - TagRecord::block_bytes;
    QByteArray block(TagRecord::block_bytes, Qt::Uninitialized);
    if (read_whole(file, offset, std::span(block.data(), TagRecord::block_bytes)))
        end.block = std::move(block);
    else
        end.reason = unreadable(errno);
    return end;
}

bool read_whole(const Descriptor& file, qint64 offset, std::span<char> bytes)
{
    while (!bytes.empty()) {
        const ssize_t part = uninterrupted([&] { return pread(file.number(), bytes.data(), bytes.size(), offset); });
        if (part == 0)
            errno = EIO;
        if (part <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(part));
        offset += part;
    }
    return true;
}
