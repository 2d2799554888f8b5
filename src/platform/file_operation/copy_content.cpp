#include "platform/file_operation/copy_content.h"

#include <QElapsedTimer>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace {

constexpr off_t smallest_chunk = off_t{64} * 1024;
constexpr off_t largest_chunk = off_t{1024} * 1024;
constexpr off_t unwritten_limit = off_t{16} * 1024 * 1024; ///< bytes that may be on their way to the disk at a time
constexpr qint64 brisk = 10;                               ///< milliseconds for a chunk; below, the next may be larger
constexpr qint64 slow = 30;                                ///< above, the next must be smaller

/// Repeats a call that gives a number or a negative error number until no signal interrupts it.
template<typename Call> ssize_t until_uninterrupted(const Call& call)
{
    ssize_t result = call();
    while (result == -EINTR)
        result = call();
    return result;
}

class ContentCopy
{
public:
    ContentCopy(const Descriptor& source, const Descriptor& target, const FileCalls& calls,
                const std::function<bool(qint64)>& advance)
        : source_(source.number()), target_(target.number()), calls_(calls), advance_(advance)
    {
    }

    CopyFault run(off_t size, bool has_holes)
    {
        off_t offset = 0;
        while (offset < size) {
            const off_t data = has_holes ? next_data(offset, size) : offset;
            const off_t end = has_holes ? next_hole(data, size) : size;
            if (data > offset && !advance_(data - offset))
                return {.error = ECANCELED};
            const CopyFault fault = copy_stretch(data, end);
            if (fault.error != 0)
                return fault;
            offset = end;
        }
        // A hole at the end has no bytes that would make the file so long.
        if (has_holes && ftruncate(target_, size) != 0)
            return {.error = errno, .in_target = true};
        return {};
    }

private:
    off_t next_data(off_t offset, off_t size) const
    {
        const off_t data = lseek(source_, offset, SEEK_DATA);
        if (data < 0)
            return errno == ENXIO ? size : offset;
        return std::min(data, size);
    }

    off_t next_hole(off_t offset, off_t size) const
    {
        const off_t hole = lseek(source_, offset, SEEK_HOLE);
        return hole > offset ? std::min(hole, size) : size;
    }

    CopyFault copy_stretch(off_t offset, off_t end)
    {
        while (offset < end) {
            QElapsedTimer timer;
            timer.start();
            off_t copied = 0;
            const CopyFault fault = copy_chunk(offset, std::min(chunk_, end - offset), copied);
            if (fault.error != 0)
                return fault;
            if (copied == 0)
                return {.error = ENODATA};
            send_to_disk(offset, copied);
            offset += copied;
            if (!advance_(copied))
                return {.error = ECANCELED};
            adapt_chunk(timer.elapsed());
        }
        return {};
    }

    CopyFault copy_chunk(off_t offset, off_t length, off_t& copied)
    {
        if (kernel_copies_) {
            copied = until_uninterrupted(
                [&] { return calls_.copy_range(source_, target_, offset, static_cast<size_t>(length)); });
            if (copied > 0)
                return {};
            // Reading and writing finds out whether the file ends here or the kernel can't copy it.
            kernel_copies_ = false;
        }
        buffer_.resize(largest_chunk);
        copied = until_uninterrupted([&] {
            const ssize_t count = pread(source_, buffer_.data(), static_cast<size_t>(length), offset);
            return count < 0 ? -errno : count;
        });
        if (copied < 0)
            return {.error = static_cast<int>(-copied)};
        return {.error = write_all(offset, copied), .in_target = true};
    }

    int write_all(off_t offset, ssize_t count)
    {
        ssize_t done = 0;
        while (done < count) {
            const ssize_t written = until_uninterrupted([&] {
                return calls_.write(target_, buffer_.data() + done, static_cast<size_t>(count - done), offset + done);
            });
            if (written <= 0)
                return written < 0 ? static_cast<int>(-written) : EIO;
            done += written;
        }
        return 0;
    }

    /// Starts writing what was just copied and waits for what was copied a while ago. Errors come up again when the
    /// file is synced.
    void send_to_disk(off_t offset, off_t length)
    {
        sync_file_range(target_, offset, length, SYNC_FILE_RANGE_WRITE);
        const off_t settled = offset + length - unwritten_limit;
        if (settled <= settled_)
            return;
        sync_file_range(target_, settled_, settled - settled_,
                        SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER);
        settled_ = settled;
    }

    void adapt_chunk(qint64 milliseconds)
    {
        if (milliseconds > slow)
            chunk_ = std::max(chunk_ / 2, smallest_chunk);
        else if (milliseconds < brisk)
            chunk_ = std::min(chunk_ * 2, largest_chunk);
    }

    int source_;
    int target_;
    const FileCalls& calls_;
    const std::function<bool(qint64)>& advance_;
    bool kernel_copies_ = true;
    off_t chunk_ = largest_chunk;
    off_t settled_ = 0; ///< up to here the copy is on the disk
    std::vector<char> buffer_;
};

} // namespace

CopyFault copy_content(const Descriptor& source, const Descriptor& target, qint64 size, const FileCalls& calls,
                       const std::function<bool(qint64)>& advance)
{
    constexpr qint64 block = 512;
    const std::optional<struct stat> status = status_of(source);
    const bool has_holes = status && status->st_blocks * block < size;
    return ContentCopy(source, target, calls, advance).run(size, has_holes);
}
