#pragma once

#include <array>

// The bare system calls of the program's work, with nothing around them. Paths are those on disk. Any failure ends the
// process.

using TagBytes = std::array<char, 128>;

/// Opens a file, asks its size, reads its first 512 bytes and its last 128, closes it; gives the latter.
TagBytes read_start_and_tag(const char* path);

/// Opens a file, asks its size, reads its last 128 bytes, closes it; gives them.
TagBytes read_tag(const char* path);

/// Asks whether a file is there.
void look_for(const char* path);

/// Lists a folder's names, asks for each file's size and date, and calls read_start_and_tag for it.
void list_and_read(const char* folder);

/// Lists a folder's names.
void list_names(const char* folder);

/// Calls list_names for a folder and all that are below it.
void list_names_below(const char* folder);

/// Reads a file from its beginning to its end, 64 KiB at a time.
void read_whole(const char* path);

/// Opens a file, asks its size, reads its first 64 KiB and its last 128 bytes, closes it.
void read_first_buffer(const char* path);

/// Writes 128 bytes over the end of a file.
void write_tag(const char* path, const TagBytes& tag);

/// Renames without replacing.
void rename_file(const char* from, const char* to);

/// Waits until a file is on the disk.
void sync_file(const char* path);

/// Waits until everything is on the disk that the file system of `path` has yet to write.
void sync_file_system(const char* path);
