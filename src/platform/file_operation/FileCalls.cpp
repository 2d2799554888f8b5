#include "platform/file_operation/FileCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>

namespace {

ssize_t number_or_error(ssize_t result)
{
    return result < 0 ? -errno : result;
}

ssize_t copy_within_kernel(int source, int target, off_t offset, size_t length)
{
    off_t source_offset = offset;
    off_t target_offset = offset;
    return number_or_error(copy_file_range(source, &source_offset, target, &target_offset, length, 0));
}

/// Which mount holds a path. The device alone would not tell a folder that is mounted at a second place.
struct Mount
{
    __u64 number = 0;
    __u32 major = 0;
    __u32 minor = 0;

    bool operator==(const Mount&) const = default;
};

std::optional<Mount> mount_of(const QByteArray& native)
{
    struct statx status
    {
    };
    if (statx(AT_FDCWD, native.constData(), AT_SYMLINK_NOFOLLOW, STATX_MNT_ID, &status) != 0)
        return std::nullopt;
    const bool is_numbered = (status.stx_mask & STATX_MNT_ID) != 0;
    return Mount{
        .number = is_numbered ? status.stx_mnt_id : 0, .major = status.stx_dev_major, .minor = status.stx_dev_minor};
}

QByteArray parent_of(const QByteArray& native)
{
    const qsizetype slash = native.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : native.first(slash);
}

QByteArray root_of_volume(const QByteArray& native)
{
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(parent_of(native).constData(), nullptr), std::free);
    const std::optional<Mount> mount = mount_of(native);
    if (real == nullptr || !mount)
        return {};
    QByteArray root(real.get());
    std::optional<Mount> above = mount_of(root);
    if (above && *above != *mount)
        return (root == "/" ? root : root + '/') + native.sliced(native.lastIndexOf('/') + 1);
    while (above == mount && root != "/") {
        above = mount_of(parent_of(root));
        if (above == mount)
            root = parent_of(root);
    }
    if (!above)
        return {};
    return root;
}

} // namespace

FileCalls FileCalls::of_this_machine()
{
    return {.copy_range = copy_within_kernel,
            .write = [](int file, const char* bytes, size_t length,
                        off_t offset) { return number_or_error(pwrite(file, bytes, length, offset)); },
            .sync = [](int file) { return fsync(file) == 0 ? 0 : errno; },
            .open_unnamed =
                [](const QByteArray& folder) {
                    return static_cast<int>(
                        number_or_error(open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR)));
                },
            .volume_root = root_of_volume,
            .rename = RenameCalls::of_this_machine()};
}
