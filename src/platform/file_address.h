#pragma once

#include <QByteArray>
#include <QString>

/// The address (file:///...) of a file or folder for other programs, every byte of its path kept; `path` is the
/// program's own. Empty when it has no place on disk.
QByteArray file_address(const QString& path);
