#pragma once

#include <QString>

/// A text as one line of a list or tree shows it: up to its first NUL, control characters and line breaks as blanks.
/// Names are data and may hold anything; a row keeps its height all the same.
QString display_text(const QString& text);
