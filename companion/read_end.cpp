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
    const Descriptor file(uninterrupted([&] { return open(native.constData(), flags); }));
    if (!file.is_open())
        return {.status = {}, .block = {}, .reason = unreadable(errno)};
    FileEnd end{.status = status_of(file), .block = {}, .reason = {}};
    if (!end.status || !S_ISREG(end.status->st_mode))
        return {.status = {}, .block = {}, .reason = unreadable(EIO)};
    const qint64 offset = end.status->st_size - TagRecord::block_bytes;
    if (offset < 0) {
        end.reason = {.code = Reason::too_short};
        return end;
    }
    QByteArray block(TagRecord::block_bytes, Qt::Uninitialized);
    if (read_whole(file, offset, std::span(block.data(), TagRecord::block_bytes)))
        end.block = std::move(block);
    else
        end.reason = unreadable(EIO);
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
