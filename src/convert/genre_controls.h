#pragma once

#include "platform/numbers.h"

class ComboBox;
class TextBox;

/// How a genre is entered.
enum GenreType : i16
{
    genre_from_list = 1,
    genre_as_text = 2
};

/// Shows the genre list (`genre_type` 1) or the genre text (2) and hides the other; only odd shapes `fif_type` take a
/// genre: the one shown is enabled for them and disabled for even ones. A shape outside 1 to 6 leaves enabling and
/// colour as they are, any other `genre_type` leaves everything.
void show_genre_controls(ComboBox& cboGenre, TextBox& txtGenre, i16 genre_type, i16 fif_type);

/// Enables both genre controls for odd shapes `fif_type`, disables them and greys the text for even ones; a shape
/// outside 1 to 6 leaves them as they are.
void enable_genre_controls(ComboBox& cboGenre, TextBox& txtGenre, i16 fif_type);

/// Shows the genre list (1) or the genre text (2) and hides the other; any other `genre_type` leaves them as they are.
void choose_genre_control(ComboBox& cboGenre, TextBox& txtGenre, i16 genre_type);
