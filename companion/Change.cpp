#include "companion/Change.h"

#include "companion/write_end.h"
#include "fif/mod_of_FIF.h"
#include "mp3/TagRecord.h"
#include "platform/file_operation/disk_entry.h"
#include "platform/paths.h"
#include "platform/rename_file.h"
#include "platform/uninterrupted.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

namespace {

constexpr int block_bytes = TagRecord::block_bytes;

constexpr qint64 given_time_step = 2'000'000'000; ///< in nanoseconds

Reason failure(const QByteArray& text)
{
    return {.code = Reason::not_done, .detail = text};
}

/// The time that a file is given when its bytes are written: by the clock, but a whole even number of seconds, which
/// every file system keeps and no change by another program is likely to leave.
qint64 time_to_give()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return (now.tv_sec / 2 + 1) * given_time_step;
}

/// The state of a file that gets bytes, by which an undo knows it. Times are its owner's to give.
Change::Mark mark_of(const struct stat& status)
{
    static const uid_t user = geteuid();
    Change::Mark mark{.device = status.st_dev, .number = status.st_ino};
    if (user == 0 || user == status.st_uid)
        mark.changed_after = time_to_give();
    return mark;
}

bool is_same_file(const struct stat& status, const Change::Mark& mark)
{
    return status.st_dev == mark.device && status.st_ino == mark.number;
}

/// Whether a noted file is still as it was when its end was read.
bool is_unchanged(const FileEnd& end, const Change& change)
{
    const Change::Block& block = *change.block;
    if (end.block != block.before)
        return false;
    return !block.mark || (end.status->st_size == change.size && time_of(*end.status) == change.changed);
}

/// Writes the bytes of a change and gives the file its time; when that fails, all is put back as it was.
Made write_block(const OpenEnd& open, const Change& change)
{
    const Change::Block& block = *change.block;
    const bool gives_time = block.mark && block.mark->changed_after;
    int error = write_end(open, block.after);
    if (error == 0 && gives_time)
        error = set_time(open.file, *block.mark->changed_after);
    if (error == 0)
        return {};
    const bool is_back =
        write_end(open, block.before) == 0 && (!gives_time || set_time(open.file, change.changed) == 0);
    return {.reason = failure("its tag cannot be written: " + error_text(error)), .is_in_doubt = !is_back};
}

Made make_block(const Change& change)
{
    const Change::Block& block = *change.block;
    if (block.mode)
        Clear_read_only(program_path(change.new_path()));
    const OpenEnd open = open_end(change.new_path());
    if (open.end.reason.code == Reason::unreadable)
        return {.reason = failure("its tag cannot be written: " + open.end.reason.detail)};
    if (open.end.block == block.after) // by another name of the same file
        return {};
    if (!is_unchanged(open.end, change))
        return {.reason = failure("its tag is left alone: it has changed meanwhile")};
    return write_block(open, change);
}

/// Whether a write of `after` over `before` leaves this block when it is cut off. It ends where a sector ends.
bool is_cut(const QByteArray& block, const QByteArray& before, const QByteArray& after, qint64 file_size)
{
    constexpr qint64 sector = 512;
    const qsizetype cut = sector - (file_size - block_bytes) % sector;
    return cut < block_bytes && block == after.first(cut) + before.sliced(cut);
}

/// Whether these are the bytes before or after, or what a write that was cut off made of them.
bool is_its_block(const QByteArray& block, const Change& change)
{
    const QByteArray& before = change.block->before;
    const QByteArray& after = change.block->after;
    return block == before || block == after || is_cut(block, before, after, change.size) ||
           is_cut(block, after, before, change.size);
}

/// What an undo finds at a path.
struct Sight
{
    FileEnd end{};        ///< the status alone when the change is of the name alone
    bool is_it = false;   ///< the file of the change, before, after or amid it
    bool is_sure = false; ///< by its time nobody else has changed it
};

/// Whether a file with the bytes of the change and a time that the change did not give is its own all the same.
bool is_it_in_spite_of_time(const FileEnd& end, const Change& change, bool in_doubt)
{
    const Change::Mark& mark = *change.block->mark;
    const bool is_written_without_time = !mark.changed_after && end.block != change.block->before;
    // A time as a run gives it is that of a later one.
    const bool is_in_doubt = in_doubt && time_of(*end.status) % given_time_step != 0;
    return (is_in_doubt || is_written_without_time) && is_same_file(*end.status, mark);
}

Sight sight_of(const QByteArray& native, const Change& change, bool in_doubt)
{
    Sight sight;
    if (change.block)
        sight.end = read_end(native);
    else if (sight.end.status = status_through_links(native); !sight.end.status)
        sight.end.reason = {.code = Reason::unreadable, .detail = error_text(errno)};
    const std::optional<struct stat>& status = sight.end.status;
    if (sight.end.reason || !S_ISREG(status->st_mode) || status->st_size != change.size)
        return sight;
    const qint64 time = time_of(*status);
    if (!change.block) {
        sight.is_it = sight.is_sure = time == change.changed;
    } else if (is_its_block(sight.end.block, change)) {
        sight.is_sure = time == change.changed || time == change.block->mark->changed_after;
        sight.is_it = sight.is_sure || is_it_in_spite_of_time(sight.end, change, in_doubt);
    }
    return sight;
}

bool stands(const QByteArray& native)
{
    return status_of(native).has_value() || errno != ENOENT;
}

