#pragma once

/// Gives the application its style, colours and font: the program's own on every desktop, dark ones included; and the
/// name under which it is installed in the menus of desktops.
void apply_look();

/// Gives the windows of the application their icon. Desktops want it drawn as soon as a window is shown, which takes
/// long; no desktop shows that of a splash.
void apply_icon();
