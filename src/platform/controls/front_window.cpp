#include "platform/controls/front_window.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

QWidget* front_window()
{
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget* const active = QApplication::activeWindow())
        return active;
    // Just after a dialog has gone, or while another program is in use, no window of this one is active.
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto is_shown = [](const QWidget* window) {
        return window->isVisible() && (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog);
    };
    const auto found = std::ranges::find_if(windows, is_shown);
    return found == windows.end() ? nullptr : *found;
}
