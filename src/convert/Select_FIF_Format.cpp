#include "convert/Select_FIF_Format.h"

#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"
#include "platform/own_words.h"

using namespace Qt::StringLiterals;

namespace {

/// An option's text: a name of the shape, whose fields hold the words for artist, title and genre.
QString three_fields(const QString& shape)
{
    return shape.arg(own_word(Word::field_artist), own_word(Word::field_title), own_word(Word::field_genre));
}

QString two_fields(const QString& shape)
{
    return shape.arg(own_word(Word::field_artist), own_word(Word::field_title));
}

} // namespace

Select_FIF_Format::Select_FIF_Format(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent)
    : ChoiceForm(u"Select_FIF_Format"_s, own_word(Word::title_choose_format),
                 {{u"Option_1"_s, three_fields(u"[%1][%2][%3].mp3"_s), 1},
                  {u"Option_2"_s, two_fields(u"[%1][%2].mp3"_s), 2},
                  {u"Option_3"_s, three_fields(u"(%1)(%2)(%3).mp3"_s), 3},
                  {u"Option_4"_s, two_fields(u"(%1)(%2).mp3"_s), 4},
                  {u"Option_5"_s, three_fields(u"%1-%2-%3.mp3"_s), 5},
                  {u"Option_6"_s, two_fields(u"%1-%2.mp3"_s), 6}},
                 shared.fif_type, parent),
      cboGenre_(cboGenre),
      txtGenre_(txtGenre)
{
}

void Select_FIF_Format::apply()
{
    shared.fif_type = selected_type();
    enable_genre_controls(cboGenre_, txtGenre_, shared.fif_type);
}
