#pragma once

#include <QByteArray>

#include <vector>

// The bare system calls of the program's work, with nothing around them. Any failure ends the process.

/// Opens a file, asks its size, reads its start and its last 128 bytes, closes it.
void read_start_and_tag(const QByteArray& path);

/// Asks whether a file is there.
void look_for(const QByteArray& path);

/// Lists a folder's names and calls read_start_and_tag for each file.
void list_and_read(const QByteArray& folder);

/// Reads a file from its beginning to its end, 64 KiB at a time.
void read_whole(const QByteArray& path);

/// Opens a file, asks its size, reads its first 64 KiB and its last 128 bytes, closes it.
void read_first_buffer(const QByteArray& path);

/// Writes 128 bytes over the end of a file.
void write_tag(const QByteArray& path, const QByteArray& tag);

/// Renames without replacing.
void rename_file(const QByteArray& from, const QByteArray& to);

/// Waits until a file is on the disk.
void sync_file(const QByteArray& path);

/// Waits until everything is on the disk that the file system of `path` has yet to write.
void sync_file_system(const QByteArray& path);
