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
