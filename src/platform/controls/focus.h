#pragma once

#include <QtCore/qnamespace.h>

/// Whether a focus of this reason only comes back from another window or a menu, or goes there, where neither GotFocus
/// nor LostFocus is raised.
constexpr bool is_returning_focus(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
}
