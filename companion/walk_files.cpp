#include "companion/walk_files.h"

void walk_files(PathSource& paths, Output& output, LookAhead& looks, const std::function<void()>& folder_end)
{
    FileWalk walk({.file = [&](MusicFile file) { looks.add(std::move(file)); },
                   .folder_end =
                       [&] {
                           if (folder_end)
                               looks.add_turn(folder_end);
                       },
                   .failed =
                       [&](const QByteArray& path, const QByteArray& reason) {
                           looks.add_turn([&output, path, reason] { output.path_failed(path, reason); });
                       }});
    walk.walk(paths);
    looks.finish();
}
