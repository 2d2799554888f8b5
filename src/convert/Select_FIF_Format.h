#pragma once

#include "convert/ChoiceForm.h"

#include <array>

class ComboBox;
class TextBox;

/// Chooses the shape in which new names are written. Existing files stay as they are.
class Select_FIF_Format : public ChoiceForm
{
    Q_OBJECT

public:
    /// The genre controls are those of the main window; they outlive the form.
    Select_FIF_Format(ComboBox& cboGenre, TextBox& txtGenre, QWidget* parent);

    /// The number of the option chosen last, 0 for none.
    i16 selected_type() const { return chosen(); }

private:
    void apply_language_select_fif();
    void apply() override;

    ComboBox& cboGenre_;
    TextBox& txtGenre_;
    std::array<QRadioButton*, 6> options_{};
};
