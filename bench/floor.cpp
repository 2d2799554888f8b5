#include "floor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t buffer_size = 64 * std::size_t{1024};

void require(bool done, const char* path)
{
    if (!done) {
        std::perror(path);
        std::exit(1);
    }
}

/// Calls `take` with the folder's open listing, and the path and the entry of all that is in it.
template<typename Take> void for_each_entry(const char* folder, const Take& take)
{
    DIR* listing = opendir(folder);
    require(listing != nullptr, folder);
    std::string path;
    while (const dirent* entry = readdir(listing)) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        path.assign(folder).append("/").append(name);
        take(dirfd(listing), path, *entry);
    }
    closedir(listing);
}

} // namespace

TagBytes read_start_and_tag(const char* path)
{
    std::array<char, 512> start{};
    TagBytes tag{};
    struct stat facts = {};
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    require(file >= 0 && fstat(file, &facts) == 0, path);
    require(pread(file, start.data(), start.size(), 0) >= 0, path);
    require(pread(file, tag.data(), tag.size(), facts.st_size - 128) == 128, path);
    close(file);
    return tag;
}

TagBytes read_tag(const char* path)
{
    TagBytes tag{};
    struct stat facts = {};
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    require(file >= 0 && fstat(file, &facts) == 0, path);
    require(pread(file, tag.data(), tag.size(), facts.st_size - 128) == 128, path);
    close(file);
    return tag;
}

void look_for(const char* path)
{
    struct stat facts = {};
    require(stat(path, &facts) == 0, path);
}

void list_and_read(const char* folder)
{
    for_each_entry(folder, [](int listing, const std::string& path, const dirent& entry) {
        if (entry.d_type != DT_REG)
            return;
        struct stat facts = {};
        require(fstatat(listing, entry.d_name, &facts, 0) == 0, path.c_str());
        read_start_and_tag(path.c_str());
    });
}

void list_names(const char* folder)
{
    for_each_entry(folder, [](int, const std::string&, const dirent&) {});
}

void list_names_below(const char* folder)
{
    for_each_entry(folder, [](int, const std::string& path, const dirent& entry) {
        if (entry.d_type == DT_DIR)
            list_names_below(path.c_str());
    });
}

void read_whole(const char* path)
{
    static std::array<char, buffer_size> buffer;
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    require(file >= 0, path);
    ssize_t count = 1;
    while (count > 0)
        count = read(file, buffer.data(), buffer.size());
    require(count == 0, path);
    close(file);
}

void read_first_buffer(const char* path)
{
    static std::array<char, buffer_size> buffer;
    std::array<char, 128> tag{};
    struct stat facts = {};
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    require(file >= 0 && fstat(file, &facts) == 0, path);
    require(read(file, buffer.data(), buffer.size()) >= 0, path);
    require(pread(file, tag.data(), tag.size(), facts.st_size - 128) == 128, path);
    close(file);
}

void write_tag(const char* path, const TagBytes& tag)
{
    struct stat facts = {};
    const int file = open(path, O_RDWR | O_CLOEXEC);
    require(file >= 0 && fstat(file, &facts) == 0, path);
    require(pwrite(file, tag.data(), tag.size(), facts.st_size - 128) == 128, path);
    close(file);
}

void rename_file(const char* from, const char* to)
{
    require(renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0, from);
}

void sync_file(const char* path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    require(file >= 0 && fsync(file) == 0, path);
    close(file);
}

void sync_file_system(const char* path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    require(file >= 0 && syncfs(file) == 0, path);
    close(file);
}
