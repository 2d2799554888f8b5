#include "companion/ChangeRun.h"
#include "companion/companion.h"
#include "companion/look.h"
#include "mp3/cIDV3.h"

namespace {

void set_fields(cIDV3& tag, const TagEdit& edit)
{
    if (edit.artist)
        tag.set_Artist(*edit.artist);
    if (edit.title)
        tag.set_Title(*edit.title);
    if (edit.album)
        tag.set_Album(*edit.album);
    if (edit.year)
        tag.set_Year(*edit.year);
    if (edit.comment)
        tag.set_Comments(*edit.comment);
    if (edit.genre)
        tag.set_Genre(*edit.genre);
}

} // namespace

void run_tag(const Order& order, PathSource& paths, Output& output)
{
    ChangeRun changes(order, output);
    const auto tag_file = [&](const MusicFile& file) {
        load_afresh(file);
        set_fields(id3(), order.edit);
        Change change{.folder = file.folder.native,
                      .shown_folder = file.folder.shown,
                      .old_name = file.bytes,
                      .new_name = file.bytes,
                      .block = std::nullopt};
        Reason reason = obstacle_to_reading(file);
        if (!reason)
            reason = add_block(change, id3().tag().block());
        if (reason)
            changes.cannot(file.shown_path(), reason);
        else if (!change.block)
            changes.keep(file.shown_path());
        else
            changes.change(std::move(change));
        output.step("reading");
    };
    FileWalk walk(
        {.file = tag_file,
         .folder_end = [] {},
         .failed = [&](const QByteArray& path, const QByteArray& reason) { output.path_failed(path, reason); }});
    walk.walk(paths);
    changes.finish();
}
