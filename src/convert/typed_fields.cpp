#include "convert/typed_fields.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/TextBox.h"

FifFields typed_fields(const FieldControls& controls)
{
    FifFields fields = {.artist = trimmed_and_cleaned(controls.txtArtist.Text()),
                        .title = trimmed_and_cleaned(controls.txtTitle.Text()),
                        .genre = {}};
    if (shared.genre_type == 1) {
        fields.genre = controls.cboGenre.Text();
        controls.txtGenre.set_Text(fields.genre);
    }
    if (shared.genre_type == 2)
        fields.genre = trimmed_and_cleaned(controls.txtGenre.Text());
    if (!fields.artist.isEmpty() && !fields.title.isEmpty() && fields.genre.isEmpty())
        fields.genre = trimmed_and_cleaned(controls.txtGenre.Text());
    return fields;
}
