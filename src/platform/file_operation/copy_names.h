#pragma once

#include "platform/file_operation/disk_entry.h"

/// The first place in the source's own folder, "Copy of NAME" or a numbered one, at which nothing stands; a file keeps
/// its ending. Nothing, with errno set, when the disk doesn't tell what stands there.
std::optional<DiskPlace> free_copy_place(const DiskPlace& source, bool is_folder);
