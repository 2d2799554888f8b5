#pragma once

#include "fif/fif_name.h"

class ComboBox;
class TextBox;

/// The controls in which a person types what a file is to be called.
struct FieldControls
{
    TextBox& txtArtist;
    TextBox& txtTitle;
    TextBox& txtGenre;
    ComboBox& cboGenre;
};

/// What stands in the controls, ready for composing: artist and title trimmed and cleaned; the genre as the list has it
/// (`genre_type` 1, which also puts it into txtGenre), or typed, trimmed and cleaned (2).
FifFields typed_fields(const FieldControls& controls);
