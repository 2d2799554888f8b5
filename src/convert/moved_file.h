#pragma once

#include <QString>

/// Writes the tag of a file that was to be moved to `path`, as Write_fif_tag does. When the move was not `done`, a file
/// that stands or comes to stand at `path` is another program's: nothing is written, and message 11 is shown.
void tag_moved_file(bool done, const QString& path, const QString& artist, const QString& title, QString& genre);
