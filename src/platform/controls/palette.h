#pragma once

#include <QColor>

// One palette, one stroke width and one corner radius for every form and picture.

namespace palette {

inline const QColor ink(0x1c, 0x24, 0x33);            ///< text
inline const QColor soft_ink(0x55, 0x60, 0x72);       ///< text of less weight; still 4.5:1 on paper and panel
inline const QColor paper(0xff, 0xff, 0xff);          ///< lists, boxes
inline const QColor panel(0xf1, 0xf3, 0xf8);          ///< forms
inline const QColor panel_dark(0xe0, 0xe4, 0xee);     ///< bars, the player's ground
inline const QColor line(0xc4, 0xcb, 0xda);           ///< frames and separators
inline const QColor accent(0x38, 0x48, 0xd8);         ///< buttons, selection
inline const QColor accent_light(0x52, 0x61, 0xe6);   ///< a button under the mouse
inline const QColor accent_dark(0x26, 0x33, 0xa6);    ///< a button pressed
inline const QColor on_accent(0xff, 0xff, 0xff);      ///< text and signs on the accents
inline const QColor fif(0x1b, 0x87, 0x5a);            ///< a file whose name is FIF
inline const QColor not_fif(0xb8, 0x62, 0x0c);        ///< any other file
inline const QColor folder(0xf2, 0xb8, 0x3c);         ///< folders
inline const QColor disabled_paper(0xe0, 0xe0, 0xe0); ///< a text box that takes no text now

constexpr double stroke = 1.5;        ///< logical pixels
constexpr double corner_radius = 5.0; ///< logical pixels

} // namespace palette
