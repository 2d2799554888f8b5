#pragma once

#include "platform/controls/Picture.h"

// The grounds and bars of the main window, drawn in code from the one palette.

/// The ground of a group of controls: a rounded panel that leaves the given space free at its left and right.
Picture panel_picture(double left_space, double right_space);

/// The track of a bar: a thin groove in the middle of the box.
Picture groove_picture();

/// The knob of a bar: a disc.
Picture knob_picture();

/// The bar that shows while the panes' border is dragged.
Picture splitter_picture();
