#pragma once

/// Gives the application its style, colours, font and icon: the program's own on every desktop, dark ones included; and
/// the name under which it is installed in the menus of desktops.
void apply_look();
