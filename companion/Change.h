#pragma once

#include "companion/FileWalk.h"
#include "companion/Reason.h"
#include "companion/read_end.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <functional>
#include <optional>

/// What a run does to one file: a new name in its folder, new bytes for its last 128, or both.
struct Change
{
    /// By what an undo knows a file whose last bytes were written, beside these.
    struct Mark
    {
        dev_t device = 0;
        ino_t number = 0;
        std::optional<qint64> changed_after{}; ///< the time of its last change that it is given; nothing when the user
                                               ///< may not give it one
    };

    /// The last 128 bytes of a file.
    struct Block
    {
        QByteArray before;
        QByteArray after;
        std::optional<mode_t> mode{}; ///< rights before; there when the file is made writable first
        std::optional<Mark> mark{};   ///< there when the change is noted
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

/// Notes by what an undo will know the file: its size and times, as they were when its end was read or else as they are
/// now. A reason when they can't be asked.
Reason note_state(Change& change, const std::optional<FileEnd>& end);

/// Adds the writing of `after` over the end of the file, which was read, when it is not these bytes yet.
void add_block(Change& change, const FileEnd& end, const QByteArray& after);

/// How a change was made.
struct Made
{
    Reason reason;            ///< why it was not done whole
    bool is_in_doubt = false; ///< the file may be neither as it was nor as it was to be
};

/// Does it: first the name, never replacing a file, and then the bytes, when they are still those noted.
Made perform(const Change& change);

/// How a change was taken back.
struct TakenBack
{
    bool had_to = false;      ///< there was something to take back
    Reason reason;            ///< why nothing was done, or not all
    bool is_in_doubt = false; ///< the file may be neither as it was nor as it is to be
    bool may_yet = false; ///< refused for what stands there, which the change of another name of the file may have left
};

/// Takes a change back, whether it was done whole, in part or not at all: first the name, never replacing a file, then
/// the bytes with the time of the file's last change. Refuses with nothing done what is not as the change found or left
/// it, and where the old name is taken; when the disk fails in between, the reason tells what is back. A run may have
/// been killed amid the change, before it could give the file its time: then that is `in_doubt`. Calls `writes_bytes`
/// before it does.
TakenBack take_back(const Change& change, bool in_doubt, const std::function<void()>& writes_bytes);
