#pragma once

#include <QFont>

/// Gives the application its style, colours, font and icon: the program's own on every desktop, dark ones included.
void apply_look();

/// The font of the forms.
QFont form_font();

/// The font of Korean texts.
QFont korean_font();
