#pragma once

#include "platform/file_operation/FileCalls.h"
#include "test_main.h"

#include <QByteArray>
#include <QList>

#include <sys/stat.h>

// Two small drives of a file operation that is fuzzed, and what stands on them.

/// What stands at a path on disk.
struct Standing
{
    QByteArray path;
    mode_t mode = 0;
    qint64 modified = 0; ///< nanoseconds
    QByteArray content;  ///< of a file, or what a link leads to

    bool is_file() const { return S_ISREG(mode); }
    bool is_folder() const { return S_ISDIR(mode); }
    bool operator==(const Standing&) const = default;
};

/// Whether `path` is `top` or lies below it.
bool lies_in(const QByteArray& path, const QByteArray& top);
/// The path of an entry without links on the way to it; empty where there is none.
QByteArray real_place(const QByteArray& native);

/// The drives C: and D:, each in a folder of its own on one file system and made to look like two, with a home for the
/// trash and a folder that is nobody's business beside them.
class ScratchDisks
{
public:
    ScratchDisks();

    /// Empties drives and trash.
    void clear() const;
    QByteArray c() const { return top_ + "/c"; }
    QByteArray d() const { return top_ + "/d"; }
    /// A file that links may lead to.
    QByteArray secret() const { return top_ + "/outside/secret"; }
    QByteArray home_trash() const { return top_ + "/home/.local/share/Trash"; }
    QByteArray d_trash() const;

    /// All below the drives and in the trash; folders stand before what they hold.
    QList<Standing> all_within() const;
    /// All that lies beside them.
    QList<Standing> all_outside() const;

    /// The calls of this machine, but for renames from drive to drive, which fail, and for syncs, which do nothing.
    FileCalls calls() const;

private:
    void add_all_below(const QByteArray& folder, QList<Standing>& all) const;

    TestDisk disk_;
    QByteArray top_;
};
