#include "convert/Select_FIF_Format.h"

#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"

using namespace Qt::StringLiterals;

Select_FIF_Format::Select_FIF_Format(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent)
    : ChoiceForm(u"Select_FIF_Format"_s, u"Set FIF Type"_s,
                 {{u"Option_1"_s, u"[Artist][Title][Genre].mp3"_s, 1},
                  {u"Option_2"_s, u"[Artist][Title].mp3"_s, 2},
                  {u"Option_3"_s, u"(Artist)(Title)(Genre).mp3"_s, 3},
                  {u"Option_4"_s, u"(Artist)(Title).mp3"_s, 4},
                  {u"Option_5"_s, u"Artist-Title-Genre.mp3"_s, 5},
                  {u"Option_6"_s, u"Artist-Title.mp3"_s, 6}},
                 shared.fif_type, parent),
      cboGenre_(cboGenre),
      txtGenre_(txtGenre)
{
}

void Select_FIF_Format::apply()
{
    shared.fif_type = chosen();
    enable_genre_controls(cboGenre_, txtGenre_, shared.fif_type);
}
