#pragma once

#include "companion/Reason.h"
#include "platform/file_operation/disk_entry.h"

#include <QByteArray>

#include <sys/stat.h>

#include <optional>
#include <span>

/// What a file was when it was opened, and its last 128 bytes, where a tag stands.
struct FileEnd
{
    std::optional<struct stat> status; ///< nothing when it could not be opened
    QByteArray block;                  ///< empty with a reason
    Reason reason;                     ///< why it could not be read, or that it is too short for a tag
};

/// Opens the regular file (through links) at a path on disk once; never waits.
FileEnd read_end(const QByteArray& native);
/// The same of a file that was opened; errno tells why one that is not open is not.
FileEnd read_end(const Descriptor& file);

/// Reads all of `bytes` from `offset` of an open file on; gives whether they came, else with errno set.
bool read_whole(const Descriptor& file, qint64 offset, std::span<char> bytes);
