#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// Texts on the way to a terminal. Names are bytes and go out as those bytes, but for what would do something there.

/// `bytes` of a path, name or text as a line of output shows them: control characters, line breaks and marks that turn
/// the direction of writing as \n, \x1b or \u202e, a backslash as two; all other bytes untouched, also stray ones.
QByteArray shown(QByteArrayView bytes);

/// The same of a field of a name or tag.
QByteArray shown(const QString& field);

/// The bytes of a field: UTF-8, and the stray bytes of a name that is not.
QByteArray bytes_of_field(const QString& field);

/// Adds `text` to `line`, filled with blanks to `cells` columns of a terminal, two of them at least.
void append_cell(QByteArray& line, const QByteArray& text, int cells);
