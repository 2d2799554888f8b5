#pragma once

/// Gives the application its style, colours, font and icon: the program's own on every desktop, dark ones included.
void apply_look();
