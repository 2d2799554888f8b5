#include "convert/genre_controls.h"

#include "platform/controls/ComboBox.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/palette.h"

#include <QApplication>

namespace {

bool is_shape(i16 fif_type)
{
    return fif_type >= 1 && fif_type <= 6;
}

bool takes_genre(i16 fif_type)
{
    return fif_type % 2 == 1;
}

void show_control(QWidget& control, bool shown)
{
    control.setVisible(shown);
    control.setFocusPolicy(shown ? Qt::StrongFocus : Qt::NoFocus);
}

void enable_box(TextBox& box, bool enabled)
{
    box.setEnabled(enabled);
    QPalette colours = QApplication::palette(&box);
    if (!enabled)
        colours.setColor(QPalette::Base, palette::disabled_paper);
    box.setPalette(colours);
}

} // namespace

void show_genre_controls(ComboBox& cboGenre, TextBox& txtGenre, i16 genre_type, i16 fif_type)
{
    choose_genre_control(cboGenre, txtGenre, genre_type);
    if (!is_shape(fif_type))
        return;
    if (genre_type == genre_from_list)
        cboGenre.setEnabled(takes_genre(fif_type));
    if (genre_type == genre_as_text)
        enable_box(txtGenre, takes_genre(fif_type));
}

void enable_genre_controls(ComboBox& cboGenre, TextBox& txtGenre, i16 fif_type)
{
    if (!is_shape(fif_type))
        return;
    cboGenre.setEnabled(takes_genre(fif_type));
    enable_box(txtGenre, takes_genre(fif_type));
}

void choose_genre_control(ComboBox& cboGenre, TextBox& txtGenre, i16 genre_type)
{
    if (genre_type != genre_from_list && genre_type != genre_as_text)
        return;
    show_control(cboGenre, genre_type == genre_from_list);
    show_control(txtGenre, genre_type == genre_as_text);
}
