#include "convert/Set_genre_type.h"

#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"

using namespace Qt::StringLiterals;

Set_genre_type::Set_genre_type(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent)
    : ChoiceForm(u"Set_genre_type"_s, u"Set Genre Type"_s,
                 {{u"Option_combo"_s, u"Choose the genre from the list"_s, genre_from_list},
                  {u"Option_edit"_s, u"Type the genre"_s, genre_as_text}},
                 shared.genre_type, parent),
      cboGenre_(cboGenre),
      txtGenre_(txtGenre)
{
}

void Set_genre_type::apply()
{
    shared.genre_type = chosen();
    enable_genre_controls(cboGenre_, txtGenre_, shared.fif_type);
    choose_genre_control(cboGenre_, txtGenre_, shared.genre_type);
}
