// The functions that the compiler puts before those of the system to check them would stand in the way of ours.
#undef _FORTIFY_SOURCE

#include "faulty_disk.h"

#include <QScopeGuard>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace {

/// What is watched, and what is to go wrong. One at a time, for all threads.
struct Plan
{
    QByteArrayList folders;
    DiskWatch watch;
    DiskFault fault{.name = "none"};
    int calls_until_fault = 0; ///< 0 for no fault
    QByteArray failed_call;
};

std::mutex plan_lock;
std::atomic<Plan*> plan = nullptr;   ///< changes under the lock alone
thread_local bool is_inside = false; ///< a watch makes calls of its own

constexpr std::array faults = {
    DiskFault{.name = "no room", .error = ENOSPC},
    DiskFault{.name = "input/output error", .error = EIO},
    DiskFault{.name = "no right", .error = EACCES},
    DiskFault{.name = "read-only disk", .error = EROFS},
    DiskFault{.name = "no such file", .error = ENOENT},
    DiskFault{.name = "interrupted", .error = EINTR},
    DiskFault{.name = "short transfer"},
    DiskFault{.name = "disk full from now on", .error = ENOSPC, .lasts = true},
    DiskFault{.name = "disk gone from now on", .error = EIO, .lasts = true},
    DiskFault{.name = "disk read-only from now on", .error = EROFS, .lasts = true},
    DiskFault{.name = "short transfers from now on", .lasts = true},
};

bool touches(const QByteArrayList& folders, const QByteArray& native)
{
    return std::ranges::any_of(folders, [&](const QByteArray& folder) {
        return native.startsWith(folder) && (native.size() == folder.size() || native[folder.size()] == '/');
    });
}

QByteArray path_of(int file)
{
    std::array<char, PATH_MAX> path{};
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(file);
    const auto length = syscall(SYS_readlink, link.constData(), path.data(), path.size());
    return length > 0 ? QByteArray(path.data(), length) : QByteArray();
}

QByteArray path_of(int folder, const char* name)
{
    if (name == nullptr)
        return {};
    if (*name == '/' || folder == AT_FDCWD)
        return name;
    return *name == '\0' ? path_of(folder) : path_of(folder) + '/' + name;
}

/// What a call does with the disk.
enum class Deed
{
    looks,
    reads,
    changes,
    writes
};

/// Whether a fault counts such a call. A disk that is full or read-only can still be read.
bool strikes(const DiskFault& fault, Deed deed)
{
    if (fault.is_short())
        return deed == Deed::reads || deed == Deed::writes;
    if (fault.error == ENOSPC || fault.error == EROFS)
        return deed == Deed::changes || deed == Deed::writes;
    return true;
}

enum class Verdict
{
    goes_on,
    fails, ///< errno is set
    comes_short
};

Verdict judge(Plan& now, Deed deed, const char* call, const QByteArray& native)
{
    if (now.calls_until_fault == 0 || !strikes(now.fault, deed))
        return Verdict::goes_on;
    if (now.calls_until_fault > 1) {
        --now.calls_until_fault;
        return Verdict::goes_on;
    }
    const bool is_first = now.failed_call.isEmpty();
    if (is_first)
        now.failed_call = QByteArray(call) + ' ' + native;
    if (is_first && now.fault.halves_first && (deed == Deed::reads || deed == Deed::writes))
        return Verdict::comes_short;
    if (!now.fault.lasts)
        now.calls_until_fault = 0;
    errno = now.fault.error;
    return now.fault.is_short() ? Verdict::comes_short : Verdict::fails;
}

/// What is to become of a call that touches one of the paths.
Verdict verdict(Deed deed, const char* call, const std::function<QByteArrayList()>& paths)
{
    if (is_inside || plan == nullptr)
        return Verdict::goes_on;
    const int old_errno = errno;
    const std::lock_guard lock(plan_lock);
    if (plan == nullptr)
        return Verdict::goes_on;
    is_inside = true;
    Verdict result = Verdict::goes_on;
    Plan& now = *plan;
    for (const QByteArray& native : paths()) {
        if (!touches(now.folders, native))
            continue;
        if (now.watch)
            now.watch(call, native);
        errno = old_errno;
        result = judge(now, deed, call, native);
        break;
    }
    is_inside = false;
    if (result != Verdict::fails)
        errno = old_errno;
    return result;
}

