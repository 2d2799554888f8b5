#include "convert/Set_genre_type.h"

#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"
#include "platform/own_words.h"

using namespace Qt::StringLiterals;

Set_genre_type::Set_genre_type(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent)
    : ChoiceForm(u"Set_genre_type"_s, own_word(Word::title_choose_genre_type),
                 {{u"Option_combo"_s, own_word(Word::option_genre_from_list), genre_from_list},
                  {u"Option_edit"_s, own_word(Word::option_genre_as_text), genre_as_text}},
                 shared.genre_type, parent),
      cboGenre_(cboGenre),
      txtGenre_(txtGenre)
{
}

void Set_genre_type::apply()
{
    shared.genre_type = selected_genre_type();
    enable_genre_controls(cboGenre_, txtGenre_, shared.fif_type);
    choose_genre_control(cboGenre_, txtGenre_, shared.genre_type);
}
