#include "companion/Change.h"

#include "fif/mod_of_FIF.h"
#include "mp3/TagRecord.h"
#include "platform/BinaryFile.h"
#include "platform/FileSystemObject.h"
#include "platform/file_operation/disk_entry.h"
#include "platform/paths.h"
#include "platform/rename_file.h"
#include "platform/uninterrupted.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

namespace {

constexpr int block_bytes = TagRecord::block_bytes;

constexpr qint64 second = 1'000'000'000; ///< in nanoseconds

qint64 time_of(const struct stat& status)
{
    return status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec;
}

/// Gives a file the time of its last change from before, by which the undo of an earlier run knows it. One that may not
/// be given times keeps the present one.
void put_time_back(const QByteArray& native, qint64 changed)
{
    const auto nanoseconds = (changed % second + second) % second;
    const std::array<timespec, 2> times{timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT},
                                        timespec{.tv_sec = (changed - nanoseconds) / second, .tv_nsec = nanoseconds}};
    utimensat(AT_FDCWD, native.constData(), times.data(), 0);
}

Reason failure(const QByteArray& text)
{
    return {.code = Reason::not_done, .detail = text};
}

/// The last 128 bytes of an open file; empty when they can't be read.
QByteArray last_block(const BinaryFile& file)
{
    QByteArray block(block_bytes, '\0');
    const std::span bytes(block.data(), static_cast<std::size_t>(block.size()));
    return file.read_at(file.length() - block_bytes, bytes) == block_bytes ? block : QByteArray();
}

bool write_block(const BinaryFile& file, const QByteArray& block)
{
    return file.write_at(file.length() - block_bytes,
                         std::span(block.constData(), static_cast<std::size_t>(block.size())));
}

/// Whether each byte of `block` is one of those before or after: a write that was cut off leaves a part of both.
bool is_between(const QByteArray& block, const Change::Block& change)
{
    if (block.size() != block_bytes)
        return false;
    for (qsizetype place = 0; place < block_bytes; ++place) {
        if (block[place] != change.before[place] && block[place] != change.after[place])
            return false;
    }
    return true;
}

/// Whether the file at a path is the one of the change, before, after or amid it.
bool is_its_file(const QByteArray& native, const Change& change)
{
    const std::optional<struct stat> status = status_through_links(native);
    if (!status || !S_ISREG(status->st_mode) || status->st_size != change.size)
        return false;
    if (!change.block)
        return time_of(*status) == change.changed;
    return is_between(last_block(BinaryFile(program_path(native), BinaryFile::Access::read)), *change.block);
}

bool stands(const QByteArray& native)
{
    return status_of(native).has_value() || errno != ENOENT;
}

/// Gives the file at a path its bytes, time and rights from before. Gives whether there was something to do.
TakenBack take_block_back(const QByteArray& native, const Change& change)
{
    const Change::Block& block = *change.block;
    const QString path = program_path(native);
    TakenBack result;
    if (last_block(BinaryFile(path, BinaryFile::Access::read)) != block.before) {
        const BinaryFile file(path, BinaryFile::Access::write);
        if (!file.is_open() || !write_block(file, block.before))
            return {.reason = failure("its tag cannot be written: " + error_text(file.is_open() ? EIO : EACCES))};
        put_time_back(native, change.changed);
        result.had_to = true;
    }
    const std::optional<struct stat> status = status_through_links(native);
    if (block.mode && status && (status->st_mode & ALLPERMS) == (*block.mode | S_IWUSR)) {
        if (uninterrupted([&] { return chmod(native.constData(), *block.mode); }) != 0)
            return {.had_to = true, .reason = failure("cannot be made read-only again: " + error_text(errno))};
        result.had_to = true;
    }
    return result;
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
    return {};
}

void add_block(Change& change, const FileEnd& end, const QByteArray& after)
{
    if (end.block == after)
        return;
    change.block = {.before = end.block, .after = after, .mode = std::nullopt};
    if ((end.status->st_mode & S_IWUSR) == 0)
        change.block->mode = end.status->st_mode & ALLPERMS;
}

Reason perform(const Change& change)
{
    if (change.renames()) {
        const int error = rename_without_replacing(change.old_path(), change.new_path());
        if (error == EEXIST)
            return {.code = Reason::exists};
        if (error != 0)
            return failure("cannot be renamed: " + error_text(error));
    }
    if (!change.block)
        return {};
    const QByteArray done = change.renames() ? "renamed, but " : "";
    const QString path = program_path(change.new_path());
    if (change.block->mode)
        Clear_read_only(path);
    const BinaryFile file(path, BinaryFile::Access::write);
    if (!file.is_open())
        return failure(done + "its tag cannot be written: no right to write it");
    const QByteArray block = last_block(file);
    if (block == change.block->after) // by another name of the same file
        return {};
    if (block != change.block->before)
        return failure(done + "its tag is left alone: it has changed meanwhile");
    if (!write_block(file, change.block->after))
        return failure(done + "its tag cannot be written: " + error_text(EIO));
    return {};
}

TakenBack take_back(const Change& change)
{
    const bool stays = is_its_file(change.old_path(), change);
    if (!stays && (!change.renames() || !is_its_file(change.new_path(), change))) {
        const bool is_there = stands(change.new_path()) || stands(change.old_path());
        return {.reason = {.code = is_there ? Reason::changed : Reason::gone}};
    }
    if (!stays && stands(change.old_path()))
        return {.reason = {.code = Reason::taken}};
    TakenBack result;
    if (change.block)
        result = take_block_back(stays ? change.old_path() : change.new_path(), change);
    if (stays || result.reason)
        return result;
    const int error = rename_without_replacing(change.new_path(), change.old_path());
    if (error == EEXIST)
        return {.had_to = true, .reason = {.code = Reason::taken}};
    if (error != 0)
        return {.had_to = true, .reason = failure("cannot be renamed: " + error_text(error))};
    return {.had_to = true, .reason = {}};
}
