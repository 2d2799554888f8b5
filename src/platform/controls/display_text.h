#pragma once

#include <QString>

/// A text as one line of a list or tree shows it: up to its first NUL, control characters and line breaks as blanks.
/// Names are data and may hold anything; a row keeps its height all the same.
QString display_text(const QString& text);

/// A text for a box that wraps its lines, with places to break it where a word, such as a long file name, would not
/// fit.
QString breakable_text(const QString& text);
