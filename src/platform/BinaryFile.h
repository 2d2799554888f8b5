#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <optional>
#include <span>

/// A regular file opened for positioned reads, or for reads and writes. Closed when it goes.
class BinaryFile
{
public:
    enum class Access
    {
        read,
        write
    };

    /// Opens the regular file (through links) at the program's path `path`; never creates, never waits. A file whose
    /// owner may not write is read-only for everybody.
    BinaryFile(const QString& path, Access access);
    ~BinaryFile();
    BinaryFile(const BinaryFile&) = delete;
    BinaryFile& operator=(const BinaryFile&) = delete;

    /// What tells a file from all others, whatever name it bears.
    struct Identity
    {
        dev_t volume = 0;
        ino_t number = 0;

        bool operator==(const Identity&) const = default;
    };

    bool is_open() const { return descriptor_ >= 0; }
    /// Whether it is open and not read-only.
    bool is_writable() const { return is_writable_; }
    /// Nothing when the file is not open.
    const std::optional<Identity>& identity() const { return identity_; }
    /// Bytes that the file had when it was opened.
    qint64 length() const { return length_; }
    /// Reads up to `bytes.size()` bytes from `offset` on; gives how many came, less at the end of the file or after
    /// an error. A negative offset reads nothing.
    qint64 read_at(qint64 offset, std::span<char> bytes) const;
    /// Writes over the bytes from `offset` on, which the file must have. Gives whether all of them were written; when
    /// not, what stood there is put back, which can fail only on a disk that goes on refusing in the middle of a write.
    bool write_at(qint64 offset, std::span<const char> bytes) const;

private:
    qint64 write_all(qint64 offset, std::span<const char> bytes) const;

    int descriptor_ = -1;
    bool is_writable_ = false;
    std::optional<Identity> identity_;
    qint64 length_ = 0;
};
