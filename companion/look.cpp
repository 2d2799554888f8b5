#include "companion/look.h"

#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"
#include "platform/file_operation/disk_entry.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// Puts back what one file leaves behind for the next. In a run of the windows a file that is too short for a tag
/// spoils the tags of all files behind it; here each file is one that a fresh run begins with.
void begin_afresh()
{
    shared.file_number_1_open = 0;
    shared.id3_object.reset();
}

/// Why nothing could be made of the file that was just loaded.
Reason reason_of(const MusicFile& file)
{
    if (id3().is_tagged())
        return {.code = Reason::no_fields};
    const Reason obstacle = obstacle_to_reading(file);
    return obstacle ? obstacle : Reason{.code = Reason::no_tag};
}

Reason reason_of(ComposeFailure failure)
{
    switch (failure) {
    case ComposeFailure::none:
        return {};
    case ComposeFailure::empty_field:
        return {.code = Reason::no_title};
    case ComposeFailure::unknown_shape:
        return {.code = Reason::unknown_type};
    case ComposeFailure::too_long:
        return {.code = Reason::too_long};
    }
    return {};
}

} // namespace

Look look_at(const MusicFile& file)
{
    begin_afresh();
    shared.current_folder = file.folder.program;
    Look look{.kind = Check_file_for_fif(file.name), .fields = {}, .reason = {}};
    if (look.kind == 0)
        look.reason = reason_of(file);
    else
        look.fields = {.artist = shared.fif_artist, .title = shared.fif_title, .genre = shared.fif_genre};
    return look;
}

void load_afresh(const MusicFile& file)
{
    begin_afresh();
    id3().set_FileName(file.path());
}

Reason obstacle_to_reading(const MusicFile& file)
{
    if (!id3().was_opened()) {
        const Descriptor opened(open(file.native().constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        return {.code = Reason::unreadable, .detail = error_text(opened.is_open() ? EIO : errno)};
    }
    if (shared.file_number_1_open == 0)
        return {};
    constexpr i32 tag_bytes = 128;
    if (id3().FileBytes() < tag_bytes)
        return {.code = Reason::too_short};
    return {.code = Reason::unreadable, .detail = error_text(EIO)};
}

NewName new_name_of(const MusicFile& file, const Look& look, const NamingRule& rule)
{
    if (look.kind == 0)
        return {.name = {}, .fields = {}, .reason = look.reason};
    if (look.kind == 1 && !rule.also_fif_names)
        return {.name = file.name, .fields = look.fields, .reason = {}};
    const FifFields fields =
        rule.also_fif_names ? fields_to_convert(look.fields, rule.fixed) : trimmed_and_cleaned(texts_of_tag());
    const ComposedName composed = compose_name(shared.fif_type, fields.artist, fields.title, fields.genre);
    return {.name = composed.name, .fields = fields, .reason = reason_of(composed.failure)};
}
