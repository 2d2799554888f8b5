#pragma once

#include "companion/Change.h"
#include "companion/journal_lines.h"

#include "platform/file_operation/disk_entry.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QSet>
#include <QString>

#include <functional>
#include <optional>

// A journal tells all that a run is going to change, so that it can be taken back. journal_lines.h tells how it is
// written.

/// What went wrong with a journal.
struct JournalError
{
    QByteArray path;
    QByteArray text;
};

/// Notes in the last line of a finished journal which change is being made or taken back: a program that is killed then
/// may leave a part of it.
class JournalDoubt
{
public:
    /// `file` outlives it; the line stands at `place`.
    JournalDoubt(const Descriptor& file, qint64 place) : file_(file), place_(place) {}

    /// A change, counted from 1; 0 when there is none. Where it can't be written, an undo may refuse the file.
    void note(qint64 number) const;
    /// Keeps what was noted last: that change went wrong, and its file is in doubt.
    void keep() { place_ += journal_doubt_bytes; }

private:
    const Descriptor& file_;
    qint64 place_;
};

/// Writes a journal.
class JournalWriter
{
public:
    /// Makes the file, which nobody but the user can read; never replaces one. Where no path is told it goes into the
    /// program's folder in the user's state folder, under a name after the time that is free. Raises JournalError.
    explicit JournalWriter(const std::optional<QByteArray>& path);
    /// Removes a journal that was not finished: nothing was changed under it.
    ~JournalWriter();
    JournalWriter(const JournalWriter&) = delete;
    JournalWriter& operator=(const JournalWriter&) = delete;

    const QByteArray& path() const { return path_; }
    /// Whether it is what stands in a folder, given with its slash, under a name.
    bool is_at(const QByteArray& folder, const QByteArray& name) const;
    /// Raises JournalError.
    void add(const Change& change);
    /// Writes the line behind the changes and brings all to the disk, the folder's entry too. Raises JournalError.
    void finish();
    /// Of the finished journal.
    JournalDoubt doubt() const { return {file_, size_ - journal_doubt_bytes}; }

private:
    bool make_file();
    void append(const QByteArray& line);
    void flush();

    QByteArray path_;
    Descriptor file_;
    QByteArray waiting_; ///< for being written
    QCryptographicHash hash_{QCryptographicHash::Sha1};
    qint64 changes_ = 0;
    qint64 size_ = 0; ///< of what is written
    bool is_finished_ = false;
};

/// Reads a whole journal; its memory does not grow with it.
class JournalReader
{
public:
    using Visitor = std::function<void(const Change& change)>;

    /// Opens a journal, looks at all of it and takes hold of it, so that two programs can't work with one at the same
    /// time. Raises JournalError when it can't be read, is not whole, is damaged or is in use.
    explicit JournalReader(const QByteArray& path);

    qint64 changes() const { return changes_; }
    /// Whether a change, counted from 1, may have left its file neither as it was nor as it was to be.
    bool is_in_doubt(qint64 number) const { return doubts_.contains(number); }
    JournalDoubt doubt() const { return {file_, doubt_at_}; }
    void each_forwards(const Visitor& visitor) const;
    void each_backwards(const Visitor& visitor) const;

private:
    QByteArray read(qint64 offset, qint64 length) const;
    void check(qint64 size);
    qint64 read_doubts(qint64 size);
    void visit(const QByteArray& line, const Visitor& visitor) const;

    QByteArray path_;
    Descriptor file_;
    qint64 begin_ = 0; ///< of the first change's line
    qint64 end_ = 0;   ///< of the last one's
    qint64 changes_ = 0;
    QSet<qint64> doubts_; ///< numbers of changes
    qint64 doubt_at_ = 0; ///< where the next one is noted
};

/// Where a run puts its journal when nobody says where: a path named after the time, in the program's folder in the
/// user's state folder, which is made, for the user alone, where it is missing. Raises JournalError.
QByteArray default_journal();
