// The members of cIDV3 that know the genre list, and those that show it in a combo box.

#include "mp3/cIDV3.h"
#include "mp3/genre_list.h"

namespace {

/// Selects the entry with exactly this text, or the first one (the empty entry) when there is none; gives whether
/// there was one.
bool select_entry(GenreBox& combo, const QString& wanted)
{
    for (int position = 0; position <= genre_count; ++position) {
        bool found = false;
        errors_ignored([&] {
            combo.set_ListIndex(position);
            found = combo.Text() == wanted;
        });
        if (found)
            return true;
    }
    errors_ignored([&] { combo.set_ListIndex(0); });
    return false;
}

} // namespace

QString cIDV3::GenreText(i16 index) const
{
    return genre_name(index);
}

i16 cIDV3::Genre_index(const QString& text) const
{
    return genre_index_of(text);
}

void cIDV3::init_FillComboGenre(GenreBox& combo) const
{
    errors_ignored([&] { combo.Clear(); });
    for (int index = 0; index < genre_count; ++index)
        errors_ignored([&] { combo.AddItem(fif_genre_spelling(genre_name(index))); });
    errors_ignored([&] { combo.AddItem({}); });
}

void cIDV3::FillComboGenre(GenreBox& combo, i16 index) const
{
    select_entry(combo, fif_genre_spelling(genre_name(index)));
}

QString cIDV3::FillComboGenre_FIF(GenreBox& combo, const QString& text) const
{
    const QString wanted = fif_genre_spelling(text);
    return select_entry(combo, wanted) ? wanted : QString();
}
