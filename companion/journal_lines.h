#pragma once

#include "companion/Change.h"

#include <QByteArray>

#include <optional>

// A journal is a text. Its first line says what it is. Then comes a line for each change, in the order in which they
// are made, with these fields between tabs: the file's size in bytes and the time of its last change in nanoseconds
// since 1970; its folder, the same as the person wrote it, its old name and its new one; its last 128 bytes before and
// after in hexadecimal digits, "-" where they stay; its rights in octal digits where it is read-only and made writable,
// else "-". Each byte of a name that is no printable ASCII character, and each backslash, stands as \x and two
// hexadecimal digits. The last line holds "end", the number of changes and the SHA-1 of all lines before it.

/// The first line.
QByteArray journal_head();

/// The line of a change.
QByteArray journal_line(const Change& change);

/// The change of a line, given without its line end; nothing when it is none.
std::optional<Change> parse_journal_line(const QByteArray& line);

struct JournalEnd
{
    qint64 changes = 0;
    QByteArray hash;
};

/// More bytes than the last line has.
constexpr qint64 journal_end_bytes = 100;

/// The last line.
QByteArray journal_end(qint64 changes, const QByteArray& hash);

/// What the last line says, given with its line end; nothing when it is no last line.
std::optional<JournalEnd> parse_journal_end(const QByteArray& line);
