#pragma once

#include "companion/FileWalk.h"
#include "companion/Reason.h"
#include "companion/read_end.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <optional>

/// What a run does to one file: a new name in its folder, new bytes for its last 128, or both.
struct Change
{
    /// The last 128 bytes of a file.
    struct Block
    {
        QByteArray before;
        QByteArray after;
        std::optional<mode_t> mode; ///< rights before; there when the file is made writable first
    };

    QByteArray folder;       ///< absolute, with trailing slash
    QByteArray shown_folder; ///< the same as the person wrote it
    QByteArray old_name;
    QByteArray new_name; ///< the old one where it stays
    std::optional<Block> block;
    qint64 size = 0;    ///< of the file before and after
    qint64 changed = 0; ///< time of its last change before, in nanoseconds since 1970
    Reason tagless{};   ///< why it gets its name alone though a tag was wanted; no part of a journal

    /// A change of a file that leaves all as it is yet.
    static Change of(const MusicFile& file)
    {
        return {.folder = file.folder.native,
                .shown_folder = file.folder.shown,
                .old_name = file.name,
                .new_name = file.name,
                .block = std::nullopt};
    }

    bool renames() const { return new_name != old_name; }
    bool does_something() const { return renames() || block; }
    QByteArray old_path() const { return folder + old_name; }
    QByteArray new_path() const { return folder + new_name; }
    QByteArray shown_path() const { return shown_folder + old_name; }
};

/// What a file is to get, or why not.
struct Decision
{
    Change change;
    Reason reason;
    bool saw_target_free = false; ///< nothing stood at its new path when it was looked at
};

/// Notes the size and time of the file, as they were when its end was read, or else as they are now; a reason when they
/// can't be asked.
Reason note_state(Change& change, const std::optional<FileEnd>& end);

/// Adds the writing of `after` over the end of the file, which was read, when it is not these bytes yet.
void add_block(Change& change, const FileEnd& end, const QByteArray& after);

/// Does it: first the name, never replacing a file, and then the bytes, when they are still those noted. A reason when
/// it was not done whole.
Reason perform(const Change& change);

/// How a change was taken back.
struct TakenBack
{
    bool had_to = false; ///< there was something to take back
    Reason reason;       ///< why nothing was done
};

/// Takes a change back, whether it was done whole, in part or not at all: first the bytes with the time of the file's
/// last change, then the name, never replacing a file. Refuses with nothing done what is not as the change found or
/// left it.
TakenBack take_back(const Change& change);
