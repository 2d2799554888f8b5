#pragma once

#include <QString>
#include <QStringView>

/// What a text box keeps of `text`: all that stands before its first NUL character.
QString text_box_text(const QString& text);

/// `text` without the blanks (U+0020 only) at both ends.
QString trim_blanks(const QString& text);

/// Order of texts in sorted trees, lists and combo boxes: case-insensitive by character code, ties by case.
/// Negative, 0 or positive as `a` stands before, at or behind `b`.
int compare_texts(QStringView a, QStringView b);

/// `number` with the format "###,###,###": commas between groups of three digits, and nothing at all for 0.
QString group_digits(qint64 number);

/// A file's size as the lists show it: kilobytes rounded (ties to even), grouped, and "KB" without a blank.
/// Less than half a kilobyte gives just "KB".
QString kilobytes_text(qint64 bytes);

/// Bytes divided by 1048576, rounded to a whole number with ties to even.
qint64 megabytes(qint64 bytes);
