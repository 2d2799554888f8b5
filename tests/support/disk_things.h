#pragma once

#include "file_operations.h"

#include <QSet>

// What a disk holds before and after something went wrong on it.

/// Whether a line of tree_of is about a hidden file that was to get its real name later.
bool is_unfinished(const QByteArray& line);

/// The things that the lines of tree_of tell of, by what they are: "= CONTENT" of a file, "-> TARGET" of a link,
/// "NAME/" of a folder. What has no real name yet is left out.
QSet<QByteArray> things_in(const QByteArrayList& lines);

/// The lines of all trees, those of a folder that is not there being none; each with the place of its folder in front.
QByteArrayList trees_of(const QByteArrayList& folders);

/// Calls of a system on which the drives C: and D: are two disks, of which nothing can be renamed to the other, even
/// where both are in memory.
FileCalls calls_between_disks(FileCalls calls);

/// Calls of a system on which everything lies on the volume that holds the user's trash.
FileCalls calls_on_one_volume(FileCalls calls);

/// As long as it lives, temporary folders are made in memory where the machine lets it, so that a sync takes no time.
class FilesInMemory
{
public:
    FilesInMemory();
    ~FilesInMemory();
    FilesInMemory(const FilesInMemory&) = delete;
    FilesInMemory& operator=(const FilesInMemory&) = delete;

private:
    QByteArray before_;
};
