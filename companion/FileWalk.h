#pragma once

#include "companion/PathSource.h"

#include <QByteArray>
#include <QSet>

#include <functional>
#include <vector>

/// A folder with music in it. Paths end in a slash.
struct MusicFolder
{
    QByteArray native; ///< absolute, without links
    QByteArray shown;  ///< as the person wrote it; empty for a file that was named without a folder
};

/// A file whose name ends as those of music files do.
struct MusicFile
{
    MusicFolder folder;
    QByteArray name;
    bool is_named = false; ///< a person named the file itself and not a folder above it

    QByteArray native() const { return folder.native + name; }
    QByteArray shown_path() const { return folder.shown + name; }
};

/// The music files among the paths that a person names: files, and folders with all that lies below. In each folder the
/// files come first and then the folders, each by the bytes of their names; links found on the way are not followed.
/// What is named twice comes once. The names of one folder at a time are kept.
class FileWalk
{
public:
    struct Visitor
    {
        std::function<void(MusicFile file)> file;
        /// The files of one walked folder, which no other file lies in, are through.
        std::function<void()> folder_end;
        /// A path as the person would write it cannot be read or is no music file, or "standard input", where paths
        /// come from, cannot be read.
        std::function<void(const QByteArray& path, const QByteArray& reason)> failed;
    };

    explicit FileWalk(Visitor visitor) : visitor_(std::move(visitor)) {}

    void walk(PathSource& paths);

private:
    bool was_named(const QByteArray& path);
    void visit(const QByteArray& path);
    void visit_file(const QByteArray& path);
    bool enter_parent(const QByteArray& parent);
    void visit_folders(MusicFolder top);
    void visit_folder(const MusicFolder& folder, std::vector<MusicFolder>& pending);

    Visitor visitor_;
    QSet<quint64> seen_folders_;
    QSet<quint64> seen_files_;  ///< named ones
    MusicFolder parent_folder_; ///< of the last named file
    quint64 parent_mark_ = 0;
};
