#pragma once

#include <QByteArray>
#include <QString>

/// The path on disk of a path as the program writes it, such as C:\Music\a.mp3; a trailing backslash is allowed.
/// Empty when it has no place on disk: an unknown or empty drive, or a name that no file can bear.
QByteArray native_path(const QString& path);

/// The path as the program writes it, without trailing backslash, of an absolute path on disk, under the drive whose
/// root lies nearest above it. Empty when no drive holds it, or with "." or ".." on the way.
QString program_path(const QByteArray& native);
