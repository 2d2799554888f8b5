#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// Texts on the way to a terminal. Names are bytes and go out as those bytes, but for what would do something there.

/// Adds the bytes of a path or name to `line` as output shows them: control characters, line breaks and marks that turn
/// the direction of writing as \n, \x1b or \u202e, a backslash as two; all other bytes untouched, also stray ones.
void append_shown(QByteArray& line, QByteArrayView bytes);

/// The same of a text, such as a field of a name or tag.
void append_shown(QByteArray& line, QStringView text);

/// The bytes or the text alone as output shows them.
QByteArray shown(QByteArrayView bytes);
QByteArray shown(QStringView text);

/// The bytes of a field: UTF-8, and the stray bytes of a name that is not.
QByteArray bytes_of_field(const QString& field);

/// Adds a text as output shows it, filled with blanks to `cells` columns of a terminal, two of them at least.
void append_cell(QByteArray& line, QStringView text, int cells);
