#pragma once

#include "companion/Change.h"

#include <QByteArray>

#include <sys/stat.h>

// What rights tell of changes that are not made, for the preview of a run.

/// What a folder lets be done; the system is asked once for one folder after another.
class FolderRights
{
public:
    /// Why a change can't be made in its folder: none of its names may be changed, or nothing may be on its disk.
    Reason obstacle(const Change& change);

private:
    QByteArray folder_; ///< that was asked about
    int error_ = 0;
};

/// Why the bytes of a file can't be changed. The system is asked only about a file of somebody else: the owner of one
/// can make it writable.
Reason no_right_to_write(const QByteArray& native, const struct stat& status);
