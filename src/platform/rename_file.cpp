#include "platform/rename_file.h"

#include "platform/file_operation/disk_entry.h"

#include <QString>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

int error_of(int result)
{
    return result == 0 ? 0 : errno;
}

QByteArray name_of(const QByteArray& native)
{
    return native.sliced(native.lastIndexOf('/') + 1);
}

/// The folder of an entry, with a trailing slash.
QByteArray folder_of(const QByteArray& native)
{
    return native.first(native.lastIndexOf('/') + 1);
}

/// A name, alike for all spellings of it.
QString folded(const QByteArray& name)
{
    return QString::fromUtf8(name).normalized(QString::NormalizationForm_D).toCaseFolded();
}

/// Whether a folder lists both names, each as an entry of its own; so it is also held of one that cannot be read.
bool lists_both(const QByteArray& folder, const QByteArray& a, const QByteArray& b)
{
    std::vector<QByteArray> names;
    return read_names(folder, names) != 0 || (std::ranges::count(names, a) > 0 && std::ranges::count(names, b) > 0);
}

/// The status of the one file or folder that both paths lead to, links not followed; nothing when they lead to two.
std::optional<struct stat> common_status(const QByteArray& a, const QByteArray& b)
{
    struct stat status_a
    {
    };
    struct stat status_b
    {
    };
    const bool is_one = lstat(a.constData(), &status_a) == 0 && lstat(b.constData(), &status_b) == 0 &&
                        status_a.st_dev == status_b.st_dev && status_a.st_ino == status_b.st_ino;
    return is_one ? std::optional(status_a) : std::nullopt;
}

/// Whether both paths are spellings of one and the same folder entry, as on a file system that ignores case. That both
/// lead to one file is not enough: another program may swap two files between the looks at them.
bool are_one_entry(const QByteArray& a, const QByteArray& b)
{
    if (a == b)
        return true;
    if (folded(name_of(a)) != folded(name_of(b)) || !common_status(folder_of(a), folder_of(b)))
        return false;
    if (name_of(a) == name_of(b))
        return true;
    const std::optional<struct stat> status = common_status(a, b);
    return status && (status->st_nlink == 1 || S_ISDIR(status->st_mode)) &&
           !lists_both(folder_of(a), name_of(a), name_of(b));
}

bool is_free(const QByteArray& native)
{
    struct stat status
    {
    };
    return lstat(native.constData(), &status) != 0 && errno == ENOENT;
}

/// The way of file systems that can't refuse to replace by themselves.
int rename_step_by_step(const QByteArray& old_native, const QByteArray& new_native, const RenameCalls& calls)
{
    const int linked = calls.link(old_native, new_native);
    if (linked == 0) {
        const int unlinked = error_of(::unlink(old_native.constData()));
        // A disk of the network can tell of a failure after it has done the work.
        if (unlinked == 0 || is_free(old_native))
            return 0;
        if (common_status(old_native, new_native))
            ::unlink(new_native.constData());
        return unlinked;
    }
    if (linked != EPERM && linked != EOPNOTSUPP && linked != ENOSYS)
        return linked;
    if (!is_free(new_native))
        return EEXIST;
    return error_of(std::rename(old_native.constData(), new_native.constData()));
}

} // namespace

RenameCalls RenameCalls::of_this_machine()
{
    return {.rename_no_replace =
                [](const QByteArray& old_native, const QByteArray& new_native) {
                    return error_of(::renameat2(AT_FDCWD, old_native.constData(), AT_FDCWD, new_native.constData(),
                                                RENAME_NOREPLACE));
                },
            .link =
                [](const QByteArray& old_native, const QByteArray& new_native) {
                    return error_of(::link(old_native.constData(), new_native.constData()));
                },
            .exchange =
                [](const QByteArray& a_native, const QByteArray& b_native) {
                    return error_of(
                        ::renameat2(AT_FDCWD, a_native.constData(), AT_FDCWD, b_native.constData(), RENAME_EXCHANGE));
                }};
}

int rename_without_replacing(const QByteArray& old_native, const QByteArray& new_native, const RenameCalls& calls)
{
    int error = calls.rename_no_replace(old_native, new_native);
    if (error == EINVAL || error == ENOSYS)
        error = rename_step_by_step(old_native, new_native, calls);
    if (error == EEXIST && are_one_entry(old_native, new_native))
        return error_of(std::rename(old_native.constData(), new_native.constData()));
    return error;
}
