#pragma once

#include "companion/read_end.h"
#include "platform/file_operation/disk_entry.h"

#include <QByteArray>

#include <sys/stat.h>

/// A file that is open for its end to be written over.
struct OpenEnd
{
    Descriptor file;
    FileEnd end; ///< as it was when the file was opened; with a reason when that could not be done
};

/// Opens the regular file (through links) at a path on disk; never waits. A file whose owner may not write is read-only
/// for everybody.
OpenEnd open_end(const QByteArray& native);

/// Writes over the last 128 bytes. Gives 0 or an error number.
int write_end(const OpenEnd& open, const QByteArray& block);

/// The time of the last change of a file, in nanoseconds since 1970.
qint64 time_of(const struct stat& status);

/// Gives an open file that time. Gives 0 or an error number.
int set_time(const Descriptor& file, qint64 nanoseconds);
