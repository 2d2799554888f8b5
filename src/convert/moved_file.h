#pragma once

#include <QString>

/// Writes the tag of a file that was to be moved to `path`, as Write_fif_tag does. When the move was not `done`, a file
/// that stands at `path` is another program's and stays as it is; that, too, is shown as message 11.
void tag_moved_file(bool done, const QString& path, const QString& artist, const QString& title, QString& genre);
