#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// File names on disk are bytes; the program's names are text. Every byte string survives the round trip:
// bytes that are not valid UTF-8 become the lone surrogates U+DC80 to U+DCFF, a backslash becomes U+F05C, and the
// UTF-8 bytes of U+F05C itself are treated as stray bytes.

/// The text of one name (no path) from its bytes on disk.
QString name_from_bytes(QByteArrayView bytes);

/// The bytes on disk of one name. Empty when no file can bear it: an empty name, ".", "..", a "/", a backslash or a
/// NUL in it, or a surrogate that stands for no byte.
QByteArray name_to_bytes(QStringView name);

/// Adds the bytes on disk of `name` to `path`. Gives false, with part of them added, when no file can bear it.
bool append_name(QByteArray& path, QStringView name);
