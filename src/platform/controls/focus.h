#pragma once

#include <QtCore/qnamespace.h>

/// Whether a focus of this reason only comes back from another window or a menu, where GotFocus is not raised.
constexpr bool is_returning_focus(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
}
