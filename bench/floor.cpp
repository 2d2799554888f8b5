#include "floor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>

namespace {

constexpr std::size_t buffer_size = 64 * std::size_t{1024};

void require(bool done, const QByteArray& path)
{
    if (!done) {
        std::perror(path.constData());
        std::exit(1);
    }
}

} // namespace

void read_start_and_tag(const QByteArray& path)
{
    std::array<char, 5050> start{};
    std::array<char, 128> tag{};
    struct stat facts = {};
    const int file = open(path.constData(), O_RDONLY | O_CLOEXEC);
    require(file >= 0 && fstat(file, &facts) == 0, path);
    require(pread(file, start.data(), start.size(), 0) >= 0, path);
    require(pread(file, tag.data(), tag.size(), facts.st_size - 128) == 128, path);
    close(file);
}

void look_for(const QByteArray& path)
{
    struct stat facts = {};
    require(stat(path.constData(), &facts) == 0, path);
}

void list_and_read(const QByteArray& folder)
{
    DIR* listing = opendir(folder.constData());
    require(listing != nullptr, folder);
    while (const dirent* entry = readdir(listing)) {
        if (entry->d_type == DT_REG)
            read_start_and_tag(folder + '/' + entry->d_name);
    }
    closedir(listing);
}

void read_whole(const QByteArray& path)
{
    static std::array<char, buffer_size> buffer;
    const int file = open(path.constData(), O_RDONLY | O_CLOEXEC);
    require(file >= 0, path);
    ssize_t count = 1;
    while (count > 0)
        count = read(file, buffer.data(), buffer.size());
    require(count == 0, path);
    close(file);
}

void read_first_buffer(const QByteArray& path)
{
    static std::array<char, buffer_size> buffer;
    std::array<char, 128> tag{};
    struct stat facts = {};
    const int file = open(path.constData(), O_RDONLY | O_CLOEXEC);
    require(file >= 0 && fstat(file, &facts) == 0, path);
    require(read(file, buffer.data(), buffer.size()) >= 0, path);
    require(pread(file, tag.data(), tag.size(), facts.st_size - 128) == 128, path);
    close(file);
}

void write_tag(const QByteArray& path, const QByteArray& tag)
{
    struct stat facts = {};
    const int file = open(path.constData(), O_RDWR | O_CLOEXEC);
    require(file >= 0 && fstat(file, &facts) == 0, path);
    require(pwrite(file, tag.constData(), 128, facts.st_size - 128) == 128, path);
    close(file);
}

void rename_file(const QByteArray& from, const QByteArray& to)
{
    require(renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0, from);
}

void sync_file(const QByteArray& path)
{
    const int file = open(path.constData(), O_RDONLY | O_CLOEXEC);
    require(file >= 0 && fsync(file) == 0, path);
    close(file);
}

void sync_file_system(const QByteArray& path)
{
    const int file = open(path.constData(), O_RDONLY | O_CLOEXEC);
    require(file >= 0 && syncfs(file) == 0, path);
    close(file);
}