bool fails(Deed deed, const char* call, const char* path)
{
    return verdict(deed, call, [&] { return QByteArrayList{path_of(AT_FDCWD, path)}; }) == Verdict::fails;
}

bool fails(Deed deed, const char* call, int folder, const char* name)
{
    return verdict(deed, call, [&] { return QByteArrayList{path_of(folder, name)}; }) == Verdict::fails;
}

bool fails(Deed deed, const char* call, int file)
{
    return verdict(deed, call, [&] { return QByteArrayList{path_of(file)}; }) == Verdict::fails;
}

bool fails(Deed deed, const char* call, const QByteArray& from, const QByteArray& to)
{
    return verdict(deed, call, [&] { return QByteArrayList{from, to}; }) == Verdict::fails;
}

/// What opening a file does with the disk.
Deed deed_of_opening(int flags)
{
    return (flags & O_ACCMODE) == O_RDONLY && (flags & O_CREAT) == 0 ? Deed::looks : Deed::changes;
}

/// How many bytes a transfer may do; -1 when it fails.
ssize_t allowed(Deed deed, const char* call, int file, size_t wanted)
{
    const Verdict result = verdict(deed, call, [&] { return QByteArrayList{path_of(file)}; });
    if (result == Verdict::fails)
        return -1;
    const bool halves = result == Verdict::comes_short && wanted > 1;
    return static_cast<ssize_t>(halves ? wanted / 2 : wanted);
}

/// The function of the system behind ours.
template<typename Function> Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void run_with(Plan& now, const std::function<void()>& work)
{
    {
        const std::lock_guard lock(plan_lock);
        plan = &now;
    }
    const auto end = qScopeGuard([] {
        const std::lock_guard lock(plan_lock);
        plan = nullptr;
    });
    work();
}

} // namespace

std::span<const DiskFault> disk_faults()
{
    return faults;
}

QByteArray with_fault(const QByteArrayList& folders, int nth, const DiskFault& fault, const std::function<void()>& work)
{
    Plan now{.folders = folders, .watch = {}, .fault = fault, .calls_until_fault = nth, .failed_call = {}};
    run_with(now, work);
    return now.failed_call;
}

void watch_disk(const QByteArrayList& folders, const DiskWatch& watch, const std::function<void()>& work)
{
    Plan now{.folders = folders, .watch = watch, .failed_call = {}};
    run_with(now, work);
}

