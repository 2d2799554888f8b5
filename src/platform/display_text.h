#pragma once

#include <QChar>
#include <QString>

/// Whether a character shows as itself: no control character, line break or mark that turns the direction of writing.
bool is_drawn(QChar character);

/// A text as one line of a list, tree or message shows it: up to its first NUL; control characters, line breaks and
/// marks that turn the direction of writing as blanks. Names are data and may hold anything; a row keeps its height all
/// the same, and what stands behind a name reads as it is written.
QString display_text(const QString& text);

/// A text for a box that wraps its lines, with places to break it where a word, such as a long file name, would not
/// fit. It is written from left to right, whatever it begins with.
QString breakable_text(const QString& text);

/// What makes a tool tip show `text` letter for letter, wrapped as a box would.
QString tool_tip_text(const QString& text);
