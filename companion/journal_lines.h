#pragma once

#include "companion/Change.h"

#include <QByteArray>

#include <optional>

// A journal is a text. Its first line says what it is. Then comes a line for each change, in the order in which they
// are made, with these fields between tabs: the file's size in bytes and the time of its last change in nanoseconds
// since 1970; its folder, the same as the person wrote it, its old name and its new one; its last 128 bytes before and
// after in hexadecimal digits, "-" where they stay; its rights in octal digits where it is read-only and made writable,
// else "-"; the time of its last change that it is given after its bytes are written, "-" where they stay or the file
// is somebody else's; its device and its number there with a colon between, "-" where its bytes stay. Each byte of a
// name that is no printable ASCII character, and each backslash, stands as \x and two hexadecimal digits. The next line
// holds "end", the number of changes and the SHA-1 of all lines before it: here the journal is on the disk, and the
// changes begin. The lines behind it hold "doubt" and the number of a change, counted from 1, that may have
// left its file neither as it was nor as it was to be: the last is written over with the change of bytes that is being
// made or taken back, and then with 0, which means none.

/// The first line.
QByteArray journal_head();
/// How the first lines of all journals begin, whatever their version.
QByteArray journal_family();

/// The line of a change.
QByteArray journal_line(const Change& change);

/// The change of a line, given without its line end; nothing when it is none.
std::optional<Change> parse_journal_line(const QByteArray& line);

struct JournalEnd
{
    qint64 changes = 0;
    QByteArray hash;
};

/// More bytes than the line behind the changes has.
constexpr qint64 journal_end_bytes = 100;

/// The line behind the changes.
QByteArray journal_end(qint64 changes, const QByteArray& hash);

/// What that line says, given with its line end; nothing when it is another.
std::optional<JournalEnd> parse_journal_end(const QByteArray& line);

/// A line that tells of a change that may have left its file in doubt; all have the same length.
QByteArray journal_doubt(qint64 number);
constexpr qint64 journal_doubt_bytes = 26;

/// The number that it tells, given with its line end; nothing when it is another line.
std::optional<qint64> parse_journal_doubt(const QByteArray& line);
/// Whether bytes are the beginning of such a line that was cut off.
bool is_cut_doubt(const QByteArray& bytes);