// NOLINTBEGIN(bugprone-reserved-identifier, bugprone-macro-parentheses)
extern "C" {

// Each of the system's calls once, and by the other names that compilers and libraries give it.

#define OPEN(name)                                                                                                     \
    int name(const char* path, int flags, ...)                                                                         \
    {                                                                                                                  \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const auto mode = va_arg(rest, mode_t);                                                                        \
        va_end(rest);                                                                                                  \
        static auto* const real = next<int(const char*, int, ...)>(#name);                                             \
        return fails(deed_of_opening(flags), "open", path) ? -1 : real(path, flags, mode);                             \
    }
OPEN(open)
OPEN(open64)

#define OPENAT(name)                                                                                                   \
    int name(int folder, const char* path, int flags, ...)                                                             \
    {                                                                                                                  \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const auto mode = va_arg(rest, mode_t);                                                                        \
        va_end(rest);                                                                                                  \
        static auto* const real = next<int(int, const char*, int, ...)>(#name);                                        \
        return fails(deed_of_opening(flags), "open", folder, path) ? -1 : real(folder, path, flags, mode);             \
    }
OPENAT(openat)
OPENAT(openat64)

int __open_2(const char* path, int flags)
{
    return open(path, flags);
}

int __openat_2(int folder, const char* path, int flags)
{
    return openat(folder, path, flags);
}

DIR* opendir(const char* path)
{
    static auto* const real = next<DIR*(const char*)>("opendir");
    return fails(Deed::looks, "opendir", path) ? nullptr : real(path);
}

DIR* fdopendir(int file)
{
    static auto* const real = next<DIR*(int)>("fdopendir");
    return fails(Deed::looks, "fdopendir", file) ? nullptr : real(file);
}

dirent* readdir(DIR* directory)
{
    static auto* const real = next<dirent*(DIR*)>("readdir");
    return fails(Deed::looks, "readdir", dirfd(directory)) ? nullptr : real(directory);
}

// Where transfers come short they do less than they were asked for, as the system may.

ssize_t read(int file, void* bytes, size_t length)
{
    static auto* const real = next<ssize_t(int, void*, size_t)>("read");
    const ssize_t part = allowed(Deed::reads, "read", file, length);
    return part < 0 ? -1 : real(file, bytes, static_cast<size_t>(part));
}

ssize_t __read_chk(int file, void* bytes, size_t length, size_t /*room*/)
{
    return read(file, bytes, length);
}

#define PREAD(name)                                                                                                    \
    ssize_t name(int file, void* bytes, size_t length, off_t offset)                                                   \
    {                                                                                                                  \
        static auto* const real = next<ssize_t(int, void*, size_t, off_t)>(#name);                                     \
        const ssize_t part = allowed(Deed::reads, "pread", file, length);                                              \
        return part < 0 ? -1 : real(file, bytes, static_cast<size_t>(part), offset);                                   \
    }
PREAD(pread)
PREAD(pread64)

ssize_t __pread_chk(int file, void* bytes, size_t length, off_t offset, size_t /*room*/)
{
    return pread(file, bytes, length, offset);
}

ssize_t __pread64_chk(int file, void* bytes, size_t length, off_t offset, size_t /*room*/)
{
    return pread(file, bytes, length, offset);
}

ssize_t write(int file, const void* bytes, size_t length)
{
    static auto* const real = next<ssize_t(int, const void*, size_t)>("write");
    const ssize_t part = allowed(Deed::writes, "write", file, length);
    return part < 0 ? -1 : real(file, bytes, static_cast<size_t>(part));
}

#define PWRITE(name)                                                                                                   \
    ssize_t name(int file, const void* bytes, size_t length, off_t offset)                                             \
    {                                                                                                                  \
        static auto* const real = next<ssize_t(int, const void*, size_t, off_t)>(#name);                               \
        const ssize_t part = allowed(Deed::writes, "pwrite", file, length);                                            \
        return part < 0 ? -1 : real(file, bytes, static_cast<size_t>(part), offset);                                   \
    }
PWRITE(pwrite)
PWRITE(pwrite64)

ssize_t copy_file_range(int source, off_t* source_offset, int target, off_t* target_offset, size_t length,
                        unsigned flags)
{
    static auto* const real = next<ssize_t(int, off_t*, int, off_t*, size_t, unsigned)>("copy_file_range");
    const ssize_t part = allowed(Deed::writes, "copy_file_range", target, length);
    return part < 0 ? -1 : real(source, source_offset, target, target_offset, static_cast<size_t>(part), flags);
}

int ftruncate(int file, off_t length) noexcept
{
    static auto* const real = next<int(int, off_t)>("ftruncate");
    return fails(Deed::changes, "ftruncate", file) ? -1 : real(file, length);
}

#define SYNC(name)                                                                                                     \
    int name(int file)                                                                                                 \
    {                                                                                                                  \
        static auto* const real = next<int(int)>(#name);                                                               \
        return fails(Deed::changes, #name, file) ? -1 : real(file);                                                    \
    }
SYNC(fsync)
SYNC(fdatasync)

int sync_file_range(int file, off_t offset, off_t length, unsigned flags)
{
    static auto* const real = next<int(int, off_t, off_t, unsigned)>("sync_file_range");
    return fails(Deed::changes, "sync_file_range", file) ? -1 : real(file, offset, length, flags);
}

#define NAME(name)                                                                                                     \
    int name(const char* from, const char* to) noexcept                                                                \
    {                                                                                                                  \
        static auto* const real = next<int(const char*, const char*)>(#name);                                          \
        return fails(Deed::changes, #name, QByteArray(from), QByteArray(to)) ? -1 : real(from, to);                    \
    }
NAME(rename)
NAME(link)

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) noexcept
{
    static auto* const real = next<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return fails(Deed::changes, "renameat2", path_of(from_folder, from), path_of(to_folder, to))
               ? -1
               : real(from_folder, from, to_folder, to, flags);
}

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) noexcept
{
    static auto* const real = next<int(int, const char*, int, const char*, int)>("linkat");
    return fails(Deed::changes, "linkat", path_of(from_folder, from), path_of(to_folder, to))
               ? -1
               : real(from_folder, from, to_folder, to, flags);
}

int symlink(const char* leads_to, const char* path) noexcept
{
    static auto* const real = next<int(const char*, const char*)>("symlink");
    return fails(Deed::changes, "symlink", path) ? -1 : real(leads_to, path);
}

ssize_t readlink(const char* path, char* leads_to, size_t room) noexcept
{
    static auto* const real = next<ssize_t(const char*, char*, size_t)>("readlink");
    return fails(Deed::looks, "readlink", path) ? -1 : real(path, leads_to, room);
}

#define REMOVE(name)                                                                                                   \
    int name(const char* path) noexcept                                                                                \
    {                                                                                                                  \
        static auto* const real = next<int(const char*)>(#name);                                                       \
        return fails(Deed::changes, #name, path) ? -1 : real(path);                                                    \
    }
REMOVE(unlink)
REMOVE(rmdir)

int unlinkat(int folder, const char* name, int flags) noexcept
{
    static auto* const real = next<int(int, const char*, int)>("unlinkat");
    return fails(Deed::changes, "unlinkat", folder, name) ? -1 : real(folder, name, flags);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    static auto* const real = next<int(const char*, mode_t)>("mkdir");
    return fails(Deed::changes, "mkdir", path) ? -1 : real(path, mode);
}

#define STAT(name, type)                                                                                               \
    int name(const char* path, type* status) noexcept                                                                  \
    {                                                                                                                  \
        static auto* const real = next<int(const char*, type*)>(#name);                                                \
        return fails(Deed::looks, #name, path) ? -1 : real(path, status);                                              \
    }
STAT(stat, struct stat)
STAT(lstat, struct stat)
STAT(stat64, struct stat64)
STAT(lstat64, struct stat64)

#define FSTAT(name, type)                                                                                              \
    int name(int file, type* status) noexcept                                                                          \
    {                                                                                                                  \
        static auto* const real = next<int(int, type*)>(#name);                                                        \
        return fails(Deed::looks, #name, file) ? -1 : real(file, status);                                              \
    }
FSTAT(fstat, struct stat)
FSTAT(fstat64, struct stat64)

int fstatat(int folder, const char* name, struct stat* status, int flags) noexcept
{
    static auto* const real = next<int(int, const char*, struct stat*, int)>("fstatat");
    return fails(Deed::looks, "fstatat", folder, name) ? -1 : real(folder, name, status, flags);
}

int statx(int folder, const char* name, int flags, unsigned mask, struct statx* status) noexcept
{
    static auto* const real = next<int(int, const char*, int, unsigned, struct statx*)>("statx");
    return fails(Deed::looks, "statx", folder, name) ? -1 : real(folder, name, flags, mask, status);
}

int access(const char* path, int rights) noexcept
{
    static auto* const real = next<int(const char*, int)>("access");
    return fails(Deed::looks, "access", path) ? -1 : real(path, rights);
}

int faccessat(int folder, const char* name, int rights, int flags) noexcept
{
    static auto* const real = next<int(int, const char*, int, int)>("faccessat");
    return fails(Deed::looks, "faccessat", folder, name) ? -1 : real(folder, name, rights, flags);
}

char* realpath(const char* path, char* resolved) noexcept
{
    static auto* const real = next<char*(const char*, char*)>("realpath");
    return fails(Deed::looks, "realpath", path) ? nullptr : real(path, resolved);
}

int chmod(const char* path, mode_t mode) noexcept
{
    static auto* const real = next<int(const char*, mode_t)>("chmod");
    return fails(Deed::changes, "chmod", path) ? -1 : real(path, mode);
}

int fchmod(int file, mode_t mode) noexcept
{
    static auto* const real = next<int(int, mode_t)>("fchmod");
    return fails(Deed::changes, "fchmod", file) ? -1 : real(file, mode);
}

int utimensat(int folder, const char* name, const timespec* times, int flags) noexcept
{
    static auto* const real = next<int(int, const char*, const timespec*, int)>("utimensat");
    return fails(Deed::changes, "utimensat", folder, name) ? -1 : real(folder, name, times, flags);
}

int futimens(int file, const timespec* times) noexcept
{
    static auto* const real = next<int(int, const timespec*)>("futimens");
    return fails(Deed::changes, "futimens", file) ? -1 : real(file, times);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier, bugprone-macro-parentheses)
