#pragma once

#include "platform/file_operation/FileCalls.h"
#include "platform/file_operation/disk_entry.h"

#include <functional>

/// Where and why a copy ended early.
struct CopyFault
{
    int error = 0; ///< an error number, 0 for none
    bool in_target = false;
};

/// Copies `size` bytes, the whole of an open file, into an empty one: within the kernel where it can, holes as holes.
/// What is copied goes to the disk at once, so that little is left to wait for at the end. Calls `advance` with the
/// bytes done since the last call, every few hundredths of a second on a disk of any speed; false from it ends the copy
/// with ECANCELED. A source that ends before its size ends it with ENODATA.
CopyFault copy_content(const Descriptor& source, const Descriptor& target, qint64 size, const FileCalls& calls,
                       const std::function<bool(qint64)>& advance);
