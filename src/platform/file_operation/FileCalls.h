#pragma once

#include "platform/rename_file.h"

#include <QByteArray>

#include <sys/types.h>

#include <functional>

/// The system's calls of a file operation that can fail for reasons outside the files themselves, or that a file system
/// may lack. Calls that give a number give the negative error number instead when they fail.
struct FileCalls
{
    /// Copies within the kernel, at the same offset in both files; gives the bytes copied.
    std::function<ssize_t(int source, int target, off_t offset, size_t length)> copy_range;
    /// Gives the bytes written, which may be fewer than asked for.
    std::function<ssize_t(int file, const char* bytes, size_t length, off_t offset)> write;
    /// Brings a file or folder to the disk; gives 0 or an error number.
    std::function<int(int file)> sync;
    /// Opens a new file without a name on the file system of `folder`; gives the descriptor.
    std::function<int(const QByteArray& folder)> open_unnamed;
    /// The root, without links on the way, of the volume that holds the file or folder itself, which may be a link;
    /// empty when it is not there or the disk doesn't tell.
    std::function<QByteArray(const QByteArray& native)> volume_root;
    RenameCalls rename;

    /// The calls of this machine.
    static FileCalls of_this_machine();
};
