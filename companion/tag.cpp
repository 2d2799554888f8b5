#include "companion/ChangeRun.h"
#include "companion/companion.h"
#include "companion/rights.h"
#include "companion/walk_files.h"
#include "mp3/TagRecord.h"

namespace {

void set_fields(TagRecord& tag, const TagEdit& edit)
{
    if (edit.artist)
        tag.artist.set(*edit.artist);
    if (edit.title)
        tag.title.set(*edit.title);
    if (edit.album)
        tag.album.set(*edit.album);
    if (edit.year)
        tag.year.set(*edit.year);
    if (edit.comment)
        tag.comments.set(*edit.comment);
    if (edit.genre)
        tag.genre = checked<std::uint8_t>(*edit.genre);
}

Decision decide(const MusicFile& file, const Order& order, bool notes)
{
    Decision decision{.change = Change::of(file), .reason = {}};
    const FileEnd end = read_end(file.native());
    decision.reason = end.reason;
    if (decision.reason)
        return decision;
    TagRecord tag;
    if (TagRecord::is_tag(end.block))
        tag.read(end.block);
    set_fields(tag, order.edit);
    add_block(decision.change, end, tag.block());
    if (decision.change.block && !order.apply)
        decision.reason = no_right_to_write(file.native(), *end.status);
    if (!decision.reason && notes)
        decision.reason = note_state(decision.change, end);
    return decision;
}

} // namespace

void run_tag(const Order& order, PathSource& paths, Output& output)
{
    ChangeRun changes(order, output);
    FolderRights rights;
    const auto tag_file = [&](const MusicFile& file) -> LookAhead::Turn {
        return [&, decision = decide(file, order, changes.notes())]() mutable {
            if (changes.is_journal(decision.change))
                return;
            if (!order.apply && !decision.reason && decision.change.does_something())
                decision.reason = rights.obstacle(decision.change);
            changes.take(decision);
            output.step("reading");
        };
    };
    LookAhead looks(tag_file, changes.reach(), order.helpers);
    walk_files(paths, output, looks);
    changes.finish();
}
