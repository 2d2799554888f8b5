#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// The legacy code page of names' lengths and of tags: 949, with Windows-1252 for what is not Korean text.

/// Number of bytes that `text` takes in code page 949; a character that the page lacks counts one, as its "?" does.
int code_page_bytes(QStringView text);

/// The text of a tag field's bytes. What stands before the first NUL is read as code page 949 if it is valid there
/// (a lone first half of a double-byte character at the very end of the field is dropped when double-byte text stands
/// before it), else as Windows-1252, which holds every byte; NULs and what follows them stay in the text.
QString text_from_code_page(QByteArrayView bytes);

/// What stands before the first NUL of that text.
QString text_before_nul(QByteArrayView bytes);

/// `text` in code page 949 if that has all of it, else in Windows-1252 if that has all of it, else in 949 with "?"
/// for the rest.
QByteArray text_to_code_page(QStringView text);

/// The bytes of `text` as text_to_code_page gives them, cut to at most `width` bytes without leaving half of a
/// double-byte character, and filled with blanks to exactly `width` bytes.
QByteArray text_to_field(QStringView text, int width);
