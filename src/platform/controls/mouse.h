#pragma once

#include "platform/numbers.h"
#include "platform/twips.h"

#include <QtCore/qnamespace.h>

/// A mouse button by the platform's number: 1 left, 2 right, 4 middle, 0 any other.
constexpr i16 mouse_button_number(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::RightButton:
        return 2;
    case Qt::MiddleButton:
        return 4;
    default:
        return 0;
    }
}

/// The buttons held, the numbers of mouse_button_number added up.
inline i16 mouse_buttons_number(Qt::MouseButtons buttons)
{
    return static_cast<i16>((buttons.testFlag(Qt::LeftButton) ? 1 : 0) + (buttons.testFlag(Qt::RightButton) ? 2 : 0) +
                            (buttons.testFlag(Qt::MiddleButton) ? 4 : 0));
}

/// The keys held with a mouse event: 1 Shift, 2 Control, 4 Alt, added up.
inline i16 shift_number(Qt::KeyboardModifiers keys)
{
    return static_cast<i16>((keys.testFlag(Qt::ShiftModifier) ? 1 : 0) + (keys.testFlag(Qt::ControlModifier) ? 2 : 0) +
                            (keys.testFlag(Qt::AltModifier) ? 4 : 0));
}

/// A place of the mouse along one axis, in twips; `pixels` may have a fraction.
constexpr float mouse_twips(double pixels)
{
    return static_cast<float>(pixels * twips_per_pixel);
}
