#include "companion/look.h"

#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "mp3/TagRecord.h"
#include "platform/file_names.h"

namespace {

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

/// Looks at the tag of a file whose name is not FIF.
void look_at_tag(const FileEnd& end, Look& look)
{
    look.reason = end.reason;
    if (look.reason)
        return;
    look.reason = {.code = Reason::no_tag};
    if (!TagRecord::is_tag(end.block))
        return;
    TagRecord tag;
    tag.read(end.block);
    std::optional<FifFields> fields = fif_fields_of(tag);
    look.reason = {.code = fields ? Reason::none : Reason::no_fields};
    if (!fields)
        return;
    look.kind = 2;
    look.fields = std::move(*fields);
}

} // namespace

Look look_at(const MusicFile& file)
{
    Look look{.kind = 0, .name = name_from_bytes(file.name), .fields = {}, .reason = {}, .end = {}};
    if (std::optional<FifFields> fields = fif_fields_of(stem_of(look.name))) {
        look.kind = 1;
        look.fields = std::move(*fields);
    } else {
        look.end = read_end(file.native());
        look_at_tag(*look.end, look);
    }
    return look;
}

NewName new_name_of(const Look& look, const NamingRule& rule)
{
    if (look.kind == 0)
        return {.name = {}, .fields = {}, .reason = look.reason};
    if (look.kind == 1 && !rule.also_fif_names)
        return {.name = look.name, .fields = look.fields, .reason = {}};
    FifFields fields = look.fields;
    if (rule.also_fif_names)
        fields = fields_to_convert(look.fields, rule.fixed);
    else
        fields.genre = trimmed_and_cleaned(fields.genre); // the others are so already
    const ComposedName composed = compose_name(shared.fif_type, fields.artist, fields.title, fields.genre);
    return {.name = composed.name, .fields = fields, .reason = reason_of(composed.failure)};
}
