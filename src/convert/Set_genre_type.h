#pragma once

#include "convert/ChoiceForm.h"
#include "platform/controls/Placed.h"

class ComboBox;
class TextBox;

/// Chooses whether a genre is picked from the list or typed.
class Set_genre_type : public ChoiceForm
{
    Q_OBJECT

public:
    /// The genre controls are those of the main window; they outlive the form.
    Set_genre_type(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent);

    /// The way of entering a genre chosen last, 0 for none.
    i16 selected_genre_type() const { return chosen(); }

private:
    void apply_language_set_genre();
    void apply() override;

    ComboBox& cboGenre_;
    TextBox& txtGenre_;
    Placed<QRadioButton> Option_combo_;
    Placed<QRadioButton> Option_edit_;
};
