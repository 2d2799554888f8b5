#pragma once

#include "platform/BinaryFile.h"

#include <atomic>
#include <span>
#include <vector>

/// A file read in order through a buffer, with a word that breaks off every further read.
class MediaFile
{
public:
    /// Opens the regular file at the program's path `path`; from the moment when `cancelled` is set, reads fail.
    MediaFile(const QString& path, const std::atomic<bool>& cancelled);

    bool is_open() const { return file_.is_open(); }
    /// Bytes that the file had when it was opened.
    qint64 length() const { return file_.length(); }
    /// Reads up to `bytes.size()` bytes from the present place on and steps behind them; gives how many came, 0 at the
    /// end of the file, -1 when cancelled.
    qint64 read(std::span<char> bytes);
    /// Goes to a place counted from the beginning (SEEK_SET), the present place (SEEK_CUR) or the end (SEEK_END); gives
    /// the new place, -1 for one before the beginning or an unknown `whence`.
    qint64 seek(qint64 offset, int whence);

private:
    /// What the buffer holds from the present place on; filled anew when that is nothing.
    std::span<const char> buffered();

    BinaryFile file_;
    const std::atomic<bool>& cancelled_;
    std::vector<char> buffer_;
    qint64 buffer_place_ = 0;
    qint64 filled_ = 0;
    qint64 place_ = 0;
};
