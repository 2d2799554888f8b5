#include "fif/mod_of_FIF.h"

#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "fif/Check_korean.h"
#include "fif/DetailFields.h"
#include "mp3/cIDV3.h"
#include "mp3/genre_list.h"
#include "platform/FileSystemObject.h"

#include <utility>

namespace {

void store_in_results(FifFields fields)
{
    shared.fif_artist = std::move(fields.artist);
    shared.fif_title = std::move(fields.title);
    shared.fif_genre = std::move(fields.genre);
}

void show_texts(DetailFields& view, const FifFields& fields)
{
    view.set_txtArtist(fields.artist);
    view.set_txtTitle(fields.title);
    view.set_txtGenre(fields.genre);
}

void show_size(DetailFields& view)
{
    view.set_Label_filesize(byte_count_text(shared.selected_mp3_name));
}

/// The store step of the parsers; gives their result.
i16 store(FifParse parse, i16 show_mode)
{
    if (parse.stores && show_mode == into_results)
        store_in_results(std::move(parse.fields));
    if (parse.stores && show_mode == into_fields && shared.detail_fields != nullptr) {
        shared.detail_fields->set_txtFilename(shared.selected_mp3_name);
        show_texts(*shared.detail_fields, parse.fields);
        show_size(*shared.detail_fields);
    }
    return parse.valid ? 1 : 0;
}

} // namespace

i16 Parse_fif_brackets(const QString& stem, i16 bracket_kind, i16 show_mode)
{
    return store(parse_brackets(stem, bracket_kind), show_mode);
}

i16 Parse_fif_dashes(const QString& stem, i16 show_mode)
{
    return store(parse_dashes(stem), show_mode);
}

bool parse_fif_stem(const QString& stem, i16 show_mode)
{
    return Parse_fif_brackets(stem, square_brackets, show_mode) == 1 ||
           Parse_fif_brackets(stem, round_brackets, show_mode) == 1 || Parse_fif_dashes(stem, show_mode) == 1;
}

i16 Check_file_for_fif(const QString& file_name)
{
    if (parse_fif_stem(stem_of(file_name), into_results))
        return 1;
    // Always the current folder, on purpose, also for a file that lies in another one.
    if (!id3().load_and_has_tag(shared.current_folder + file_name))
        return 0;
    std::optional<FifFields> fields = fif_fields_of(id3().tag());
    if (!fields)
        return 0;
    store_in_results(*std::move(fields));
    return 2;
}

FifFields texts_of(const TagRecord& tag)
{
    return {.artist = tag.artist.shown_text(),
            .title = tag.title.shown_text(),
            .genre = fif_genre_spelling(genre_name(tag.genre))};
}

FifFields texts_of_tag()
{
    return texts_of(id3().tag());
}

std::optional<FifFields> fif_fields_of(const TagRecord& tag)
{
    FifFields fields = texts_of(tag);
    fields.artist = trimmed_and_cleaned(fields.artist);
    fields.title = trimmed_and_cleaned(fields.title);
    const bool has_both = !fields.artist.isEmpty() && !fields.title.isEmpty();
    return has_both ? std::optional(std::move(fields)) : std::nullopt;
}

QString Compose_fif_name(const QString& artist, const QString& title, const QString& genre,
                         const std::function<void()>& report_too_long)
{
    const ComposedName composed = compose_name(shared.fif_type, artist, title, genre);
    if (composed.failure == ComposeFailure::too_long)
        report_too_long();
    return composed.name;
}

void Clear_read_only(const QString& path)
{
    errors_ignored([&] {
        const int attributes = shared.fso.Attributes(path);
        if (attributes == (FileSystemObject::read_only | FileSystemObject::archive) ||
            attributes == FileSystemObject::read_only)
            shared.fso.set_Attributes(path, FileSystemObject::archive);
    });
}

void set_fif_fields(TagRecord& tag, const QString& artist, const QString& title, QString& genre)
{
    tag.artist.set(artist);
    tag.title.set(title);
    genre = id3_genre_spelling(genre);
    const i16 index = genre_index_of(genre);
    if (index >= 0)
        tag.genre = static_cast<std::uint8_t>(index);
}

void Write_fif_tag(const QString& path, const QString& artist, const QString& title, QString& genre)
{
    id3().set_FileName(path);
    // To load a file tells whether it is read-only, so that most need not be asked for it.
    if (!id3().was_writable())
        Clear_read_only(path);
    set_fif_fields(id3().tag(), artist, title, genre);
    if (!id3().WriteTag())
        show_message(msg_tag_write_failed);
}

i16 Show_fif_info(const QString& file_name)
{
    DetailFields* const view = shared.detail_fields;
    if (view != nullptr)
        show_texts(*view, {});
    const bool parsed = parse_fif_stem(stem_of(file_name), into_fields);
    if (id3().load_and_has_tag(shared.selected_mp3_full) && view != nullptr)
        id3().FillComboGenre_FIF(view->cboGenre(), view->txtGenre());
    return parsed ? 1 : 0;
}

void Show_tag_info()
{
    const bool has_tag = id3().load_and_has_tag(shared.selected_mp3_full);
    DetailFields* const view = shared.detail_fields;
    if (view == nullptr)
        return;
    show_texts(*view, {});
    if (has_tag) {
        // Blanks stay, on purpose: the fields show the tag, and whoever makes a name of them trims.
        show_texts(*view, {.artist = Clean_fif_field(id3().Artist()),
                           .title = Clean_fif_field(id3().Title()),
                           .genre = id3().GenreText(id3().Genre())});
        view->set_txtGenre(fif_genre_spelling(view->txtGenre()));
        id3().FillComboGenre(view->cboGenre(), id3().Genre());
    }
    show_size(*view);
}

void show_selected_file()
{
    if (Check_file_for_fif(shared.selected_mp3_name) == 1)
        Show_fif_info(shared.selected_mp3_name);
    else
        Show_tag_info();
}
