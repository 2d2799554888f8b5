#pragma once

#include "fif/fif_name.h"
#include "mp3/TagRecord.h"
#include "platform/numbers.h"

#include <QString>

#include <functional>

/// Where a parser's fields go.
enum ShowMode : i16
{
    into_results = 0,
    into_fields = 1
};

/// What a file is: 1 its name is FIF, 2 a FIF name can be made from its tag, 0 neither. `file_name` is a bare name; a
/// tag is looked for under the current folder. Sets the three result strings, which mean nothing after a 0.
i16 Check_file_for_fif(const QString& file_name);

/// Artist, title and genre of a tag, up to their first NULs, without trailing blanks and otherwise as they stand, the
/// genre in the spelling of names.
FifFields texts_of(const TagRecord& tag);

/// The same of the tag that is loaded.
FifFields texts_of_tag();

/// What a FIF name can be made of: the texts of a tag, artist and title trimmed and cleaned. Nothing when one of these
/// is empty then.
std::optional<FifFields> fif_fields_of(const TagRecord& tag);

/// 1 when `stem` is a bracket form of that kind, else 0. The fields go to the result strings (`show_mode` 0), to the
/// main window's fields (1) or nowhere.
i16 Parse_fif_brackets(const QString& stem, i16 bracket_kind, i16 show_mode);

/// 1 when `stem` is a dash form, else 0; `show_mode` as above.
i16 Parse_fif_dashes(const QString& stem, i16 show_mode);

/// Tries the three parsers on a stem in their fixed order, up to the first success; gives whether one succeeded.
bool parse_fif_stem(const QString& stem, i16 show_mode);

/// The new name with ".mp3" for trimmed and cleaned fields in the current shape, or an empty text when none can be
/// made. `report_too_long` is called when the artist, or artist and genre, leave no room for the title.
QString Compose_fif_name(const QString& artist, const QString& title, const QString& genre,
                         const std::function<void()>& report_too_long);

/// Takes the read-only attribute off a file that has no other than archive; any failure is passed over.
void Clear_read_only(const QString& path);

/// Puts artist, title and, where the genre has a number, genre into a tag. `genre` comes back in its list spelling.
void set_fif_fields(TagRecord& tag, const QString& artist, const QString& title, QString& genre);

/// Writes artist, title and, where the genre has a number, genre into the file's tag, and keeps the tag's other
/// fields. `genre` comes back in its list spelling. A failure is shown as message 11.
void Write_fif_tag(const QString& path, const QString& artist, const QString& title, QString& genre);

/// Fills the main window's fields from the name; 1 when the name parsed, else 0.
i16 Show_fif_info(const QString& file_name);

/// Fills the main window's fields from the tag of the selected file.
void Show_tag_info();

/// Fills the main window's fields for the selected file, from its name if that is FIF, else from its tag.
void show_selected_file();
