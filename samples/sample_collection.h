#pragma once

#include <QByteArray>

/// A sample collection as it should be made.
struct SampleCollection
{
    int files = 60;
    int folders = 6;
    int seconds = 1;          ///< how long the longest song plays; the shortest takes half of that
    bool broken_names = true; ///< whether names that are not valid UTF-8 are among them
};

/// Writes a sample collection below the folder `native` on disk, which is made where it is missing: folders of files
/// with names of all six shapes and of none, with tags in ASCII, Korean and Western text and without. Each song plays a
/// quiet melody of its own; those of more than 300 files only begin theirs. The same numbers make the same bytes. Files
/// that are there already stay as they are. Gives whether all could be written.
bool write_sample_collection(const QByteArray& native, const SampleCollection& collection);
