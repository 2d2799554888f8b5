#pragma once

#include "convert/ChoiceForm.h"

class ComboBox;
class TextBox;

/// Chooses whether a genre is picked from the list or typed.
class Set_genre_type : public ChoiceForm
{
    Q_OBJECT

public:
    /// The genre controls are those of the main window; they outlive the form.
    Set_genre_type(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent);

private:
    void apply() override;

    ComboBox& cboGenre_;
    TextBox& txtGenre_;
};
