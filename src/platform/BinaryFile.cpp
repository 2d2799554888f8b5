#include "platform/BinaryFile.h"

#include "platform/paths.h"
#include "platform/uninterrupted.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

namespace {

/// Repeats `transfer`, given how many bytes are done, until `wanted` bytes are through, nothing more comes or an error
/// stops it; gives how many are through.
template<typename Transfer> qint64 transfer_all(qint64 wanted, Transfer transfer)
{
    qint64 done = 0;
    while (done < wanted) {
        const ssize_t part = uninterrupted([&] { return transfer(done); });
        if (part <= 0)
            break;
        done += part;
    }
    return done;
}

} // namespace

BinaryFile::BinaryFile(const QString& path, Access access)
{
    const QByteArray native = native_path(path);
    if (native.isEmpty())
        return;
    const int flags = (access == Access::write ? O_RDWR : O_RDONLY) | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const int descriptor = uninterrupted([&] { return ::open(native.constData(), flags); });
    if (descriptor < 0)
        return;
    struct stat status = {};
    const bool is_file = uninterrupted([&] { return ::fstat(descriptor, &status); }) == 0 && S_ISREG(status.st_mode);
    is_writable_ = is_file && (status.st_mode & S_IWUSR) != 0;
    if (!is_file || (access == Access::write && !is_writable_)) {
        ::close(descriptor);
        return;
    }
    descriptor_ = descriptor;
    identity_ = {.volume = status.st_dev, .number = status.st_ino};
    length_ = status.st_size;
}

BinaryFile::~BinaryFile()
{
    if (is_open())
        ::close(descriptor_);
}

qint64 BinaryFile::read_at(qint64 offset, std::span<char> bytes) const
{
    if (!is_open() || offset < 0)
        return 0;
    return transfer_all(std::ssize(bytes), [&](qint64 done) {
        const auto rest = bytes.subspan(static_cast<std::size_t>(done));
        return ::pread(descriptor_, rest.data(), rest.size(), offset + done);
    });
}

bool BinaryFile::write_at(qint64 offset, std::span<const char> bytes) const
{
    std::vector<char> old(bytes.size());
    if (read_at(offset, old) != std::ssize(old))
        return false;
    if (write_all(offset, bytes) == std::ssize(bytes))
        return true;
    write_all(offset, old);
    return false;
}

/// Writes until an error stops it; gives how many bytes were written.
qint64 BinaryFile::write_all(qint64 offset, std::span<const char> bytes) const
{
    return transfer_all(std::ssize(bytes), [&](qint64 done) {
        const auto rest = bytes.subspan(static_cast<std::size_t>(done));
        return ::pwrite(descriptor_, rest.data(), rest.size(), offset + done);
    });
}