/// Whether a file has its old name and its bytes from before, so that nothing is left to take back whatever its time
/// is.
bool is_back(const Sight& at_old, const Change& change)
{
    const std::optional<struct stat>& status = at_old.end.status;
    if (!status || !S_ISREG(status->st_mode) || status->st_size != change.size)
        return false;
    if (change.block && at_old.end.block != change.block->before)
        return false;
    return !change.renames() || !stands(change.new_path());
}

/// Why a change is not taken back when neither of the two is its file.
TakenBack refusal(const Change& change, const Sight& at_old, const Sight& at_new)
{
    const bool is_at_new = stands(change.new_path());
    if (!is_at_new && !stands(change.old_path()))
        return {.reason = {.code = Reason::gone}};
    const FileEnd& end = (is_at_new ? at_new : at_old).end;
    if (!end.status || (end.reason.code == Reason::unreadable && S_ISREG(end.status->st_mode)))
        return {.reason = end.reason, .may_yet = true};
    return {.reason = {.code = Reason::changed}, .may_yet = true};
}

/// Gives the file at its old name its bytes from before, and its time when nobody else has changed it: an undo of an
/// earlier run knows it by that.
Made put_block_back(const Change& change, const Sight& sight, const std::function<void()>& writes_bytes)
{
    const OpenEnd open = open_end(change.old_path());
    if (open.end.reason.code == Reason::unreadable)
        return {.reason = failure("its tag cannot be written: " + open.end.reason.detail)};
    if (!is_same_state(*open.end.status, *sight.end.status) || open.end.block != sight.end.block)
        return {.reason = failure("its tag is left alone: it has changed meanwhile")};
    const QByteArray& before = change.block->before;
    if (sight.end.block != before) {
        writes_bytes();
        if (const int error = write_end(open, before); error != 0) {
            const bool is_as_found =
                write_end(open, sight.end.block) == 0 && set_time(open.file, time_of(*sight.end.status)) == 0;
            return {.reason = failure("its tag cannot be written: " + error_text(error)), .is_in_doubt = !is_as_found};
        }
    }
    if (sight.is_sure)
        set_time(open.file, change.changed);
    return {};
}

/// Gives the file at its old name its bytes and rights from before. Gives whether there was something to do.
TakenBack take_block_back(const Change& change, const Sight& sight, const std::function<void()>& writes_bytes)
{
    const Change::Block& block = *change.block;
    const struct stat& status = *sight.end.status;
    TakenBack result;
    if (sight.end.block != block.before || (sight.is_sure && time_of(status) != change.changed)) {
        const Made made = put_block_back(change, sight, writes_bytes);
        result = {.had_to = true, .reason = made.reason, .is_in_doubt = made.is_in_doubt};
    }
    if (!result.reason && block.mode && (status.st_mode & ALLPERMS) == (*block.mode | S_IWUSR)) {
        if (uninterrupted([&] { return chmod(change.old_path().constData(), *block.mode); }) != 0)
            result.reason = failure("cannot be made read-only again: " + error_text(errno));
        result.had_to = true;
    }
    return result;
}

Reason rename_back(const Change& change)
{
    const int error = rename_without_replacing(change.new_path(), change.old_path());
    if (error == EEXIST)
        return {.code = Reason::taken};
    return error == 0 ? Reason() : failure("cannot be renamed: " + error_text(error));
}

} // namespace

Reason note_state(Change& change, const std::optional<FileEnd>& end)
{
    const std::optional<struct stat> status =
        end && end->status ? end->status : status_through_links(change.old_path());
    if (!status)
        return {.code = Reason::unreadable, .detail = error_text(errno)};
    change.size = status->st_size;
    change.changed = time_of(*status);
    if (change.block)
        change.block->mark = mark_of(*status);
    return {};
}

void add_block(Change& change, const FileEnd& end, const QByteArray& after)
{
    if (end.block == after)
        return;
    change.block = {.before = end.block, .after = after};
    if ((end.status->st_mode & S_IWUSR) == 0)
        change.block->mode = end.status->st_mode & ALLPERMS;
}

Made perform(const Change& change)
{
    if (change.renames()) {
        const int error = rename_without_replacing(change.old_path(), change.new_path());
        if (error == EEXIST)
            return {.reason = {.code = Reason::exists}};
        if (error != 0)
            return {.reason = failure("cannot be renamed: " + error_text(error))};
    }
    Made made = change.block ? make_block(change) : Made();
    if (made.reason && change.renames())
        made.reason.detail.prepend("renamed, but ");
    return made;
}

TakenBack take_back(const Change& change, bool in_doubt, const std::function<void()>& writes_bytes)
{
    const Sight at_old = sight_of(change.old_path(), change, in_doubt);
    const bool stays = at_old.is_it;
    const Sight at_new = stays || !change.renames() ? at_old : sight_of(change.new_path(), change, in_doubt);
    if (!at_new.is_it)
        return is_back(at_old, change) ? TakenBack() : refusal(change, at_old, at_new);
    if (!stays) {
        if (const Reason reason = rename_back(change))
            return {.reason = reason};
    }
    TakenBack result = change.block ? take_block_back(change, at_new, writes_bytes) : TakenBack();
    if (result.reason && !stays)
        result.reason.detail.prepend("its name is back, but ");
    result.had_to = result.had_to || !stays;
    return result;
}
