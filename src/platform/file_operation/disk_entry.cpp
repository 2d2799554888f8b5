#include "platform/file_operation/disk_entry.h"

#include "platform/file_names.h"
#include "platform/paths.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

namespace {

std::optional<struct stat> status_if(int result, const struct stat& status)
{
    return result == 0 ? std::optional(status) : std::nullopt;
}

} // namespace

DiskPlace DiskPlace::of(const QString& path)
{
    return {.native = native_path(path), .shown = path.endsWith(u'\\') ? path.chopped(1) : path};
}

QByteArray DiskPlace::folder() const
{
    const qsizetype slash = native.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : native.first(slash);
}

DiskPlace DiskPlace::child(const QByteArray& name) const
{
    return {.native = native.endsWith('/') ? native + name : native + '/' + name,
            .shown = shown + u'\\' + name_from_bytes(name)};
}

Descriptor::~Descriptor()
{
    if (is_open())
        close(number_);
}

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept
{
    std::swap(number_, other.number_);
    return *this;
}

std::optional<struct stat> status_of(const QByteArray& native)
{
    struct stat status
    {
    };
    return status_if(lstat(native.constData(), &status), status);
}

std::optional<struct stat> status_through_links(const QByteArray& native)
{
    struct stat status
    {
    };
    return status_if(stat(native.constData(), &status), status);
}

std::optional<struct stat> status_of(const Descriptor& file)
{
    struct stat status
    {
    };
    return status_if(fstat(file.number(), &status), status);
}

bool is_same_file(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool is_same_state(const struct stat& a, const struct stat& b)
{
    return is_same_file(a, b) && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
           a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

Descriptor open_folder(int folder, const QByteArray& name)
{
    return Descriptor(openat(folder, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

int read_names(const Descriptor& folder, std::vector<QByteArray>& names)
{
    // The list takes the descriptor over that it reads from.
    const int number = fcntl(folder.number(), F_DUPFD_CLOEXEC, 0);
    if (number < 0)
        return errno;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(fdopendir(number), closedir);
    if (!directory) {
        const int error = errno;
        close(number);
        return error;
    }
    while (true) {
        errno = 0;
        const dirent* const entry = readdir(directory.get());
        if (entry == nullptr)
            return errno;
        const QByteArrayView name(entry->d_name);
        if (name != "." && name != "..")
            names.push_back(name.toByteArray());
    }
}

int read_names(const QByteArray& native, std::vector<QByteArray>& names)
{
    const Descriptor folder = open_folder(AT_FDCWD, native);
    return folder.is_open() ? read_names(folder, names) : errno;
}
